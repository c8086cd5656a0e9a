#pragma once

#include "book/look/workbook_view.h"

#include <filesystem>
#include <memory>

namespace orrery::builtin {

/// Opens a workbook of either format to be looked at, chosen by its content, not its name. Throws
/// Error as `OpenWorkbookFile` does; every error names the file.
std::unique_ptr<book::WorkbookView> OpenWorkbookView(const std::filesystem::path& path);

} // namespace orrery::builtin
