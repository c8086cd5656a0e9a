#pragma once

#include "book/look/page_setup.h"

#include <cstdint>

namespace orrery::look {

/// In pixels at 96 dpi.
struct PaperSize {
    double width = 0;
    double height = 0;
};

/// The paper of a number of ECMA-376 18.3.1.63 (paperSize), upright; Letter if it is not known.
PaperSize PaperOfNumber(std::int32_t number);

/// The paper as it lies: its own size if it has one, turned if it is landscape.
PaperSize PaperOf(const book::PageSetup& setup);

} // namespace orrery::look
