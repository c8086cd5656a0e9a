#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orrery::util {

/// Without the blanks (spaces and tabs) at both ends.
std::string_view Trim(std::string_view text);
/// A to Z only; other characters stay as they are, as bytes.
std::string ToUpperAscii(std::string_view text);
bool EqualIgnoringCase(std::string_view left, std::string_view right);
/// The pieces between separators; an empty text gives one empty piece.
std::vector<std::string> Split(std::string_view text, char separator);
std::string Join(const std::vector<std::string>& pieces, std::string_view separator);

/// The lines of a text without their ends (CR LF, LF or CR); a last line without an end counts.
std::vector<std::string_view> SplitLines(std::string_view text);

/// What a UTF-8 file may begin with.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsValidUtf8(std::string_view text);
/// Bytes of a text file as UTF-8: as they are when valid UTF-8 (a byte-order mark is dropped),
/// else decoded from the system's single-byte code page.
std::string DecodeTextFile(std::string_view bytes);
/// Text for a file in the system's code page when it can hold every character, else as UTF-8.
std::string EncodeTextFile(std::string_view utf8);

} // namespace orrery::util
