#include "engines/builtin/xlsx/relationships.h"

#include "engines/builtin/xlsx/xml_list.h"

#include <algorithm>

namespace orrery::xlsx {
namespace {

constexpr std::string_view kEmpty =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n"
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"/>";

std::vector<XmlList::Item> ItemsOf(const XmlList& list)
{
    std::vector<XmlList::Item> items;
    std::copy_if(list.Items().begin(), list.Items().end(), std::back_inserter(items),
                 [](const XmlList::Item& item) { return item.element == "Relationship"; });
    return items;
}

Relationship ToRelationship(const XmlList::Item& item)
{
    return {item.Attribute("Id"), item.Attribute("Type"), item.Attribute("Target"),
            item.Attribute("TargetMode") == "External"};
}

std::string ToElement(const XmlList& list, const Relationship& relationship)
{
    std::vector<std::pair<std::string, std::string>> attributes = {
        {"Id", relationship.Id}, {"Type", relationship.Type}, {"Target", relationship.Target}};
    if (relationship.External)
        attributes.emplace_back("TargetMode", "External");
    return list.Element("Relationship", attributes);
}

} // namespace

bool Relationship::Is(std::string_view typeName) const
{
    const std::string_view type = Type;
    return type.ends_with(typeName) && type.size() > typeName.size() &&
           type[type.size() - typeName.size() - 1] == '/';
}

Relationships Relationships::Parse(std::string_view xml, std::string_view partName)
{
    const XmlList list(xml, partName, "Relationships");
    Relationships relationships;
    relationships.xml_ = xml;
    for (const XmlList::Item& item : ItemsOf(list))
        relationships.all_.push_back(ToRelationship(item));
    return relationships;
}

std::string Relationships::ToXml() const
{
    const std::string_view xml = xml_.empty() ? kEmpty : std::string_view(xml_);
    const XmlList list(xml, {}, "Relationships");
    TextPatch patch;
    std::vector<bool> written(all_.size());
    for (const XmlList::Item& item : ItemsOf(list)) {
        const Relationship before = ToRelationship(item);
        std::size_t at = 0;
        while (at < all_.size() && (written[at] || all_[at].Id != before.Id))
            ++at;
        if (at == all_.size()) {
            patch.Remove(item.begin, item.end);
            continue;
        }
        written[at] = true;
        if (all_[at] != before)
            patch.Replace(item.begin, item.end, ToElement(list, all_[at]));
    }
    std::string added;
    for (std::size_t at = 0; at < all_.size(); ++at) {
        if (!written[at])
            added += ToElement(list, all_[at]);
    }
    list.Append(patch, added);
    return patch.Apply(xml);
}

const Relationship* Relationships::FindById(std::string_view id) const
{
    const auto found = std::find_if(all_.begin(), all_.end(),
                                    [id](const Relationship& one) { return one.Id == id; });
    return found == all_.end() ? nullptr : &*found;
}

const Relationship* Relationships::FindByType(std::string_view typeName) const
{
    const auto found = std::find_if(
        all_.begin(), all_.end(), [typeName](const Relationship& one) { return one.Is(typeName); });
    return found == all_.end() ? nullptr : &*found;
}

std::string Relationships::Add(std::string type, std::string target)
{
    std::size_t number = all_.size() + 1;
    while (FindById("rId" + std::to_string(number)) != nullptr)
        ++number;
    std::string id = "rId" + std::to_string(number);
    all_.push_back({id, std::move(type), std::move(target), false});
    return id;
}

void Relationships::Remove(std::string_view id)
{
    std::erase_if(all_, [id](const Relationship& one) { return one.Id == id; });
}

} // namespace orrery::xlsx
