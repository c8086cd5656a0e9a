#include "util/code_page.h"
#include "util/error.h"
#include "util/file_replace.h"
#include "util/profile.h"
#include "util/profile_text.h"
#include "util/text.h"

#include <utility>

namespace orrery::util {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// The changed text in the encoding that the file has, or UTF-8 where that cannot hold it.
std::string EncodeLike(std::string_view oldBytes, const std::string& text)
{
    if (!IsValidUtf8(oldBytes)) {
        if (auto bytes = EncodeCodePage(text))
            return *std::move(bytes);
    }
    return oldBytes.starts_with(kByteOrderMark) ? std::string(kByteOrderMark) + text : text;
}

} // namespace

struct Profile::Content {
    explicit Content(std::string decoded) : text(std::move(decoded)), index(text) {}

    std::string text;
    ProfileIndex index;
};

Profile::Profile(std::filesystem::path file) : file_(std::move(file)) {}

std::string Profile::Read(std::string_view section, std::string_view key,
                          std::string_view fallback) const
{
    if (!content_)
        content_ = std::make_shared<Content>(DecodeTextFile(ReadFile(file_).value_or("")));
    return content_->index.FindValue(section, key).value_or(std::string(fallback));
}

bool Profile::Write(std::string_view section, std::string_view key, std::string_view value) const
{
    if (value.find_first_of("\r\n") != std::string_view::npos)
        return false;
    content_.reset();
    const std::string oldBytes = ReadFile(file_).value_or(std::string());
    const std::string text = WithProfileValue(DecodeTextFile(oldBytes), section, key, value);
    try {
        ReplaceFile(file_, EncodeLike(oldBytes, text));
        return true;
    }
    catch (const Error&) {
        return false;
    }
}

} // namespace orrery::util
