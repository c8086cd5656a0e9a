#pragma once

#include "book/look/cell_style.h"

#include <array>
#include <cstdint>

namespace orrery::look {

/// The pixels of a fill pattern: eight rows, the left pixel in the highest bit. Set ones have the
/// colour of the foreground.
std::array<std::uint8_t, 8> PatternRows(book::FillPattern pattern);

} // namespace orrery::look
