#include "engines/builtin/xlsx/sheet_copy.h"

#include "engines/builtin/xlsx/package/part_names.h"
#include "engines/builtin/xlsx/sheet/sheet_tables.h"
#include "util/error.h"
#include "util/paths.h"

#include <algorithm>
#include <charconv>

namespace orrery::xlsx {
namespace {

std::string DecodePercent(std::string_view text)
{
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto hex = text.substr(i + 1, 2);
        unsigned code = 0;
        const char* const end = hex.data() + hex.size();
        const auto [behind, error] = std::from_chars(hex.data(), end, code, 16);
        if (text[i] == '%' && hex.size() == 2 && error == std::errc() && behind == end) {
            decoded += static_cast<char>(code);
            i += 2;
        }
        else {
            decoded += text[i];
        }
    }
    return decoded;
}

std::string EncodePercent(std::string_view text)
{
    std::string encoded;
    for (const char c : text) {
        if (c == ' ')
            encoded += "%20";
        else if (c == '%')
            encoded += "%25";
        else
            encoded += c;
    }
    return encoded;
}

/// The relationships of a copied part: the original's with targets of their own.
std::string RelationshipsXml(const Relationships& original,
                             const std::vector<std::pair<std::size_t, std::string>>& targets,
                             const NamesOfOwner& names)
{
    const bool hasInnerLinks = HasInnerLinks(original);
    if (targets.empty() && !hasInnerLinks)
        return original.ToXml();
    Relationships relationships = original;
    for (const auto& [index, target] : targets)
        relationships.Change()[index].Target = target;
    if (hasInnerLinks)
        relationships = RenameInnerLinks(std::move(relationships), names.sheets());
    return relationships.ToXml();
}

} // namespace

bool HasInnerLinks(const Relationships& relationships)
{
    const auto& all = relationships.All();
    return std::any_of(all.begin(), all.end(), IsInnerLink);
}

Relationships RenameInnerLinks(Relationships relationships, const SheetNames& names)
{
    for (auto& relationship : relationships.Change()) {
        if (!IsInnerLink(relationship))
            continue;
        if (const auto renamed = RenameInLocation(DecodePercent(relationship.Target), names))
            relationship.Target = EncodePercent(*renamed);
    }
    return relationships;
}

bool IsVml(std::string_view type)
{
    return type.ends_with(".vmlDrawing");
}

bool MayNameSheets(std::string_view type)
{
    return type.ends_with("+xml") || IsVml(type);
}

PartText ReadText(const Package& package, std::string_view part)
{
    return IsVml(package.TypeOf(part)) ? package.Read(part) : package.ReadXml(part);
}

std::vector<ReferenceSite> FindReferencesIn(const Package& package, const std::string& part)
{
    const auto text = ReadText(package, part);
    return IsVml(package.TypeOf(part)) ? FindVmlReferences(*text) : FindReferences(*text, part);
}

TextPatch RenameInPart(std::string_view text, const std::string& part, std::string_view type,
                       const std::vector<ReferenceSite>& sites, const SheetNames& sheets,
                       const TableNames& tables)
{
    if (!IsTable(type))
        return RenameReferences(text, sites, sheets, tables);
    const auto name = TableNameOf(text, part);
    auto patch = RenameReferences(text, sites, sheets, tables.Inside(name));
    if (const auto* change = tables.Find(name))
        patch.Add(PatchTable(text, part, *change));
    return patch;
}

struct SheetCopier::Owner {
    NamesOfOwner names;
    CopyIdentity identity;
};

SheetCopier::SheetCopier(Package& package, const std::vector<std::string>& definedNames)
    : package_(package), identities_(package, definedNames)
{
}

CopiedSheet SheetCopier::Copy(const std::string& model, Content content, NamesOfOwner names)
{
    if (const auto known = refusals_.find(model); known != refusals_.end())
        throw util::Error(known->second);
    try {
        return CopyOnce(model, std::move(content), std::move(names));
    }
    catch (const util::Error& error) {
        refusals_.emplace(model, error);
        throw;
    }
}

CopiedSheet SheetCopier::CopyOnce(const std::string& model, Content content, NamesOfOwner names)
{
    // Whatever may fail is done before the first part is put.
    PartNumbers numbers = numbers_;
    const CopyPlan plan = PlanCopy(package_, model, numbers);
    CheckLimits(plan);
    const auto owner = std::make_shared<const Owner>(
        Owner{std::move(names), identities_.ForCopy(package_, OwnedParts(package_, model))});
    std::vector<Content> contents = {std::move(content)};
    for (std::size_t i = 1; i < plan.parts.size(); ++i)
        contents.push_back(ContentOf(plan.parts[i].original, owner));
    CopiedSheet copy{plan.parts.front().copy, {owner, &owner->identity}, {}};
    for (const PlannedPart& part : plan.parts)
        copy.parts.push_back(part.copy);
    try {
        Put(plan, std::move(contents), owner);
    }
    catch (...) {
        TakeBack(copy);
        throw;
    }
    numbers_ = std::move(numbers);
    copied_ += plan.size;
    return copy;
}

void SheetCopier::TakeBack(const CopiedSheet& copy)
{
    for (const std::string& part : copy.parts) {
        package_.Restore(RelationshipsPartName(part));
        package_.Restore(part);
    }
}

void SheetCopier::CheckLimits(const CopyPlan& plan) const
{
    const auto fail = [this](const std::string& limit) {
        throw util::Error(util::ErrorKind::TooLargeOutput, util::FromPath(package_.Path()),
                          "with the copies of its sheet it has more than " + limit);
    };
    if (package_.CountParts() + 2 * plan.parts.size() > kMostParts)
        fail("65,535 parts");
    if (package_.UnpackedSize() + copied_ + plan.size > kMostBytes)
        fail("1 GiB unpacked");
}

void SheetCopier::Put(const CopyPlan& plan, std::vector<Content> contents,
                      const std::shared_ptr<const Owner>& owner)
{
    for (const auto& [index, isRelationships] : plan.steps) {
        const PlannedPart& part = plan.parts[index];
        if (isRelationships) {
            const bool isNeeded = !part.relationships->All().empty() ||
                                  package_.Has(RelationshipsPartName(part.copy));
            if (isNeeded) {
                package_.PutRelationships(
                    part.copy, [relationships = part.relationships, targets = part.targets, owner] {
                        return RelationshipsXml(*relationships, targets, owner->names);
                    });
            }
        }
        else if (contents[index]) {
            package_.Put(part.copy, package_.TypeOf(part.original), std::move(contents[index]));
        }
        else {
            package_.PutCopy(part.copy, part.original);
        }
    }
}

SheetCopier::Content SheetCopier::ContentOf(const std::string& part,
                                            const std::shared_ptr<const Owner>& owner)
{
    const auto type = package_.TypeOf(part);
    if (!MayNameSheets(type) || (ReferencesOf(part).empty() && !HasIdentity(type)))
        return {};
    return [this, part, type, owner] {
        const auto text = ReadText(package_, part);
        auto patch = RenameInPart(*text, part, type, ReferencesOf(part), owner->names.sheets(),
                                  owner->names.tables());
        patch.Add(ApplyIdentity(*text, part, type, owner->identity));
        return patch.Apply(*text);
    };
}

const std::vector<ReferenceSite>& SheetCopier::ReferencesOf(const std::string& part)
{
    const auto key = PartKey(part);
    auto found = references_.find(key);
    if (found == references_.end())
        found = references_.emplace(key, FindReferencesIn(package_, part)).first;
    return found->second;
}

} // namespace orrery::xlsx
