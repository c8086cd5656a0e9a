#pragma once

#include "book/look/cell.h"
#include "engines/builtin/xlsx/look/style/color_scheme.h"

#include <string>
#include <vector>

namespace orrery::xlsx {

/// The text of a cell.
struct RichText {
    std::string text;
    std::vector<book::TextRun> runs; ///< empty if all of it has the cell's font
};

/// Reads a shared or inline text (<si>, <is>) to its end. Runs begin with the font of the cell;
/// without one, they are not read. What goes beyond the longest text of a cell is cut off.
RichText ReadRichText(xml::Scanner& scanner, const ColorScheme& colors, const book::Font* font);

} // namespace orrery::xlsx
