#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace orrery::util {

/// A settings file of sections and key=value lines, read as the Windows profile functions do: case
/// of section and key is ignored, the first match wins, blanks and one pair of quotes around a
/// value are removed, a value has at most 10,240 characters. On other systems an object reads the
/// file once and sees later changes only through its own `Write`.
class Profile {
public:
    explicit Profile(std::filesystem::path file);

    /// The key's value; `fallback` if the file, the section or the key is missing. An empty value
    /// is returned as the empty text.
    std::string Read(std::string_view section, std::string_view key,
                     std::string_view fallback) const;
    /// Sets the key and keeps all other lines, comments and their order. Creates the file's folder
    /// if it is missing. False if the value has a line break or the file cannot be read or written;
    /// it then stays unchanged.
    bool Write(std::string_view section, std::string_view key, std::string_view value) const;

private:
    std::filesystem::path file_;
    struct Content;
    mutable std::shared_ptr<const Content> content_; ///< null until the file is read
};

} // namespace orrery::util
