#pragma once

#include "look/picture/picture.h"

#include <wx/image.h>

#include <string_view>

namespace orrery::ui::wx {

/// The pixels of a picture whose headers `info` tells; an image that is not `IsOk` if the system
/// does not know such pictures, or if this one is damaged. EMF and WMF are known on Windows alone.
wxImage DecodePicture(std::string_view bytes, const look::PictureInfo& info);

} // namespace orrery::ui::wx
