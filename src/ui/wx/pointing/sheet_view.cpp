#include "ui/wx/pointing/sheet_view.h"

#include "ui/wx/look/wx_canvas.h"
#include "ui/wx/preview/page_bitmap.h"

#include <wx/dcbuffer.h>
#include <wx/dcmemory.h>
#include <wx/settings.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace orrery::ui::wx {
namespace {

constexpr double kLeastZoom = 0.2;
constexpr double kMostZoom = 4;
constexpr double kZoomStep = 1.2;
constexpr double kLeastFit = 0.6; // smaller cells are hard to hit
constexpr double kMostFit = 1;
constexpr int kDragThreshold = 4; // in pixels at 96 dpi, like the next
constexpr int kMargin = 12;

} // namespace

SheetView::SheetView(wxWindow& parent, SheetGuide& guide, PictureCache& pictures,
                     std::function<void(const std::function<void()>&)> run)
    : wxScrolledCanvas(&parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                       wxHSCROLL | wxVSCROLL | wxWANTS_CHARS | wxBORDER_NONE),
      guide_(guide), pictures_(pictures), run_(std::move(run))
{
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    SetScrollRate(1, 1);
    EnableScrolling(false, false); // the headings stay
    Bind(wxEVT_PAINT, &SheetView::OnPaint, this);
    Bind(wxEVT_KEY_DOWN, &SheetView::OnKey, this);
    Bind(wxEVT_MOUSEWHEEL, &SheetView::OnWheel, this);
    Bind(wxEVT_LEFT_DOWN, &SheetView::OnPress, this);
    Bind(wxEVT_LEFT_DCLICK, &SheetView::OnPress, this);
    Bind(wxEVT_MOTION, &SheetView::OnMotion, this);
    Bind(wxEVT_LEFT_UP, &SheetView::OnRelease, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { Drop(false); });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        UpdateScale();
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

void SheetView::ShowState()
{
    const bool isOtherSheet = sheetVersion_ != guide_.Sheets().Version();
    if (!isOtherSheet && markVersion_ == guide_.Version())
        return;
    sheetVersion_ = guide_.Sheets().Version();
    markVersion_ = guide_.Version();
    if (isOtherSheet && !guide_.IsDragging())
        UpdateScale();
    else if (isOtherSheet)
        UpdateSize(); // what is dragged stays under the pointer
    Refresh();
}

const look::Layout* SheetView::SheetLayout() const
{
    const auto* const picture = guide_.Sheets().Picture();
    return picture == nullptr ? nullptr : &picture->Layout();
}

double SheetView::Unzoomed() const
{
    return FromDIP(1000) / 1000.0;
}

wxSize SheetView::Headings() const
{
    const wxSize text = GetTextExtent("0000");
    return {text.x + FromDIP(6), text.y + FromDIP(4)};
}

SheetPlace SheetView::Place() const
{
    const wxSize corner = Headings();
    return {{corner.x, corner.y}, GetViewStart(), scale_};
}

void SheetView::UpdateScale()
{
    const look::Layout* const layout = SheetLayout();
    if (zoom_)
        scale_ = *zoom_ * Unzoomed();
    else if (layout != nullptr && layout->width > 0 && layout->height > 0) {
        const wxSize room = GetSize() - Headings();
        const double fit = std::min(room.x / layout->width, room.y / layout->height) / Unzoomed();
        scale_ = std::clamp(fit, kLeastFit, kMostFit) * Unzoomed();
    }
    UpdateSize();
}

void SheetView::UpdateSize()
{
    const look::Layout* const layout = SheetLayout();
    if (layout == nullptr) {
        SetVirtualSize(1, 1);
        return;
    }
    const wxSize corner = Headings();
    SetVirtualSize(corner.x + static_cast<int>(std::ceil(layout->width * scale_)) + 1,
                   corner.y + static_cast<int>(std::ceil(layout->height * scale_)) + 1);
}

void SheetView::ZoomTo(double zoom)
{
    zoom_ = std::clamp(zoom, kLeastZoom, kMostZoom);
    UpdateScale();
    Refresh();
}

// ---- painting

void SheetView::OnPaint(wxPaintEvent& /*event*/)
{
    ++counts_.paints;
    wxAutoBufferedPaintDC dc(this);
    dc.SetBackground(DeskColour());
    dc.Clear();
    if (SheetLayout() == nullptr) {
        PaintSentence(dc, *this, guide_.Sheets().PictureSentence(), FromDIP(kMargin));
        return;
    }
    const SheetPlace place = Place();
    const Shown wanted{sheetVersion_, scale_, place.scrolled, GetClientSize()};
    if (!bitmap_.IsOk() || shown_ != wanted)
        PaintSheetBitmap(wanted);
    if (bitmap_.IsOk())
        dc.DrawBitmap(bitmap_, place.corner);
    const std::unique_ptr<wxGraphicsContext> target(wxGraphicsContext::CreateFromUnknownDC(dc));
    if (!target)
        return;
    DrawMarks(*target, guide_, place, *this);
    if (HasFocus())
        DrawCursor(*target, place);
    DrawHeadings(*target, guide_, place, *this);
}

/// Only what is in sight, so that its size does not depend on the sheet's.
void SheetView::PaintSheetBitmap(const Shown& wanted)
{
    ++counts_.bitmaps;
    shown_ = wanted;
    const wxSize size = wanted.size - Headings();
    bitmap_ = wxBitmap();
    if (size.x <= 0 || size.y <= 0)
        return;
    bitmap_.CreateWithDIPSize(size, GetContentScaleFactor(), 24);
    wxMemoryDC memory(bitmap_);
    memory.SetBackground(DeskColour());
    memory.Clear();
    const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(memory));
    if (!context)
        return;
    const look::Layout& layout = *SheetLayout();
    const look::Box part{wanted.scrolled.x / scale_, wanted.scrolled.y / scale_, size.x / scale_,
                         size.y / scale_};
    WxCanvas canvas(*context, pictures_);
    canvas.Place({-static_cast<double>(wanted.scrolled.x), -static_cast<double>(wanted.scrolled.y)},
                 scale_);
    canvas.FillBox({0, 0, layout.width, layout.height}, look::SolidBrush(book::kWhite));
    guide_.Sheets().Picture()->Paint(canvas, part);
}

void SheetView::DrawCursor(wxGraphicsContext& target, const SheetPlace& place) const
{
    const auto box = place.Of(SheetLayout()->BoxOf(guide_.Sheets().MergedAt(guide_.Cursor())));
    target.Clip(place.corner.x, place.corner.y, GetClientSize().x, GetClientSize().y);
    target.SetBrush(*wxTRANSPARENT_BRUSH);
    target.SetPen(wxPen(*wxWHITE, FromDIP(5)));
    target.DrawRectangle(box.m_x, box.m_y, box.m_width, box.m_height);
    target.SetPen(wxPen(*wxBLACK, FromDIP(2)));
    target.DrawRectangle(box.m_x, box.m_y, box.m_width, box.m_height);
    target.ResetClip();
}

// ---- places

std::optional<book::CellAddress> SheetView::CellAt(wxPoint point) const
{
    const look::Layout* const layout = SheetLayout();
    if (layout == nullptr)
        return std::nullopt;
    const SheetPlace place = Place();
    const double x = (point.x - place.X(0)) / scale_;
    const double y = (point.y - place.Y(0)) / scale_;
    constexpr double inside = 0.01;
    return layout->CellAt({std::clamp(x, inside, std::max(layout->width - inside, inside)),
                           std::clamp(y, 0.0, std::max(layout->height - inside, 0.0))});
}

wxPoint SheetView::ScreenPlaceOf(book::CellAddress cell) const
{
    const auto box = Place().Of(SheetLayout()->BoxOf({cell, cell}));
    return ClientToScreen(wxPoint(static_cast<int>(std::lround(box.m_x + box.m_width / 2)),
                                  static_cast<int>(std::lround(box.m_y + box.m_height / 2))));
}

void SheetView::ShowCell(book::CellAddress cell)
{
    const look::Layout* const layout = SheetLayout();
    if (layout == nullptr || !layout->range.Contains(cell))
        return;
    const look::Box box = layout->BoxOf({cell, cell});
    const wxPoint start = GetViewStart();
    const wxSize room = GetClientSize() - Headings();
    const auto scrolled = [this](int now, int length, double from, double size) {
        const int first = static_cast<int>(from * scale_);
        const int last = static_cast<int>((from + size) * scale_);
        if (first < now)
            return first;
        return last > now + length ? last - length : now;
    };
    const wxPoint wanted(scrolled(start.x, room.x, box.x, box.width),
                         scrolled(start.y, room.y, box.y, box.height));
    if (wanted != start)
        Scroll(wanted);
}

// ---- keys

bool SheetView::MoveByKey(int key)
{
    constexpr int page = 10;
    constexpr int all = 1 << 20;
    switch (key) {
    case WXK_LEFT:
        guide_.MoveCursor(0, -1);
        break;
    case WXK_RIGHT:
        guide_.MoveCursor(0, 1);
        break;
    case WXK_UP:
        guide_.MoveCursor(-1, 0);
        break;
    case WXK_DOWN:
        guide_.MoveCursor(1, 0);
        break;
    case WXK_PAGEUP:
        guide_.MoveCursor(-page, 0);
        break;
    case WXK_PAGEDOWN:
        guide_.MoveCursor(page, 0);
        break;
    case WXK_HOME:
        guide_.MoveCursor(0, -all);
        break;
    case WXK_END:
        guide_.MoveCursor(0, all);
        break;
    default:
        return false;
    }
    return true;
}

void SheetView::OnKey(wxKeyEvent& event)
{
    const int key = event.GetKeyCode();
    if (event.GetModifiers() == wxMOD_NONE && MoveByKey(key)) {
        ShowCell(guide_.Cursor());
        Refresh();
        run_([] {});
        return;
    }
    switch (key) {
    case WXK_RETURN:
    case WXK_NUMPAD_ENTER:
    case WXK_SPACE:
        run_([this] { guide_.Click(guide_.Cursor()); });
        break;
    case '+':
    case '=':
    case WXK_NUMPAD_ADD:
        ZoomTo(scale_ / Unzoomed() * kZoomStep);
        break;
    case '-':
    case WXK_NUMPAD_SUBTRACT:
        ZoomTo(scale_ / Unzoomed() / kZoomStep);
        break;
    case '0':
        zoom_.reset();
        UpdateScale();
        Refresh();
        break;
    case WXK_TAB:
        Navigate(event.ShiftDown() ? wxNavigationKeyEvent::IsBackward
                                   : wxNavigationKeyEvent::IsForward);
        break;
    default:
        event.Skip();
    }
}

// ---- the mouse

void SheetView::OnWheel(wxMouseEvent& event)
{
    if (event.ControlDown())
        ZoomTo(scale_ / Unzoomed() * (event.GetWheelRotation() > 0 ? kZoomStep : 1 / kZoomStep));
    else
        event.Skip();
}

/// The focus stays in a field that takes the cell.
void SheetView::OnPress(wxMouseEvent& event)
{
    pressed_ = event.GetPosition();
    draggedTo_.reset();
    if (!HasCapture())
        CaptureMouse();
    if (!guide_.Pointer().Active())
        SetFocus();
}

void SheetView::OnMotion(wxMouseEvent& event)
{
    if (pressed_ && event.LeftIsDown())
        DragTo(event.GetPosition());
    else
        ShowPointerAt(event.GetPosition());
}

void SheetView::DragTo(const wxPoint& point)
{
    const wxPoint way = point - *pressed_;
    if (!guide_.IsDragging() && !draggedTo_) {
        if (std::abs(way.x) + std::abs(way.y) < FromDIP(kDragThreshold))
            return;
        draggedTo_ = CellAt(*pressed_);
        if (draggedTo_)
            guide_.BeginDrag(*draggedTo_);
    }
    if (!guide_.IsDragging())
        return;
    ScrollWhenOutside(point);
    const auto cell = CellAt(point);
    if (cell && cell != draggedTo_) {
        draggedTo_ = cell;
        run_([this, cell] { guide_.DragTo(*cell); });
    }
}

void SheetView::OnRelease(wxMouseEvent& event)
{
    if (!pressed_)
        return;
    const wxPoint point = event.GetPosition();
    DragTo(point); // the last motion may be missing
    const bool wasDragged = draggedTo_.has_value();
    Drop(true);
    if (wasDragged)
        return;
    const wxSize corner = Headings();
    if (point.x < corner.x || point.y < corner.y)
        return;
    if (const auto cell = CellAt(point))
        run_([this, cell] { guide_.Click(*cell); });
}

void SheetView::Drop(bool isTaken)
{
    pressed_.reset();
    draggedTo_.reset();
    if (HasCapture())
        ReleaseMouse();
    if (isTaken)
        guide_.EndDrag();
    else if (guide_.IsDragging())
        run_([this] { guide_.CancelDrag(); });
}

void SheetView::ShowPointerAt(wxPoint point)
{
    const auto cell = CellAt(point);
    const bool isOnOutline =
        cell && guide_.Pointer().FieldAt(guide_.Sheets().MergedAt(*cell).first).has_value();
    SetCursor(isOnOutline ? wxCursor(wxCURSOR_SIZING) : wxNullCursor);
}

void SheetView::ScrollWhenOutside(wxPoint point)
{
    const wxSize corner = Headings();
    const wxSize room = GetClientSize();
    const auto beyond = [](int place, int first, int last) {
        if (place < first)
            return place - first;
        return place > last ? place - last : 0;
    };
    const wxPoint by(beyond(point.x, corner.x, room.x), beyond(point.y, corner.y, room.y));
    if (by != wxPoint())
        Scroll(GetViewStart() + by);
}

} // namespace orrery::ui::wx
