#pragma once

#include "look/layout/layout.h"

#include <vector>

namespace orrery::look {

/// A part of the sheet, and where it stands on the paper.
struct PagePart {
    Box area; ///< of the sheet
    Point place;
};

/// The parts of a page: the corner of the repeated rows and columns, the rows, the columns, and the
/// area itself; those that are empty are left out.
std::vector<PagePart> PartsOf(const PageBox& page);

} // namespace orrery::look
