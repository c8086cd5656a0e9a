#pragma once

#include "look/layout/layout.h"

#include <vector>

namespace orrery::look {

/// Whether the first of two lines at one edge is drawn: the heavier one, and of equals the darker.
bool IsHeavier(const book::BorderLine& line, const book::BorderLine& other);

/// Sets the border of each cell from its style and, at the edges that it shares, from those of its
/// neighbours. `cells` are row by row. The lines of merged ranges are those of the cells at their
/// edges.
void ResolveBorders(const book::SheetLook& sheet, std::vector<CellBox>& cells);

} // namespace orrery::look
