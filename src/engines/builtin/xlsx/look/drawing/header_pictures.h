#pragma once

#include "book/look/header_picture.h"
#include "engines/builtin/xlsx/look/drawing/pictures.h"
#include "engines/builtin/xml/tree.h"

#include <optional>
#include <string>

namespace orrery::xlsx::drawing {

/// Whether a shape of VML is a picture of a header or footer.
bool IsHeaderPicture(const xml::Element& shape);

/// Reads such a shape of a part; its id names the place. Nothing if it cannot be shown, which is
/// counted where the picture is the reason.
std::optional<book::HeaderPicture> ReadHeaderPicture(const xml::Element& shape,
                                                     const std::string& part, Pictures& pictures);

} // namespace orrery::xlsx::drawing
