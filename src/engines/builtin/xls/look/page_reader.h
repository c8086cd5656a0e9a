#pragma once

#include "book/look/page_setup.h"
#include "engines/builtin/xls/look/records/look_records.h"

namespace orrery::xls {

/// What a page is like before records say otherwise. [MS-XLS] 2.4.156
book::PageSetup DefaultPage();

/// Reads the record if it belongs to the page set-up; else returns false. Throws
/// Error(DamagedWorkbook).
bool ReadPageRecord(const LookRecord& record, book::PageSetup& page);

} // namespace orrery::xls
