#include "engines/builtin/xlsx/package/relationships.h"

#include "engines/builtin/xml/list.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <unordered_set>

namespace orrery::xlsx {
namespace {

constexpr std::string_view kEmpty =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n"
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"/>";

std::vector<xml::List::Item> ItemsOf(const xml::List& list)
{
    std::vector<xml::List::Item> items;
    std::copy_if(list.Items().begin(), list.Items().end(), std::back_inserter(items),
                 [](const xml::List::Item& item) { return item.element == "Relationship"; });
    return items;
}

Relationship ToRelationship(const xml::List::Item& item)
{
    return {item.Attribute("Id"), item.Attribute("Type"), item.Attribute("Target"),
            item.Attribute("TargetMode") == "External"};
}

std::string ToElement(const xml::List& list, const Relationship& relationship)
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
    const xml::List list(xml, partName, "Relationships");
    Relationships relationships;
    relationships.xml_ = xml;
    relationships.isChanged_ = false;
    std::unordered_set<std::string> ids;
    for (const xml::List::Item& item : ItemsOf(list)) {
        relationships.all_.push_back(ToRelationship(item));
        if (!ids.insert(relationships.all_.back().Id).second)
            relationships.duplicateId_ = relationships.all_.back().Id;
    }
    return relationships;
}

std::vector<Relationship>& Relationships::Change()
{
    isChanged_ = true;
    return all_;
}

std::string Relationships::ToXml() const
{
    if (!isChanged_)
        return xml_;
    const std::string_view xml = xml_.empty() ? kEmpty : std::string_view(xml_);
    const xml::List list(xml, {}, "Relationships");
    builtin::TextPatch patch;
    std::multimap<std::string_view, std::size_t> left; // by id, in order; an id may occur twice
    for (std::size_t at = 0; at < all_.size(); ++at)
        left.emplace(all_[at].Id, at);
    std::vector<bool> written(all_.size());
    for (const xml::List::Item& item : ItemsOf(list)) {
        const Relationship before = ToRelationship(item);
        const auto found = left.lower_bound(before.Id);
        if (found == left.end() || found->first != before.Id) {
            patch.Remove(item.begin, item.end);
            continue;
        }
        const Relationship& now = all_[found->second];
        written[found->second] = true;
        left.erase(found);
        if (now != before)
            patch.Replace(item.begin, item.end, ToElement(list, now));
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
    return AddAll({Relationship{{}, std::move(type), std::move(target), false}}).front();
}

std::vector<std::string> Relationships::AddAll(std::vector<Relationship> added)
{
    std::unordered_set<std::string_view> taken;
    for (const Relationship& one : all_)
        taken.insert(one.Id);
    std::vector<std::string> ids;
    std::size_t number = all_.size();
    for (Relationship& one : added) {
        do {
            one.Id = "rId" + std::to_string(++number);
        } while (taken.contains(one.Id));
        ids.push_back(one.Id);
    }
    std::ranges::move(added, std::back_inserter(Change()));
    return ids;
}

void Relationships::Remove(std::string_view id)
{
    std::erase_if(Change(), [id](const Relationship& one) { return one.Id == id; });
}

} // namespace orrery::xlsx
