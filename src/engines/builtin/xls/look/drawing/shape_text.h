#pragma once

#include "book/look/drawing.h"
#include "engines/builtin/xls/look/chart/drawing_styles.h"
#include "engines/builtin/xls/look/drawing/art_tree.h"
#include "engines/builtin/xls/look/drawing/sheet_art.h"

#include <cstddef>
#include <optional>

namespace orrery::xls {

/// How many more pieces of text the shapes of a sheet may have.
struct TextBudget {
    std::size_t pieces = 100000; ///< paragraphs and runs
};

/// The text in a shape; nothing if it is empty. What exceeds the budget is cut off.
std::optional<book::TextBody> TextIn(const ArtShape& shape, const ObjectText& text,
                                     const DrawingStyles& styles, TextBudget& budget);

/// The text of WordArt, in the colour that fills its letters; nothing if it is empty.
std::optional<book::TextBody> ArtTextOf(const ArtShape& shape, const DrawingStyles& styles,
                                        TextBudget& budget);

} // namespace orrery::xls
