#pragma once

#include "ui/pointing/sheet_guide.h"
#include "ui/wx/look/picture_cache.h"
#include "ui/wx/pointing/sheet_overlay.h"

#include <wx/bitmap.h>
#include <wx/scrolwin.h>

#include <cstdint>
#include <functional>
#include <optional>

namespace orrery::ui::wx {

/// Shows the model sheet of a tab with headings, and the outlines of what its fields mean. Cells
/// are pointed at by clicks and keys, outlines are dragged. Zoomed by Ctrl with the wheel, or with
/// plus, minus and 0.
class SheetView : public wxScrolledCanvas {
public:
    /// `run` runs a user's action, after which the state of the dialog is shown.
    SheetView(wxWindow& parent, SheetGuide& guide, PictureCache& pictures,
              std::function<void(const std::function<void()>&)> run);

    /// Shows what the guide has now.
    void ShowState();
    /// Scrolls so that a cell is in sight.
    void ShowCell(book::CellAddress cell);

    /// What was painted since the view exists.
    struct Counts {
        int paints = 0;  ///< of the window
        int bitmaps = 0; ///< of the sheet
    };
    const Counts& Painted() const { return counts_; }
    /// The middle of a cell on the screen.
    wxPoint ScreenPlaceOf(book::CellAddress cell) const;

private:
    void OnPaint(wxPaintEvent& event);
    void OnKey(wxKeyEvent& event);
    bool MoveByKey(int key);
    void OnWheel(wxMouseEvent& event);
    void OnPress(wxMouseEvent& event);
    void OnMotion(wxMouseEvent& event);
    void DragTo(const wxPoint& point);
    void OnRelease(wxMouseEvent& event);
    void Drop(bool isTaken);
    void ShowPointerAt(wxPoint point);
    void ScrollWhenOutside(wxPoint point);

    /// What the bitmap of the sheet shows.
    struct Shown {
        std::uint64_t version = 0;
        double scale = 0;
        wxPoint scrolled;
        wxSize size;
        friend bool operator==(const Shown&, const Shown&) = default;
    };
    void PaintSheetBitmap(const Shown& wanted);
    void DrawCursor(wxGraphicsContext& target, const SheetPlace& place) const;
    wxSize Headings() const;
    SheetPlace Place() const;
    void ZoomTo(double zoom);
    void UpdateScale();
    void UpdateSize();
    double Unzoomed() const;
    const look::Layout* SheetLayout() const;
    /// The cell at a point of the window; the next one where there is none.
    std::optional<book::CellAddress> CellAt(wxPoint point) const;

    SheetGuide& guide_;
    PictureCache& pictures_;
    std::function<void(const std::function<void()>&)> run_;
    std::optional<double> zoom_; ///< nothing: to fit
    double scale_ = 1;
    std::uint64_t sheetVersion_ = 0;
    std::uint64_t markVersion_ = 0;
    Shown shown_;
    wxBitmap bitmap_;
    Counts counts_;
    std::optional<wxPoint> pressed_; ///< where the button went down
    std::optional<book::CellAddress> draggedTo_;
};

} // namespace orrery::ui::wx
