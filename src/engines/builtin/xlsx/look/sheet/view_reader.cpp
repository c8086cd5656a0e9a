#include "engines/builtin/xlsx/look/sheet/view_reader.h"

#include "engines/builtin/xlsx/formula/cell_address.h"
#include "engines/builtin/xlsx/look/cells/limits.h"
#include "engines/builtin/xlsx/look/style/attributes.h"
#include "engines/builtin/xml/reading.h"

#include <algorithm>

namespace orrery::xlsx {
namespace {

constexpr double kMaxWidth = 255; // of Excel, in digits
constexpr double kMaxHeight = 409.5;

void ReadPane(const xml::Scanner& scanner, book::ViewLook& view)
{
    const auto state = scanner.Attribute("state");
    if (!state || (state->raw != "frozen" && state->raw != "frozenSplit"))
        return;
    view.frozenColumns = IntegerAttribute(scanner, "xSplit", 0, kSheetColumns).value_or(0);
    view.frozenRows = IntegerAttribute(scanner, "ySplit", 0, kSheetRows).value_or(0);
}

void ReadView(xml::Scanner& scanner, SheetContext& context)
{
    book::ViewLook& view = context.look.view;
    view.isRightToLeft = FlagAttribute(scanner, "rightToLeft", false);
    view.showsGridLines = FlagAttribute(scanner, "showGridLines", true);
    view.showsZeros = FlagAttribute(scanner, "showZeros", true);
    view.showsFormulas = FlagAttribute(scanner, "showFormulas", false);
    if (!FlagAttribute(scanner, "defaultGridColor", true)) {
        if (const auto color = IndexAttribute(scanner, "colorId"))
            view.gridColor = builtin::PaletteColor(context.Colors().palette, *color);
    }
    if (const auto topLeft = scanner.Attribute("topLeftCell"))
        view.topLeft = ParseCellAddress(topLeft->raw).value_or(book::CellAddress{1, 1});
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "pane")
            ReadPane(scanner, view);
        scanner.SkipElement();
    });
}

std::optional<book::ColumnLook> ReadColumn(const xml::Scanner& scanner, SheetContext& context)
{
    book::ColumnLook column;
    const auto first = IntegerAttribute(scanner, "min", 1, kSheetColumns);
    const auto last = NumberAttribute(scanner, "max");
    if (!first || !last || *last < *first) {
        context.leftOut.Add("column", scanner.AttributeText("min").value_or(""),
                            "it lies outside the sheet");
        return std::nullopt;
    }
    column.first = *first;
    column.last = static_cast<std::int32_t>(std::min<double>(*last, kSheetColumns));
    column.width = NumberAttribute(scanner, "width");
    if (column.width)
        column.width = std::clamp(*column.width, 0.0, kMaxWidth);
    column.isHidden = FlagAttribute(scanner, "hidden", false);
    column.style = context.styles.IndexOf(IndexAttribute(scanner, "style").value_or(0));
    return column;
}

/// Adds the columns that no earlier entry has. `taken` is by column from 1.
void AddColumns(const book::ColumnLook& column, std::vector<bool>& taken,
                std::vector<book::ColumnLook>& columns)
{
    for (std::int32_t at = column.first; at <= column.last; ++at) {
        if (taken[static_cast<std::size_t>(at)])
            continue;
        book::ColumnLook free = column;
        free.first = at;
        while (at <= column.last && !taken[static_cast<std::size_t>(at)])
            taken[static_cast<std::size_t>(at++)] = true;
        free.last = at - 1;
        columns.push_back(free);
    }
}

} // namespace

void ReadSheetViews(xml::Scanner& scanner, SheetContext& context)
{
    bool isFirst = true;
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() != "sheetView" || !isFirst)
            return scanner.SkipElement();
        isFirst = false;
        ReadView(scanner, context);
    });
}

void ReadSheetFormat(const xml::Scanner& scanner, book::SheetLook& look)
{
    const auto width = NumberAttribute(scanner, "defaultColWidth");
    if (width && *width >= 0)
        look.standardWidth = std::min(*width, kMaxWidth);
    look.baseWidth = IntegerAttribute(scanner, "baseColWidth", 0, 255).value_or(8);
    const auto height = NumberAttribute(scanner, "defaultRowHeight");
    if (height && *height >= 0)
        look.defaultRowHeight = std::min(*height, kMaxHeight);
    look.areRowsHidden = FlagAttribute(scanner, "zeroHeight", false);
}

void ReadColumns(xml::Scanner& scanner, SheetContext& context)
{
    std::vector<book::ColumnLook>& columns = context.look.columns;
    std::vector<bool> taken(static_cast<std::size_t>(kSheetColumns) + 2);
    std::size_t count = 0;
    xml::ForEachChild(scanner, [&] {
        const auto column = scanner.LocalName() == "col" && ++count <= std::size_t{kSheetColumns}
                                ? ReadColumn(scanner, context)
                                : std::nullopt;
        if (column)
            AddColumns(*column, taken, columns);
        scanner.SkipElement();
    });
    std::sort(columns.begin(), columns.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
}

} // namespace orrery::xlsx
