#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// The texts of the format: an optional count of characters, a byte of flags, and characters of
/// one byte (those up to U+00FF) or two. [MS-XLS] 2.5.294, 2.5.296, 2.5.240
namespace orrery::xls {

/// A text that was read.
struct UnicodeString {
    std::string text;     ///< UTF-8
    std::size_t size = 0; ///< bytes that it takes in the file, with its count and flags
};

/// With a count of two bytes ("XLUnicodeString").
/// All of these throw Error(DamagedWorkbook) where the text runs past the end of the bytes.
UnicodeString ReadUnicodeString(std::string_view bytes, std::size_t at);
/// With a count of one byte ("ShortXLUnicodeString").
UnicodeString ReadShortUnicodeString(std::string_view bytes, std::size_t at);
/// Without a count: `count` UTF-16 units that another field gives ("XLUnicodeStringNoCch").
UnicodeString ReadUnicodeStringNoCount(std::string_view bytes, std::size_t at, std::size_t count);

/// The bytes that a text with a count of two bytes takes, without reading it.
std::size_t UnicodeStringSize(std::string_view bytes, std::size_t at);

/// These append a text, in one byte for each character where that is enough. A text has at most
/// 65,535 UTF-16 units, 255 where the count has one byte (assert).
void AppendUnicodeString(std::string& bytes, std::string_view utf8);
void AppendShortUnicodeString(std::string& bytes, std::string_view utf8);
void AppendUnicodeStringNoCount(std::string& bytes, std::string_view utf8);

/// The flag of a text whose characters take two bytes.
inline constexpr std::uint8_t kWideCharacters = 0x01;

/// Whether some unit needs two bytes.
bool NeedsWideCharacters(std::u16string_view units);
/// Appends units alone, without count and flags.
void AppendCharacters(std::string& bytes, std::u16string_view units, bool wide);
/// Appends to `units` the characters that fill `bytes`.
void ReadCharacters(std::string_view bytes, bool wide, std::u16string& units);

} // namespace orrery::xls
