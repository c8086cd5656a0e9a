#pragma once

#include "look/display/sheet_picture.h"
#include "ui/wx/look/picture_cache.h"

#include <wx/bitmap.h>
#include <wx/graphics.h>
#include <wx/window.h>

#include <string>

namespace orrery::ui::wx {

/// The colour around papers: that of windows, a little darker.
wxColour DeskColour();

/// Writes a sentence in the middle of a window, in lines that fit it within a margin.
void PaintSentence(wxDC& dc, const wxWindow& window, const std::string& sentence, int margin);

/// The papers of a sheet, one below the other, in pixels at 96 dpi.
wxSize PapersSize(const look::Layout& layout);

/// Paints the papers of a sheet with their upper left corner at the origin: white with a fine edge,
/// whatever the system's colours are. `scale`: pixels of the target for one at 96 dpi.
void PaintPapers(look::SheetPicture& picture, wxGraphicsContext& target, PictureCache& pictures,
                 double scale);

/// The same as a bitmap; an example is paler than a calendar's page.
wxBitmap PapersBitmap(look::SheetPicture& picture, PictureCache& pictures, double scale,
                      bool isExample);

} // namespace orrery::ui::wx
