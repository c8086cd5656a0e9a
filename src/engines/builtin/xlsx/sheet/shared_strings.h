#pragma once

#include "engines/builtin/xlsx/package/package.h"
#include "engines/builtin/xml/scanner.h"

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orrery::xlsx {

/// The workbook's shared strings. New strings are added after the old ones; a plain string that is
/// already there is used again.
class SharedStrings {
public:
    /// `xml` is the text of the part; null if the workbook has none yet.
    /// `mainNamespace` is the URI of a new part's namespace. Throws Error(DamagedWorkbook).
    SharedStrings(PartText xml, std::string partName, std::string mainNamespace);

    /// The index of a plain string, which is added if it is new. `text` is UTF-8; control
    /// characters and texts that look like their escapes ("_x0041_") are escaped as Excel does.
    /// Throws Error(TextTooLong) beyond 32,767 UTF-16 units.
    std::size_t IndexOf(std::string_view text);
    /// How many the part held when it was read.
    std::size_t Count() const { return count_; }
    bool Changed() const { return !added_.empty(); }
    /// The part with the new strings; `references` is how many more cells than before refer to it
    /// (may be negative).
    std::string ToXml(long references) const;

private:
    void ReadItems();
    void ReadItem(xml::Scanner& scanner);
    std::string NewItems(std::string_view prefix) const;

    PartText xml_;
    std::string partName_;
    std::string mainNamespace_;
    std::size_t count_ = 0;                                     // strings in the part as read
    std::size_t itemsEnd_ = 0;                                  // offset after the last of them
    std::unordered_map<std::string_view, std::size_t> indexes_; // of plain strings only, escaped
    std::deque<std::string> texts_; // those in `indexes_`; a deque, so that they do not move
    std::vector<std::string_view> added_;
};

} // namespace orrery::xlsx
