#include "engines/builtin/xlsx/copy_plan.h"

#include "book/error.h"
#include "engines/builtin/xlsx/package/part_names.h"
#include "engines/builtin/xlsx/part_kinds.h"
#include "util/error.h"
#include "util/paths.h"

#include <algorithm>
#include <array>
#include <deque>
#include <optional>
#include <set>

namespace orrery::xlsx {
namespace {

// Targets that the whole workbook shares, however many sheets refer to them.
constexpr std::array<std::string_view, 17> kShared = {"image",
                                                      "hdphoto",
                                                      "media",
                                                      "audio",
                                                      "video",
                                                      "theme",
                                                      "styles",
                                                      "sharedStrings",
                                                      "worksheet",
                                                      "chartsheet",
                                                      "person",
                                                      "customXml",
                                                      "externalLink",
                                                      "externalLinkPath",
                                                      "slicerCache",
                                                      "timelineCache",
                                                      "pivotCacheDefinition"};

bool IsShared(const Relationship& relationship)
{
    return std::any_of(kShared.begin(), kShared.end(),
                       [&](std::string_view type) { return relationship.Is(type); });
}

/// Whether a relationship leads to the cells that are mapped to elements of the workbook's XML
/// maps. An element is mapped once, so a copy's cells are not.
bool MapsCells(const Relationship& relationship)
{
    return relationship.Is("tableSingleCells");
}

/// The part that a relationship of `part` owns; nothing if it owns none.
std::optional<std::string> OwnedBy(const Package& package, const std::string& part,
                                   const Relationship& relationship)
{
    if (relationship.External || IsInnerLink(relationship) || MapsCells(relationship))
        return std::nullopt;
    auto target = ResolveTarget(part, relationship.Target);
    if (!package.Has(target) || !package.CanBeOwned(target))
        return std::nullopt;
    // A part with unique names cannot be shared, whatever kind of relationship leads to it.
    if (IsShared(relationship) && !HasIdentity(package.TypeOf(target)))
        return std::nullopt;
    if (KindOf(package.TypeOf(target)) == PartKind::SlicerCache)
        return std::nullopt; // the workbook's
    return target;
}

void CheckIds(const Package& package, const std::string& part, const Relationships& relationships)
{
    if (const std::string* id = relationships.DuplicateId()) {
        throw util::Error(book::ErrorKind::DamagedWorkbook, util::FromPath(package.Path()),
                          RelationshipsPartName(part) + ": the relationship \"" + *id +
                              "\" is there twice");
    }
}

/// Splits "/xl/charts/chart12.xml" into "/xl/charts/chart" and ".xml".
std::pair<std::string, std::string> SplitAtNumber(const std::string& part)
{
    const auto slash = part.rfind('/');
    auto dot = part.find('.', slash + 1);
    if (dot == std::string::npos)
        dot = part.size();
    auto digits = dot;
    while (digits > slash + 1 && part[digits - 1] >= '0' && part[digits - 1] <= '9')
        --digits;
    return {part.substr(0, digits), part.substr(dot)};
}

/// Follows the relationships from a sheet, each part once, through chains of any length.
class Planner {
public:
    Planner(const Package& package, const NewPartNames& earlier)
        : package_(package), earlier_(earlier)
    {
        plan_.names.numbers = earlier.numbers;
    }

    CopyPlan Plan(const std::string& sheet, const std::vector<std::string>& others)
    {
        EnterAll(sheet);
        for (const std::string& other : others) {
            if (!plan_.indexes.contains(PartKey(other)))
                EnterAll(other);
        }
        return std::move(plan_);
    }

private:
    struct Place { // in the relationships of a part
        std::size_t part = 0;
        std::size_t next = 0;
    };

    void EnterAll(const std::string& part)
    {
        Enter(part);
        while (!open_.empty()) {
            const Place place = open_.back();
            if (place.next == plan_.parts[place.part].relationships->All().size()) {
                plan_.steps.push_back({place.part, true});
                open_.pop_back();
                continue;
            }
            ++open_.back().next;
            Follow(place);
        }
    }

    std::size_t Enter(const std::string& part)
    {
        CheckIds(package_, part, package_.RelationshipsOf(part));
        const std::size_t index = plan_.parts.size();
        plan_.indexes.emplace(PartKey(part), index);
        plan_.parts.push_back({part, NameLike(part), &package_.RelationshipsOf(part), {}, {}});
        plan_.size += package_.SizeOf(part) + package_.SizeOf(RelationshipsPartName(part));
        plan_.steps.push_back({index, false});
        open_.push_back({index, 0});
        return index;
    }

    void Follow(const Place& place)
    {
        const Relationship& relationship = plan_.parts[place.part].relationships->All()[place.next];
        if (MapsCells(relationship))
            plan_.parts[place.part].dropped.push_back(place.next);
        const auto target = OwnedBy(package_, plan_.parts[place.part].original, relationship);
        if (!target)
            return;
        const auto known = plan_.indexes.find(PartKey(*target));
        const std::size_t owned = known != plan_.indexes.end() ? known->second : Enter(*target);
        PlannedPart& part = plan_.parts[place.part];
        const std::string& copy = plan_.parts[owned].copy;
        part.targets.emplace_back(place.next, relationship.Target.starts_with('/')
                                                  ? copy
                                                  : RelativeTarget(part.copy, copy));
    }

    std::string NameLike(const std::string& part)
    {
        const auto [prefix, suffix] = SplitAtNumber(part);
        std::size_t& number =
            plan_.names.numbers.try_emplace(PartKey(prefix) + '\n' + suffix, 1).first->second;
        while (true) {
            auto name = package_.FreePartName(prefix, suffix, number);
            ++number;
            const auto key = PartKey(name);
            if (!earlier_.keys.contains(key) && plan_.names.keys.insert(key).second)
                return name;
        }
    }

    const Package& package_;
    const NewPartNames& earlier_;
    CopyPlan plan_;
    std::vector<Place> open_;
};

} // namespace

const std::string& CopyPlan::CopyOf(const std::string& original) const
{
    return parts[indexes.at(PartKey(original))].copy;
}

CopyPlan PlanCopy(const Package& package, const std::string& sheet,
                  const std::vector<std::string>& others, const NewPartNames& earlier)
{
    return Planner(package, earlier).Plan(sheet, others);
}

std::vector<std::string> OwnedParts(const Package& package, const std::string& sheet)
{
    std::vector<std::string> found;
    std::set<std::string> seen = {PartKey(sheet)};
    std::deque<std::string> open = {sheet};
    while (!open.empty()) {
        const std::string part = std::move(open.front());
        open.pop_front();
        for (const auto& relationship : package.RelationshipsOf(part).All()) {
            auto owned = OwnedBy(package, part, relationship);
            if (!owned || !seen.insert(PartKey(*owned)).second)
                continue;
            open.push_back(*owned);
            found.push_back(std::move(*owned));
        }
    }
    return found;
}

Relationships PlannedRelationships(const PlannedPart& part)
{
    Relationships relationships = *part.relationships;
    if (part.targets.empty() && part.dropped.empty())
        return relationships;
    auto& all = relationships.Change();
    for (const auto& [index, target] : part.targets)
        all[index].Target = target;
    std::for_each(part.dropped.rbegin(), part.dropped.rend(), [&](std::size_t index) {
        all.erase(all.begin() + static_cast<std::ptrdiff_t>(index));
    });
    return relationships;
}

bool IsInnerLink(const Relationship& relationship)
{
    return relationship.Is("hyperlink") && relationship.Target.starts_with('#');
}

} // namespace orrery::xlsx
