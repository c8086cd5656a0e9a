#pragma once

#include "book/look/color.h"

namespace orrery::builtin {

/// The colour made lighter or darker. `tint` is -1 for black, 0 for the colour itself, 1 for white;
/// beyond these it counts as the nearer of them. ECMA-376 18.8.19
book::Color ApplyTint(book::Color color, double tint);

} // namespace orrery::builtin
