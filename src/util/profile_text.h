#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::util {

// The text of a settings file. A line is a section header "[name]", "key=value", or neither: a
// comment (";" first), a blank line, anything else. Blanks around a line, a key and a value do not
// count. The case of sections and keys is ignored, the first match wins, and only the first section
// of a name is searched.
//     found:     "[Environment]" / " showtips = 'N' " gives N
//     not found: "[Environment" (no header), "; ShowTips=N" (a comment)

/// The longest value that is read, in characters.
inline constexpr std::size_t kMaxProfileValue = 10240;

/// Knows where all sections and keys are, after one pass over the text, which must outlive it.
class ProfileIndex {
public:
    explicit ProfileIndex(std::string_view text);

    /// The key's value without one pair of quotes around it, or nothing when the key is missing.
    std::optional<std::string> FindValue(std::string_view section, std::string_view key) const;
    /// Offset of the "=" of the key's line.
    std::optional<std::size_t> FindEquals(std::string_view section, std::string_view key) const;
    /// Offset of the end of the section's last line that is not blank.
    std::optional<std::size_t> EndOfSection(std::string_view section) const;

private:
    struct Section {
        std::size_t end = 0;
        std::map<std::string, std::size_t, std::less<>> keys; // upper case; offset of the "="
    };
    std::string_view text_;
    std::map<std::string, Section, std::less<>> sections_; // upper case
};

/// The key's value without one pair of quotes around it, or nothing when the key is missing.
std::optional<std::string> FindProfileValue(std::string_view text, std::string_view section,
                                            std::string_view key);

/// The text with the key set; all other lines stay unchanged. A missing key is added after the last
/// line of its section, a missing section at the end.
std::string WithProfileValue(std::string_view text, std::string_view section, std::string_view key,
                             std::string_view value);

} // namespace orrery::util
