#pragma once

#include "excel_server/book.h"
#include "excel_server/dispatch_object.h"

#include <cstdint>

namespace orrery::excel_server {

/// One cell, row and column from 1, or all cells of the sheet, with zeros.
struct CellRange {
    Book& book;
    book::Worksheet& sheet;
    std::int32_t row;
    std::int32_t column;
};

/// `Range`: a cell, or all cells of a sheet, which only gives cells. A text is interpreted as if it
/// were typed. For anything but a text the cell gets a zero: the workbook is written by an engine
/// that writes only texts and small numbers.
class Range : public DispatchObject {
public:
    static constexpr const char* kKind = "Range";
    Range(Server& server, const void* identity, const CellRange& cells);

    /// The cell that two arguments give, counted from the first cell of a range.
    static automation::Variant CellOf(Server& server, const CellRange& cells,
                                      const Arguments& arguments);

private:
    const Members& Table() const override;
    automation::Variant GetItem(const Arguments& arguments);
    automation::Variant PutItem(const Arguments& arguments);
    automation::Variant PutValue(const Arguments& arguments);
    automation::Variant GetRow(const Arguments& arguments);
    automation::Variant GetColumn(const Arguments& arguments);

    static CellRange Locate(const CellRange& cells, const Arguments& arguments);
    void Write(const CellRange& cell, const automation::Variant& value) const;
    book::CellValue ValueOf(const automation::Variant& value) const;

    CellRange cells_;
};

} // namespace orrery::excel_server
