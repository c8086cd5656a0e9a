#pragma once

#include "look/cairo/owned.h"
#include "look/cairo/pictures.h"
#include "look/cairo/text_drawing.h"
#include "look/canvas/canvas.h"

#include <memory>
#include <optional>
#include <string_view>

namespace orrery::look {

/// A canvas on Cairo, for documents: lines and characters stay what they are. A unit of the context
/// is a pixel of the page; scale it before.
class CairoCanvas final : public Canvas {
public:
    /// Both outlive the canvas.
    CairoCanvas(cairo_t* cairo, CairoPictures& pictures);
    /// Takes back what was not restored.
    ~CairoCanvas() override;
    CairoCanvas(const CairoCanvas&) = delete;
    CairoCanvas& operator=(const CairoCanvas&) = delete;

    void FillBox(const Box& box, const Brush& brush) override;
    void DrawLine(Point from, Point to, const Pen& pen) override;
    void DrawPath(const Path& path, const std::optional<Brush>& fill,
                  const std::optional<Pen>& pen) override;
    void DrawText(Point at, std::string_view text, const TextStyle& style, double width) override;
    bool DrawPicture(const Box& box, const PictureSource& picture) override;
    void Clip(const Box& box) override;
    void Rotate(Point around, double degrees) override;
    void Flip(const Box& box, bool horizontally, bool vertically) override;
    void Place(Point origin, double scale) override;
    void Restore() override;
    void BeginGroup(std::string_view id, std::string_view title) override;
    void EndGroup() override;

private:
    void Push();
    void SetPath(const Path& path);
    void Fill(const Brush& brush);
    void FillAlongEdges(const Box& box, const book::Gradient& gradient, double opacity);
    void Stroke(const Pen& pen);

    cairo_t* cairo_;
    CairoPictures& pictures_;
    std::unique_ptr<TextDrawing> texts_;
    int depth_ = 0;
};

} // namespace orrery::look
