#pragma once

#include <string>
#include <string_view>

namespace orrery::exchange {

/// The most characters of an event's name.
inline constexpr std::size_t kMostNameCharacters = 255;

/// A text of a file as the name of an event: valid UTF-8 in one line, without blanks around, at
/// most `kMostNameCharacters` long. Breaks of lines and control characters become blanks. Empty if
/// nothing is left.
std::string CleanName(std::string_view text);

} // namespace orrery::exchange
