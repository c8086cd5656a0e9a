#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orrery::util {

// The system's single-byte code page: the ANSI code page on Windows, Windows-1252 elsewhere.

/// Whether text files are written in the code page if it has all their characters.
extern const bool kWritesCodePage;

/// Converts bytes to UTF-8. Every byte stands for a character.
std::string DecodeCodePage(std::string_view bytes);

/// Converts valid UTF-8 to the code page, or returns nothing if the code page lacks a character.
std::optional<std::string> EncodeCodePage(std::string_view utf8);

} // namespace orrery::util
