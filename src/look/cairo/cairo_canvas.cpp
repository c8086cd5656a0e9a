#include "look/cairo/cairo_canvas.h"

#include "look/cairo/cairo_fills.h"
#include "look/canvas/gradients.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <numbers>
#include <vector>

namespace orrery::look {
namespace {

/// Coordinates beyond these are cut: Cairo's are fixed-point numbers of 24 bits before the point,
/// also after the scale of the page.
constexpr double kFarthest = 1e6;
constexpr double kLargestScale = 1e3;
constexpr double kShortestPeriod = 0.1; ///< pixels; shorter dashes are a whole line

double Within(double value)
{
    return std::isnan(value) ? 0 : std::clamp(value, -kFarthest, kFarthest);
}

Point Within(Point point)
{
    return {Within(point.x), Within(point.y)};
}

bool IsFinite(Point point)
{
    return std::isfinite(point.x) && std::isfinite(point.y);
}

bool IsFinite(const Box& box)
{
    return IsFinite(Point{box.x, box.y}) && IsFinite(Point{box.width, box.height});
}

/// Lengths that Cairo takes; empty for a whole line.
std::vector<double> Dashes(const Pen& pen)
{
    std::vector<double> dashes;
    double period = 0;
    for (const double dash : pen.dashes) {
        dashes.push_back(dash > 0 ? dash : 0);
        period += dashes.back();
    }
    if (!(period >= kShortestPeriod) || !std::isfinite(period))
        dashes.clear();
    return dashes;
}

} // namespace

CairoCanvas::CairoCanvas(cairo_t* cairo, CairoPictures& pictures)
    : cairo_(cairo), pictures_(pictures), texts_(MakeTextDrawing(cairo, TextsAs::Characters))
{
}

CairoCanvas::~CairoCanvas()
{
    while (depth_ > 0)
        Restore();
}

void CairoCanvas::SetPath(const Path& path)
{
    cairo_new_path(cairo_);
    for (const PathStep& step : path) {
        const Point point = Within(step.point);
        switch (step.kind) {
        case PathStep::Kind::Move:
            cairo_move_to(cairo_, point.x, point.y);
            break;
        case PathStep::Kind::Line:
            cairo_line_to(cairo_, point.x, point.y);
            break;
        case PathStep::Kind::Curve: {
            const Point first = Within(step.control1);
            const Point second = Within(step.control2);
            cairo_curve_to(cairo_, first.x, first.y, second.x, second.y, point.x, point.y);
            break;
        }
        case PathStep::Kind::Close:
            cairo_close_path(cairo_);
            break;
        }
    }
}

void CairoCanvas::Fill(const Brush& brush)
{
    if (!IsFilling(brush.fill))
        return;
    Box box;
    if (brush.fill.gradient) {
        double right = 0;
        double bottom = 0;
        cairo_path_extents(cairo_, &box.x, &box.y, &right, &bottom);
        box.width = right - box.x;
        box.height = bottom - box.y;
    }
    const auto pattern = FillPattern(brush, box);
    cairo_set_source(cairo_, pattern.get());
    cairo_set_fill_rule(cairo_,
                        brush.isEvenOdd ? CAIRO_FILL_RULE_EVEN_ODD : CAIRO_FILL_RULE_WINDING);
    cairo_fill_preserve(cairo_);
}

void CairoCanvas::FillBox(const Box& box, const Brush& brush)
{
    if (!(box.width > 0 && box.height > 0) || !IsFinite(box) || !IsFilling(brush.fill))
        return;
    if (IsFromInside(brush.fill)) {
        FillAlongEdges(box, *brush.fill.gradient, brush.opacity);
        return;
    }
    SetPath(PathOfBox(box));
    Fill(brush);
}

void CairoCanvas::FillAlongEdges(const Box& box, const book::Gradient& gradient, double opacity)
{
    if (opacity >= 1) // no gap shows between the parts
        FillBox(box, SolidBrush(gradient.stops.back().color));
    const GradientSides parts = SidesOfGradient(gradient, box);
    for (const GradientSide& side : parts.sides) {
        const auto pattern = LinearPattern(gradient.stops, side.degree, side.box, opacity);
        SetPath(side.path);
        cairo_set_source(cairo_, pattern.get());
        cairo_fill(cairo_);
    }
    FillBox(parts.inner, SolidBrush(gradient.stops.front().color, opacity));
}

void CairoCanvas::Stroke(const Pen& pen)
{
    if (!(pen.width > 0) || !std::isfinite(pen.width))
        return;
    SetColor(cairo_, pen.color, pen.opacity);
    cairo_set_line_width(cairo_, std::min(pen.width, kFarthest));
    cairo_set_line_join(cairo_, CAIRO_LINE_JOIN_MITER);
    cairo_set_line_cap(cairo_, CAIRO_LINE_CAP_BUTT);
    const std::vector<double> dashes = Dashes(pen);
    cairo_set_dash(cairo_, dashes.data(), static_cast<int>(dashes.size()), 0);
    cairo_stroke_preserve(cairo_);
}

void CairoCanvas::DrawLine(Point from, Point to, const Pen& pen)
{
    if (!IsFinite(from) || !IsFinite(to))
        return;
    SetPath({{PathStep::Kind::Move, from, {}, {}}, {PathStep::Kind::Line, to, {}, {}}});
    Stroke(pen);
}

void CairoCanvas::DrawPath(const Path& path, const std::optional<Brush>& fill,
                           const std::optional<Pen>& pen)
{
    if (path.empty())
        return;
    SetPath(path);
    if (fill)
        Fill(*fill);
    if (pen)
        Stroke(*pen);
    cairo_new_path(cairo_);
}

void CairoCanvas::DrawText(Point at, std::string_view text, const TextStyle& style, double width)
{
    if (!text.empty() && style.font.size > 0 && IsFinite(at) && Within(at) == at)
        texts_->Draw(at, text, style, std::isfinite(width) ? width : 0);
}

bool CairoCanvas::DrawPicture(const Box& box, const PictureSource& picture)
{
    const Box& shown = picture.shown;
    if (picture.bytes.empty() || !(shown.width > 0 && shown.height > 0) || !IsFinite(box))
        return false;
    cairo_surface_t* const surface = pictures_.Find(picture.bytes);
    if (surface == nullptr)
        return false;
    const Box whole{box.x - shown.x * box.width / shown.width,
                    box.y - shown.y * box.height / shown.height, box.width / shown.width,
                    box.height / shown.height};
    const Point corner{whole.Right(), whole.Bottom()};
    if (!(box.width > 0 && box.height > 0) || Within(corner) != corner)
        return true; // too small to be seen, or far from the page
    Clip(box);
    cairo_translate(cairo_, whole.x, whole.y);
    cairo_scale(cairo_, whole.width / cairo_image_surface_get_width(surface),
                whole.height / cairo_image_surface_get_height(surface));
    cairo_set_source_surface(cairo_, surface, 0, 0);
    cairo_paint(cairo_);
    Restore();
    return true;
}

void CairoCanvas::Push()
{
    cairo_save(cairo_);
    ++depth_;
}

void CairoCanvas::Clip(const Box& box)
{
    Push();
    const Point from = Within({box.x, box.y});
    const Point to = Within({box.Right(), box.Bottom()});
    cairo_new_path(cairo_);
    cairo_rectangle(cairo_, from.x, from.y, std::max(to.x - from.x, 0.0),
                    std::max(to.y - from.y, 0.0));
    cairo_set_fill_rule(cairo_, CAIRO_FILL_RULE_WINDING);
    cairo_clip(cairo_);
}

void CairoCanvas::Rotate(Point around, double degrees)
{
    Push();
    if (!IsFinite(around) || !std::isfinite(degrees))
        return;
    cairo_translate(cairo_, around.x, around.y);
    cairo_rotate(cairo_, std::fmod(degrees, 360) * std::numbers::pi / 180);
    cairo_translate(cairo_, -around.x, -around.y);
}

void CairoCanvas::Flip(const Box& box, bool horizontally, bool vertically)
{
    Push();
    const Point middle = box.Middle();
    if (!IsFinite(middle))
        return;
    cairo_translate(cairo_, middle.x, middle.y);
    cairo_scale(cairo_, horizontally ? -1 : 1, vertically ? -1 : 1);
    cairo_translate(cairo_, -middle.x, -middle.y);
}

void CairoCanvas::Place(Point origin, double scale)
{
    Push();
    if (!IsFinite(origin) || !(scale > 0))
        return;
    cairo_translate(cairo_, origin.x, origin.y);
    const double within = std::clamp(scale, 1 / kLargestScale, kLargestScale);
    cairo_scale(cairo_, within, within);
}

void CairoCanvas::Restore()
{
    assert(depth_ > 0);
    if (depth_ == 0)
        return;
    cairo_restore(cairo_);
    --depth_;
}

void CairoCanvas::BeginGroup(std::string_view /*id*/, std::string_view /*title*/) {}

void CairoCanvas::EndGroup() {}

} // namespace orrery::look
