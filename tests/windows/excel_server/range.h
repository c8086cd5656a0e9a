#pragma once

#include "excel_server/book.h"
#include "excel_server/dispatch_object.h"

#include <cstdint>

namespace orrery::excel_server {

/// One cell, row and column from 1, or with zeros all cells of the sheet.
struct CellRange {
    Book& book;
    book::Worksheet& sheet;
    std::int32_t row;
    std::int32_t column;
};

/// `Range`: a cell, or all cells of a sheet, of which only cells are asked for. A text is stored as
/// it is: what a user's typing would make of it is not this server's matter.
class Range : public DispatchObject {
public:
    static constexpr const char* kKind = "Range";
    Range(Server& server, const void* thing, const CellRange& cells);

    /// The cell that two arguments mean, counted from the first cell of a range.
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
    static void Write(const CellRange& cell, const automation::Variant& value);

    CellRange cells_;
};

} // namespace orrery::excel_server
