#pragma once

#include "engines/excel/com.h"

#include <optional>
#include <string>

namespace orrery::excel {

/// The registered class of the application; nothing if there is none. Throws
/// Error(ApplicationFailure) if the look-up fails. COM has to be ready.
std::optional<CLSID> FindClass(const Apartment& apartment);

/// Whether a look-up has found the class; false if none is registered. Throws
/// Error(ApplicationFailure) for any other result.
bool HasFound(HRESULT result);

/// The file name of the program that serves the class, such as "EXCEL.EXE".
std::wstring ServerImage(const CLSID& classId);

/// The file name in a command such as "C:\Program Files\Office\EXCEL.EXE" /automation, with or
/// without quotation marks.
std::wstring ImageOfCommand(const std::wstring& command);

} // namespace orrery::excel
