#include "engines/builtin/xlsx/look/sheet/scale_reader.h"

#include "engines/builtin/xlsx/look/cells/element_text.h"
#include "engines/builtin/xlsx/look/style/attributes.h"
#include "engines/builtin/xml/reading.h"

namespace orrery::xlsx {
namespace {

using book::DataBar;
using book::IconSet;
using book::ScalePoint;
using PointKind = book::ScalePoint::Kind;

constexpr std::size_t kMaxPoints = 5;

constexpr Words<PointKind, 8> kKinds = {{
    {"num", PointKind::Number},
    {"percent", PointKind::Percent},
    {"percentile", PointKind::Percentile},
    {"min", PointKind::Minimum},
    {"max", PointKind::Maximum},
    {"formula", PointKind::Formula},
    {"autoMin", PointKind::AutomaticMinimum},
    {"autoMax", PointKind::AutomaticMaximum},
}};

constexpr Words<DataBar::Axis, 3> kAxes = {{
    {"automatic", DataBar::Axis::Automatic},
    {"middle", DataBar::Axis::Middle},
    {"none", DataBar::Axis::None},
}};

/// <cfvo>; the extension has the value in an element <xm:f>.
ScalePoint ReadPoint(xml::Scanner& scanner)
{
    ScalePoint point;
    point.kind = WordAttribute(scanner, "type", kKinds).value_or(PointKind::Minimum);
    point.value = scanner.AttributeText("val").value_or("");
    point.isGreaterOrEqual = FlagAttribute(scanner, "gte", true);
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "f")
            point.value = ReadFormulaText(scanner);
        else
            scanner.SkipElement();
    });
    // A formula may stand where a number does.
    if (point.kind == PointKind::Number && !ParseNumber(point.value))
        point.kind = PointKind::Formula;
    return point;
}

void ReadBarColor(const xml::Scanner& scanner, const ColorScheme& colors, DataBar& bar)
{
    const std::string_view name = scanner.LocalName();
    const auto color = ReadColor(scanner, colors);
    if (name == "color" || name == "fillColor")
        bar.color = color.value_or(bar.color);
    else if (name == "borderColor")
        bar.borderColor = color;
    else if (name == "negativeFillColor")
        bar.negativeColor = color;
    else if (name == "axisColor")
        bar.axisColor = color;
}

DataBar BarFromAttributes(const xml::Scanner& scanner, bool isExtension)
{
    DataBar bar;
    bar.minimumLength = IntegerAttribute(scanner, "minLength", 0, 100).value_or(10);
    bar.maximumLength = IntegerAttribute(scanner, "maxLength", 0, 100).value_or(90);
    bar.showsValue = FlagAttribute(scanner, "showValue", true);
    bar.isGradient = FlagAttribute(scanner, "gradient", true);
    const auto direction = scanner.Attribute("direction");
    bar.isRightToLeft = direction && direction->raw == "rightToLeft";
    bar.axis = isExtension ? DataBar::Axis::Automatic : DataBar::Axis::None;
    if (const auto axis = WordAttribute(scanner, "axisPosition", kAxes))
        bar.axis = *axis;
    return bar;
}

} // namespace

std::vector<ScalePoint> ReadColorScale(xml::Scanner& scanner, const ColorScheme& colors)
{
    std::vector<ScalePoint> points;
    std::size_t colored = 0;
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "cfvo" && points.size() < kMaxPoints) {
            points.push_back(ReadPoint(scanner));
            return;
        }
        if (scanner.LocalName() == "color" && colored < points.size())
            points[colored++].color = ReadColor(scanner, colors).value_or(book::kWhite);
        scanner.SkipElement();
    });
    return points;
}

DataBar ReadDataBar(xml::Scanner& scanner, const ColorScheme& colors, bool isExtension)
{
    DataBar bar = BarFromAttributes(scanner, isExtension);
    const bool hasBorder = FlagAttribute(scanner, "border", false);
    const bool isSameNegative = FlagAttribute(scanner, "negativeBarColorSameAsPositive", false);
    std::size_t points = 0;
    bar.maximum.kind = PointKind::Maximum;
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "cfvo") {
            (points++ == 0 ? bar.minimum : bar.maximum) = ReadPoint(scanner);
            return;
        }
        ReadBarColor(scanner, colors, bar);
        scanner.SkipElement();
    });
    if (!hasBorder)
        bar.borderColor.reset();
    if (isSameNegative)
        bar.negativeColor.reset();
    return bar;
}

IconSet ReadIconSet(xml::Scanner& scanner)
{
    IconSet set;
    if (auto name = scanner.AttributeText("iconSet"); name && !name->empty())
        set.name = std::move(*name);
    set.showsValue = FlagAttribute(scanner, "showValue", true);
    set.isReversed = FlagAttribute(scanner, "reverse", false);
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "cfvo" && set.points.size() < kMaxPoints) {
            set.points.push_back(ReadPoint(scanner));
            return;
        }
        if (scanner.LocalName() == "cfIcon" && set.icons.size() < kMaxPoints)
            set.icons.push_back({scanner.AttributeText("iconSet").value_or("NoIcons"),
                                 IntegerAttribute(scanner, "iconId", 0, 4).value_or(0)});
        scanner.SkipElement();
    });
    if (set.icons.size() != set.points.size())
        set.icons.clear();
    return set;
}

} // namespace orrery::xlsx
