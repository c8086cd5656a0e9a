#include "util/profile_file.h"

#include "util/code_page.h"
#include "util/error.h"
#include "util/file_read.h"
#include "util/file_replace.h"
#include "util/text.h"

#include <utility>

namespace orrery::util {

namespace {

/// Encodes the changed text as the file was, or as UTF-8 if that encoding lacks a character.
std::string EncodeLike(std::string_view oldBytes, const std::string& text)
{
    if (!IsValidUtf8(oldBytes)) {
        if (auto bytes = EncodeCodePage(text))
            return *std::move(bytes);
    }
    return oldBytes.starts_with(kByteOrderMark) ? std::string(kByteOrderMark) + text : text;
}

} // namespace

ProfileFile::ProfileFile(const std::filesystem::path& file)
    : ProfileFile(ReadTextFile(file), !IsMissing(file))
{
}

ProfileFile::ProfileFile(std::optional<std::string> bytes, bool isThere)
    : isUnreadable_(isThere && !bytes), bytes_(std::move(bytes).value_or("")),
      text_(DecodeTextFile(bytes_)), index_(text_)
{
}

bool WriteProfileFile(const std::filesystem::path& file, std::string_view section,
                      std::string_view key, std::string_view value)
{
    const auto read = ReadTextFile(file);
    if (!read && !IsMissing(file))
        return false; // the other settings in it would be lost
    const std::string oldBytes = read.value_or("");
    const std::string text = WithProfileValue(DecodeTextFile(oldBytes), section, key, value);
    try {
        ReplaceFile(file, EncodeLike(oldBytes, text));
        return true;
    }
    catch (const Error&) {
        return false;
    }
}

} // namespace orrery::util
