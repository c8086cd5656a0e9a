#include "ui/wx/pointing/mark_styles.h"

#include <wx/brush.h>
#include <wx/settings.h>

namespace orrery::ui::wx {

MarkStyle StyleOf(Field cellField)
{
    switch (cellField) {
    case Field::Weekday:
        return {wxColour(0x1B, 0x7A, 0x2F), wxPENSTYLE_SHORT_DASH};
    case Field::Month:
        return {wxColour(0x8A, 0x1F, 0xA8), wxPENSTYLE_LONG_DASH};
    case Field::Year:
        return {wxColour(0xA8, 0x55, 0x00), wxPENSTYLE_DOT_DASH};
    case Field::Holiday:
        return {wxColour(0x00, 0x7C, 0x89), wxPENSTYLE_DOT};
    default:
        return {wxColour(0x1A, 0x56, 0xC4), wxPENSTYLE_SOLID};
    }
}

wxColour WrongColor()
{
    return {0xD3, 0x1F, 0x1F};
}

wxColour WrongTextColor()
{
    return wxSystemSettings::GetAppearance().IsDark() ? wxColour(0xFF, 0x8A, 0x80)
                                                      : wxColour(0xB7, 0x1C, 0x1C);
}

void DrawSwatch(wxDC& dc, const wxRect& place, Field cellField, int lineWidth)
{
    const MarkStyle style = StyleOf(cellField);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(*wxWHITE_BRUSH);
    dc.DrawRectangle(place);
    constexpr int paler = 175; // percent
    dc.SetBrush(wxBrush(style.color.ChangeLightness(paler)));
    dc.SetPen(wxPen(style.color, lineWidth, style.dashes));
    dc.DrawRectangle(place);
}

} // namespace orrery::ui::wx
