#include "engines/builtin/xlsx/look/drawing/values/fills.h"

#include "engines/builtin/common/words.h"
#include "engines/builtin/xlsx/look/drawing/values/attribute_values.h"

#include <algorithm>
#include <string_view>

namespace orrery::xlsx::drawing {
namespace {

using book::FillPattern;
using book::LineStyle;

constexpr std::size_t kMaxStops = 64;
constexpr double kEmuPerPoint = 12700;

/// ECMA-376 20.1.10.51 (ST_PresetPatternVal): the nearest of the patterns of cells.
constexpr builtin::Words<FillPattern, 50> kPatterns{{
    {"pct5", FillPattern::Gray0625},           {"pct10", FillPattern::Gray125},
    {"pct20", FillPattern::LightGray},         {"pct25", FillPattern::LightGray},
    {"pct30", FillPattern::LightGray},         {"pct40", FillPattern::MediumGray},
    {"pct50", FillPattern::MediumGray},        {"pct60", FillPattern::MediumGray},
    {"pct70", FillPattern::DarkGray},          {"pct75", FillPattern::DarkGray},
    {"pct80", FillPattern::DarkGray},          {"pct90", FillPattern::DarkGray},
    {"horz", FillPattern::LightHorizontal},    {"ltHorz", FillPattern::LightHorizontal},
    {"narHorz", FillPattern::LightHorizontal}, {"dashHorz", FillPattern::LightHorizontal},
    {"dkHorz", FillPattern::DarkHorizontal},   {"vert", FillPattern::LightVertical},
    {"ltVert", FillPattern::LightVertical},    {"narVert", FillPattern::LightVertical},
    {"dashVert", FillPattern::LightVertical},  {"dkVert", FillPattern::DarkVertical},
    {"dnDiag", FillPattern::LightDown},        {"ltDnDiag", FillPattern::LightDown},
    {"dashDnDiag", FillPattern::LightDown},    {"wdDnDiag", FillPattern::DarkDown},
    {"dkDnDiag", FillPattern::DarkDown},       {"upDiag", FillPattern::LightUp},
    {"ltUpDiag", FillPattern::LightUp},        {"dashUpDiag", FillPattern::LightUp},
    {"wdUpDiag", FillPattern::DarkUp},         {"dkUpDiag", FillPattern::DarkUp},
    {"cross", FillPattern::LightGrid},         {"smGrid", FillPattern::LightGrid},
    {"lgGrid", FillPattern::LightGrid},        {"dotGrid", FillPattern::LightGrid},
    {"smCheck", FillPattern::DarkGrid},        {"lgCheck", FillPattern::DarkGrid},
    {"diagCross", FillPattern::LightTrellis},  {"openDmnd", FillPattern::LightTrellis},
    {"dotDmnd", FillPattern::LightTrellis},    {"solidDmnd", FillPattern::DarkTrellis},
    {"trellis", FillPattern::DarkTrellis},     {"smConfetti", FillPattern::LightGray},
    {"lgConfetti", FillPattern::MediumGray},   {"zigZag", FillPattern::LightHorizontal},
    {"wave", FillPattern::LightHorizontal},    {"weave", FillPattern::LightTrellis},
    {"plaid", FillPattern::DarkGrid},          {"sphere", FillPattern::DarkTrellis},
}};

FillPattern PatternOf(std::string_view name)
{
    return builtin::ValueOfWord(kPatterns, name).value_or(FillPattern::MediumGray);
}

ShapeFill Filled(const ShapeColor& color)
{
    ShapeFill fill{ShapeFill::Kind::Filled, {}, color.opacity, {}};
    fill.fill.pattern = FillPattern::Solid;
    fill.fill.foreground = color.color;
    return fill;
}

ShapeFill NoFill()
{
    return {ShapeFill::Kind::None, {}, 1, {}};
}

ShapeFill SolidFill(const xml::Element& element, const ColorSource& colors)
{
    const auto color = ReadColor(element, colors);
    return color ? Filled(*color) : NoFill();
}

ShapeFill PatternFill(const xml::Element& element, const ColorSource& colors)
{
    const auto front = ReadColor(element.Child("fgClr"), colors);
    const auto back = ReadColor(element.Child("bgClr"), colors);
    ShapeFill fill = Filled(front.value_or(ShapeColor{book::kBlack, 1}));
    fill.fill.pattern = PatternOf(element.Attribute("prst"));
    fill.fill.background = back ? back->color : book::kWhite;
    return fill;
}

void ReadPathGradient(const xml::Element& path, book::Gradient& gradient)
{
    const xml::Element inner = path.Child("fillToRect");
    const auto share = [&](const char* side) {
        return std::clamp(ShareOf(inner, side).value_or(0), 0.0, 1.0);
    };
    gradient.isPath = true;
    gradient.left = share("l");
    gradient.top = share("t");
    gradient.right = std::max(gradient.left, 1 - share("r"));
    gradient.bottom = std::max(gradient.top, 1 - share("b"));
}

ShapeFill GradientFill(const xml::Element& element, const ColorSource& colors)
{
    ShapeFill fill{ShapeFill::Kind::Filled, {}, 0, {}};
    book::Gradient gradient;
    for (const xml::Element stop : element.Child("gsLst")) {
        const auto color = ReadColor(stop, colors);
        if (!color || gradient.stops.size() == kMaxStops)
            continue;
        const double position = std::clamp(ShareOf(stop, "pos").value_or(0), 0.0, 1.0);
        gradient.stops.push_back({position, color->color});
        fill.opacity = std::max(fill.opacity, color->opacity);
    }
    if (gradient.stops.empty())
        return NoFill();
    std::stable_sort(
        gradient.stops.begin(), gradient.stops.end(),
        [](const auto& left, const auto& right) { return left.position < right.position; });
    gradient.degree = DegreesOf(element.Child("lin"), "ang");
    if (const xml::Element path = element.Child("path"))
        ReadPathGradient(path, gradient);
    fill.fill.pattern = FillPattern::Solid;
    fill.fill.foreground = gradient.stops.front().color;
    fill.fill.gradient = std::move(gradient);
    return fill;
}

LineStyle DashOf(const xml::Element& line)
{
    const std::string dash = line.Child("prstDash").Attribute("val");
    if (dash == "dot" || dash == "sysDot")
        return LineStyle::Dotted;
    if (dash == "dash" || dash == "sysDash")
        return LineStyle::Dashed;
    if (dash == "lgDash")
        return LineStyle::MediumDashed;
    if (dash == "dashDot" || dash == "sysDashDot")
        return LineStyle::DashDot;
    if (dash == "lgDashDot")
        return LineStyle::MediumDashDot;
    if (dash == "sysDashDotDot")
        return LineStyle::DashDotDot;
    if (dash == "lgDashDotDot")
        return LineStyle::MediumDashDotDot;
    if (line.Child("custDash"))
        return LineStyle::Dashed;
    const bool isDouble = line.Attribute("cmpd").size() > 3; // "dbl", "tri" and two uneven ones
    return isDouble || line.Is("cmpd", "dbl") || line.Is("cmpd", "tri") ? LineStyle::Double
                                                                        : LineStyle::Thin;
}

bool HasArrow(const xml::Element& end)
{
    return end.Has("type") && !end.Is("type", "none");
}

/// Puts the properties of a line element over those that are known.
void ReadLineOver(const xml::Element& line, const ColorSource& colors, ShapeLine& result)
{
    if (!line)
        return;
    const ShapeFill fill = ReadFill(line, colors);
    if (fill.kind != ShapeFill::Kind::NotGiven) {
        result.isFillGiven = true;
        result.outline.isVisible = fill.kind == ShapeFill::Kind::Filled && fill.opacity > 0;
        result.outline.color = MainColor(fill);
    }
    if (line.Has("w"))
        result.outline.width =
            std::clamp<double>(static_cast<double>(EmuOf(line, "w", 9525)) / kEmuPerPoint, 0, 1584);
    if (line.Child("prstDash") || line.Child("custDash") || line.Has("cmpd"))
        result.outline.style = DashOf(line);
    if (line.Child("headEnd"))
        result.hasArrowAtStart = HasArrow(line.Child("headEnd"));
    if (line.Child("tailEnd"))
        result.hasArrowAtEnd = HasArrow(line.Child("tailEnd"));
}

} // namespace

ShapeFill ReadFillElement(const xml::Element& fill, const ColorSource& colors)
{
    const std::string_view name = fill.Name();
    if (name == "noFill")
        return NoFill();
    if (name == "solidFill")
        return SolidFill(fill, colors);
    if (name == "gradFill")
        return GradientFill(fill, colors);
    if (name == "pattFill")
        return PatternFill(fill, colors);
    if (name == "blipFill")
        return {ShapeFill::Kind::Picture, {}, 1, fill.Child("blip").Prefixed("embed")};
    if (name == "grpFill")
        return {ShapeFill::Kind::OfGroup, {}, 1, {}};
    return {};
}

ShapeFill ReadFill(const xml::Element& properties, const ColorSource& colors)
{
    for (const xml::Element child : properties) {
        ShapeFill fill = ReadFillElement(child, colors);
        if (fill.kind != ShapeFill::Kind::NotGiven)
            return fill;
    }
    return {};
}

ShapeFill ReferredFill(const xml::Element& reference, const StyleSource& source)
{
    const int index = static_cast<int>(NumberOf(reference, "idx", 0, 100000).value_or(0));
    if (index == 0 || index == 1000)
        return {};
    const auto color = ReadColor(reference, {source.theme, std::nullopt});
    ShapeFill fill = ReadFillElement(source.format.Fill(index), {source.theme, color});
    if (fill.kind != ShapeFill::Kind::Filled && color)
        return Filled(*color);
    return fill;
}

ShapeLine ReadPlainLine(const xml::Element& line, const ColorSource& colors)
{
    ShapeLine result;
    result.outline.isVisible = false;
    ReadLineOver(line, colors, result);
    return result;
}

ShapeLine ReadLine(const xml::Element& line, const xml::Element& reference,
                   const StyleSource& source)
{
    ShapeLine result;
    result.outline.isVisible = false;
    ColorSource colors{source.theme, std::nullopt};
    const int index = static_cast<int>(NumberOf(reference, "idx", 0, 100000).value_or(0));
    if (index > 0) {
        colors.placeholder = ReadColor(reference, colors);
        ReadLineOver(source.format.Line(index), colors, result);
        if (!result.isFillGiven && colors.placeholder) {
            result.isFillGiven = true;
            result.outline.isVisible = true;
            result.outline.color = colors.placeholder->color;
        }
    }
    ReadLineOver(line, colors, result);
    return result;
}

std::optional<book::Color> MainColor(const ShapeFill& fill)
{
    if (fill.kind != ShapeFill::Kind::Filled)
        return std::nullopt;
    if (fill.fill.gradient && !fill.fill.gradient->stops.empty())
        return fill.fill.gradient->stops[fill.fill.gradient->stops.size() / 2].color;
    return fill.fill.foreground;
}

} // namespace orrery::xlsx::drawing
