#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// The strings of the format: an optional count of characters, a byte of flags, and characters of
/// one byte (up to U+00FF) or two bytes. [MS-XLS] 2.5.294, 2.5.296, 2.5.240
namespace orrery::xls {

/// A string that was read.
struct UnicodeString {
    std::string text;     ///< UTF-8
    std::size_t size = 0; ///< bytes in the file, with count and flags
};

/// With a count of two bytes ("XLUnicodeString").
/// All of these throw Error(DamagedWorkbook) if the string runs past the end of the bytes.
UnicodeString ReadUnicodeString(std::string_view bytes, std::size_t at);
/// With a count of one byte ("ShortXLUnicodeString").
UnicodeString ReadShortUnicodeString(std::string_view bytes, std::size_t at);
/// Without a count: `count` UTF-16 units, a number from another field ("XLUnicodeStringNoCch").
UnicodeString ReadUnicodeStringNoCount(std::string_view bytes, std::size_t at, std::size_t count);

/// The size in bytes of a string with a count of two bytes, without reading it.
std::size_t UnicodeStringSize(std::string_view bytes, std::size_t at);

/// These append a string, with one byte for each character if that is enough. A string has at most
/// 65,535 UTF-16 units, 255 if the count has one byte (assert).
void AppendUnicodeString(std::string& bytes, std::string_view utf8);
void AppendShortUnicodeString(std::string& bytes, std::string_view utf8);
void AppendUnicodeStringNoCount(std::string& bytes, std::string_view utf8);

/// The flag of a string whose characters have two bytes.
inline constexpr std::uint8_t kWideCharacters = 0x01;

/// Whether any unit needs two bytes.
bool NeedsWideCharacters(std::u16string_view units);
/// Appends only the units, without count and flags.
void AppendCharacters(std::string& bytes, std::u16string_view units, bool wide);
/// Appends to `units` the characters that fill `bytes`.
void ReadCharacters(std::string_view bytes, bool wide, std::u16string& units);

} // namespace orrery::xls
