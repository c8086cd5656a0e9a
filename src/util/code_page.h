#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orrery::util {

// The system's single-byte code page: the ANSI code page on Windows, Windows-1252 elsewhere.

/// Whether text files are written in the code page when it can hold their text.
extern const bool kWritesCodePage;

/// The bytes as UTF-8. Every byte has a character.
std::string DecodeCodePage(std::string_view bytes);

/// Valid UTF-8 in the code page, or nothing when a character is missing there.
std::optional<std::string> EncodeCodePage(std::string_view utf8);

} // namespace orrery::util
