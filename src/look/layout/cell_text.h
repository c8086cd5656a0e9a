#pragma once

#include "look/layout/text_needs.h"

namespace orrery::look {

/// Places the text and the icon of a cell: its lines, clip, rotation, pivot and icon. `cell` has
/// its box and what it shows.
void PlaceCellText(CellBox& cell, const TextRoom& room);

} // namespace orrery::look
