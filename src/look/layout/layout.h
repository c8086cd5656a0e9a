#pragma once

#include "book/look/sheet_look.h"
#include "look/values/cell_display.h"
#include "look/values/geometry.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrery::look {

/// A piece of text in one font.
struct TextPiece {
    std::string text;
    book::Font font;
    std::optional<book::Color> color;
    double x = 0; ///< of its left end, from the line's
    double width = 0;
};

struct TextLine {
    std::vector<TextPiece> pieces; ///< from left to right
    double x = 0;
    double baseline = 0;
    double width = 0;
    bool isRightToLeft = false;
};

/// A cell, or merged cells, as they are painted. Cells that show nothing have no box.
struct CellBox {
    book::CellRange range; ///< one cell, or a merged range
    Box box;
    CellDisplay display;
    /// Lines in sheet coordinates; turned by `rotation` around `pivot`.
    std::vector<TextLine> lines;
    Box clip;            ///< of the text: the box, or with the empty cells that it overflows into
    double rotation = 0; ///< degrees counterclockwise
    Point pivot;
    /// The lines around the cell, after neighbours were asked which of two lines at one edge is
    /// drawn.
    book::Border border;
    std::optional<Box> iconBox;
};

struct DrawingBox {
    const book::Drawing* drawing = nullptr; ///< of the look, which outlives the layout
    Box box;
};

/// A printed page: a part of the sheet, and where it stands on the paper.
struct PageBox {
    Box area;         ///< of the sheet
    Box titleRows;    ///< repeated above, empty if there are none
    Box titleColumns; ///< repeated at the left
    double scale = 1;
    Point place; ///< of the area's upper left corner, on the paper
    double paperWidth = 0;
    double paperHeight = 0;
    std::vector<TextLine> headerAndFooter;  ///< on the paper
    std::vector<DrawingBox> headerPictures; ///< on the paper, under the sheet
};

/// Where everything of a sheet stands. Edges of a right-to-left sheet fall from left to right in
/// the order that is seen: x is mirrored already.
struct Layout {
    book::CellRange range;       ///< the cells that are laid out
    std::vector<double> columns; ///< x edges: one more than the range has columns
    std::vector<double> rows;    ///< y edges
    double width = 0;
    double height = 0;
    bool showsGridLines = false;
    book::Color gridColor{0xD4, 0xD4, 0xD4};
    std::vector<CellBox> cells; ///< row by row
    std::vector<DrawingBox> drawings;
    std::vector<PageBox> pages;
    std::vector<book::LeftOut> leftOut; ///< the sheet's own first

    /// The cell at a point, or nothing outside of the range.
    std::optional<book::CellAddress> CellAt(Point point) const;
    /// The box of a cell of the range.
    Box BoxOf(book::CellRange wanted) const;
};

} // namespace orrery::look
