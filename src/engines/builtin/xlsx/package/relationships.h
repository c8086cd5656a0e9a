#pragma once

#include "engines/builtin/xlsx/package/part_names.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

/// One relationship of a part. [ECMA-376-2] 9.3
struct Relationship {
    std::string Id;
    std::string Type;   ///< the full URI, transitional or strict
    std::string Target; ///< as written
    bool External = false;

    /// Whether `Type` ends in "/" and the name ("worksheet", "image"), in whichever family of URIs.
    bool Is(std::string_view typeName) const;
    friend bool operator==(const Relationship&, const Relationship&) = default;
};

/// The relationships of one part, in file order.
class Relationships {
public:
    /// Parses a .rels part. Throws Error(DamagedWorkbook).
    static Relationships Parse(std::string_view xml, std::string_view partName);
    /// The parsed text with only the changed entries replaced or removed, and new ones at the end.
    std::string ToXml() const;

    const std::vector<Relationship>& All() const { return all_; }
    /// The same, to be changed.
    std::vector<Relationship>& Change();
    /// An id that occurs twice in the parsed text, or nullptr.
    const std::string* DuplicateId() const { return duplicateId_ ? &*duplicateId_ : nullptr; }
    const Relationship* FindById(std::string_view id) const;
    /// The first of that type, or nullptr.
    const Relationship* FindByType(std::string_view typeName) const;
    /// Adds one with a free id ("rId7") and returns the id.
    std::string Add(std::string type, std::string target);
    /// Adds several, whatever their ids are, with free ones, which it returns in the same order.
    std::vector<std::string> AddAll(std::vector<Relationship> added);
    void Remove(std::string_view id);

private:
    std::string xml_; // what was parsed; empty for a new part
    bool isChanged_ = true;
    std::optional<std::string> duplicateId_;
    std::vector<Relationship> all_;
};

} // namespace orrery::xlsx
