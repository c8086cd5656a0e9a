#pragma once

#include "engines/builtin/xlsx/formula/cell_address.h"
#include "engines/builtin/xml/reading.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

/// The start tag of an element as written in the text. All offsets are in that text.
struct StartTag {
    std::string_view name;   ///< with its prefix
    std::string_view prefix; ///< with its ":"; empty if there is none
    std::size_t begin = 0;
    std::size_t nameEnd = 0;
    std::size_t end = 0;  ///< after the ">"
    bool isEmpty = false; ///< ends in "/>"; there is no end tag
    std::vector<xml::ScannedAttribute> attributes;

    std::optional<xml::ScannedAttribute> Attribute(std::string_view attributeName) const;
    /// Its text without the ">" or "/>" and without the given attributes.
    std::string Without(std::string_view xml, const std::vector<std::string_view>& dropped) const;
};

/// A formula of a cell as written in the text.
struct FormulaElement {
    StartTag tag;
    std::size_t end = 0; ///< after the element
    std::string text;    ///< decoded
};

/// A cell as written in the text.
struct CellElement {
    StartTag tag;
    std::size_t end = 0; ///< after the element
    std::optional<FormulaElement> formula;
    std::vector<xml::TextRange> values; ///< the elements that hold its value: v, is
};

/// The start tag at the offset. The text is that of an indexed sheet.
StartTag ReadStartTag(std::string_view xml, std::size_t begin);
/// The cell at the offset. The text is that of an indexed sheet.
CellElement ReadCellElement(std::string_view xml, std::size_t begin);

} // namespace orrery::xlsx
