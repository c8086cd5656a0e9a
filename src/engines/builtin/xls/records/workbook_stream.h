#pragma once

#include "engines/builtin/xls/compound/compound_file.h"

#include <filesystem>
#include <string>

namespace orrery::xls {

/// The bytes of a file. Throws Error(FileNotReadable).
std::string ReadWholeFile(const std::filesystem::path& path);

/// The workbook stream. Files for two versions have both, of which the first is the newer; some
/// programs give the newer one the older name. Throws Error(NotAWorkbook) if there is none.
EntryId FindWorkbookStream(const CompoundFile& file);

struct WorkbookStream {
    std::string bytes; ///< decrypted
    bool wasEncrypted = false;
};
/// Reads it. Throws Error(PasswordProtected, DamagedWorkbook).
WorkbookStream ReadWorkbookStream(const CompoundFile& file, EntryId stream);

} // namespace orrery::xls
