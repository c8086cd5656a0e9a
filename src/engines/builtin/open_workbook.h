#pragma once

#include "generate/spreadsheet.h"

#include <filesystem>
#include <functional>
#include <memory>

namespace orrery::builtin {

/// Opens a workbook of either format; its content tells which, not its name. Reading never changes
/// the file. Throws Error: FileNotFound, FileNotReadable, NotARegularFile, NotAWorkbook,
/// PasswordProtected, OldBinaryFormat, BinaryWorkbook, DamagedWorkbook, TooLargeUnpacked, also for
/// an .xls file over 1 GiB. Every error names the file.
std::unique_ptr<generate::Workbook> OpenWorkbookFile(const std::filesystem::path& path);

/// Does the action. An Error that it throws without a subject is thrown on with the workbook's
/// path.
void NamingWorkbook(const std::filesystem::path& path, const std::function<void()>& action);

} // namespace orrery::builtin
