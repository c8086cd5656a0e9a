#include "engines/builtin/xlsx/part_references.h"

#include "engines/builtin/xlsx/copy_plan.h"
#include "engines/builtin/xlsx/sheet/sheet_tables.h"

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

bool MayReferToSheets(std::string_view type)
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

} // namespace orrery::xlsx
