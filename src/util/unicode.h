#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orrery::util {

/// Appends one character, which is at most U+10FFFF and not a surrogate.
void AppendUtf8(std::string& text, char32_t character);
/// Returns the character at `at`, which is inside the text, and moves `at` past it. An invalid byte
/// is returned as it is, so that different damaged texts stay different.
char32_t NextCharacter(std::string_view utf8, std::size_t& at);

std::u16string ToUtf16(std::string_view utf8);
/// Unpaired surrogates become U+FFFD.
std::string FromUtf16(std::u16string_view units);

} // namespace orrery::util
