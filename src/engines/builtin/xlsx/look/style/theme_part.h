#pragma once

#include "engines/builtin/theme/theme.h"
#include "engines/builtin/xlsx/package/package.h"

namespace orrery::xlsx {

/// The theme of the workbook. What is missing or damaged is as in a workbook without a theme.
builtin::ThemeColors ReadTheme(const Package& package);

} // namespace orrery::xlsx
