#pragma once

#include "look/picture/picture_info.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::look {

/// "png", as `book::Drawing::pictureType`.
std::string_view PictureTypeName(PictureType type);

inline constexpr double kMostPixels = 100e6;
inline constexpr std::size_t kLargestPicture = std::size_t{64} << 20; ///< bytes

/// Reads the headers; nothing if it is none of these pictures, or damaged there.
std::optional<PictureInfo> ReadPictureInfo(std::string_view bytes);

/// The same for PNG, JPEG, GIF and BMP alone.
std::optional<PictureInfo> ReadRasterInfo(std::string_view bytes);

/// Why a picture is not shown anywhere, as half a sentence ("it has more than 100,000,000 pixels");
/// nothing if a canvas may be asked to show it.
std::optional<std::string> ReasonNotShown(std::string_view bytes);

} // namespace orrery::look
