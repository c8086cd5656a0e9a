#pragma once

#include "book/look/drawing.h"
#include "engines/builtin/xml/tree.h"

#include <cstddef>
#include <memory>

namespace orrery::xlsx::drawing {

/// The outline that a shape of this size, in EMU, has of its own (ECMA-376 20.1.9.8), in at most
/// `steps` steps, which are taken off. nullptr if it has more.
std::shared_ptr<const book::Freeform> ReadCustomGeometry(const xml::Element& geometry, double width,
                                                         double height, std::size_t& steps);

} // namespace orrery::xlsx::drawing
