#include "engines/builtin/xls/look/drawing/shape_look.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/look/drawing/art_colors.h"
#include "engines/builtin/xls/look/drawing/geometry_names.h"

#include <algorithm>
#include <cmath>

namespace orrery::xls {
namespace {

constexpr double kEmuPerPoint = 12700;
constexpr unsigned kIsFilled = 4; // bits of the flags of fills and lines
constexpr unsigned kHasLine = 3;
constexpr std::uint32_t kFirstShade = 4; // kinds of fills, [MS-ODRAW] 2.4.11
constexpr std::uint32_t kLastShade = 8;
constexpr std::uint32_t kCenterShade = 5;
constexpr std::uint32_t kShapeShade = 6;
constexpr std::uint32_t kPatternFill = 1;

constexpr std::uint32_t kOpaque = 65536;

/// Colours at places along a gradient of more than two colours. [MS-ODRAW] 2.3.7.24
std::vector<book::GradientStop> StopsOf(const ShapeProperties& properties, const ArtColors& colors)
{
    constexpr std::size_t kHeader = 6;
    constexpr std::size_t kSize = 8;
    constexpr std::size_t kMost = 100;
    std::vector<book::GradientStop> stops;
    const std::string_view data = properties.Data(ShapeProperty::FillStops);
    if (data.size() < kHeader)
        return stops;
    const auto count =
        std::min<std::size_t>({ReadU16(data, 0), (data.size() - kHeader) / kSize, kMost});
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = kHeader + kSize * i;
        const auto position = static_cast<std::int32_t>(ReadU32(data, at + 4)) / 65536.0;
        stops.push_back({std::clamp(position, 0.0, 1.0), colors.Resolve(ReadU32(data, at))});
    }
    std::stable_sort(stops.begin(), stops.end(), [](const auto& one, const auto& other) {
        return one.position < other.position;
    });
    return stops;
}

/// The stops of a gradient that runs from the fill's colour to its background, which it reaches at
/// the focus, and back again. A negative focus exchanges the two.
std::vector<book::GradientStop> ThroughFocus(std::vector<book::GradientStop> stops, double focus)
{
    const double share = std::clamp(std::abs(focus) / 100, 0.0, 1.0);
    const auto reversed = [](std::vector<book::GradientStop> list) {
        std::reverse(list.begin(), list.end());
        for (book::GradientStop& stop : list)
            stop.position = 1 - stop.position;
        return list;
    };
    if (focus < 0)
        stops = reversed(std::move(stops));
    std::vector<book::GradientStop> result;
    for (book::GradientStop stop : stops) {
        stop.position *= share;
        if (share > 0)
            result.push_back(stop);
    }
    for (book::GradientStop stop : reversed(stops)) {
        stop.position = share + stop.position * (1 - share);
        if (share < 1)
            result.push_back(stop);
    }
    return result;
}

book::Gradient GradientOf(std::uint32_t kind, const ShapeProperties& properties,
                          const ArtColors& colors)
{
    book::Gradient gradient;
    gradient.stops = StopsOf(properties, colors);
    if (gradient.stops.size() < 2)
        gradient.stops = {{0, colors.Find(ShapeProperty::FillColor, book::kWhite)},
                          {1, colors.Find(ShapeProperty::FillBackColor, book::kWhite)}};
    gradient.isPath = kind == kCenterShade || kind == kShapeShade;
    gradient.stops =
        ThroughFocus(std::move(gradient.stops), properties.Signed(ShapeProperty::FillFocus, 0));
    if (gradient.isPath)
        gradient.left = gradient.right = gradient.top = gradient.bottom = 0.5;
    else // an angle of 0 runs down
        gradient.degree =
            std::fmod(90 + properties.Fixed(ShapeProperty::FillAngle, 0) + 720, 360.0);
    return gradient;
}

void ReadFill(const ArtShape& shape, const ArtColors& colors, bool isDefault,
              book::Drawing& drawing)
{
    const ShapeProperties& properties = shape.properties;
    if (!properties.Flag(ShapeProperty::FillFlags, kIsFilled, isDefault))
        return;
    const std::uint32_t kind = properties.Value(ShapeProperty::FillKind, 0);
    book::Fill fill;
    fill.pattern = kind == kPatternFill ? book::FillPattern::MediumGray : book::FillPattern::Solid;
    fill.foreground = colors.Find(ShapeProperty::FillColor, book::kWhite);
    if (kind == kPatternFill)
        fill.background = colors.Find(ShapeProperty::FillBackColor, book::kWhite);
    if (kind >= kFirstShade && kind <= kLastShade)
        fill.gradient = GradientOf(kind, properties, colors);
    drawing.fill = std::move(fill);
    drawing.fillOpacity = std::clamp(
        properties.Value(ShapeProperty::FillOpacity, kOpaque) / double{kOpaque}, 0.0, 1.0);
}

/// [MS-ODRAW] 2.4.15 (MSOLINEDASHING), 2.4.16 (MSOLINESTYLE)
book::LineStyle LineStyleOf(const ShapeProperties& properties, double width)
{
    using enum book::LineStyle;
    constexpr double kThick = 1.5;
    const bool isThick = width >= kThick;
    switch (properties.Value(ShapeProperty::LineDashes, 0)) {
    case 0:
        return properties.Value(ShapeProperty::LineStyle, 0) == 0 ? Thin : Double;
    case 2:
    case 5:
        return Dotted;
    case 3:
    case 8:
    case 9:
        return isThick ? MediumDashDot : DashDot;
    case 4:
    case 10:
        return isThick ? MediumDashDotDot : DashDotDot;
    default:
        return isThick ? MediumDashed : Dashed;
    }
}

void ReadLine(const ArtShape& shape, const ArtColors& colors, bool isDefault,
              book::Drawing& drawing)
{
    const ShapeProperties& properties = shape.properties;
    book::Outline& line = drawing.outline;
    line.isVisible = properties.Flag(ShapeProperty::LineFlags, kHasLine, isDefault);
    line.color = colors.Find(ShapeProperty::LineColor, book::kBlack);
    constexpr std::uint32_t kUsualWidth = 9525;
    constexpr double kMostPoints = 1584;
    line.width = std::min(properties.Value(ShapeProperty::LineWidth, kUsualWidth) / kEmuPerPoint,
                          kMostPoints);
    line.style = LineStyleOf(properties, line.width);
    drawing.hasArrowAtStart = properties.Value(ShapeProperty::LineStartArrow, 0) != 0;
    drawing.hasArrowAtEnd = properties.Value(ShapeProperty::LineEndArrow, 0) != 0;
}

} // namespace

double RotationOf(const ShapeProperties& properties)
{
    const double rotation = std::fmod(properties.Fixed(ShapeProperty::Rotation, 0), 360.0);
    return rotation < 0 ? rotation + 360 : rotation;
}

bool LiesOnItsSide(double rotation)
{
    return (rotation >= 45 && rotation < 135) || (rotation >= 225 && rotation < 315);
}

void ReadShapeLook(const ArtShape& shape, const DrawingStyles& styles, bool hasFrame,
                   book::Drawing& drawing)
{
    const ArtColors colors(shape.properties, styles);
    drawing.rotation = RotationOf(shape.properties);
    drawing.flipsHorizontally = (shape.flags & ArtShape::kFlipsHorizontally) != 0;
    drawing.flipsVertically = (shape.flags & ArtShape::kFlipsVertically) != 0;
    drawing.geometry = GeometryName(shape.type);
    drawing.adjustments = AdjustmentsOf(shape.type, shape.properties);
    if (!IsLineType(shape.type))
        ReadFill(shape, colors, hasFrame, drawing);
    ReadLine(shape, colors, hasFrame, drawing);
}

book::ShareBox CropOf(const ShapeProperties& properties)
{
    const auto share = [&](ShapeProperty side) {
        return std::clamp(properties.Fixed(side, 0), -10.0, 10.0);
    };
    const book::ShareBox box{share(ShapeProperty::CropLeft), share(ShapeProperty::CropTop),
                             1 - share(ShapeProperty::CropRight),
                             1 - share(ShapeProperty::CropBottom)};
    return box.right > box.left && box.bottom > box.top ? box : book::ShareBox();
}

} // namespace orrery::xls
