#include "engines/builtin/xlsx/look/style/fill_reader.h"

#include "engines/builtin/xlsx/look/style/attributes.h"
#include "engines/builtin/xml/reading.h"

#include <algorithm>

namespace orrery::xlsx {
namespace {

using book::Fill;
using book::FillPattern;
using book::Gradient;

constexpr std::size_t kMaxStops = 32;

/// ECMA-376 18.18.55
constexpr Words<FillPattern, 19> kPatterns = {{
    {"none", FillPattern::None},
    {"solid", FillPattern::Solid},
    {"mediumGray", FillPattern::MediumGray},
    {"darkGray", FillPattern::DarkGray},
    {"lightGray", FillPattern::LightGray},
    {"darkHorizontal", FillPattern::DarkHorizontal},
    {"darkVertical", FillPattern::DarkVertical},
    {"darkDown", FillPattern::DarkDown},
    {"darkUp", FillPattern::DarkUp},
    {"darkGrid", FillPattern::DarkGrid},
    {"darkTrellis", FillPattern::DarkTrellis},
    {"lightHorizontal", FillPattern::LightHorizontal},
    {"lightVertical", FillPattern::LightVertical},
    {"lightDown", FillPattern::LightDown},
    {"lightUp", FillPattern::LightUp},
    {"lightGrid", FillPattern::LightGrid},
    {"lightTrellis", FillPattern::LightTrellis},
    {"gray125", FillPattern::Gray125},
    {"gray0625", FillPattern::Gray0625},
}};

/// A pattern as it is written.
struct PatternFill {
    std::optional<FillPattern> pattern;
    std::optional<book::Color> foreground;
    std::optional<book::Color> background;
    bool hasForeground = false; ///< even if it is the automatic colour
    std::optional<Gradient> gradient;
};

double Share(const xml::Scanner& scanner, std::string_view name)
{
    return std::clamp(NumberAttribute(scanner, name).value_or(0), 0.0, 1.0);
}

void ReadStop(xml::Scanner& scanner, const ColorScheme& scheme, Gradient& gradient)
{
    book::GradientStop stop;
    stop.position = Share(scanner, "position");
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "color")
            stop.color = ReadColor(scanner, scheme).value_or(book::kBlack);
        scanner.SkipElement();
    });
    if (gradient.stops.size() < kMaxStops)
        gradient.stops.push_back(stop);
}

Gradient ReadGradient(xml::Scanner& scanner, const ColorScheme& scheme)
{
    Gradient gradient;
    const auto type = scanner.Attribute("type");
    gradient.isPath = type && type->raw == "path";
    gradient.degree = NumberAttribute(scanner, "degree").value_or(0);
    gradient.left = Share(scanner, "left");
    gradient.right = Share(scanner, "right");
    gradient.top = Share(scanner, "top");
    gradient.bottom = Share(scanner, "bottom");
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "stop")
            return ReadStop(scanner, scheme, gradient);
        scanner.SkipElement();
    });
    std::stable_sort(gradient.stops.begin(), gradient.stops.end(),
                     [](const auto& a, const auto& b) { return a.position < b.position; });
    return gradient;
}

void ReadPattern(xml::Scanner& scanner, const ColorScheme& scheme, PatternFill& fill)
{
    fill.pattern = WordAttribute(scanner, "patternType", kPatterns);
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "fgColor") {
            fill.foreground = ReadColor(scanner, scheme);
            fill.hasForeground = true;
        }
        else if (scanner.LocalName() == "bgColor") {
            fill.background = ReadColor(scanner, scheme);
        }
        scanner.SkipElement();
    });
}

PatternFill ReadPatternFill(xml::Scanner& scanner, const ColorScheme& scheme)
{
    PatternFill fill;
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "patternFill")
            return ReadPattern(scanner, scheme, fill);
        if (scanner.LocalName() == "gradientFill") {
            Gradient gradient = ReadGradient(scanner, scheme);
            if (!gradient.stops.empty())
                fill.gradient = std::move(gradient);
            return;
        }
        scanner.SkipElement();
    });
    return fill;
}

} // namespace

Fill ReadFill(xml::Scanner& scanner, const ColorScheme& scheme)
{
    PatternFill read = ReadPatternFill(scanner, scheme);
    Fill fill;
    fill.gradient = std::move(read.gradient);
    fill.pattern = fill.gradient ? FillPattern::None : read.pattern.value_or(FillPattern::None);
    if (fill.pattern == FillPattern::None)
        return fill;
    fill.foreground = read.foreground;
    if (fill.pattern == FillPattern::Solid) {
        // The automatic colour of a pattern's lines is that of texts.
        if (read.hasForeground && !fill.foreground)
            fill.foreground = book::kBlack;
        return fill;
    }
    fill.background = read.background;
    return fill;
}

std::optional<Fill> ReadPartialFill(xml::Scanner& scanner, const ColorScheme& scheme)
{
    PatternFill read = ReadPatternFill(scanner, scheme);
    Fill fill;
    fill.gradient = std::move(read.gradient);
    if (fill.gradient)
        return fill;
    const bool isSolid = read.pattern.value_or(FillPattern::Solid) == FillPattern::Solid;
    if (isSolid) {
        fill.pattern = FillPattern::Solid;
        fill.foreground = read.background ? read.background : read.foreground;
        return fill.foreground ? std::optional(fill) : std::nullopt;
    }
    fill.pattern = *read.pattern;
    if (fill.pattern != FillPattern::None) {
        fill.foreground = read.foreground;
        fill.background = read.background;
    }
    return fill;
}

} // namespace orrery::xlsx
