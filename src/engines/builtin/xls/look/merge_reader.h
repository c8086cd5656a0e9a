#pragma once

#include "book/look/sheet_look.h"

#include <string_view>
#include <vector>

namespace orrery::xls {

/// Reads the merged cells of a sheet.
class MergeReader {
public:
    explicit MergeReader(book::SheetLook& look) : look_(look) {}

    /// Takes the data of a MERGECELLS record. Throws Error(DamagedWorkbook). [MS-XLS] 2.4.168
    void Read(std::string_view data);
    /// Gives the look those that do not overlap one above or to the left, row by row.
    void Finish();

private:
    book::SheetLook& look_;
    std::vector<book::CellRange> merges_;
};

} // namespace orrery::xls
