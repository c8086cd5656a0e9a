#pragma once

#include "book/spreadsheet.h"

#include <filesystem>
#include <memory>

namespace orrery::builtin {

/// Opens a workbook of either format, chosen by its content, not its name. Never changes the file.
/// Throws Error: FileNotFound, FileNotReadable, NotARegularFile, NotAWorkbook, PasswordProtected,
/// OldBinaryFormat, BinaryWorkbook, DamagedWorkbook, TooLargeUnpacked, also for an .xls file over 1
/// GiB. Every error names the file.
std::unique_ptr<book::Workbook> OpenWorkbookFile(const std::filesystem::path& path);

} // namespace orrery::builtin
