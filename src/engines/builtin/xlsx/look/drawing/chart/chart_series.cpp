#include "engines/builtin/xlsx/look/drawing/chart/chart_series.h"

#include "engines/builtin/common/words.h"
#include "engines/builtin/xlsx/look/drawing/values/attribute_values.h"

#include <array>
#include <string_view>

namespace orrery::xlsx::drawing {
namespace {

using book::ChartKind;

constexpr std::size_t kMaxSeries = 1000;
constexpr std::size_t kMaxPoints = 4000; // with a look of their own
constexpr std::size_t kAccent1 = 4;      // in the theme's order

constexpr builtin::Words<ChartKind, 16> kKinds{{
    {"barChart", ChartKind::Column},
    {"bar3DChart", ChartKind::Column},
    {"lineChart", ChartKind::Line},
    {"line3DChart", ChartKind::Line},
    {"pieChart", ChartKind::Pie},
    {"pie3DChart", ChartKind::Pie},
    {"ofPieChart", ChartKind::Pie},
    {"doughnutChart", ChartKind::Doughnut},
    {"areaChart", ChartKind::Area},
    {"area3DChart", ChartKind::Area},
    {"scatterChart", ChartKind::Scatter},
    {"bubbleChart", ChartKind::Bubble},
    {"radarChart", ChartKind::Radar},
    {"stockChart", ChartKind::Stock},
    {"surfaceChart", ChartKind::Surface},
    {"surface3DChart", ChartKind::Surface},
}};

bool IsRound(ChartKind kind)
{
    return kind == ChartKind::Pie || kind == ChartKind::Doughnut;
}

/// Whether series of the kind are lines, whose colour is that of the line.
bool IsDrawnAsLine(ChartKind kind)
{
    return kind == ChartKind::Line || kind == ChartKind::Scatter || kind == ChartKind::Radar ||
           kind == ChartKind::Stock;
}

book::Grouping GroupingOf(const xml::Element& group)
{
    const std::string name = ValueOf(group, "grouping");
    if (name == "stacked")
        return book::Grouping::Stacked;
    return name == "percentStacked" ? book::Grouping::PercentStacked : book::Grouping::Clustered;
}

/// Reads the series of one group.
class SeriesReader {
public:
    SeriesReader(const xml::Element& group, ChartKind kind, const ChartTexts& texts,
                 const std::vector<book::Color>& accents)
        : group_(group), kind_(kind), texts_(texts),
          accents_(accents), colors_{texts.style.theme, std::nullopt}
    {
    }

    book::ChartSeries Read(const xml::Element& element, bool variesColors) const
    {
        book::ChartSeries series;
        series.name = ReadChartData(element.Child("tx"), *texts_.points);
        const xml::Element x = element.Child("xVal");
        const xml::Element y = element.Child("yVal");
        series.categories = ReadChartData(x ? x : element.Child("cat"), *texts_.points);
        series.values = ReadChartData(y ? y : element.Child("val"), *texts_.points);
        ReadLook(element, series);
        const double number = NumberOf(element.Child("idx"), "val", 0, 1e6).value_or(0);
        if (!series.color && !variesColors && !accents_.empty())
            series.color = SeriesColor(accents_, static_cast<std::size_t>(number));
        ReadPoints(element, series);
        ReadLabels(element, series);
        series.isSmooth = IsOn(element, "smooth", false);
        return series;
    }

private:
    std::optional<book::Color> ColorOf(const xml::Element& properties) const
    {
        const auto line = MainColor(ReadFill(properties.Child("ln"), colors_));
        const auto inside = MainColor(ReadFill(properties, colors_));
        return IsDrawnAsLine(kind_) && line ? line : inside;
    }

    void ReadLook(const xml::Element& element, book::ChartSeries& series) const
    {
        const xml::Element properties = element.Child("spPr");
        series.color = ColorOf(properties);
        series.hasFill = ReadFill(properties, colors_).kind != ShapeFill::Kind::None;
        const xml::Element line = properties.Child("ln");
        const ShapeLine read = ReadPlainLine(line, colors_);
        series.outline = read.outline;
        if (IsDrawnAsLine(kind_)) {
            series.outline.isVisible = !read.isFillGiven || read.outline.isVisible;
            series.outline.width = line.Has("w") ? read.outline.width : 2.25;
        }
        ReadMarker(element.Child("marker"), series);
    }

    void ReadMarker(const xml::Element& marker, book::ChartSeries& series) const
    {
        const std::string symbol = ValueOf(marker, "symbol");
        const bool isAutomatic =
            kind_ == ChartKind::Scatter ||
            (kind_ == ChartKind::Line && IsOn(group_, "marker", false)) ||
            (kind_ == ChartKind::Radar && ValueOf(group_, "radarStyle") == "marker");
        series.hasMarkers = symbol.empty() ? isAutomatic : symbol != "none";
        if (!series.color && IsDrawnAsLine(kind_))
            series.color = MainColor(ReadFill(marker.Child("spPr"), colors_));
    }

    void ReadPoints(const xml::Element& element, book::ChartSeries& series) const
    {
        for (const xml::Element point : element) {
            if (point.Name() != "dPt" || series.points.size() == kMaxPoints)
                continue;
            const double index = NumberOf(point.Child("idx"), "val", 0, 1e9).value_or(0);
            if (const auto color = ColorOf(point.Child("spPr")))
                series.points.push_back({static_cast<std::int32_t>(index), color});
        }
    }

    void ReadLabels(const xml::Element& element, book::ChartSeries& series) const
    {
        const xml::Element own = element.Child("dLbls");
        const xml::Element labels = own ? own : group_.Child("dLbls");
        if (IsOn(labels, "delete", false))
            return;
        series.hasLabels = IsOn(labels, "showVal", false);
        series.hasPercents = IsOn(labels, "showPercent", false);
    }

    xml::Element group_;
    ChartKind kind_;
    const ChartTexts& texts_;
    const std::vector<book::Color>& accents_;
    ColorSource colors_;
};

} // namespace

std::optional<book::ChartGroup> ReadChartGroup(const xml::Element& element, const ChartTexts& texts,
                                               const std::vector<book::Color>& accents)
{
    const auto kind = builtin::ValueOfWord(kKinds, element.Name());
    if (!kind)
        return std::nullopt;
    book::ChartGroup group;
    group.kind = *kind;
    if (group.kind == ChartKind::Column && ValueOf(element, "barDir") == "bar")
        group.kind = ChartKind::Bar;
    group.grouping = GroupingOf(element);
    group.gapWidth = NumberOf(element.Child("gapWidth"), "val", 0, 500).value_or(150);
    group.overlap = NumberOf(element.Child("overlap"), "val", -100, 100).value_or(0);
    group.holeSize = NumberOf(element.Child("holeSize"), "val", 1, 90).value_or(50);
    group.firstAngle = NumberOf(element.Child("firstSliceAng"), "val", 0, 360).value_or(0);
    group.variesColors = IsOn(element, "varyColors", IsRound(group.kind));
    const SeriesReader reader(element, group.kind, texts, accents);
    for (const xml::Element child : element) {
        if (child.Name() == "ser" && group.series.size() < kMaxSeries)
            group.series.push_back(reader.Read(child, IsRound(group.kind)));
    }
    return group;
}

std::vector<book::Color> ChartColors(int style, const builtin::ThemeColors& theme)
{
    constexpr std::size_t kAccents = 6;
    const std::size_t column = static_cast<std::size_t>(std::clamp(style, 1, 48) - 1) % 8;
    std::vector<book::Color> colors;
    for (std::size_t i = 0; i < kAccents; ++i) {
        if (column == 1)
            colors.push_back(theme.colors[kAccent1 + i]);
        else if (column == 0) // shades of gray
            colors.push_back(
                ChangeLuminance({0x80, 0x80, 0x80}, -0.5 + static_cast<double>(i) * 0.2));
        else // those of one accent
            colors.push_back(ChangeLuminance(theme.colors[kAccent1 + column - 2],
                                             -0.4 + static_cast<double>(i) * 0.16));
    }
    return colors;
}

book::Color SeriesColor(const std::vector<book::Color>& accents, std::size_t number)
{
    // The brightness of each further turn, as Excel varies the accents.
    constexpr std::array<double, 9> kChanges{0, -0.4, 0.2, -0.2, 0.4, -0.5, 0.3, -0.3, 0.5};
    const std::size_t turn = number / accents.size() % kChanges.size();
    return ChangeLuminance(accents[number % accents.size()], kChanges[turn]);
}

} // namespace orrery::xlsx::drawing
