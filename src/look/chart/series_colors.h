#pragma once

#include "book/look/chart.h"

#include <cstddef>

namespace orrery::look {

/// The colour of the series or point with that number from 0 among those without one of their own:
/// the accents in their order, then darker and brighter ones.
book::Color AutomaticColor(const book::Chart& chart, std::size_t number);

/// Darker (below 0) or brighter by a share of [-1:1].
book::Color ChangeBrightness(book::Color color, double change);

} // namespace orrery::look
