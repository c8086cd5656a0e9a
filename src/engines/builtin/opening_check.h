#pragma once

#include <filesystem>

namespace orrery::builtin {

/// Looks at a workbook before another program opens it. Throws Error:
/// - PasswordProtected if that program would ask its user for a password; the default password,
///   which programs try by themselves, is no obstacle;
/// - WrongExtension if it has the extension of another kind of workbook, and NotAWorkbook if it has
///   the extension of a workbook and is none: it could be opened, but not saved under that name;
/// - FileNotFound, FileNotReadable, NotARegularFile if the file cannot be read, NotAWorkbook if it
///   is empty.
/// What looks damaged is left to that program.
void CheckBeforeOpening(const std::filesystem::path& path);

} // namespace orrery::builtin
