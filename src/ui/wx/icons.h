#pragma once

#include <wx/bmpbndl.h>
#include <wx/iconbndl.h>

namespace orrery::ui::wx {

/// The program's icon in all sizes.
wxIconBundle ApplicationIcons();

/// The logo as a picture of that many device-independent pixels.
wxBitmapBundle Logo(int size);

} // namespace orrery::ui::wx
