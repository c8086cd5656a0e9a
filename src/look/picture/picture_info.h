#pragma once

#include <cstdint>

namespace orrery::look {

enum class PictureType : std::uint8_t { Png, Jpeg, Gif, Bmp, Tiff, Emf, Wmf, Svg };

/// What the beginning of a picture's file tells.
struct PictureInfo {
    PictureType type = PictureType::Png;
    double width = 0;       ///< pixels; of vectors those at 96 dpi; 0: not told
    double height = 0;      ///< as the width
    double resolutionX = 0; ///< pixels for an inch; 0: not told
    double resolutionY = 0;
    /// A JPEG in grey or YCbCr with 8 bits, baseline or progressive, which every reader knows.
    bool isCommonJpeg = false;
};

} // namespace orrery::look
