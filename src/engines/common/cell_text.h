#pragma once

#include <cstddef>
#include <string_view>

namespace orrery::engines {

/// The most UTF-16 units that a cell can hold.
inline constexpr std::size_t kLongestText = 32767;

/// Throws Error(TextTooLong), its subject the text's beginning, beyond `kLongestText`.
void CheckTextLength(std::string_view utf8);

} // namespace orrery::engines
