#pragma once

#include "book/look/drawing.h"
#include "engines/builtin/xls/look/drawing/shape_properties.h"

#include <cstddef>
#include <memory>

namespace orrery::xls {

/// The outline that a shape has of its own ([MS-ODRAW] 2.3.6), in at most `steps` steps, which are
/// taken off. nullptr if it has none, more steps, or arcs of ellipses, which are not understood.
std::shared_ptr<const book::Freeform> ReadFreeform(const ShapeProperties& properties,
                                                   std::size_t& steps);

} // namespace orrery::xls
