#pragma once

#include "book/cell_address.h"
#include "engines/builtin/xls/look/records/byte_cursor.h"

#include <optional>

namespace orrery::xls {

/// Reads a range of four numbers, rows first; nothing if it is not in the sheet. Throws
/// Error(DamagedWorkbook). [MS-XLS] 2.5.212 (Ref8)
std::optional<book::CellRange> ReadRange8(ByteCursor& cursor);

} // namespace orrery::xls
