#pragma once

#include "util/profile_text.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::util {

/// A settings file as it was read: UTF-8 or in the code page. A file that is missing or cannot be
/// read is empty.
class ProfileFile {
public:
    explicit ProfileFile(const std::filesystem::path& file);
    ProfileFile(const ProfileFile&) = delete; // the index points into the text
    ProfileFile& operator=(const ProfileFile&) = delete;

    /// Whether there is a file that could not be read.
    bool IsUnreadable() const { return isUnreadable_; }
    const std::string& Bytes() const { return bytes_; }
    std::optional<std::string> FindValue(std::string_view section, std::string_view key) const
    {
        return index_.FindValue(section, key);
    }

private:
    ProfileFile(std::optional<std::string> bytes, bool isThere);

    bool isUnreadable_ = false;
    std::string bytes_;
    std::string text_;
    ProfileIndex index_;
};

/// Replaces the whole file by itself with the key set, in the encoding that it has, or in UTF-8
/// where that cannot hold the value. False when the file cannot be read or written; it then stays.
bool WriteProfileFile(const std::filesystem::path& file, std::string_view section,
                      std::string_view key, std::string_view value);

} // namespace orrery::util
