#include "look/painter/drawings.h"

#include "look/painter/pictures.h"
#include "look/painter/pixels.h"
#include "look/painter/shapes.h"
#include "look/painter/text_bodies.h"

#include <cmath>
#include <string>

namespace orrery::look {

namespace {

using book::Drawing;
using book::DrawingKind;

constexpr std::size_t kMostDrawings = 20'000;
constexpr int kDeepestGroup = 32;

class DrawingPainter {
public:
    DrawingPainter(Canvas& canvas, const TextMeasure& measure, const PaintOptions& options)
        : canvas_(canvas), measure_(measure), options_(options)
    {
    }

    void Paint(const Drawing& drawing, const Box& box, int depth = 0)
    {
        if (++count_ > kMostDrawings || depth > kDeepestGroup || !IsUsable(box))
            return;
        canvas_.BeginGroup(drawing.name.empty() ? "drawing" : drawing.name, drawing.description);
        const bool isTurned = std::isfinite(drawing.rotation) && drawing.rotation != 0;
        if (isTurned)
            canvas_.Rotate(box.Middle(), drawing.rotation);
        PaintKind(drawing, box, depth);
        if (isTurned)
            canvas_.Restore();
        canvas_.EndGroup();
    }

private:
    static bool IsUsable(const Box& box)
    {
        return std::isfinite(box.x) && std::isfinite(box.y) && box.width >= 0 && box.height >= 0;
    }

    void PaintKind(const Drawing& drawing, const Box& box, int depth)
    {
        switch (drawing.kind) {
        case DrawingKind::Picture:
            PaintPictureKind(drawing, box);
            break;
        case DrawingKind::Shape:
        case DrawingKind::Line:
            PaintShapeKind(drawing, box);
            break;
        case DrawingKind::Group:
            PaintGroup(drawing, box, depth);
            break;
        case DrawingKind::Chart:
            PaintChart(drawing, box);
            break;
        case DrawingKind::Control:
            PaintControl(drawing, box);
            break;
        case DrawingKind::Placeholder:
            PaintBox(drawing, box, "");
            break;
        }
    }

    /// Flips what `paint` paints.
    template <typename Painting>
    void Flipped(const Drawing& drawing, const Box& box, Painting paint)
    {
        const bool isFlipped = drawing.flipsHorizontally || drawing.flipsVertically;
        if (isFlipped)
            canvas_.Flip(box, drawing.flipsHorizontally, drawing.flipsVertically);
        paint();
        if (isFlipped)
            canvas_.Restore();
    }

    void PaintPictureKind(const Drawing& drawing, const Box& box)
    {
        bool isPainted = false;
        Flipped(drawing, box, [&] {
            if (drawing.fill)
                canvas_.FillBox(box, {*drawing.fill, drawing.fillOpacity});
            isPainted = PaintPicture(drawing, box, canvas_);
            // Without a colour of its own nobody asked for a frame.
            const auto pen = drawing.outline.color ? OutlinePen(drawing.outline) : std::nullopt;
            if (isPainted && pen)
                canvas_.DrawPath(Outline(box), {}, pen);
        });
        if (!isPainted)
            PaintBox(drawing, box, "picture");
    }

    void PaintShapeKind(const Drawing& drawing, const Box& box)
    {
        Box textBox;
        Flipped(drawing, box, [&] { textBox = PaintShape(drawing, box, canvas_); });
        if (!drawing.text)
            return;
        // A text is never mirrored: upside down it is turned.
        if (drawing.flipsHorizontally)
            textBox.x = box.x + box.Right() - textBox.Right();
        if (drawing.flipsVertically)
            canvas_.Rotate(box.Middle(), 180);
        PaintTextBody(*drawing.text, textBox, measure_, canvas_);
        if (drawing.flipsVertically)
            canvas_.Restore();
    }

    void PaintGroup(const Drawing& drawing, const Box& box, int depth)
    {
        Flipped(drawing, box, [&] {
            for (const auto& child : drawing.children) {
                const auto& place = child.place;
                Paint(child,
                      {box.x + place.left * box.width, box.y + place.top * box.height,
                       (place.right - place.left) * box.width,
                       (place.bottom - place.top) * box.height},
                      depth + 1);
            }
        });
    }

    void PaintChart(const Drawing& drawing, const Box& box)
    {
        if (drawing.chart && options_.chart)
            options_.chart(*drawing.chart, box, canvas_);
        else
            PaintBox(drawing, box, "chart");
    }

    void PaintControl(const Drawing& drawing, const Box& box)
    {
        if (!drawing.fill && !drawing.text) {
            PaintBox(drawing, box, "control");
            return;
        }
        PaintShapeKind(drawing, box);
    }

    void PaintBox(const Drawing& drawing, const Box& box, const char* kind)
    {
        std::string text = drawing.description.empty() ? drawing.name : drawing.description;
        PaintPlaceholder(text.empty() ? kind : text, box, measure_, canvas_);
    }

    static Path Outline(const Box& box)
    {
        using enum PathStep::Kind;
        return {{Move, {box.x, box.y}, {}, {}},
                {Line, {box.Right(), box.y}, {}, {}},
                {Line, {box.Right(), box.Bottom()}, {}, {}},
                {Line, {box.x, box.Bottom()}, {}, {}},
                {Close, {}, {}, {}}};
    }

    Canvas& canvas_;
    const TextMeasure& measure_;
    const PaintOptions& options_;
    std::size_t count_ = 0;
};

/// Whether a drawing may show in a part of the sheet: turned, it lies in the circle around its box.
bool MayShow(const DrawingBox& placed, const Box& visible)
{
    const Point middle = placed.box.Middle();
    const double reach =
        std::hypot(placed.box.width, placed.box.height) / 2 + 50; // callouts, lines
    return Overlaps({middle.x - reach, middle.y - reach, 2 * reach, 2 * reach}, visible);
}

} // namespace

void PaintDrawings(const Layout& layout, const Box& visible, Canvas& canvas,
                   const TextMeasure& measure, const PaintOptions& options)
{
    DrawingPainter painter(canvas, measure, options);
    for (const auto& placed : layout.drawings) {
        if (placed.drawing && MayShow(placed, visible))
            painter.Paint(*placed.drawing, placed.box);
    }
}

void PaintDrawing(const DrawingBox& placed, Canvas& canvas, const TextMeasure& measure,
                  const PaintOptions& options)
{
    if (placed.drawing != nullptr)
        DrawingPainter(canvas, measure, options).Paint(*placed.drawing, placed.box);
}

} // namespace orrery::look
