#pragma once

#include "look/layout/layout.h"

#include <memory>
#include <string>
#include <utility>

namespace orrery::look {

/// Columns of 50 pixels, rows of 20.
inline Layout MakeLayout(std::int32_t rows, std::int32_t columns)
{
    Layout layout;
    layout.range = {{1, 1}, {rows, columns}};
    for (std::int32_t i = 0; i <= columns; ++i)
        layout.columns.push_back(50 * i);
    for (std::int32_t i = 0; i <= rows; ++i)
        layout.rows.push_back(20 * i);
    layout.width = layout.columns.back();
    layout.height = layout.rows.back();
    return layout;
}

/// A cell of such a layout, or merged ones.
inline CellBox MakeCell(book::CellRange range)
{
    CellBox cell;
    cell.range = range;
    cell.box = {50.0 * (range.first.column - 1), 20.0 * (range.first.row - 1),
                50.0 * (range.last.column - range.first.column + 1),
                20.0 * (range.last.row - range.first.row + 1)};
    cell.clip = cell.box;
    return cell;
}
inline CellBox MakeCell(std::int32_t row, std::int32_t column)
{
    return MakeCell({{row, column}, {row, column}});
}

inline book::Fill SolidFill(book::Color color)
{
    return {book::FillPattern::Solid, color, {}, {}};
}

/// One line of one piece, in 12 points, which are 16 pixels.
inline TextLine MakeLine(std::string text, Point at, double width)
{
    TextPiece piece;
    piece.text = std::move(text);
    piece.font.size = 12;
    piece.width = width;
    TextLine line;
    line.pieces.push_back(std::move(piece));
    line.x = at.x;
    line.baseline = at.y;
    line.width = width;
    return line;
}

/// The beginning of a picture four pixels high.
inline std::shared_ptr<const std::string> Gif(char width = 4)
{
    return std::make_shared<const std::string>(
        std::string("GIF89a") + width + std::string(1, '\0') + "\x04" + std::string(4, '\0'));
}

} // namespace orrery::look
