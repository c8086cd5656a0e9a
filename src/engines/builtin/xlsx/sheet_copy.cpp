#include "engines/builtin/xlsx/sheet_copy.h"

#include "engines/builtin/xlsx/sheet_tables.h"

#include <algorithm>
#include <array>
#include <set>

namespace orrery::xlsx {
namespace {

// Targets that stay one for the whole workbook, however many sheets point at them.
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

bool IsInnerLink(const Relationship& relationship)
{
    return relationship.Is("hyperlink") && relationship.Target.starts_with('#');
}

/// The parts that `part` owns directly.
std::vector<std::string> DirectlyOwned(const Package& package, const std::string& part)
{
    std::vector<std::string> owned;
    for (const auto& relationship : package.RelationshipsOf(part).All()) {
        if (relationship.External || IsShared(relationship) || IsInnerLink(relationship))
            continue;
        auto target = ResolveTarget(part, relationship.Target);
        if (package.Has(target))
            owned.push_back(std::move(target));
    }
    return owned;
}

/// "/xl/charts/chart12.xml" is numbered between "/xl/charts/chart" and ".xml".
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

std::string DecodePercent(std::string_view text)
{
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto hex = text.substr(i + 1, 2);
        if (text[i] == '%' && hex.size() == 2 && std::isxdigit(hex[0]) && std::isxdigit(hex[1])) {
            decoded += static_cast<char>(std::stoi(std::string(hex), nullptr, 16));
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

} // namespace

std::vector<std::string> OwnedParts(const Package& package, const std::string& sheet)
{
    std::vector<std::string> found;
    std::set<std::string> seen = {sheet};
    auto open = DirectlyOwned(package, sheet);
    while (!open.empty()) {
        auto part = std::move(open.front());
        open.erase(open.begin());
        if (!seen.insert(part).second)
            continue;
        const auto further = DirectlyOwned(package, part);
        open.insert(open.end(), further.begin(), further.end());
        found.push_back(std::move(part));
    }
    return found;
}

bool HasInnerLinks(const Relationships& relationships)
{
    const auto& all = relationships.All();
    return std::any_of(all.begin(), all.end(), IsInnerLink);
}

Relationships RenameInnerLinks(Relationships relationships, const SheetNames& names)
{
    for (auto& relationship : relationships.All()) {
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

struct SheetCopier::Context {
    NamesOfOwner names;
    std::shared_ptr<const CopyIdentity> identity;
    std::map<std::string, std::string> copies; // by the template's part
};

SheetCopier::SheetCopier(Package& package, const std::vector<std::string>& definedNames)
    : package_(package), identities_(package, definedNames)
{
}

CopiedSheet SheetCopier::Copy(const std::string& model, std::function<std::string()> content,
                              NamesOfOwner names)
{
    Context context;
    context.names = std::move(names);
    context.identity =
        std::make_shared<CopyIdentity>(identities_.ForCopy(package_, OwnedParts(package_, model)));
    const auto [prefix, suffix] = SplitAtNumber(model);
    const auto copy = package_.FreePartName(prefix, suffix);
    context.copies.emplace(model, copy);
    package_.Put(copy, package_.TypeOf(model), std::move(content));
    package_.SetRelationships(copy, CopyRelationships(model, copy, context));
    return {copy, context.identity};
}

Relationships SheetCopier::CopyRelationships(const std::string& part, const std::string& copy,
                                             Context& context)
{
    auto relationships = package_.RelationshipsOf(part);
    if (HasInnerLinks(relationships))
        linked_.push_back({copy, relationships, context.names});
    for (auto& relationship : relationships.All()) {
        if (relationship.External || IsShared(relationship) || IsInnerLink(relationship))
            continue;
        const auto target = ResolveTarget(part, relationship.Target);
        if (!package_.Has(target))
            continue;
        const bool absolute = relationship.Target.starts_with('/');
        const auto targetCopy = CopyPart(target, context);
        relationship.Target = absolute ? targetCopy : RelativeTarget(copy, targetCopy);
    }
    return relationships;
}

std::string SheetCopier::CopyPart(const std::string& part, Context& context)
{
    if (const auto found = context.copies.find(part); found != context.copies.end())
        return found->second;
    const auto [prefix, suffix] = SplitAtNumber(part);
    auto copy = package_.FreePartName(prefix, suffix);
    context.copies.emplace(part, copy);
    PutContent(part, copy, context);
    auto relationships = CopyRelationships(part, copy, context);
    if (!relationships.All().empty())
        package_.SetRelationships(copy, std::move(relationships));
    return copy;
}

void SheetCopier::PutContent(const std::string& part, const std::string& copy,
                             const Context& context)
{
    const auto type = package_.TypeOf(part);
    if (!MayNameSheets(type) || (ReferencesOf(part).empty() && !HasIdentity(type))) {
        package_.PutCopy(copy, part);
        return;
    }
    package_.Put(
        copy, type, [this, part, type, names = context.names, identity = context.identity] {
            const auto text = ReadText(package_, part);
            auto patch =
                RenameInPart(*text, part, type, ReferencesOf(part), names.sheets(), names.tables());
            patch.Add(ApplyIdentity(*text, part, type, *identity));
            return patch.Apply(*text);
        });
}

const std::vector<ReferenceSite>& SheetCopier::ReferencesOf(const std::string& part)
{
    auto found = references_.find(part);
    if (found == references_.end())
        found = references_.emplace(part, FindReferencesIn(package_, part)).first;
    return found->second;
}

void SheetCopier::UpdateLinks()
{
    for (const auto& linked : linked_) {
        auto current = package_.RelationshipsOf(linked.part);
        const auto renamed = RenameInnerLinks(linked.relationships, linked.names.sheets());
        for (std::size_t i = 0; i < current.All().size(); ++i) {
            if (IsInnerLink(current.All()[i]))
                current.All()[i].Target = renamed.All()[i].Target;
        }
        package_.SetRelationships(linked.part, std::move(current));
    }
}

} // namespace orrery::xlsx
