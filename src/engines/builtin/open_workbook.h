#pragma once

#include "generate/spreadsheet.h"

#include <filesystem>
#include <memory>

namespace orrery::builtin {

/// Opens a workbook of either format; its content tells which, not its name. Reading never changes
/// the file. Throws Error: FileNotFound, FileNotReadable, NotAWorkbook, PasswordProtected,
/// OldBinaryFormat, BinaryWorkbook, DamagedWorkbook, TooLargeUnpacked.
std::unique_ptr<generate::Workbook> OpenWorkbookFile(const std::filesystem::path& path);

} // namespace orrery::builtin
