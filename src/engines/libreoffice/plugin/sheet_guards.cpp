#include "engines/libreoffice/plugin/sheet_guards.h"

#include "book/error.h"
#include "engines/libreoffice/plugin/office.h"
#include "util/error.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XDatabaseRange.hpp>
#include <com/sun/star/sheet/XSheetCellCursor.hpp>
#include <com/sun/star/util/CellProtection.hpp>
#include <com/sun/star/util/XMergeable.hpp>
#include <com/sun/star/util/XProtectable.hpp>

#include <algorithm>

namespace orrery::libreoffice {
namespace {

using book::ErrorKind;
using css::uno::UNO_QUERY_THROW;
using engines::CellAddress;
using engines::CellRange;

CellRange RangeOf(const css::table::CellRangeAddress& address)
{
    return {{address.StartRow + 1, address.StartColumn + 1},
            {address.EndRow + 1, address.EndColumn + 1}};
}

bool IsProtected(const SheetGuards::Sheet& sheet)
{
    return Reference<css::util::XProtectable>(sheet, UNO_QUERY_THROW)->isProtected();
}

std::vector<CellRange> FormulasOf(const SheetGuards::Sheet& sheet)
{
    const Reference<css::sheet::XCellRangesQuery> query(sheet, UNO_QUERY_THROW);
    const auto found =
        query->queryContentCells(css::sheet::CellFlags::FORMULA)->getRangeAddresses();
    std::vector<CellRange> ranges(static_cast<std::size_t>(found.getLength()));
    std::transform(found.begin(), found.end(), ranges.begin(), RangeOf);
    return ranges;
}

/// The cells with the column names of the sheet's tables.
std::vector<CellRange> TableHeadersOf(const SheetGuards::Document& document,
                                      const SheetGuards::Sheet& sheet)
{
    const Reference<css::sheet::XCellRangeAddressable> place(sheet, UNO_QUERY_THROW);
    const auto own = place->getRangeAddress().Sheet;
    Reference<css::container::XNameAccess> tables;
    Reference<css::beans::XPropertySet>(document, UNO_QUERY_THROW)
        ->getPropertyValue("DatabaseRanges") >>= tables;
    std::vector<CellRange> headers;
    for (const auto& name : tables->getElementNames()) {
        const Reference<css::sheet::XDatabaseRange> table(tables->getByName(name), UNO_QUERY_THROW);
        const Reference<css::beans::XPropertySet> properties(table, UNO_QUERY_THROW);
        auto area = table->getDataArea();
        area.EndRow = area.StartRow;
        if (area.Sheet == own && properties->getPropertyValue("ContainsHeader") == true)
            headers.push_back(RangeOf(area));
    }
    return headers;
}

/// A cursor over cells can tell what they belong to.
Reference<css::sheet::XSheetCellCursor> CursorAt(const SheetGuards::Sheet& sheet,
                                                 const Reference<css::uno::XInterface>& cells)
{
    return sheet->createCursorByRange(
        Reference<css::sheet::XSheetCellRange>(cells, UNO_QUERY_THROW));
}

CellRange RangeOf(const Reference<css::sheet::XSheetCellCursor>& cursor)
{
    const Reference<css::sheet::XCellRangeAddressable> place(cursor, UNO_QUERY_THROW);
    return RangeOf(place->getRangeAddress());
}

/// Finds merged areas. LibreOffice has no list of them, but tells whether one begins in a range, so
/// the range is halved down to the cell where one begins.
void FindMerged(const SheetGuards::Sheet& sheet, const CellRange& range,
                std::vector<CellRange>& found)
{
    const auto& [first, last] = range;
    const auto cells = sheet->getCellRangeByPosition(first.column - 1, first.row - 1,
                                                     last.column - 1, last.row - 1);
    if (!Reference<css::util::XMergeable>(cells, UNO_QUERY_THROW)->getIsMerged())
        return;
    if (range.IsOneCell()) {
        const auto cursor = CursorAt(sheet, cells);
        cursor->collapseToMergedArea();
        found.push_back(RangeOf(cursor));
        return;
    }
    CellRange upper = range;
    CellRange lower = range;
    if (last.row - first.row >= last.column - first.column) {
        upper.last.row = (first.row + last.row) / 2;
        lower.first.row = upper.last.row + 1;
    }
    else {
        upper.last.column = (first.column + last.column) / 2;
        lower.first.column = upper.last.column + 1;
    }
    FindMerged(sheet, upper, found);
    FindMerged(sheet, lower, found);
}

bool IsLocked(const SheetGuards::Cell& cell)
{
    const Reference<css::beans::XPropertySet> properties(cell, UNO_QUERY_THROW);
    css::util::CellProtection protection;
    properties->getPropertyValue("CellProtection") >>= protection;
    return protection.IsLocked;
}

/// Whether the cell is part of an array formula of several cells.
bool IsPartOfArray(const SheetGuards::Sheet& sheet, const SheetGuards::Cell& cell)
{
    const auto cursor = CursorAt(sheet, cell);
    cursor->collapseToCurrentArray();
    return !RangeOf(cursor).IsOneCell();
}

bool IsIn(const std::vector<CellRange>& ranges, CellAddress cell)
{
    return std::any_of(ranges.begin(), ranges.end(),
                       [&](const auto& range) { return range.Contains(cell); });
}

/// Whether the cell is part of a data table of several cells; for LibreOffice that is a function,
/// which has several names. A data table of one cell may be overwritten like any cell.
bool IsPartOfDataTable(const SheetGuards::Sheet& sheet, const std::vector<CellRange>& formulas,
                       CellAddress cell)
{
    const auto belongs = [&](CellAddress place) {
        if (!IsIn(formulas, place))
            return false;
        const auto formula =
            sheet->getCellByPosition(place.column - 1, place.row - 1)->getFormula();
        return formula.startsWith("=TABLE(") || formula.startsWith("=MULTIPLE.OPERATIONS(");
    };
    return belongs(cell) &&
           (belongs({cell.row - 1, cell.column}) || belongs({cell.row + 1, cell.column}) ||
            belongs({cell.row, cell.column - 1}) || belongs({cell.row, cell.column + 1}));
}

} // namespace

SheetGuards::SheetGuards(const Document& document, const Sheet& sheet, const CellRange& whole)
    : isProtected_(IsProtected(sheet)), formulas_(FormulasOf(sheet)),
      tableHeaders_(TableHeadersOf(document, sheet))
{
    FindMerged(sheet, whole, merged_);
}

void SheetGuards::CheckChangeable(const Sheet& sheet, const Cell& cell, CellAddress address) const
{
    if (isProtected_ && IsLocked(cell))
        throw Error(ErrorKind::CellLocked, engines::FormatCellAddress(address));
    if (IsIn(formulas_, address) &&
        (IsPartOfDataTable(sheet, formulas_, address) || IsPartOfArray(sheet, cell)))
        throw Error(ErrorKind::PartOfArray, engines::FormatCellAddress(address));
}

bool SheetGuards::IsTableHeader(CellAddress address) const
{
    return IsIn(tableHeaders_, address);
}

bool SheetGuards::IsHiddenByMerge(CellAddress address) const
{
    return std::any_of(merged_.begin(), merged_.end(), [&](const CellRange& area) {
        return area.Contains(address) && area.first != address;
    });
}

} // namespace orrery::libreoffice
