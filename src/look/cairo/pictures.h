#pragma once

#include "look/cairo/owned.h"

#include <map>
#include <string>
#include <string_view>

namespace orrery::look {

/// The pictures of a document. Equal ones are decoded, and are in the file, once.
class CairoPictures {
public:
    /// The picture as a surface of pixels; nothing if it cannot be drawn. JPEG pictures keep their
    /// bytes for documents. Valid as long as the object.
    cairo_surface_t* Find(std::string_view bytes);

private:
    std::map<std::string, CairoOwned<cairo_surface_t>, std::less<>> surfaces_;
};

} // namespace orrery::look
