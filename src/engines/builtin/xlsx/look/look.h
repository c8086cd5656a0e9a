#pragma once

#include "book/look/workbook_view.h"

#include <filesystem>
#include <memory>

namespace orrery::xlsx {

/// Opens a workbook to be looked at. Sheets are read when they are first asked for. Throws Error as
/// `Package` does.
std::unique_ptr<book::WorkbookView> OpenLook(const std::filesystem::path& path);

} // namespace orrery::xlsx
