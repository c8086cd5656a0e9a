#pragma once

#include <cstddef>
#include <span>

namespace orrery::ui::wx {

/// The program's logo in one size, an embedded PNG file.
struct Picture {
    int size;                   ///< width and height in pixels
    const unsigned char* bytes; ///< the file
    std::size_t length;         ///< in bytes
};

/// The logo in 16, 24, 32, 48, 64, 128 and 256 pixels, smallest first.
std::span<const Picture> IconPngs();

} // namespace orrery::ui::wx
