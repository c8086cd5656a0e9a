#pragma once

#include "look/text/line_break.h"

#include <string_view>
#include <vector>

namespace orrery::look {

/// Characters that are read in one direction.
struct DirectionalRun {
    TextSpan span;
    bool isRightToLeft = false;
    friend bool operator==(const DirectionalRun&, const DirectionalRun&) = default;
};

/// The runs of a line as they are seen from left to right. Follows the bidirectional algorithm
/// [Unicode UAX #9] without its explicit marks: letters have their direction, digits are read from
/// left to right, other characters take the direction around them.
std::vector<DirectionalRun> VisualRuns(std::string_view text, TextSpan line, bool isRightToLeft);

} // namespace orrery::look
