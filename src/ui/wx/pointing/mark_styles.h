#pragma once

#include "ui/pointing/tab_fields.h"

#include <wx/colour.h>
#include <wx/dc.h>
#include <wx/gdicmn.h>
#include <wx/pen.h>

namespace orrery::ui::wx {

/// How the cells of a field are outlined: by a colour, and by a pattern for who does not see it.
struct MarkStyle {
    wxColour color; ///< readable on white
    wxPenStyle dashes = wxPENSTYLE_SOLID;
};

MarkStyle StyleOf(Field cellField);
/// The colour of what OK would refuse.
wxColour WrongColor();
/// The same for text on the face of windows.
wxColour WrongTextColor();

/// Draws a small outlined cell, white in all themes.
void DrawSwatch(wxDC& dc, const wxRect& place, Field cellField, int lineWidth);

} // namespace orrery::ui::wx
