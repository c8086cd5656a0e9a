#pragma once

#include <cstddef>
#include <string_view>

namespace orrery::engines {

/// The maximum length of a cell's text in UTF-16 units.
inline constexpr std::size_t kMaxTextLength = 32767;

/// Throws Error(TextTooLong) for a longer text; the subject is its beginning.
void CheckTextLength(std::string_view utf8);

} // namespace orrery::engines
