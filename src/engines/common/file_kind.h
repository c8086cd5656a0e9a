#pragma once

#include <filesystem>

namespace orrery::engines {

/// What a file is by its first bytes.
enum class FileKind {
    Compound, ///< [MS-CFB]: .xls, a workbook encrypted with a password, a document of another kind
    OldSheet, ///< a single sheet, from before workbooks had several (BIFF2 to BIFF4)
    Other     ///< an .xlsx package or anything else; the zip reader decides
};

/// Looks at the first bytes of the file. Throws Error (FileNotFound, FileNotReadable,
/// NotARegularFile; NotAWorkbook for an empty file).
FileKind DetectFileKind(const std::filesystem::path& path);

} // namespace orrery::engines
