#include "engines/builtin/xlsx/look/drawing/chart/chart_part.h"

#include "engines/builtin/xlsx/look/drawing/chart/chart_axes.h"
#include "engines/builtin/xlsx/look/drawing/chart/chart_data.h"
#include "engines/builtin/xlsx/look/drawing/chart/chart_series.h"
#include "engines/builtin/xlsx/look/drawing/values/attribute_values.h"
#include "engines/builtin/xlsx/look/drawing/values/text_body.h"
#include "engines/builtin/xlsx/look/drawing/values/understood.h"
#include "engines/builtin/xml/reading.h"

#include <cmath>

namespace orrery::xlsx::drawing {
namespace {

constexpr std::size_t kMaxChartNodes = 2000000;
constexpr std::size_t kMaxGroups = 64;
constexpr double kTextSize = 10; // of charts that say nothing
constexpr double kTitleShare = 1.2;

/// "102" of the newer element is 2 of the older one.
int StyleOf(const xml::Element& chartSpace)
{
    const int number =
        static_cast<int>(NumberOf(chartSpace.Child("style"), "val", 1, 148).value_or(2));
    return number > 100 ? number - 100 : number;
}

ChartTexts TextsOf(const xml::Element& chartSpace, const StyleSource& style, PointBudget& points)
{
    ChartTexts texts{style, {}, 18, &points};
    texts.font.name = style.theme.minorFont;
    texts.font.size = kTextSize;
    const xml::Element properties =
        chartSpace.Child("txPr").Child("p").Child("pPr").Child("defRPr");
    texts.font = ReadFont(properties, texts.font, {style.theme, std::nullopt});
    if (properties.Has("sz"))
        texts.titleSize = texts.font.size * kTitleShare;
    return texts;
}

/// A chart without fill and line of its own is white in a gray frame.
void ReadFrame(const xml::Element& chartSpace, const StyleSource& style, book::Chart& chart)
{
    constexpr book::Color kGray{0x86, 0x86, 0x86};
    const ColorSource colors{style.theme, std::nullopt};
    const xml::Element properties = chartSpace.Child("spPr");
    const ShapeFill fill = ReadFill(properties, colors);
    chart.fill =
        fill.kind == ShapeFill::Kind::NotGiven ? style.theme.ByName("bg1") : MainColor(fill);
    const ShapeLine line = ReadPlainLine(properties.Child("ln"), colors);
    chart.outline = line.outline;
    if (!line.isFillGiven) {
        chart.outline.isVisible = true;
        chart.outline.color = kGray;
    }
    const xml::Element plot = chartSpace.Child("chart").Child("plotArea").Child("spPr");
    chart.plotFill = MainColor(ReadFill(plot, colors));
}

/// Where the plot was put by hand; a place that includes the labels of the axes does not count.
std::optional<book::ShareBox> PlaceOfPlot(const xml::Element& plotArea)
{
    const xml::Element layout = plotArea.Child("layout").Child("manualLayout");
    if (ValueOf(layout, "layoutTarget") != "inner")
        return std::nullopt;
    const auto share = [&](const char* name) {
        return NumberOf(layout.Child(name), "val", 0, 1).value_or(0);
    };
    const book::ShareBox box{share("x"), share("y"), share("x") + share("w"),
                             share("y") + share("h")};
    return share("w") > 0 && share("h") > 0 ? std::optional(box) : std::nullopt;
}

std::optional<book::LegendPlace> LegendOf(const xml::Element& legend)
{
    using book::LegendPlace;
    if (!legend)
        return std::nullopt;
    const std::string place = ValueOf(legend, "legendPos");
    if (place == "l")
        return LegendPlace::Left;
    if (place == "t")
        return LegendPlace::Top;
    if (place == "b")
        return LegendPlace::Bottom;
    return place == "tr" ? LegendPlace::TopRight : LegendPlace::Right;
}

/// The name of the only series, or nothing.
const book::ChartData* OnlyName(const book::Chart& chart)
{
    if (chart.groups.size() != 1 || chart.groups.front().series.size() != 1)
        return nullptr;
    return &chart.groups.front().series.front().name;
}

/// The title that Excel gives by itself: the name of the only series.
book::ChartText AutomaticTitle(const book::ChartData* name)
{
    if (name == nullptr)
        return {"Chart Title", {}, {}};
    book::ChartText text{{}, name->formula, {}};
    if (!name->cached.empty() && std::holds_alternative<std::string>(name->cached.front()))
        text.text = std::get<std::string>(name->cached.front());
    return text;
}

void ReadTitle(const xml::Element& element, const ChartTexts& texts, book::Chart& chart)
{
    const book::ChartData* name = OnlyName(chart);
    const bool hasName = name != nullptr && (!name->cached.empty() || !name->formula.empty());
    const xml::Element title = element.Child("title");
    const bool isAutomatic = hasName && !IsOn(element, "autoTitleDeleted", false);
    if (!title && !isAutomatic)
        return;
    book::Font font = texts.font;
    font.size = texts.titleSize;
    font.bold = true;
    chart.title = ReadChartTitle(title, texts, font, AutomaticTitle(hasName ? name : nullptr));
    if (chart.title->text.empty() && chart.title->formula.empty())
        chart.title.reset();
}

} // namespace

book::Chart ReadChart(const xml::Element& chartSpace, const StyleSource& style)
{
    book::Chart chart;
    PointBudget points;
    const ChartTexts texts = TextsOf(chartSpace, style, points);
    const xml::Element element = chartSpace.Child("chart");
    const xml::Element plotArea = element.Child("plotArea");
    chart.font = texts.font;
    chart.accents = ChartColors(StyleOf(chartSpace), style.theme);
    chart.is3D = static_cast<bool>(element.Child("view3D"));
    ChartAxes axes(plotArea, texts);
    for (const xml::Element child : plotArea) {
        if (chart.groups.size() == kMaxGroups)
            break;
        auto group = ReadChartGroup(child, texts, chart.accents);
        if (!group)
            continue;
        group->usesSecondaryAxis = axes.IsSecondary(child);
        chart.is3D = chart.is3D || child.Name().find("3D") != std::string_view::npos;
        chart.groups.push_back(std::move(*group));
    }
    axes.Read(chart);
    ReadFrame(chartSpace, style, chart);
    chart.plotPlace = PlaceOfPlot(plotArea);
    chart.legend = LegendOf(element.Child("legend"));
    ReadTitle(element, texts, chart);
    return chart;
}

book::Chart ReadExtendedChart(const xml::Element& chartSpace, const StyleSource& style)
{
    book::Chart chart;
    PointBudget points;
    const ChartTexts texts = TextsOf(chartSpace, style, points);
    const xml::Element element = chartSpace.Child("chart");
    chart.font = texts.font;
    chart.accents = ChartColors(2, style.theme);
    ReadFrame(chartSpace, style, chart);
    book::ChartGroup group;
    group.kind = book::ChartKind::Other;
    chart.groups.push_back(group);
    const xml::Element region = element.Child("plotArea").Child("plotAreaRegion");
    chart.kindName = region.Child("series").Attribute("layoutId");
    if (const xml::Element title = element.Child("title")) {
        book::Font font = texts.font;
        font.size = texts.titleSize;
        chart.title = ReadChartTitle(title, texts, font, AutomaticTitle(nullptr));
        const xml::Element data = title.Child("tx").Child("txData");
        if (data)
            chart.title = {data.Child("v").Text(), data.Child("f").Text(), chart.title->font};
    }
    return chart;
}

std::shared_ptr<const book::Chart> ReadChartPart(const Package& package, const std::string& part,
                                                 bool isExtended, const StyleSource& style)
{
    const PartText text = package.ReadXml(part);
    xml::Scanner scanner(*text, part);
    xml::EnterRoot(scanner);
    const xml::Tree tree(scanner, UnderstandsDrawing, kMaxChartNodes);
    if (!tree.Root().Child("chart"))
        return nullptr;
    return std::make_shared<const book::Chart>(isExtended ? ReadExtendedChart(tree.Root(), style)
                                                          : ReadChart(tree.Root(), style));
}

} // namespace orrery::xlsx::drawing
