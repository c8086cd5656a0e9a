#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

/// [Content_Types].xml: the type of every part. [ECMA-376-2] 10.1.2.3
class ContentTypes {
public:
    /// Throws Error(DamagedWorkbook).
    static ContentTypes Parse(std::string_view xml);
    /// The parsed text with only the changed entries added or removed.
    std::string ToXml() const;

    /// The part's type, from its own entry, else from its extension; empty if neither gives one.
    std::string TypeOf(std::string_view partName) const;
    /// Adds an entry for the part unless its extension gives that type.
    void Set(std::string_view partName, std::string_view type);
    /// Removes the part's own entry.
    void Remove(std::string_view partName);
    bool Changed() const { return changed_; }

private:
    struct Override {
        std::string name; // as written
        std::string type;
    };

    std::string xml_;                             // what was parsed
    std::map<std::string, std::string> defaults_; // by extension in lower case
    std::map<std::string, Override> overrides_;   // by PartKey
    bool changed_ = false;
};

} // namespace orrery::xlsx
