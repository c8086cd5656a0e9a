#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace orrery::builtin {

/// The code of a number format that files name by its number alone, as in en-US. Those whose code
/// depends on the user's language (dates from 27 on, Thai digits from 59 on) are their plain
/// counterparts. Nothing for numbers without such a format. ECMA-376 18.8.30
std::optional<std::string_view> BuiltInNumberFormat(std::size_t id);

} // namespace orrery::builtin
