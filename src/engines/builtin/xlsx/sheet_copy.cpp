#include "engines/builtin/xlsx/sheet_copy.h"

#include "book/error.h"
#include "engines/builtin/xlsx/identity_patch.h"
#include "engines/builtin/xlsx/package/part_names.h"
#include "engines/builtin/xlsx/part_kinds.h"
#include "engines/builtin/xlsx/part_references.h"
#include "util/error.h"
#include "util/paths.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace orrery::xlsx {
namespace {

std::string RelationshipsXml(const PlannedPart& part, const NamesOfOwner& names)
{
    auto relationships = PlannedRelationships(part);
    if (HasInnerLinks(relationships))
        relationships = RenameInnerLinks(std::move(relationships), names.sheets);
    return relationships.ToXml();
}

/// Whether copies of a part have names or ids of their own. Those of pivot tables and queries, some
/// of which are large, are only the uids that newer programs write.
bool HasOwnIdentity(const Package& package, const std::string& part)
{
    const PartKind kind = KindOf(package.TypeOf(part));
    if (kind == PartKind::PivotTable || kind == PartKind::QueryTable)
        return package.ReadXml(part)->find(":uid") != std::string::npos;
    return kind != PartKind::Other;
}

} // namespace

SheetCopier::SheetCopier(const Package& package, const std::vector<std::string>& definedNames)
    : package_(package), identities_(package, definedNames)
{
}

std::shared_ptr<const SheetCopy> SheetCopier::Copy(const std::string& model,
                                                   const SheetIdentities& identities, SheetIds ids)
{
    if (const auto known = refusals_.find(model); known != refusals_.end())
        throw util::Error(known->second);
    try {
        return CopyOnce(model, identities, ids);
    }
    catch (const util::Error& error) {
        refusals_.emplace(model, error);
        throw;
    }
}

std::shared_ptr<const SheetCopy>
SheetCopier::CopyOnce(const std::string& model, const SheetIdentities& identities, SheetIds ids)
{
    auto copy = std::make_shared<SheetCopy>();
    auto owned = OwnedParts(package_, model);
    const auto caches = CachesOf(owned, ids.model);
    std::vector<std::string> ofWorkbook;
    ofWorkbook.reserve(caches.size());
    for (const SlicerCache& cache : caches)
        ofWorkbook.push_back(cache.part);
    copy->plan = PlanCopy(package_, model, ofWorkbook, names_);
    const CopyPlan& plan = copy->plan;
    CheckLimits(plan);
    owned.insert(owned.end(), ofWorkbook.begin(), ofWorkbook.end());
    copy->identity = identities_.ForCopy(model, owned, identities, ids);
    for (const SlicerCache& cache : caches)
        copy->ofWorkbook.push_back({cache.relationshipId, plan.CopyOf(cache.part)});
    for (std::size_t i = 1; i < plan.parts.size(); ++i)
        FindChangesOf(plan.parts[i].original);
    copy->number = copies_++;
    names_.numbers = plan.names.numbers;
    names_.keys.insert(plan.names.keys.begin(), plan.names.keys.end());
    for (const PlannedPart& part : plan.parts)
        parts_ += part.relationships->All().empty() ? std::size_t{1} : 2;
    bytes_ += plan.size;
    return copy;
}

std::vector<SlicerCache> SheetCopier::CachesOf(const std::vector<std::string>& ownedParts,
                                               std::uint32_t sheetId)
{
    const auto kindOf = [this](const std::string& part) { return KindOf(package_.TypeOf(part)); };
    const auto hasSlicers = [&](const std::string& part) {
        return kindOf(part) == PartKind::Slicers;
    };
    if (std::ranges::none_of(ownedParts, hasSlicers))
        return {};
    if (!caches_)
        caches_ = ReadSlicerCaches(package_);
    std::vector<Declaration> declared;
    for (const auto& part : ownedParts) {
        auto found = DeclarationsIn(package_, part, kindOf(part));
        std::ranges::move(found, std::back_inserter(declared));
    }
    return CachesOfCopy(*caches_, declared, sheetId);
}

bool SheetCopier::HasPart(const std::string& part) const
{
    return names_.keys.contains(PartKey(part));
}

void SheetCopier::CheckLimits(const CopyPlan& plan) const
{
    const auto fail = [this](const std::string& limit) {
        throw util::Error(book::ErrorKind::TooLargeOutput, util::FromPath(package_.Path()),
                          "with the copies of its sheet it has more than " + limit);
    };
    if (package_.CountParts() + parts_ + 2 * plan.parts.size() > kMaxParts)
        fail("65,535 parts");
    if (package_.UnpackedSize() + bytes_ + plan.size > kMaxBytes)
        fail("1 GiB unpacked");
}

void SheetCopier::FindChangesOf(const std::string& part)
{
    const auto key = PartKey(part);
    if (MayReferToSheets(package_.TypeOf(part)) && !changes_.contains(key)) {
        changes_.emplace(key,
                         Changes{FindReferencesIn(package_, part), HasOwnIdentity(package_, part)});
    }
}

void SheetCopier::Put(PackageEdit& edit, const SheetCopy& copy, const Content& content,
                      const std::shared_ptr<const NamesOfOwner>& names) const
{
    for (const auto& [index, isRelationships] : copy.plan.steps) {
        const PlannedPart& part = copy.plan.parts[index];
        if (isRelationships) {
            if (!part.relationships->All().empty()) {
                edit.PutRelationships(part.copy, [&part, names](zip::EntrySink& sink) {
                    sink.Add(RelationshipsXml(part, *names));
                });
            }
            continue;
        }
        auto own = index == 0 ? content : ContentOf(part.original, copy, names);
        if (own)
            edit.Put(part.copy, package_.TypeOf(part.original), std::move(own));
        else
            edit.PutCopy(part.copy, part.original);
    }
}

/// The content of a part of the copy; nothing if it has its model's bytes.
SheetCopier::Content SheetCopier::ContentOf(const std::string& part, const SheetCopy& copy,
                                            const std::shared_ptr<const NamesOfOwner>& names) const
{
    const auto type = package_.TypeOf(part);
    const auto found = changes_.find(PartKey(part));
    if (found == changes_.end() || (found->second.references.empty() && !found->second.hasIdentity))
        return {};
    return [this, part, type, &sites = found->second.references, &identity = copy.identity,
            names](zip::EntrySink& sink) {
        const auto text = ReadText(package_, part);
        auto patch = RenameInPart(*text, part, type, sites, names->sheets, names->tables);
        patch.Add(ApplyIdentity(*text, part, type, identity));
        sink.Add(patch.Apply(*text));
    };
}

} // namespace orrery::xlsx
