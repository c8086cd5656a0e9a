#pragma once

#include "look/cairo/owned.h"
#include "look/picture/picture_info.h"

#include <string_view>

namespace orrery::look {

/// The pixels of a picture whose headers `info` tells; null if the system does not know such
/// pictures, or if this one is damaged. Vectors and TIFF are not drawn.
CairoOwned<cairo_surface_t> DecodePicture(std::string_view bytes, const PictureInfo& info);

} // namespace orrery::look
