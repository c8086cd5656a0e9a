#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orrery::util {

/// Removes blanks (spaces and tabs) at both ends.
std::string_view Trim(std::string_view text);
/// Changes a to z only; all other bytes stay unchanged.
std::string ToUpperAscii(std::string_view text);
std::string ToLowerAscii(std::string_view text);
bool EqualIgnoringCase(std::string_view left, std::string_view right);
/// The pieces between separators; an empty text gives one empty piece.
std::vector<std::string> Split(std::string_view text, char separator);
std::string Join(const std::vector<std::string>& pieces, std::string_view separator);

/// The lines of a text without their ends (CR LF, LF or CR). The last line needs no end.
std::vector<std::string_view> SplitLines(std::string_view text);
/// The lines of a text in one, with a space between them.
std::string JoinLines(std::string_view text);

/// What a UTF-8 file may begin with.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsValidUtf8(std::string_view text);
/// Converts the bytes of a text file to UTF-8: valid UTF-8 stays unchanged except for a byte-order
/// mark, which is dropped; anything else is decoded from the code page.
std::string DecodeTextFile(std::string_view bytes);
/// Encodes text for a file: in the code page if `kWritesCodePage` and it has every character, else
/// as UTF-8.
std::string EncodeTextFile(std::string_view utf8);

} // namespace orrery::util
