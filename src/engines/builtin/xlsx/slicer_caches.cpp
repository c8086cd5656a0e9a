#include "engines/builtin/xlsx/slicer_caches.h"

#include "engines/builtin/xlsx/package/part_errors.h"
#include "engines/builtin/xml/attribute_patch.h"
#include "engines/builtin/xml/reading.h"

#include <algorithm>
#include <map>
#include <utility>

namespace orrery::xlsx {
namespace {

using Token = xml::Scanner::Token;

void AddNumber(const xml::Scanner& element, std::string_view attribute,
               std::set<std::uint32_t>& numbers)
{
    if (const auto number = xml::ReadDigits(element.Attribute(attribute)))
        numbers.insert(static_cast<std::uint32_t>(*number));
}

SlicerCache ReadSlicerCache(const Package& package, const std::string& part)
{
    SlicerCache cache;
    cache.part = part;
    const auto xml = package.ReadXml(part);
    xml::Scanner scanner(*xml, part);
    for (auto token = scanner.Next(); token != Token::End; token = scanner.Next()) {
        if (token != Token::StartTag)
            continue;
        if (scanner.Depth() == 1)
            cache.name = scanner.AttributeText("name").value_or("");
        else if (scanner.LocalName() == "tableSlicerCache")
            AddNumber(scanner, "tableId", cache.tables);
        else if (scanner.LocalName() == "pivotTable")
            AddNumber(scanner, "tabId", cache.sheets);
    }
    return cache;
}

/// Replaces the value of an attribute that is a number of the map.
template <typename Map>
void PatchNumber(TextPatch& patch, const xml::Scanner& element, std::string_view name,
                 const Map& numbers)
{
    const auto attribute = element.Attribute(name);
    const auto number = xml::ReadDigits(attribute);
    if (!attribute || !number)
        return;
    const auto found = numbers.find(static_cast<std::uint32_t>(*number));
    if (found != numbers.end())
        patch.Replace(attribute->valueBegin, attribute->end - 1, std::to_string(found->second));
}

/// Whether the extension with which the text begins lists pivot tables, as of charts, none of which
/// is on the sheet. A list may not be empty, so a copy has none.
bool ListsOthersOnly(std::string_view text, std::uint32_t sheetId)
{
    xml::Scanner scanner(text);
    scanner.Next();
    bool isList = false;
    for (auto token = scanner.Next(); scanner.Depth() > 0; token = scanner.Next()) {
        if (token != Token::StartTag)
            continue;
        if (scanner.LocalName() == "slicerCachePivotTables")
            isList = true;
        else if (xml::ReadDigits(scanner.Attribute("tabId")) == sheetId)
            return false;
    }
    return isList;
}

} // namespace

std::vector<SlicerCache> ReadSlicerCaches(const Package& package)
{
    std::vector<SlicerCache> caches;
    const std::string& workbook = package.MainPart();
    for (const Relationship& relationship : package.RelationshipsOf(workbook).All()) {
        const auto part = ResolveTarget(workbook, relationship.Target);
        if (relationship.External || KindOf(package.TypeOf(part)) != PartKind::SlicerCache)
            continue;
        UnlessDamaged([&] {
            auto cache = ReadSlicerCache(package, part);
            cache.relationshipId = relationship.Id;
            if (!cache.name.empty())
                caches.push_back(std::move(cache));
        });
    }
    return caches;
}

std::vector<SlicerCache> CachesOfCopy(const std::vector<SlicerCache>& caches,
                                      const std::vector<Declaration>& declared,
                                      std::uint32_t sheetId)
{
    std::set<std::string> shown; // names; each is used once
    std::set<std::uint32_t> tables;
    for (const Declaration& one : declared) {
        if (one.kind == PartKind::Slicers)
            shown.insert(one.cache);
        else if (one.kind == PartKind::Table)
            tables.insert(one.tableId);
    }
    std::vector<SlicerCache> own;
    for (const SlicerCache& cache : caches) {
        const bool filters =
            cache.sheets.contains(sheetId) ||
            std::ranges::any_of(cache.tables, [&](auto id) { return tables.contains(id); });
        if (filters && shown.erase(cache.name) != 0)
            own.push_back(cache);
    }
    return own;
}

// Only children of a child of the root count as extensions, so that none is read within another.
TextPatch PatchSlicerCache(std::string_view xml, std::string_view partName,
                           const CopyIdentity& identity)
{
    TextPatch patch;
    const std::map<std::uint32_t, std::uint32_t> sheets = {
        {identity.sheet.model, identity.sheet.copy}};
    xml::Scanner scanner(xml, partName);
    for (auto token = scanner.Next(); token != Token::End; token = scanner.Next()) {
        if (token != Token::StartTag)
            continue;
        const std::size_t begin = scanner.Begin();
        if (scanner.Depth() == 1) {
            const auto own = identity.names.find(scanner.AttributeText("name").value_or(""));
            if (own != identity.names.end())
                xml::SetAttribute(patch, xml, begin, "name", own->second);
        }
        else if (scanner.Depth() == 3 && scanner.LocalName() == "ext" &&
                 ListsOthersOnly(xml.substr(begin), identity.sheet.model)) {
            scanner.SkipElement();
            patch.Remove(begin, scanner.End());
        }
        else if (scanner.LocalName() == "tableSlicerCache") {
            PatchNumber(patch, scanner, "tableId", identity.newTableIds);
        }
        else if (scanner.LocalName() == "pivotTable") {
            PatchNumber(patch, scanner, "tabId", sheets);
            const bool isElsewhere =
                xml::ReadDigits(scanner.Attribute("tabId")) != identity.sheet.model;
            scanner.SkipElement();
            if (isElsewhere)
                patch.Remove(begin, scanner.End());
        }
    }
    return patch;
}

} // namespace orrery::xlsx
