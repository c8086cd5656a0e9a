#include "look/chart/plotted_chart.h"

#include "look/chart/series_colors.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orrery::look {
namespace {

using book::ChartKind;

/// Whether each point has a colour of its own.
bool VariesByPoint(const book::ChartGroup& group)
{
    const bool isRound = group.kind == ChartKind::Pie || group.kind == ChartKind::Doughnut;
    return group.variesColors && (isRound || group.series.size() == 1);
}

std::string TextOfContent(const book::CellContent& content, const ChartValues& values,
                          const std::string& format)
{
    if (const auto* text = std::get_if<std::string>(&content))
        return *text;
    if (const auto* number = std::get_if<double>(&content))
        return values.Format(*number, format);
    return {};
}

std::string SeriesName(const book::ChartSeries& series, std::size_t number,
                       const ChartValues& values)
{
    std::string name;
    for (const book::CellContent& content : values.Values(series.name)) {
        const std::string text = TextOfContent(content, values, series.name.numberFormat);
        if (!text.empty())
            name += (name.empty() ? "" : " ") + text;
    }
    return name.empty() ? "Series" + std::to_string(number + 1) : name;
}

std::vector<std::optional<double>> NumbersOf(const book::ChartData& data, const ChartValues& values,
                                             std::size_t room)
{
    room = std::min(room, PlottedChart::kMaxPoints);
    std::vector<std::optional<double>> numbers;
    for (const book::CellContent& content : values.Values(data)) {
        if (numbers.size() == room)
            break;
        const auto* number = std::get_if<double>(&content);
        const bool isText = std::holds_alternative<std::string>(content);
        if (number != nullptr && std::isfinite(*number))
            numbers.emplace_back(*number);
        else if (isText) // texts count as zero
            numbers.emplace_back(0);
        else
            numbers.emplace_back(std::nullopt);
    }
    return numbers;
}

/// The x values; without any, or with texts among them, the points' numbers from 1.
std::vector<double> NumbersOfX(const book::ChartData& data, std::size_t count,
                               const ChartValues& values)
{
    std::vector<double> numbers;
    for (const book::CellContent& content : values.Values(data)) {
        if (const auto* number = std::get_if<double>(&content))
            numbers.push_back(*number);
        else
            break;
    }
    if (numbers.size() < count) {
        numbers.clear();
        for (std::size_t i = 1; i <= count; ++i)
            numbers.push_back(static_cast<double>(i));
    }
    numbers.resize(count);
    return numbers;
}

void SetColors(const book::Chart& chart, const book::ChartGroup& group, PlottedSeries& plotted)
{
    const book::ChartSeries& series = *plotted.series;
    plotted.color = series.color.value_or(AutomaticColor(chart, plotted.number));
    const bool varies = VariesByPoint(group);
    if (!varies && series.points.empty())
        return;
    for (std::size_t i = 0; i < plotted.values.size(); ++i)
        plotted.pointColors.push_back(varies ? AutomaticColor(chart, i) : plotted.color);
    for (const book::ChartSeries::Point& point : series.points) {
        const auto index = static_cast<std::size_t>(point.index);
        if (point.index >= 0 && index < plotted.pointColors.size() && point.color)
            plotted.pointColors[index] = *point.color;
    }
}

/// What is stacked at each point: the sums of the series so far and of all of them.
struct StackSums {
    double above = 0;
    double below = 0;
    double all = 0; // without signs
};

void SetSpans(PlottedGroup& group)
{
    std::vector<StackSums> sums;
    for (const PlottedSeries& series : group.series) {
        sums.resize(std::max(sums.size(), series.values.size()));
        for (std::size_t i = 0; i < series.values.size(); ++i)
            sums[i].all += std::abs(series.values[i].value_or(0));
    }
    for (PlottedSeries& series : group.series) {
        for (std::size_t i = 0; i < series.values.size(); ++i) {
            const auto value = series.values[i];
            if (!value || !group.IsStacked()) {
                series.spans.push_back(value ? std::optional(ValueSpan{0, *value}) : std::nullopt);
                continue;
            }
            double& sum = *value < 0 ? sums[i].below : sums[i].above;
            const double unit = group.IsPercent() && sums[i].all > 0 ? sums[i].all : 1;
            series.spans.emplace_back(ValueSpan{sum / unit, (sum + *value) / unit});
            sum += *value;
        }
    }
}

PlottedGroup PlotGroup(const book::Chart& chart, const book::ChartGroup& group,
                       const ChartValues& values, std::size_t& number, std::size_t& room)
{
    PlottedGroup plotted;
    plotted.group = &group;
    for (const book::ChartSeries& series : group.series) {
        PlottedSeries one;
        one.series = &series;
        one.number = number;
        one.name = SeriesName(series, number, values);
        one.values = NumbersOf(series.values, values, room);
        room -= one.values.size();
        if (group.kind == ChartKind::Scatter)
            one.x = NumbersOfX(series.categories, one.values.size(), values);
        SetColors(chart, group, one);
        plotted.series.push_back(std::move(one));
        ++number;
    }
    SetSpans(plotted);
    return plotted;
}

/// The labels of the first series that has some.
std::vector<std::string> CategoryTexts(const book::Chart& chart, const ChartValues& values,
                                       std::size_t count)
{
    std::vector<std::string> texts;
    for (const book::ChartGroup& group : chart.groups) {
        for (const book::ChartSeries& series : group.series) {
            const auto contents = values.Values(series.categories);
            if (contents.empty())
                continue;
            const std::string& own = chart.categoryAxis.numberFormat;
            const std::string& format = own.empty() ? series.categories.numberFormat : own;
            for (std::size_t i = 0; i < std::min(count, contents.size()); ++i)
                texts.push_back(TextOfContent(contents[i], values, format));
            return texts;
        }
    }
    for (std::size_t i = 1; i <= count; ++i)
        texts.push_back(std::to_string(i));
    return texts;
}

void SetCategories(const book::Chart& chart, const ChartValues& values, PlottedChart& plotted)
{
    std::size_t count = 0;
    for (const PlottedGroup& group : plotted.groups) {
        for (const PlottedSeries& series : group.series)
            count = std::max(count, series.values.size());
    }
    plotted.categories = CategoryTexts(chart, values, count);
    plotted.categories.resize(count);
}

} // namespace

book::Color PlottedSeries::ColorOfPoint(std::size_t point) const
{
    return point < pointColors.size() ? pointColors[point] : color;
}

ValueRange PlottedChart::RangeOf(bool isSecondary) const
{
    ValueRange range;
    for (const PlottedGroup& group : groups) {
        if (group.group->usesSecondaryAxis != isSecondary)
            continue;
        for (const PlottedSeries& series : group.series) {
            for (const auto& span : series.spans) {
                if (span)
                    range.Add(span->end);
            }
        }
    }
    return range;
}

ValueRange PlottedChart::RangeOfX() const
{
    ValueRange range;
    for (const PlottedGroup& group : groups) {
        for (const PlottedSeries& series : group.series) {
            for (const double x : series.x)
                range.Add(x);
        }
    }
    return range;
}

bool PlottedChart::HasPercentAxis(bool isSecondary) const
{
    return std::any_of(groups.begin(), groups.end(), [&](const PlottedGroup& group) {
        return group.group->usesSecondaryAxis == isSecondary && group.IsPercent();
    });
}

std::string PlottedChart::FormatOf(bool isSecondary) const
{
    const book::ChartAxis& axis =
        isSecondary && chart->secondaryAxis ? *chart->secondaryAxis : chart->valueAxis;
    if (!axis.numberFormat.empty())
        return axis.numberFormat;
    if (HasPercentAxis(isSecondary))
        return "0%";
    for (const PlottedGroup& group : groups) {
        if (group.group->usesSecondaryAxis == isSecondary && !group.series.empty())
            return group.series.front().series->values.numberFormat;
    }
    return "General";
}

PlottedChart PlotValues(const book::Chart& chart, const ChartValues& values)
{
    PlottedChart plotted;
    plotted.chart = &chart;
    std::size_t number = 0;
    std::size_t room = PlottedChart::kMaxPointsOfAll;
    for (const book::ChartGroup& group : chart.groups)
        plotted.groups.push_back(PlotGroup(chart, group, values, number, room));
    SetCategories(chart, values, plotted);
    return plotted;
}

std::string TitleText(const book::ChartText& title, const ChartValues& values)
{
    if (title.formula.empty())
        return title.text;
    const book::ChartData data{title.formula, {book::CellContent(title.text)}, "General"};
    const auto contents = values.Values(data);
    return contents.empty() ? title.text : TextOfContent(contents.front(), values, "General");
}

} // namespace orrery::look
