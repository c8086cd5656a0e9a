#include "engines/builtin/xlsx/look/sheet/sparkline_reader.h"

#include "engines/builtin/xlsx/formula/cell_address.h"
#include "engines/builtin/xlsx/look/cells/element_text.h"
#include "engines/builtin/xlsx/look/cells/limits.h"
#include "engines/builtin/xlsx/look/style/attributes.h"
#include "engines/builtin/xml/reading.h"
#include "util/fixed_text.h"

#include <array>
#include <utility>

namespace orrery::xlsx {
namespace {

using book::SparklineGroup;
using book::SparklineKind;

constexpr Words<SparklineKind, 3> kSparklineKinds = {{
    {"line", SparklineKind::Line},
    {"column", SparklineKind::Column},
    {"stacked", SparklineKind::WinLoss},
}};

/// The attribute that says whether points are marked, and the element with their colour.
struct Mark {
    util::FixedText<15> attribute;
    util::FixedText<15> element;
    std::optional<book::Color> SparklineGroup::*color;
};
constexpr std::array<Mark, 6> kMarks = {{
    {"negative", "colorNegative", &SparklineGroup::negative},
    {"first", "colorFirst", &SparklineGroup::first},
    {"last", "colorLast", &SparklineGroup::last},
    {"high", "colorHigh", &SparklineGroup::high},
    {"low", "colorLow", &SparklineGroup::low},
    {"markers", "colorMarkers", &SparklineGroup::markers},
}};

SparklineGroup GroupFromAttributes(const xml::Scanner& scanner)
{
    SparklineGroup group;
    group.kind = WordAttribute(scanner, "type", kSparklineKinds).value_or(SparklineKind::Line);
    const auto width = NumberAttribute(scanner, "lineWeight");
    if (width && *width >= 0 && *width <= 1584)
        group.lineWidth = *width;
    group.showsAxis = FlagAttribute(scanner, "displayXAxis", false);
    group.isRightToLeft = FlagAttribute(scanner, "rightToLeft", false);
    const auto isCustom = [&](std::string_view name) {
        const auto type = scanner.Attribute(name);
        return type && type->raw == "custom";
    };
    if (isCustom("minAxisType"))
        group.minimum = NumberAttribute(scanner, "manualMin");
    if (isCustom("maxAxisType"))
        group.maximum = NumberAttribute(scanner, "manualMax");
    for (const Mark& mark : kMarks) {
        if (FlagAttribute(scanner, mark.attribute, false))
            group.*mark.color = group.color;
    }
    return group;
}

void ReadGroupColor(const xml::Scanner& scanner, const ColorScheme& colors, SparklineGroup& group)
{
    const auto color = ReadColor(scanner, colors);
    if (!color)
        return;
    if (scanner.LocalName() == "colorSeries")
        group.color = *color;
    for (const Mark& mark : kMarks) {
        if (scanner.LocalName() == mark.element && group.*mark.color)
            group.*mark.color = color;
    }
}

void ReadSparkline(xml::Scanner& scanner, SparklineGroup& group)
{
    SparklineGroup::Sparkline sparkline;
    xml::ForEachChild(scanner, [&] {
        std::string buffer;
        if (scanner.LocalName() == "f")
            sparkline.formula = ReadFormulaText(scanner);
        else if (scanner.LocalName() == "sqref")
            sparkline.cell =
                ParseCellAddress(ReadElementText(scanner, buffer)).value_or(book::CellAddress{});
        else
            scanner.SkipElement();
    });
    if (sparkline.cell.row != 0 && !sparkline.formula.empty())
        group.sparklines.push_back(std::move(sparkline));
}

} // namespace

void ReadSparklines(xml::Scanner& scanner, SheetContext& context)
{
    std::size_t count = 0;
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() != "sparklineGroup" || count >= kMaxSparklines)
            return scanner.SkipElement();
        SparklineGroup group = GroupFromAttributes(scanner);
        xml::ForEachChild(scanner, [&] {
            ReadGroupColor(scanner, context.Colors(), group);
            if (scanner.LocalName() != "sparklines")
                return scanner.SkipElement();
            xml::ForEachChild(scanner, [&] {
                if (++count <= kMaxSparklines)
                    ReadSparkline(scanner, group);
                else
                    scanner.SkipElement();
            });
        });
        if (!group.sparklines.empty())
            context.look.sparklines.push_back(std::move(group));
    });
    if (count >= kMaxSparklines)
        context.leftOut.Add("sparkline", "", "there are more than 100,000");
}

} // namespace orrery::xlsx
