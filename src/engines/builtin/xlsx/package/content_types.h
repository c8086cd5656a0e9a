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
    /// The original text with only the changed entries added or removed.
    std::string ToXml() const;

    /// The part's type, by its own entry, else by its extension; empty when neither names it.
    std::string TypeOf(std::string_view partName) const;
    /// Gives the part an entry of its own where the extension does not say so.
    void Set(std::string_view partName, std::string_view type);
    /// Removes the part's own entry.
    void Remove(std::string_view partName);
    bool Changed() const { return changed_; }

private:
    struct Override {
        std::string name; // as spelled
        std::string type;
    };

    std::string xml_;                             // what was parsed
    std::map<std::string, std::string> defaults_; // by extension in small letters
    std::map<std::string, Override> overrides_;   // by PartKey
    bool changed_ = false;
};

} // namespace orrery::xlsx
