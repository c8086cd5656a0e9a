#pragma once

#include <filesystem>

namespace orrery::engines {

/// What a file is by its first bytes.
enum class FileKind {
    Compound, ///< [MS-CFB]: .xls, a workbook encrypted with a password, a document of another kind
    OldSheet, ///< a sheet of the versions before workbooks had several (BIFF2 to BIFF4)
    Other     ///< a package (.xlsx), or whatever else; the zip reader decides
};

/// Looks at the first bytes of the file. Throws Error (FileNotFound, FileNotReadable,
/// NotARegularFile; NotAWorkbook for an empty file).
FileKind DetectFileKind(const std::filesystem::path& path);

} // namespace orrery::engines
