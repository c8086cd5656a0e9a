#pragma once

#include "book/look/cell_style.h"
#include "engines/builtin/xls/look/records/byte_cursor.h"
#include "engines/builtin/xls/look/styles/cell_formats.h"

namespace orrery::xls {

/// What a conditional format sets, and moves past it. Throws Error(DamagedWorkbook) if it is cut
/// off. [MS-XLS] 2.5.92 (DXFN)
book::PartialStyle ReadDifferentialFormat(ByteCursor& cursor, const CellFormats& formats);

/// The same behind its size and with the properties of newer versions; it may be empty. [MS-XLS]
/// 2.5.93 (DXFN12)
book::PartialStyle ReadDifferentialFormat12(ByteCursor& cursor, const CellFormats& formats);

} // namespace orrery::xls
