#pragma once

#include "cli/json.h"
#include "look/display/sheet_picture.h"

#include <string>
#include <vector>

namespace orrery::cli {

/// A sheet that is laid out as an object: sizes and places are pixels at 96 dpi, colours "#rrggbb".
/// Warnings are a member if there are any.
JsonWriter LookJson(const look::SheetPicture& picture, const std::vector<std::string>& warnings);

} // namespace orrery::cli
