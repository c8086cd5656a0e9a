#pragma once

#include <wx/bmpbndl.h>
#include <wx/iconbndl.h>

namespace orrery::ui::wx {

/// The program's icon in all sizes.
wxIconBundle ApplicationIcons();

/// The logo in `size` device-independent pixels.
wxBitmapBundle Logo(int size);

} // namespace orrery::ui::wx
