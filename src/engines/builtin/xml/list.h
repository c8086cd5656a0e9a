#pragma once

#include "engines/builtin/common/text_patch.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xml {

using builtin::TextPatch;

/// A part that is a flat list: one root element whose children have only attributes.
class List {
public:
    struct Item {
        std::string element; ///< local name
        std::size_t begin = 0;
        std::size_t end = 0;
        std::vector<std::pair<std::string, std::string>> attributes; ///< decoded

        /// The value; empty if the attribute is missing.
        std::string Attribute(std::string_view name) const;
    };

    /// `root` is the local name that the root must have. Throws Error(DamagedWorkbook).
    List(std::string_view xml, std::string_view partName, std::string_view root);

    const std::vector<Item>& Items() const { return items_; }
    /// An empty element with the root's prefix, as the part writes its items.
    std::string Element(std::string_view localName,
                        const std::vector<std::pair<std::string, std::string>>& attributes) const;
    /// Inserts elements after the last one.
    void Append(TextPatch& patch, const std::string& elements) const;

private:
    std::string rootName_; // with its prefix
    std::size_t startTagEnd_ = 0;
    std::size_t endTagBegin_ = 0;
    bool emptyRoot_ = false;
    std::vector<Item> items_;
};

} // namespace orrery::xml
