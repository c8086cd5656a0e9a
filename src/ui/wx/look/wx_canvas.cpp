#include "ui/wx/look/wx_canvas.h"

#include "look/canvas/gradients.h"
#include "ui/wx/look/brushes.h"
#include "ui/wx/look/dashes.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <numbers>

namespace orrery::ui::wx {
namespace {

using look::Box;
using look::IsFilling;
using look::IsFromInside;
using look::Path;
using look::PathStep;
using look::Point;

/// Coordinates so far outside of what is seen are cut: the toolkit's numbers are not as large as
/// a sheet.
constexpr double kReach = 1e5;
constexpr double kLargestScale = 1e3;

bool IsFinite(Point point)
{
    return std::isfinite(point.x) && std::isfinite(point.y);
}

bool IsFinite(const Box& box)
{
    return IsFinite(Point{box.x, box.y}) && IsFinite(Point{box.width, box.height});
}

wxGraphicsPen MakePen(wxGraphicsContext& context, const look::Pen& pen)
{
    return context.CreatePen(wxGraphicsPenInfo(ToColour(pen.color, pen.opacity), pen.width)
                                 .Join(wxJOIN_MITER)
                                 .Cap(wxCAP_BUTT));
}

} // namespace

WxCanvas::WxCanvas(wxGraphicsContext& context, PictureCache& pictures)
    : context_(context), pictures_(pictures), texts_(MakeTextDrawing(context))
{
    context_.DisableOffset(); // who paints has chosen the places of lines
}

WxCanvas::~WxCanvas()
{
    while (depth_ > 0)
        Restore();
}

const Box& WxCanvas::Visible()
{
    if (!visible_) {
        Box box;
        context_.GetClipBox(&box.x, &box.y, &box.width, &box.height);
        visible_ = box;
    }
    return *visible_;
}

Point WxCanvas::Within(Point point)
{
    const Box& seen = Visible();
    const auto within = [](double value, double low, double high) {
        return std::isnan(value) ? low : std::clamp(value, low - kReach, high + kReach);
    };
    return {within(point.x, seen.x, seen.Right()), within(point.y, seen.y, seen.Bottom())};
}

wxGraphicsPath WxCanvas::MakePath(const Path& path)
{
    wxGraphicsPath made = context_.CreatePath();
    bool isBegun = false;
    for (const PathStep& step : path) {
        const Point point = Within(step.point);
        if (!isBegun && step.kind != PathStep::Kind::Close)
            made.MoveToPoint(point.x, point.y);
        isBegun = isBegun || step.kind != PathStep::Kind::Close;
        switch (step.kind) {
        case PathStep::Kind::Move:
            made.MoveToPoint(point.x, point.y);
            break;
        case PathStep::Kind::Line:
            made.AddLineToPoint(point.x, point.y);
            break;
        case PathStep::Kind::Curve: {
            const Point first = Within(step.control1);
            const Point second = Within(step.control2);
            made.AddCurveToPoint(first.x, first.y, second.x, second.y, point.x, point.y);
            break;
        }
        case PathStep::Kind::Close:
            if (isBegun)
                made.CloseSubpath();
            break;
        }
    }
    return made;
}

void WxCanvas::FillPath(const wxGraphicsPath& path, const wxGraphicsBrush& brush, bool isEvenOdd)
{
    context_.SetBrush(brush);
    context_.FillPath(path, isEvenOdd ? wxODDEVEN_RULE : wxWINDING_RULE);
}

void WxCanvas::FillBox(const Box& box, const look::Brush& brush)
{
    if (!(box.width > 0 && box.height > 0) || !IsFinite(box) || !IsFilling(brush.fill))
        return;
    if (IsFromInside(brush.fill)) {
        FillAlongEdges(box, *brush.fill.gradient, brush.opacity);
        return;
    }
    FillPath(MakePath(look::PathOfBox(OnPixels(box))), PlainBrush(context_, brush, box));
}

/// The box with its sides between pixels, so that no line shows between neighbours. One that is
/// turned or thinner than a pixel stays as it is.
Box WxCanvas::OnPixels(const Box& box) const
{
    double across = 0, down = 0, turnedAcross = 0, turnedDown = 0, left = 0, top = 0;
    context_.GetTransform().Get(&across, &turnedDown, &turnedAcross, &down, &left, &top);
    if (turnedAcross != 0 || turnedDown != 0 || across == 0 || down == 0)
        return box;
    const auto pixel = [](double place, double scale, double origin) {
        return (std::round(place * scale + origin) - origin) / scale;
    };
    const Point first{pixel(box.x, across, left), pixel(box.y, down, top)};
    const Point last{pixel(box.x + box.width, across, left), pixel(box.y + box.height, down, top)};
    const Box snapped{first.x, first.y, last.x - first.x, last.y - first.y};
    return snapped.width > 0 && snapped.height > 0 ? snapped : box;
}

void WxCanvas::FillAlongEdges(const Box& box, const book::Gradient& gradient, double opacity)
{
    const auto solid = [opacity](book::Color color) { return look::SolidBrush(color, opacity); };
    if (opacity >= 1) // no gap shows between the parts
        FillBox(box, solid(gradient.stops.back().color));
    const look::GradientSides parts = look::SidesOfGradient(gradient, box);
    for (const look::GradientSide& side : parts.sides)
        FillPath(MakePath(side.path),
                 LinearBrush(context_, gradient.stops, side.degree, side.box, opacity));
    FillBox(parts.inner, solid(gradient.stops.front().color));
}

void WxCanvas::FillFromInside(const Path& path, const Box& box, const look::Brush& brush)
{
    const auto inBox = [&box](Point point) {
        return Point{(point.x - box.x) / box.width, (point.y - box.y) / box.height};
    };
    Path unit = path;
    for (PathStep& step : unit) {
        step.point = inBox(step.point);
        step.control1 = inBox(step.control1);
        step.control2 = inBox(step.control2);
    }
    Push();
    context_.Translate(box.x, box.y);
    context_.Scale(box.width, box.height);
    FillPath(MakePath(unit), RadialBrush(context_, *brush.fill.gradient, brush.opacity),
             brush.isEvenOdd);
    Restore();
}

void WxCanvas::Fill(const Path& path, const look::Brush& brush)
{
    if (!IsFilling(brush.fill))
        return;
    const wxGraphicsPath made = MakePath(path);
    Box box;
    if (brush.fill.gradient)
        made.GetBox(&box.x, &box.y, &box.width, &box.height);
    if (IsFromInside(brush.fill) && box.width > 0 && box.height > 0)
        FillFromInside(path, box, brush);
    else
        FillPath(made, PlainBrush(context_, brush, box), brush.isEvenOdd);
}

void WxCanvas::Stroke(const Path& path, const look::Pen& pen)
{
    if (!(pen.width > 0) || !std::isfinite(pen.width))
        return;
    context_.SetPen(MakePen(context_, pen));
    if (pen.dashes.empty()) {
        context_.StrokePath(MakePath(path));
        return;
    }
    const Box& seen = Visible();
    const double margin = pen.width + 1;
    const Path dashed = DashedPath(
        path, pen.dashes,
        {seen.x - margin, seen.y - margin, seen.width + 2 * margin, seen.height + 2 * margin});
    context_.StrokePath(MakePath(dashed));
}

void WxCanvas::DrawLine(Point from, Point to, const look::Pen& pen)
{
    if (IsFinite(from) && IsFinite(to))
        Stroke({{PathStep::Kind::Move, from, {}, {}}, {PathStep::Kind::Line, to, {}, {}}}, pen);
}

void WxCanvas::DrawPath(const Path& path, const std::optional<look::Brush>& fill,
                        const std::optional<look::Pen>& pen)
{
    if (path.empty())
        return;
    if (fill)
        Fill(path, *fill);
    if (pen)
        Stroke(path, *pen);
}

void WxCanvas::DrawText(Point at, std::string_view text, const look::TextStyle& style, double width)
{
    if (!text.empty() && style.font.size > 0 && IsFinite(at) && Within(at) == at)
        texts_->Draw(at, text, style, std::isfinite(width) ? width : 0);
}

bool WxCanvas::DrawPicture(const Box& box, const look::PictureSource& picture)
{
    const Box& shown = picture.shown;
    if (picture.bytes.empty() || !(shown.width > 0 && shown.height > 0) || !IsFinite(box))
        return false;
    const wxGraphicsBitmap* const bitmap = pictures_.Find(context_, picture.bytes);
    if (bitmap == nullptr)
        return false;
    if (!(box.width > 0 && box.height > 0))
        return true; // too small to be seen
    const Box whole{box.x - shown.x * box.width / shown.width,
                    box.y - shown.y * box.height / shown.height, box.width / shown.width,
                    box.height / shown.height};
    if (!IsFinite(whole) || Within({whole.x, whole.y}) != Point{whole.x, whole.y})
        return true; // far from what is seen
    const bool isCut = whole != box;
    if (isCut)
        Clip(box);
    context_.DrawBitmap(*bitmap, whole.x, whole.y, whole.width, whole.height);
    if (isCut)
        Restore();
    return true;
}

void WxCanvas::Push()
{
    context_.PushState();
    ++depth_;
    visible_.reset();
}

void WxCanvas::Clip(const Box& box)
{
    const Point from = Within({box.x, box.y});
    const Point to = Within({box.Right(), box.Bottom()});
    Push();
    context_.Clip(from.x, from.y, std::max(to.x - from.x, 0.0), std::max(to.y - from.y, 0.0));
}

void WxCanvas::Rotate(Point around, double degrees)
{
    Push();
    if (!IsFinite(around) || !std::isfinite(degrees))
        return;
    context_.Translate(around.x, around.y);
    context_.Rotate(std::fmod(degrees, 360) * std::numbers::pi / 180);
    context_.Translate(-around.x, -around.y);
}

void WxCanvas::Flip(const Box& box, bool horizontally, bool vertically)
{
    Push();
    const Point middle = box.Middle();
    if (!IsFinite(middle))
        return;
    context_.Translate(middle.x, middle.y);
    context_.Scale(horizontally ? -1 : 1, vertically ? -1 : 1);
    context_.Translate(-middle.x, -middle.y);
}

void WxCanvas::Place(Point origin, double scale)
{
    Push();
    if (!IsFinite(origin) || !(scale > 0))
        return;
    context_.Translate(origin.x, origin.y);
    const double within = std::clamp(scale, 1 / kLargestScale, kLargestScale);
    context_.Scale(within, within);
}

void WxCanvas::Restore()
{
    assert(depth_ > 0);
    if (depth_ == 0)
        return;
    context_.PopState();
    --depth_;
    visible_.reset();
}

void WxCanvas::BeginGroup(std::string_view /*id*/, std::string_view /*title*/) {}

void WxCanvas::EndGroup() {}

} // namespace orrery::ui::wx
