#pragma once

#include "ui/preview.h"
#include "ui/wx/look/picture_cache.h"

#include <wx/bitmap.h>
#include <wx/scrolwin.h>

#include <cstdint>
#include <functional>
#include <optional>

namespace orrery::ui::wx {

/// Shows the selected page of a preview, as large as the window or at a zoom. Moved by dragging,
/// scrolling and keys; zoomed by Ctrl with the wheel, or with plus, minus and 0.
class PageView : public wxScrolledCanvas {
public:
    /// `turn` selects another page, that many pages on; `print` asks how to print the pages.
    PageView(wxWindow& parent, Preview& preview, PictureCache& pictures,
             std::function<void(std::ptrdiff_t)> turn, std::function<void()> print);

    /// Shows what the preview has now.
    void ShowState();
    void ZoomToFit();
    /// 1 is the size on paper. At least 1/10, at most 4.
    void ZoomTo(double zoom);
    /// Pixels for one at 96 dpi, zoomed.
    double Scale() const;

private:
    void OnPaint(wxPaintEvent& event);
    void OnKey(wxKeyEvent& event);
    void OnWheel(wxMouseEvent& event);
    void OnDrag(wxMouseEvent& event);
    void ShowMenu();
    /// Makes the page larger or smaller by that factor.
    void ZoomBy(double factor) { ZoomTo(Scale() / Unzoomed() * factor); }
    void Drop();
    /// What a bitmap shows.
    struct Shown {
        std::uint64_t version = 0;
        std::size_t page = 0;
        double scale = 0;
        friend bool operator==(const Shown&, const Shown&) = default;
    };
    Shown Wanted() const;
    void MakeBitmap(look::SheetPicture& picture);
    void DrawPage(wxDC& dc);
    void DrawLargePage(wxDC& dc, look::SheetPicture& picture);
    wxRect PlaceOfPage() const;
    void UpdateSize();
    /// Whether the page is larger than the window.
    bool ExceedsWindow() const;
    /// Pixels for one at 96 dpi, on this screen.
    double Unzoomed() const;

    Preview& preview_;
    PictureCache& pictures_;
    std::function<void(std::ptrdiff_t)> turn_;
    std::function<void()> print_;
    std::optional<double> zoom_; ///< nothing: to fit
    wxSize page_{1, 1};          ///< of the selected page, in pixels at 96 dpi
    Shown shown_;
    wxBitmap bitmap_;
    std::optional<wxPoint> dragged_; ///< where the pointer was
};

} // namespace orrery::ui::wx
