#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orrery::util {

/// Appends one character; it is at most U+10FFFF and no surrogate.
void AppendUtf8(std::string& text, char32_t character);
/// The character at `at`, which moves behind it; `at` lies inside the text. A byte that is no UTF-8
/// counts as itself, so that damaged texts are still told apart.
char32_t NextCharacter(std::string_view utf8, std::size_t& at);

std::u16string ToUtf16(std::string_view utf8);
/// Surrogates that stand alone become U+FFFD.
std::string FromUtf16(std::u16string_view units);

} // namespace orrery::util
