#pragma once

#include "ui/pointing/sheet_guide.h"

#include <wx/graphics.h>
#include <wx/window.h>

namespace orrery::ui::wx {

/// Where a part of a sheet stands in a window.
struct SheetPlace {
    wxPoint corner;   ///< of what is shown, below and beside the headings
    wxPoint scrolled; ///< pixels that are scrolled away
    double scale = 1; ///< pixels for one at 96 dpi

    double X(double x) const { return corner.x - scrolled.x + x * scale; }
    double Y(double y) const { return corner.y - scrolled.y + y * scale; }
    wxRect2DDouble Of(const look::Box& box) const
    {
        return {X(box.x), Y(box.y), box.width * scale, box.height * scale};
    }
};

/// Draws the outlines of what the fields mean over the sheet, with the sample month in them.
void DrawMarks(wxGraphicsContext& target, SheetGuide& guide, const SheetPlace& place,
               const wxWindow& window);

/// Draws the letters of columns and the numbers of rows along the edges of the window. The ones of
/// the cursor's cell stand out.
void DrawHeadings(wxGraphicsContext& target, SheetGuide& guide, const SheetPlace& place,
                  const wxWindow& window);

} // namespace orrery::ui::wx
