#pragma once

#include "engines/builtin/theme/theme.h"

#include <string_view>

namespace orrery::xls {

/// The theme of a workbook from the data of its THEME record, continuations joined: the default
/// one, or a small package with the theme's part. What is damaged is as in the default theme.
/// [MS-XLS] 2.4.326
builtin::ThemeColors ReadThemeRecord(std::string_view data);

} // namespace orrery::xls
