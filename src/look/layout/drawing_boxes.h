#pragma once

#include "look/layout/axis.h"
#include "look/layout/layout.h"

#include <vector>

namespace orrery::look {

/// Where an anchor is, from the sheet's first cell. Offsets end with their column or row, as they
/// do in Excel where a column became narrower; hidden ones have no room. Sizes are not negative.
Box AnchorBox(const book::Anchor& anchor, const Axis& columns, const Axis& rows);

/// The box of a drawing on the sheet before it is turned.
Box UnturnedBox(const book::Drawing& drawing, const Axis& columns, const Axis& rows);

} // namespace orrery::look
