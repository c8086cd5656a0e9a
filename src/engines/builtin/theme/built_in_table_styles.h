#pragma once

#include "book/look/table.h"
#include "engines/builtin/theme/theme.h"

#include <optional>
#include <string_view>

namespace orrery::builtin {

/// A style that Excel has built in, with the theme's colours: "TableStyleLight1" to 21, "Medium1"
/// to 28, "Dark1" to 11, "PivotStyleLight1" to 28 and "Medium1" to 28. Nothing for other names.
std::optional<book::TableStyle> BuiltInTableStyle(std::string_view name, const ThemeColors& theme);

} // namespace orrery::builtin
