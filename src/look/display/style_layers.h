#pragma once

#include "book/look/cell_style.h"
#include "book/look/sheet_look.h"

#include <optional>

namespace orrery::look {

/// Lays what a conditional format sets over a style.
void LayOver(book::CellStyle& style, const book::PartialStyle& over);
void LayOver(book::Font& font, const book::PartialStyle& over);
/// Lays a style of a table under a cell's own: what the cell sets itself stays.
void LayUnder(book::CellStyle& style, const book::PartialStyle& under);

/// What the tables of a sheet give a cell; nothing if it is in none of them.
std::optional<book::PartialStyle> TableStyleAt(const book::SheetLook& look, book::CellAddress cell);

/// The colour that a fill has from afar: of a pattern the mean of its two colours; nothing if it
/// does not fill.
std::optional<book::Color> MeanColor(const book::Fill& fill);

} // namespace orrery::look
