#pragma once

#include "util/profile_text.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::util {

/// The content of a settings file in UTF-8 or the code page. Empty if the file is missing or cannot
/// be read.
class ProfileFile {
public:
    explicit ProfileFile(const std::filesystem::path& file);
    ProfileFile(const ProfileFile&) = delete; // the index points into the text
    ProfileFile& operator=(const ProfileFile&) = delete;

    /// Whether the file exists but could not be read.
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

/// Sets the key and replaces the whole file. Keeps its encoding, or uses UTF-8 if that encoding
/// cannot hold the value. False if the file cannot be read or written; it then stays unchanged.
bool WriteProfileFile(const std::filesystem::path& file, std::string_view section,
                      std::string_view key, std::string_view value);

} // namespace orrery::util
