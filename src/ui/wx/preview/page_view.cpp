#include "ui/wx/preview/page_view.h"

#include "ui/wx/native/text.h"
#include "ui/wx/preview/page_bitmap.h"

#include <wx/dcbuffer.h>
#include <wx/menu.h>
#include <wx/settings.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace orrery::ui::wx {
namespace {

constexpr double kLeastZoom = 0.1;
constexpr double kMostZoom = 4;
constexpr double kZoomStep = 1.2;
constexpr int kPageMargin = 12; // around the page, in pixels at 96 dpi
constexpr int kScrollStep = 24; // likewise
constexpr double kMostBitmapPixels = 8e6;

} // namespace

PageView::PageView(wxWindow& parent, Preview& preview, PictureCache& pictures,
                   std::function<void(std::ptrdiff_t)> turn, std::function<void()> print)
    : wxScrolledCanvas(&parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                       wxHSCROLL | wxVSCROLL | wxWANTS_CHARS | wxBORDER_NONE),
      preview_(preview), pictures_(pictures), turn_(std::move(turn)), print_(std::move(print))
{
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    SetScrollRate(1, 1);
    Bind(wxEVT_PAINT, &PageView::OnPaint, this);
    Bind(wxEVT_KEY_DOWN, &PageView::OnKey, this);
    Bind(wxEVT_MOUSEWHEEL, &PageView::OnWheel, this);
    Bind(wxEVT_CONTEXT_MENU, [this](wxContextMenuEvent&) { ShowMenu(); });
    Bind(wxEVT_LEFT_DOWN, &PageView::OnDrag, this);
    Bind(wxEVT_LEFT_DCLICK, &PageView::OnDrag, this); // a press soon after a click
    Bind(wxEVT_MOTION, &PageView::OnDrag, this);
    Bind(wxEVT_LEFT_UP, &PageView::OnDrag, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { dragged_.reset(); });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        UpdateSize();
        Refresh();
        event.Skip();
    });
    for (const auto& event : {wxEVT_SET_FOCUS, wxEVT_KILL_FOCUS}) {
        Bind(event, [this](wxFocusEvent& focus) {
            Refresh();
            focus.Skip();
        });
    }
}

void PageView::ShowState()
{
    if (!preview_.Pages().empty()) {
        if (const auto* const picture = preview_.Picture(preview_.Selected()))
            page_ = PapersSize(picture->Layout());
    }
    UpdateSize();
    Refresh();
}

void PageView::ZoomToFit()
{
    zoom_.reset();
    UpdateSize();
    Refresh();
}

void PageView::ZoomTo(double zoom)
{
    const wxSize half = GetClientSize() / 2;
    const double before = Scale();
    const wxPoint corner = GetViewStart();
    zoom_ = std::clamp(zoom, kLeastZoom, kMostZoom);
    UpdateSize();
    const double growth = Scale() / before; // what was in the middle stays there
    Scroll(static_cast<int>((corner.x + half.x) * growth) - half.x,
           static_cast<int>((corner.y + half.y) * growth) - half.y);
    Refresh();
}

double PageView::Unzoomed() const
{
    return FromDIP(1000) / 1000.0;
}

double PageView::Scale() const
{
    if (zoom_)
        return *zoom_ * Unzoomed();
    const int margin = 2 * FromDIP(kPageMargin);
    const wxSize window = GetSize() - wxSize(margin, margin);
    return std::max(0.01, std::min(static_cast<double>(window.x) / page_.x,
                                   static_cast<double>(window.y) / page_.y));
}

void PageView::UpdateSize()
{
    if (!zoom_) {
        SetVirtualSize(1, 1);
        return;
    }
    const int margin = 2 * FromDIP(kPageMargin);
    SetVirtualSize(static_cast<int>(std::lround(page_.x * Scale())) + margin,
                   static_cast<int>(std::lround(page_.y * Scale())) + margin);
}

bool PageView::ExceedsWindow() const
{
    const wxSize window = GetClientSize();
    return zoom_ && (GetVirtualSize().x > window.x || GetVirtualSize().y > window.y);
}

void PageView::OnPaint(wxPaintEvent& /*event*/)
{
    wxAutoBufferedPaintDC dc(this);
    dc.SetBackground(DeskColour());
    dc.Clear();
    if (preview_.Pages().empty())
        PaintSentence(dc, *this, preview_.Sentence(), FromDIP(kPageMargin));
    else if (bitmap_.IsOk() && shown_ == Wanted())
        DrawPage(dc);
    else if (look::SheetPicture* const picture = preview_.Picture(preview_.Selected())) {
        page_ = PapersSize(picture->Layout());
        MakeBitmap(*picture);
        if (bitmap_.IsOk())
            DrawPage(dc);
        else
            DrawLargePage(dc, *picture);
    }
    else
        PaintSentence(dc, *this, preview_.Pages()[preview_.Selected()].notes->front(),
                      FromDIP(kPageMargin));
}

PageView::Shown PageView::Wanted() const
{
    return {preview_.Version(), preview_.Selected(), Scale()};
}

wxRect PageView::PlaceOfPage() const
{
    const double scale = Scale();
    const wxSize size(static_cast<int>(std::lround(page_.x * scale)),
                      static_cast<int>(std::lround(page_.y * scale)));
    const wxSize window = GetClientSize();
    const wxPoint start = GetViewStart();
    const int margin = FromDIP(kPageMargin);
    const auto placed = [margin](int room, int length, int scrolled) {
        return length + 2 * margin > room ? margin - scrolled : (room - length) / 2;
    };
    return {wxPoint(placed(window.x, size.x, start.x), placed(window.y, size.y, start.y)), size};
}

/// Makes none of a page that is zoomed so much that its bitmap would be very large.
void PageView::MakeBitmap(look::SheetPicture& picture)
{
    const wxSize size = PlaceOfPage().GetSize();
    bitmap_ = wxBitmap();
    if (static_cast<double>(size.x) * size.y > kMostBitmapPixels)
        return;
    bitmap_ = PapersBitmap(picture, pictures_, Scale(), preview_.IsExample());
    shown_ = Wanted();
}

void PageView::DrawLargePage(wxDC& dc, look::SheetPicture& picture)
{
    const wxPoint corner = PlaceOfPage().GetPosition();
    const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::CreateFromUnknownDC(dc));
    context->Translate(corner.x, corner.y);
    PaintPapers(picture, *context, pictures_, Scale());
}

void PageView::DrawPage(wxDC& dc)
{
    const wxRect place = PlaceOfPage();
    dc.DrawBitmap(bitmap_, place.GetPosition());
    if (!HasFocus())
        return;
    dc.SetPen(wxPen(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT), FromDIP(2)));
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    dc.DrawRectangle(wxRect(place).Inflate(FromDIP(2)));
}

void PageView::OnKey(wxKeyEvent& event)
{
    const int step = FromDIP(kScrollStep);
    const bool scrolls = ExceedsWindow();
    const auto scroll = [this](int x, int y) {
        const wxPoint start = GetViewStart();
        Scroll(start.x + x, start.y + y);
    };
    const auto all = static_cast<std::ptrdiff_t>(preview_.Pages().size());
    switch (event.GetKeyCode()) {
    case WXK_LEFT:
        scrolls ? scroll(-step, 0) : turn_(-1);
        break;
    case WXK_RIGHT:
        scrolls ? scroll(step, 0) : turn_(1);
        break;
    case WXK_UP:
        scrolls ? scroll(0, -step) : turn_(-1);
        break;
    case WXK_DOWN:
        scrolls ? scroll(0, step) : turn_(1);
        break;
    case WXK_PAGEUP:
        turn_(-1);
        break;
    case WXK_PAGEDOWN:
        turn_(1);
        break;
    case WXK_HOME:
        turn_(-all);
        break;
    case WXK_END:
        turn_(all);
        break;
    case '+':
    case '=':
    case WXK_NUMPAD_ADD:
        ZoomBy(kZoomStep);
        break;
    case '-':
    case WXK_NUMPAD_SUBTRACT:
        ZoomBy(1 / kZoomStep);
        break;
    case '0':
        ZoomToFit();
        break;
    case '1':
        ZoomTo(1);
        break;
    case WXK_TAB:
        Navigate(event.ShiftDown() ? wxNavigationKeyEvent::IsBackward
                                   : wxNavigationKeyEvent::IsForward);
        break;
    default:
        event.Skip();
    }
}

void PageView::OnWheel(wxMouseEvent& event)
{
    const bool up = event.GetWheelRotation() > 0;
    if (event.ControlDown())
        ZoomBy(up ? kZoomStep : 1 / kZoomStep);
    else if (ExceedsWindow())
        event.Skip();
    else
        turn_(up ? -1 : 1);
}

void PageView::OnDrag(wxMouseEvent& event)
{
    if (event.LeftDown() || event.LeftDClick()) {
        SetFocus();
        dragged_ = event.GetPosition();
        if (!HasCapture())
            CaptureMouse();
    }
    else if (dragged_ && (event.Dragging() || event.LeftUp())) { // a motion may be missing
        const wxPoint start = GetViewStart();
        const wxPoint moved = event.GetPosition() - *dragged_;
        dragged_ = event.GetPosition();
        Scroll(start.x - moved.x, start.y - moved.y);
    }
    if (event.LeftUp())
        Drop();
}

void PageView::ShowMenu()
{
    wxMenu menu;
    const auto add = [&menu](const char* caption, const std::function<void()>& action) {
        const wxMenuItem* const item = menu.Append(wxID_ANY, caption);
        menu.Bind(
            wxEVT_MENU, [action](wxCommandEvent&) { action(); }, item->GetId());
    };
    add("&Fit the Window\t0", [this] { ZoomToFit(); });
    add("&Size on Paper\t1", [this] { ZoomTo(1); });
    add("Zoom &In\t+", [this] { ZoomBy(kZoomStep); });
    add("Zoom &Out\t-", [this] { ZoomBy(1 / kZoomStep); });
    menu.AppendSeparator();
    add("&Print...\tCtrl+P", print_);
    PopupMenu(&menu);
}

void PageView::Drop()
{
    dragged_.reset();
    if (HasCapture())
        ReleaseMouse();
}

} // namespace orrery::ui::wx
