#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace orrery::look {

/// Where the user's character ends that begins at `at`: a letter with its marks, an emoji of
/// several parts. Unicode's extended grapheme cluster. `at` is inside the text.
std::size_t ClusterEnd(std::string_view text, std::size_t at);

/// East Asian characters and emoji, which are as wide as they are high.
bool IsWide(char32_t character);
/// Marks and controls, which take no room of their own.
bool IsZeroWidth(char32_t character);

/// How a character takes part in the direction of a text. [Unicode UAX #9]
enum class Direction : std::uint8_t { LeftToRight, RightToLeft, Digit, Neutral };
Direction DirectionOf(char32_t character);
/// The direction of the first character that has one.
bool BeginsRightToLeft(std::string_view text);
bool HasRightToLeft(std::string_view text);

} // namespace orrery::look
