#pragma once

#include "book/look/workbook_view.h"

#include <filesystem>
#include <memory>

namespace orrery::xls {

/// Opens an .xls workbook (BIFF8) to be looked at; encrypted ones with the default password, too.
/// Throws Error with the path as its subject: FileNotReadable, NotAWorkbook, DamagedWorkbook,
/// PasswordProtected, OldBinaryFormat.
std::unique_ptr<book::WorkbookView> OpenLook(const std::filesystem::path& path);

} // namespace orrery::xls
