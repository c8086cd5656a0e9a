#include "look/canvas/svg_canvas.h"

#include "look/canvas/svg_fills.h"
#include "look/canvas/svg_text.h"
#include "look/text/font_name.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <iterator>
#include <utility>

namespace orrery::look {

namespace {

/// A longer text has its width written, so that it keeps its place in a substituted font.
constexpr std::size_t kLongText = 12;
/// A path that grew so long is ended, for the sake of programs with limits.
constexpr std::size_t kLongestPath = 60'000;

void AppendPoint(std::string& out, Point point)
{
    AppendNumber(out, point.x);
    out += ' ';
    AppendNumber(out, point.y);
}

std::string BoxPath(const Box& box)
{
    return "M" + SvgNumber(box.x) + " " + SvgNumber(box.y) + "H" + SvgNumber(box.Right()) + "V" +
           SvgNumber(box.Bottom()) + "H" + SvgNumber(box.x) + "z";
}

std::string LinePath(Point from, Point to)
{
    std::string path = "M";
    AppendPoint(path, from);
    if (from.y == to.y)
        return path + "H" + SvgNumber(to.x);
    if (from.x == to.x)
        return path + "V" + SvgNumber(to.y);
    path += "L";
    AppendPoint(path, to);
    return path;
}

std::string PathData(const Path& path)
{
    std::string data;
    for (const auto& step : path) {
        switch (step.kind) {
        case PathStep::Kind::Move:
        case PathStep::Kind::Line:
            data += step.kind == PathStep::Kind::Move ? 'M' : 'L';
            AppendPoint(data, step.point);
            break;
        case PathStep::Kind::Curve:
            data += 'C';
            AppendPoint(data, step.control1);
            data += ' ';
            AppendPoint(data, step.control2);
            data += ' ';
            AppendPoint(data, step.point);
            break;
        case PathStep::Kind::Close:
            data += 'z';
            break;
        }
    }
    return data;
}

void AppendOpacity(std::string& css, std::string_view property, double opacity)
{
    if (opacity >= 1)
        return;
    css += ";";
    css += property;
    css += ":" + SvgNumber(std::max(opacity, 0.0));
}

std::string TextCss(const TextStyle& style)
{
    std::string css = "font-family:" + FontFamilies(style.font.name) +
                      ";font-size:" + SvgNumber(style.font.size * kPixelsPerPoint) + "px";
    if (style.font.bold)
        css += ";font-weight:bold";
    if (style.font.italic)
        css += ";font-style:italic";
    if (style.color != book::kBlack)
        css += ";fill:" + SvgColor(style.color);
    return css;
}

/// Whether the font that stands in for a font has its widths, on every machine that has either.
bool HasEqualSubstitute(std::string_view name)
{
    static constexpr std::array<std::string_view, 12> kNames{
        "Calibri",         "Cambria", "Arial",   "Arial Narrow",    "Courier New", "Helvetica",
        "Times New Roman", "Carlito", "Caladea", "Liberation Sans", "Times",       "Courier"};
    return std::find(std::begin(kNames), std::end(kNames), name) != std::end(kNames);
}

bool HasOuterBlanks(std::string_view text)
{
    return text.front() == ' ' || text.back() == ' ' || text.find("  ") != std::string_view::npos;
}

} // namespace

SvgCanvas::SvgCanvas(double width, double height, std::string_view title)
    : width_(width), height_(height), title_(title)
{
    frames_.emplace_back();
}

std::string SvgCanvas::PenCss(const Pen& pen) const
{
    std::string css = "fill:none;stroke:" + SvgColor(pen.color);
    if (pen.width != 1)
        css += ";stroke-width:" + SvgNumber(std::max(pen.width, 0.0));
    AppendOpacity(css, "stroke-opacity", pen.opacity);
    if (!pen.dashes.empty()) {
        css += ";stroke-dasharray:";
        for (std::size_t i = 0; i < pen.dashes.size(); ++i)
            css += (i > 0 ? "," : "") + SvgNumber(std::max(pen.dashes[i], 0.0));
    }
    return css;
}

std::string SvgCanvas::BrushCss(const Brush& brush)
{
    const std::string paint = SvgPaint(brush.fill, definitions_);
    if (paint.empty())
        return {};
    std::string css = "fill:" + paint;
    AppendOpacity(css, "fill-opacity", brush.opacity);
    return css;
}

void SvgCanvas::Gather(const std::string& css, std::string_view path, bool joins)
{
    if (!joins || css != pendingCss_ || pendingPath_.size() > kLongestPath) {
        FlushPending();
        pendingCss_ = css;
    }
    pendingPath_ += path;
    if (!joins)
        FlushPending();
}

void SvgCanvas::FlushPending()
{
    if (pendingPath_.empty())
        return;
    const std::string name = classes_.Use(pendingCss_);
    const std::string element = "<path class=\"" + name + "\" d=\"" + pendingPath_ + "\"/>\n";
    pendingPath_.clear();
    pendingCss_.clear();
    AppendElement(element);
}

void SvgCanvas::AppendElement(std::string_view element)
{
    FlushPending();
    auto& frame = frames_.back();
    ++frame.elements;
    frame.hasId = false;
    frame.hasClip = false;
    frame.hasTransform = false;
    frame.content += element;
}

void SvgCanvas::FillBox(const Box& box, const Brush& brush)
{
    if (!(box.width > 0 && box.height > 0))
        return;
    const auto& gradient = brush.fill.gradient;
    if (gradient && gradient->isPath && gradient->stops.size() > 1) {
        FillAlongEdges(box, *gradient, brush.opacity);
        return;
    }
    if (const std::string css = BrushCss(brush); !css.empty())
        Gather(css, BoxPath(box), !gradient && brush.opacity >= 1);
}

void SvgCanvas::FillAlongEdges(const Box& box, const book::Gradient& gradient, double opacity)
{
    const auto share = [](double value) { return std::clamp(value, 0.0, 1.0); };
    const double left = box.x + share(gradient.left) * box.width;
    const double right = std::max(left, box.x + share(gradient.right) * box.width);
    const double top = box.y + share(gradient.top) * box.height;
    const double bottom = std::max(top, box.y + share(gradient.bottom) * box.height);
    const auto solid = [opacity](book::Color color) { return SolidBrush(color, opacity); };
    if (opacity >= 1) // no gap shows between the parts
        FillBox(box, solid(gradient.stops.back().color));
    const auto part = [&](Point a, Point b, Point c, Point d, double degree) {
        std::string css = "fill:" + SvgLinearGradient(gradient.stops, degree, definitions_);
        AppendOpacity(css, "fill-opacity", opacity);
        using enum PathStep::Kind;
        Gather(css,
               PathData({{Move, a, {}, {}},
                         {Line, b, {}, {}},
                         {Line, c, {}, {}},
                         {Line, d, {}, {}},
                         {Close, {}, {}, {}}}),
               false);
    };
    const std::array corners{Point{box.x, box.y}, Point{box.Right(), box.y},
                             Point{box.Right(), box.Bottom()}, Point{box.x, box.Bottom()}};
    const std::array inner{Point{left, top}, Point{right, top}, Point{right, bottom},
                           Point{left, bottom}};
    if (left > box.x)
        part(corners[0], inner[0], inner[3], corners[3], 180);
    if (right < box.Right())
        part(corners[1], inner[1], inner[2], corners[2], 0);
    if (top > box.y)
        part(corners[0], inner[0], inner[1], corners[1], 270);
    if (bottom < box.Bottom())
        part(corners[3], inner[3], inner[2], corners[2], 90);
    FillBox({left, top, right - left, bottom - top}, solid(gradient.stops.front().color));
}

void SvgCanvas::DrawLine(Point from, Point to, const Pen& pen)
{
    Gather(PenCss(pen), LinePath(from, to), pen.opacity >= 1);
}

void SvgCanvas::DrawPath(const Path& path, const std::optional<Brush>& fill,
                         const std::optional<Pen>& pen)
{
    std::string inside = fill ? BrushCss(*fill) : std::string();
    if (!inside.empty() && fill->isEvenOdd)
        inside += ";fill-rule:evenodd";
    std::string css = pen ? PenCss(*pen) : std::string();
    if (path.empty() || (inside.empty() && css.empty()))
        return;
    if (css.empty())
        css = inside;
    else if (!inside.empty())
        css.replace(0, std::string_view("fill:none").size(), inside);
    Gather(css, PathData(path), false);
}

void SvgCanvas::DrawText(Point at, std::string_view text, const TextStyle& style, double width)
{
    if (text.empty() || !(style.font.size > 0))
        return;
    std::string element = "<text class=\"" + classes_.Use(TextCss(style)) + "\" x=\"" +
                          SvgNumber(at.x) + "\" y=\"" + SvgNumber(at.y) + "\"";
    if (style.isRightToLeft)
        element += R"( direction="rtl" unicode-bidi="embed" text-anchor="end")";
    const bool isWidthKnown = HasEqualSubstitute(style.font.name) && text.size() < kLongText;
    if (width > 0 && text.size() > 1 && !isWidthKnown)
        element += " textLength=\"" + SvgNumber(width) + R"(" lengthAdjust="spacingAndGlyphs")";
    if (HasOuterBlanks(text))
        element += R"( xml:space="preserve")";
    element += ">";
    AppendEscaped(element, text);
    element += "</text>\n";
    AppendElement(element);
}

void SvgCanvas::Push(Kind kind, std::string attribute, std::string_view title)
{
    FlushPending();
    Frame frame;
    frame.kind = kind;
    frame.attribute = std::move(attribute);
    frame.title = title;
    frames_.push_back(std::move(frame));
}

void SvgCanvas::Pop()
{
    FlushPending();
    if (frames_.size() < 2)
        return;
    Frame frame = std::move(frames_.back());
    frames_.pop_back();
    if (frame.elements > 0)
        AppendFrame(std::move(frame));
}

void SvgCanvas::AppendFrame(Frame frame)
{
    const bool isTaken = frame.kind == Kind::Id ? frame.hasId
                         : frame.kind == Kind::Clip
                             ? frame.hasClip || frame.hasTransform // it clips what is turned
                             : frame.hasTransform;
    if (frame.elements == 1 && frame.title.empty() && !isTaken) {
        frame.content.insert(frame.content.find_first_of(" >"), frame.attribute);
        AppendElement(frame.content);
    }
    else {
        std::string element = "<g" + frame.attribute + ">";
        if (!frame.title.empty()) {
            element += "<title>";
            AppendEscaped(element, frame.title);
            element += "</title>";
        }
        element += "\n" + frame.content + "</g>\n";
        AppendElement(element);
        frame.hasId = frame.hasClip = frame.hasTransform = false;
    }
    auto& parent = frames_.back();
    parent.hasId = frame.hasId || frame.kind == Kind::Id;
    parent.hasClip = frame.hasClip || frame.kind == Kind::Clip;
    parent.hasTransform = frame.hasTransform || frame.kind == Kind::Transform;
}

void SvgCanvas::Clip(const Box& box)
{
    const Box shown{box.x, box.y, std::max(box.width, 0.0), std::max(box.height, 0.0)};
    const std::string id =
        definitions_.Use("clipPath", "clip-", "><path d=\"" + BoxPath(shown) + "\"/></clipPath>");
    Push(Kind::Clip, " clip-path=\"url(#" + id + ")\"");
}

void SvgCanvas::Rotate(Point around, double degrees)
{
    Push(Kind::Transform, " transform=\"rotate(" + SvgNumber(degrees) + " " + SvgNumber(around.x) +
                              " " + SvgNumber(around.y) + ")\"");
}

void SvgCanvas::Flip(const Box& box, bool horizontally, bool vertically)
{
    const Point middle = box.Middle();
    std::string matrix = horizontally ? "-1 0 0 " : "1 0 0 ";
    matrix += vertically ? "-1 " : "1 ";
    AppendPoint(matrix, {horizontally ? 2 * middle.x : 0, vertically ? 2 * middle.y : 0});
    Push(Kind::Transform, " transform=\"matrix(" + matrix + ")\"");
}

void SvgCanvas::Place(Point origin, double scale)
{
    std::string transform = "translate(";
    AppendPoint(transform, origin);
    transform += ")";
    if (scale != 1) // in percent, lest two decimals move what is far from the origin
        transform += " scale(" + SvgNumber(scale * 100) + "e-2)";
    Push(Kind::Transform, " transform=\"" + transform + "\"");
}

void SvgCanvas::Restore()
{
    assert(frames_.back().kind == Kind::Clip || frames_.back().kind == Kind::Transform);
    Pop();
}

void SvgCanvas::BeginGroup(std::string_view id, std::string_view title)
{
    Push(Kind::Id, " id=\"" + definitions_.UniqueId(id) + "\"", title);
}

void SvgCanvas::EndGroup()
{
    assert(frames_.back().kind == Kind::Id);
    Pop();
}

std::string SvgCanvas::Finish()
{
    while (frames_.size() > 1)
        Pop();
    FlushPending();
    std::string out = "<svg xmlns=\"http://www.w3.org/2000/svg\" "
                      "xmlns:xlink=\"http://www.w3.org/1999/xlink\"";
    out += " width=\"" + SvgNumber(width_) + "px\" height=\"" + SvgNumber(height_) + "px\"";
    out += " viewBox=\"0 0 " + SvgNumber(width_) + " " + SvgNumber(height_) + "\">\n<title>";
    AppendEscaped(out, title_);
    // As spreadsheet programs set texts: by the advance of each character alone.
    out += "</title>\n<style>\n"
           "text{text-rendering:geometricPrecision;font-kerning:none;"
           "font-variant-ligatures:none}\n";
    classes_.AppendTo(out);
    out += "</style>\n";
    definitions_.AppendTo(out);
    out += frames_.front().content + "</svg>\n";
    return out;
}

} // namespace orrery::look
