#pragma once

#include <filesystem>

namespace orrery::builtin {

/// What a file is by its first bytes, or, of a compound file, by its streams.
enum class FileKind {
    Zip,              ///< or whatever else; the zip reader decides
    ProtectedPackage, ///< a workbook encrypted with a password
    OldWorkbook,      ///< .xls
    Other             ///< empty, or a compound file of another program
};

/// Looks at a bounded part of the file. Throws Error (FileNotFound, FileNotReadable).
FileKind DetectFileKind(const std::filesystem::path& path);

} // namespace orrery::builtin
