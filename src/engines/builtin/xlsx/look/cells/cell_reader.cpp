#include "engines/builtin/xlsx/look/cells/cell_reader.h"

#include "engines/builtin/xlsx/formula/cell_address.h"
#include "engines/builtin/xlsx/look/cells/element_text.h"
#include "engines/builtin/xlsx/look/cells/limits.h"
#include "engines/builtin/xlsx/look/style/attributes.h"
#include "engines/builtin/xml/reading.h"

#include <algorithm>

namespace orrery::xlsx {
namespace {

constexpr double kMaxRowHeight = 409.5; // of Excel, in points

/// Of equal ones the last counts.
template <typename Item, typename Less> void SortUnique(std::vector<Item>& items, Less less)
{
    std::stable_sort(items.begin(), items.end(), less);
    const auto begin = std::unique(items.rbegin(), items.rend(),
                                   [&](const Item& a, const Item& b) { return !less(b, a); });
    items.erase(items.begin(), begin.base());
}

} // namespace

void CellReader::Read(xml::Scanner& scanner)
{
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "row")
            return ReadRow(scanner);
        scanner.SkipElement();
    });
    Sort();
    formulas_.Finish(context_.look.cells);
}

void CellReader::ReadRow(xml::Scanner& scanner)
{
    const auto number = scanner.Attribute("r");
    row_ = number ? IntegerAttribute(scanner, "r", 1, kSheetRows).value_or(0) : row_ + 1;
    column_ = 0;
    if (!IsInsideSheet(row_, 1)) {
        context_.leftOut.Add("row", number ? number->raw : std::string_view(),
                             "it lies outside the sheet");
        row_ = std::max(row_ - 1, 0);
        return scanner.SkipElement();
    }
    book::RowLook row;
    row.row = row_;
    row.height = NumberAttribute(scanner, "ht");
    if (row.height)
        row.height = std::clamp(*row.height, 0.0, kMaxRowHeight);
    row.isHidden = FlagAttribute(scanner, "hidden", false);
    row.isCustomHeight = FlagAttribute(scanner, "customHeight", false);
    if (FlagAttribute(scanner, "customFormat", false))
        row.style = context_.styles.IndexOf(IndexAttribute(scanner, "s").value_or(0));
    std::vector<book::RowLook>& rows = context_.look.rows;
    const bool tells = row.height || row.isHidden || row.style || context_.look.areRowsHidden;
    if (tells && rows.size() < kMaxRows) {
        isSorted_ = isSorted_ && (rows.empty() || rows.back().row < row.row);
        rows.push_back(row);
    }
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "c")
            return ReadCell(scanner);
        scanner.SkipElement();
    });
}

void CellReader::ReadCell(xml::Scanner& scanner)
{
    book::Cell cell;
    cell.address = {row_, column_ + 1};
    ValueType type = ValueType::Number;
    ReadCellAttributes(scanner, cell, type);
    std::vector<book::Cell>& cells = context_.look.cells;
    if (!IsInsideSheet(cell.address.row, cell.address.column) || cells.size() >= kMaxCells) {
        const auto name = scanner.Attribute("r");
        context_.leftOut.Add("cell", cells.size() >= kMaxCells || !name ? "" : name->raw,
                             cells.size() >= kMaxCells ? "there are more than 4,194,304 cells"
                                                       : "it lies outside the sheet");
        return scanner.SkipElement();
    }
    column_ = cell.address.column;
    ReadContent(scanner, cell, type);
    isSorted_ = isSorted_ && (cells.empty() || cells.back().address < cell.address);
    cells.push_back(std::move(cell));
}

/// The address becomes one outside the sheet if it is damaged.
void CellReader::ReadCellAttributes(const xml::Scanner& scanner, book::Cell& cell, ValueType& type)
{
    for (const xml::ScannedAttribute& attribute : scanner.Attributes()) {
        if (attribute.name == "r")
            cell.address = ParseCellAddress(attribute.raw).value_or(book::CellAddress{});
        else if (attribute.name == "s")
            cell.style = context_.styles.IndexOf(xml::ReadDigits(attribute.raw).value_or(0));
        else if (attribute.name == "t")
            type = ValueTypeOf(attribute.raw);
    }
}

void CellReader::ReadContent(xml::Scanner& scanner, book::Cell& cell, ValueType type)
{
    xml::ForEachChild(scanner, [&] {
        const std::string_view name = scanner.LocalName();
        if (name == "v") {
            std::string buffer;
            values_.Set(cell, type, ReadElementText(scanner, buffer));
        }
        else if (name == "f") {
            cell.formula = formulas_.Read(scanner, cell.address);
        }
        else if (name == "is" && type == ValueType::Inline) {
            values_.ReadInline(scanner, cell);
        }
        else {
            scanner.SkipElement();
        }
    });
}

void CellReader::Sort()
{
    if (isSorted_)
        return;
    SortUnique(context_.look.cells,
               [](const book::Cell& a, const book::Cell& b) { return a.address < b.address; });
    SortUnique(context_.look.rows,
               [](const book::RowLook& a, const book::RowLook& b) { return a.row < b.row; });
}

} // namespace orrery::xlsx
