#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace orrery::util {

/// A settings file of sections and key=value lines, as the platform's profile functions see it:
/// section and key without regard to case, first match wins, blanks around a value trimmed, one
/// pair of quotes around it removed, at most 10,240 characters. Where the platform has no profile
/// functions, an object reads the file once and sees later changes only through its own `Write`.
class Profile {
public:
    explicit Profile(std::filesystem::path file);

    /// The key's value; `fallback` when the file, the section or the key is missing. A key that is
    /// present with an empty value gives the empty text.
    std::string Read(std::string_view section, std::string_view key,
                     std::string_view fallback) const;
    /// Sets the key and keeps every other line, comment and order. False when the value has a line
    /// break or the file cannot be read or written; it then stays as it was.
    bool Write(std::string_view section, std::string_view key, std::string_view value) const;

private:
    std::filesystem::path file_;
    struct Content;
    mutable std::shared_ptr<const Content> content_; ///< the file's, once it was read
};

} // namespace orrery::util
