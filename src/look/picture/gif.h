#pragma once

#include "look/picture/picture_info.h"

#include <string>
#include <string_view>

namespace orrery::look {

/// A GIF with its first image alone: decoders would decode thousands of images, too, each as large
/// as it says. Nothing if that image is larger than the picture.
std::string FirstImageOfGif(std::string_view bytes, const PictureInfo& info);

} // namespace orrery::look
