#include "engines/builtin/xlsx/look/sheet/table_reader.h"

#include "engines/builtin/xlsx/formula/cell_address.h"
#include "engines/builtin/xlsx/formula/column_names.h"
#include "engines/builtin/xlsx/look/cells/limits.h"
#include "engines/builtin/xlsx/look/style/attributes.h"
#include "engines/builtin/xml/reading.h"
#include "util/error.h"

namespace orrery::xlsx {
namespace {

using book::Table;

/// What both kinds say of the style. A pivot table calls its first column row headers.
void ReadStyleInfo(const xml::Scanner& scanner, const StyleSheet& styles, bool isPivot,
                   Table& table)
{
    const std::string name = scanner.AttributeText("name").value_or("");
    if (auto style = styles.FindTableStyle(name))
        table.style = std::move(*style);
    table.showsRowStripes = FlagAttribute(scanner, "showRowStripes", false);
    table.showsColumnStripes =
        FlagAttribute(scanner, isPivot ? "showColStripes" : "showColumnStripes", false);
    table.showsFirstColumn =
        FlagAttribute(scanner, isPivot ? "showRowHeaders" : "showFirstColumn", false);
    table.showsLastColumn = FlagAttribute(scanner, "showLastColumn", false);
    if (isPivot && !FlagAttribute(scanner, "showColHeaders", false))
        table.style.parts.erase(book::TablePart::HeaderRow);
}

void ReadColumnNames(xml::Scanner& scanner, Table& table)
{
    xml::ForEachChild(scanner, [&] {
        if (table.columns.size() < kMaxTableColumns)
            table.columns.push_back(DecodeColumnName(scanner.AttributeText("name").value_or("")));
        scanner.SkipElement();
    });
}

template <typename Parse>
void AddTable(const Package& package, const std::string& sheetPart, const Relationship& relation,
              SheetContext& context, Parse parse)
{
    const std::string part = ResolveTarget(sheetPart, relation.Target);
    try {
        if (auto table = parse(*package.ReadXml(part), context.styleSheet)) {
            context.look.tables.push_back(std::move(*table));
            return;
        }
    }
    catch (const util::Error&) {
        // told below
    }
    context.leftOut.Add("table", part, "its part is damaged");
}

} // namespace

std::optional<Table> ParseTable(std::string_view xml, const StyleSheet& styles)
{
    xml::Scanner scanner(xml);
    xml::EnterRoot(scanner);
    const auto range = ParseCellRange(scanner.AttributeText("ref").value_or(""));
    if (!range)
        return std::nullopt;
    Table table;
    table.range = *range;
    table.name = scanner.AttributeText("displayName").value_or("");
    if (table.name.empty())
        table.name = scanner.AttributeText("name").value_or("");
    const std::int32_t height = range->last.row - range->first.row + 1;
    table.headerRows = IntegerAttribute(scanner, "headerRowCount", 0, height).value_or(1);
    table.totalRows = IntegerAttribute(scanner, "totalsRowCount", 0, height).value_or(0);
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "tableColumns")
            return ReadColumnNames(scanner, table);
        if (scanner.LocalName() == "tableStyleInfo")
            ReadStyleInfo(scanner, styles, false, table);
        scanner.SkipElement();
    });
    return table;
}

std::optional<Table> ParsePivotTable(std::string_view xml, const StyleSheet& styles)
{
    xml::Scanner scanner(xml);
    xml::EnterRoot(scanner);
    Table table;
    table.name = scanner.AttributeText("name").value_or("");
    table.totalRows = FlagAttribute(scanner, "rowGrandTotals", true) ? 1 : 0;
    bool hasPlace = false;
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "location") {
            const auto range = ParseCellRange(scanner.AttributeText("ref").value_or(""));
            hasPlace = range.has_value();
            table.range = range.value_or(book::CellRange{{1, 1}, {1, 1}});
            const std::int32_t height = table.range.last.row - table.range.first.row + 1;
            table.headerRows = IntegerAttribute(scanner, "firstDataRow", 0, height).value_or(1);
        }
        else if (scanner.LocalName() == "pivotTableStyleInfo") {
            ReadStyleInfo(scanner, styles, true, table);
        }
        scanner.SkipElement();
    });
    return hasPlace ? std::optional(std::move(table)) : std::nullopt;
}

void ReadTables(const Package& package, const std::string& sheetPart, SheetContext& context)
{
    for (const Relationship& relation : package.RelationshipsOf(sheetPart).All()) {
        if (relation.External || context.look.tables.size() >= kMaxTables)
            continue;
        if (relation.Is("table"))
            AddTable(package, sheetPart, relation, context, ParseTable);
        else if (relation.Is("pivotTable"))
            AddTable(package, sheetPart, relation, context, ParsePivotTable);
    }
}

} // namespace orrery::xlsx
