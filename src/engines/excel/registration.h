#pragma once

#include "engines/excel/com.h"

#include <optional>
#include <string>

namespace orrery::excel {

/// The registered class of the application.
std::optional<CLSID> FindClass();

/// The file name of the program that serves the class, such as "EXCEL.EXE".
std::wstring ServerImage(const CLSID& classId);

/// The file name in a command such as "C:\Program Files\Office\EXCEL.EXE" /automation, with or
/// without quotation marks.
std::wstring ImageOfCommand(const std::wstring& command);

} // namespace orrery::excel
