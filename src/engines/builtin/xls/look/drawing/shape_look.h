#pragma once

#include "book/look/drawing.h"
#include "engines/builtin/xls/look/chart/drawing_styles.h"
#include "engines/builtin/xls/look/drawing/art_tree.h"

namespace orrery::xls {

/// Reads rotation, flips, geometry, fill and line of a shape. `hasFrame` is false for what has
/// neither fill nor line unless its properties say so: pictures, groups.
void ReadShapeLook(const ArtShape& shape, const DrawingStyles& styles, bool hasFrame,
                   book::Drawing& drawing);

/// Degrees clockwise [0:360[.
double RotationOf(const ShapeProperties& properties);
/// Whether something lies on its side after the turn: such shapes are anchored as they lie then.
bool LiesOnItsSide(double rotation);

/// What is shown of a picture.
book::ShareBox CropOf(const ShapeProperties& properties);

} // namespace orrery::xls
