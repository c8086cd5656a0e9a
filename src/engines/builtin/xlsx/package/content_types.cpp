#include "engines/builtin/xlsx/package/content_types.h"

#include "engines/builtin/xlsx/package/part_names.h"
#include "engines/builtin/xml/list.h"

namespace orrery::xlsx {
namespace {

constexpr std::string_view kPartName = "/[Content_Types].xml";
constexpr std::string_view kRoot = "Types";

/// The extension of a part's key, without the dot; empty if it has none.
std::string ExtensionOf(const std::string& key)
{
    const std::size_t dot = key.rfind('.');
    const std::size_t slash = key.rfind('/');
    return dot == std::string::npos || dot < slash ? std::string() : key.substr(dot + 1);
}

} // namespace

ContentTypes ContentTypes::Parse(std::string_view xml)
{
    ContentTypes types;
    types.xml_ = xml;
    const xml::List list(xml, kPartName, kRoot);
    for (const xml::List::Item& item : list.Items()) {
        const std::string type = item.Attribute("ContentType");
        if (item.element == "Default") {
            types.defaults_.emplace(PartKey(item.Attribute("Extension")).substr(1), type);
        }
        else if (item.element == "Override") {
            const std::string name = item.Attribute("PartName");
            types.overrides_.emplace(PartKey(name), Override{name, type});
        }
    }
    return types;
}

std::string ContentTypes::ToXml() const
{
    if (!changed_)
        return xml_;
    const xml::List list(xml_, kPartName, kRoot);
    const auto element = [&list](const Override& entry) {
        return list.Element("Override", {{"PartName", entry.name}, {"ContentType", entry.type}});
    };
    builtin::TextPatch patch;
    auto added = overrides_;
    for (const xml::List::Item& item : list.Items()) {
        if (item.element != "Override")
            continue;
        const auto entry = added.find(PartKey(item.Attribute("PartName")));
        if (entry == added.end()) {
            patch.Remove(item.begin, item.end);
            continue;
        }
        if (entry->second.type != item.Attribute("ContentType"))
            patch.Replace(item.begin, item.end, element(entry->second));
        added.erase(entry);
    }
    std::string elements;
    for (const auto& [key, entry] : added)
        elements += element(entry);
    list.Append(patch, elements);
    return patch.Apply(xml_);
}

std::string ContentTypes::TypeOf(std::string_view partName) const
{
    const std::string key = PartKey(partName);
    const auto own = overrides_.find(key);
    if (own != overrides_.end())
        return own->second.type;
    const auto byExtension = defaults_.find(ExtensionOf(key));
    return byExtension == defaults_.end() ? std::string() : byExtension->second;
}

void ContentTypes::Set(std::string_view partName, std::string_view type)
{
    if (TypeOf(partName) == type)
        return;
    overrides_[PartKey(partName)] = {std::string(partName), std::string(type)};
    changed_ = true;
}

void ContentTypes::Remove(std::string_view partName)
{
    if (overrides_.erase(PartKey(partName)) > 0)
        changed_ = true;
}

} // namespace orrery::xlsx
