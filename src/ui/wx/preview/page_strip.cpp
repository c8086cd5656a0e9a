#include "ui/wx/preview/page_strip.h"

#include "ui/wx/native/text.h"
#include "ui/wx/preview/page_bitmap.h"

#include <wx/dcbuffer.h>
#include <wx/settings.h>

#include <algorithm>
#include <utility>

namespace orrery::ui::wx {
namespace {

// In pixels at 96 dpi.
constexpr int kSmallWidth = 84;
constexpr int kSmallHeight = 84;
constexpr int kMargin = 8;

} // namespace

PageStrip::PageStrip(wxWindow& parent, Preview& preview, PictureCache& pictures,
                     std::function<void(std::size_t)> select)
    : wxScrolledCanvas(&parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                       wxVSCROLL | wxBORDER_NONE),
      preview_(preview), pictures_(pictures), select_(std::move(select))
{
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    const int bar = std::max(wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, this), 0);
    SetMinSize(wxSize(FromDIP(kSmallWidth + 2 * kMargin) + bar, -1));
    Bind(wxEVT_PAINT, &PageStrip::OnPaint, this);
    Bind(wxEVT_LEFT_DOWN, &PageStrip::OnClick, this);
    Bind(wxEVT_LEFT_DCLICK, &PageStrip::OnClick,
         this); // a quick second one, perhaps on another page
}

int PageStrip::RowHeight() const
{
    return FromDIP(kSmallHeight + 2 * kMargin) + GetCharHeight();
}

wxRect PageStrip::PlaceOf(std::size_t page) const
{
    return {0, static_cast<int>(page) * RowHeight(), GetClientSize().x, RowHeight()};
}

void PageStrip::ShowState()
{
    const std::size_t count = preview_.Pages().size();
    if (version_ != preview_.Version()) {
        version_ = preview_.Version();
        small_.resize(count); // the old ones stay until the new ones are painted
        painted_.assign(count, false);
    }
    SetScrollRate(1, 1);
    SetVirtualSize(1, static_cast<int>(count) * RowHeight());
    if (count > 0) {
        const wxRect place = PlaceOf(preview_.Selected());
        const int top = GetViewStart().y;
        const int height = GetClientSize().y;
        if (place.y < top)
            Scroll(-1, place.y);
        else if (place.GetBottom() > top + height)
            Scroll(-1, std::max(0, place.GetBottom() - height + 1));
    }
    Refresh();
}

bool PageStrip::PaintNext()
{
    const auto next = std::find(painted_.begin(), painted_.end(), false);
    if (next == painted_.end() || version_ != preview_.Version())
        return false;
    *next = true;
    const auto page = static_cast<std::size_t>(next - painted_.begin());
    if (look::SheetPicture* const picture = preview_.Picture(page)) {
        const wxSize size = PapersSize(picture->Layout());
        const double scale = std::min(static_cast<double>(FromDIP(kSmallWidth)) / size.x,
                                      static_cast<double>(FromDIP(kSmallHeight)) / size.y);
        small_[page] = PapersBitmap(*picture, pictures_, scale, preview_.IsExample());
    }
    RefreshRect(wxRect(CalcScrolledPosition(PlaceOf(page).GetPosition()), PlaceOf(page).GetSize()));
    return true;
}

void PageStrip::OnPaint(wxPaintEvent& /*event*/)
{
    wxAutoBufferedPaintDC dc(this);
    dc.SetBackground(DeskColour());
    dc.Clear();
    DoPrepareDC(dc);
    dc.SetFont(GetFont());
    for (std::size_t page = 0; page < preview_.Pages().size() && page < small_.size(); ++page) {
        const wxRect place = PlaceOf(page);
        const bool isSelected = page == preview_.Selected();
        if (isSelected) {
            dc.SetPen(*wxTRANSPARENT_PEN);
            dc.SetBrush(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT));
            dc.DrawRectangle(place);
        }
        dc.SetTextForeground(wxSystemSettings::GetColour(isSelected ? wxSYS_COLOUR_HIGHLIGHTTEXT
                                                                    : wxSYS_COLOUR_WINDOWTEXT));
        const wxRect inside = wxRect(place).Deflate(FromDIP(kMargin) / 2);
        dc.DrawLabel(wxControl::Ellipsize(ToWx(preview_.Pages()[page].title), dc, wxELLIPSIZE_END,
                                          inside.width),
                     inside, wxALIGN_CENTRE_HORIZONTAL | wxALIGN_BOTTOM);
        if (const wxBitmap& small = small_[page]; small.IsOk())
            dc.DrawBitmap(small, place.x + (place.width - small.GetWidth()) / 2,
                          place.y + FromDIP(kMargin) +
                              (FromDIP(kSmallHeight) - small.GetHeight()) / 2);
    }
}

void PageStrip::OnClick(wxMouseEvent& event)
{
    const int y = CalcUnscrolledPosition(event.GetPosition()).y;
    const auto page = static_cast<std::size_t>(std::max(y, 0) / RowHeight());
    if (page < preview_.Pages().size())
        select_(page);
}

} // namespace orrery::ui::wx
