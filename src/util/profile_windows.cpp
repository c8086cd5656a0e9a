#include "util/code_page.h"
#include "util/paths.h"
#include "util/profile.h"
#include "util/profile_file.h"
#include "util/text.h"

#include <algorithm>
#include <utility>
#include <windows.h>

namespace orrery::util {

namespace {

// Marks the end of a text file, so no value in a settings file contains it.
constexpr const char* kMissing = "\x1A";

/// Whether the system's functions read the text correctly: they decode it with the code page, so
/// only ASCII and code page text is safe, not UTF-8.
bool IsCodePageText(const std::string& bytes)
{
    const bool ascii = std::all_of(bytes.begin(), bytes.end(),
                                   [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    return ascii || (!IsValidUtf8(bytes) && EncodeCodePage(DecodeCodePage(bytes)) == bytes);
}

/// The file's path for the system's functions, or nothing if they cannot take it.
std::optional<std::string> CodePagePath(const std::filesystem::path& file)
{
    // The functions would look for a path without a folder in the system's folder.
    const std::string path = AbsolutePath(FromPath(file));
    return path.size() < MAX_PATH ? EncodeCodePage(path) : std::nullopt;
}

} // namespace

/// The file's content, and its path for the system's functions.
struct Profile::Content : ProfileFile {
    explicit Content(const std::filesystem::path& file)
        : ProfileFile(file),
          systemPath(!IsUnreadable() && IsCodePageText(Bytes()) ? CodePagePath(file) : std::nullopt)
    {
    }

    std::optional<std::string> systemPath; ///< absent: they cannot be used
};

Profile::Profile(std::filesystem::path file) : file_(std::move(file)) {}

std::string Profile::Read(std::string_view section, std::string_view key,
                          std::string_view fallback) const
{
    if (!content_)
        content_ = std::make_shared<Content>(file_);
    const auto ansiSection = EncodeCodePage(section);
    const auto ansiKey = EncodeCodePage(key);
    if (!content_->systemPath || !ansiSection || !ansiKey)
        return content_->FindValue(section, key).value_or(std::string(fallback));
    std::string value(kMaxProfileValue, '\0');
    const DWORD length =
        GetPrivateProfileStringA(ansiSection->c_str(), ansiKey->c_str(), kMissing, value.data(),
                                 static_cast<DWORD>(value.size()), content_->systemPath->c_str());
    value.resize(length);
    return value == kMissing ? std::string(fallback) : DecodeCodePage(value);
}

bool Profile::Write(std::string_view section, std::string_view key, std::string_view value) const
{
    if (value.find_first_of("\r\n") != std::string_view::npos)
        return false;
    EnsureFolder(ParentFolder(FromPath(file_)));
    const auto systemPath = Content(file_).systemPath;
    const auto ansiSection = EncodeCodePage(section);
    const auto ansiKey = EncodeCodePage(key);
    const auto ansiValue = EncodeCodePage(value);
    content_.reset();
    if (!systemPath || !ansiSection || !ansiKey || !ansiValue)
        return WriteProfileFile(file_, section, key, value);
    return WritePrivateProfileStringA(ansiSection->c_str(), ansiKey->c_str(), ansiValue->c_str(),
                                      systemPath->c_str()) != FALSE;
}

} // namespace orrery::util
