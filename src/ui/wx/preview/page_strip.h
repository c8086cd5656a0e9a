#pragma once

#include "ui/preview.h"
#include "ui/wx/look/picture_cache.h"

#include <wx/bitmap.h>
#include <wx/scrolwin.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace orrery::ui::wx {

/// Small pictures of all pages of a preview, one below the other; a click selects a page. Each is
/// painted when its turn comes.
class PageStrip : public wxScrolledCanvas {
public:
    PageStrip(wxWindow& parent, Preview& preview, PictureCache& pictures,
              std::function<void(std::size_t)> select);

    /// Shows what the preview has now, with the selected page in sight.
    void ShowState();
    /// Paints the next small picture. False if all are painted.
    bool PaintNext();

    /// The height of a small page with its name, in pixels.
    int RowHeight() const;
    /// The large page takes the keys.
    bool AcceptsFocus() const override { return false; }

private:
    void OnPaint(wxPaintEvent& event);
    void OnClick(wxMouseEvent& event);
    wxRect PlaceOf(std::size_t page) const;

    Preview& preview_;
    PictureCache& pictures_;
    std::function<void(std::size_t)> select_;
    std::uint64_t version_ = 0;
    std::vector<wxBitmap> small_;
    std::vector<bool> painted_; ///< of this version
};

} // namespace orrery::ui::wx
