#pragma once

#include "look/shape/shape_draft.h"

namespace orrery::look {

/// A cloud that fills the box, as a part of its own.
void DrawCloud(ShapeDraft& draft);

} // namespace orrery::look
