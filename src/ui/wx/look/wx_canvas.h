#pragma once

#include "look/canvas/canvas.h"
#include "ui/wx/look/picture_cache.h"
#include "ui/wx/look/text_drawing.h"

#include <wx/graphics.h>

#include <memory>
#include <optional>
#include <vector>

namespace orrery::ui::wx {

/// A canvas on the toolkit's graphics: a window, a bitmap, a printer. A unit of the context is a
/// pixel of the page; scale it before, or by `Place`.
class WxCanvas final : public look::Canvas {
public:
    /// Both outlive the canvas.
    WxCanvas(wxGraphicsContext& context, PictureCache& pictures);
    /// Takes back what was not restored.
    ~WxCanvas() override;
    WxCanvas(const WxCanvas&) = delete;
    WxCanvas& operator=(const WxCanvas&) = delete;

    void FillBox(const look::Box& box, const look::Brush& brush) override;
    void DrawLine(look::Point from, look::Point to, const look::Pen& pen) override;
    void DrawPath(const look::Path& path, const std::optional<look::Brush>& fill,
                  const std::optional<look::Pen>& pen) override;
    void DrawText(look::Point at, std::string_view text, const look::TextStyle& style,
                  double width) override;
    bool DrawPicture(const look::Box& box, const look::PictureSource& picture) override;
    void Clip(const look::Box& box) override;
    void Rotate(look::Point around, double degrees) override;
    void Flip(const look::Box& box, bool horizontally, bool vertically) override;
    void Place(look::Point origin, double scale) override;
    void Restore() override;
    void BeginGroup(std::string_view id, std::string_view title) override;
    void EndGroup() override;

private:
    /// What is seen, in the current coordinates.
    const look::Box& Visible();
    void Push();
    look::Point Within(look::Point point);
    wxGraphicsPath MakePath(const look::Path& path);
    look::Box OnPixels(const look::Box& box) const;
    void FillPath(const wxGraphicsPath& path, const wxGraphicsBrush& brush, bool isEvenOdd = false);
    void FillAlongEdges(const look::Box& box, const book::Gradient& gradient, double opacity);
    void FillFromInside(const look::Path& path, const look::Box& box, const look::Brush& brush);
    void Fill(const look::Path& path, const look::Brush& brush);
    void Stroke(const look::Path& path, const look::Pen& pen);

    wxGraphicsContext& context_;
    PictureCache& pictures_;
    std::unique_ptr<TextDrawing> texts_;
    std::optional<look::Box> visible_; ///< nothing after a change
    int depth_ = 0;
};

} // namespace orrery::ui::wx
