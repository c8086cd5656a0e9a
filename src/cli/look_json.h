#pragma once

#include "cli/json.h"
#include "look/display/sheet_picture.h"

namespace orrery::cli {

/// A sheet that is laid out as an object: sizes and places are pixels at 96 dpi, colours "#rrggbb".
JsonWriter LookJson(const look::SheetPicture& picture);

} // namespace orrery::cli
