#pragma once

#include "book/look/chart.h"
#include "look/chart/axis_scale.h"
#include "look/chart/chart_values.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace orrery::look {

/// The ends of a point on the axis of values: from zero, or from the points that it is stacked on.
/// In a percent chart in shares of the sum.
struct ValueSpan {
    double begin = 0;
    double end = 0;
};

/// A series with the values that are painted.
struct PlottedSeries {
    const book::ChartSeries* series = nullptr;
    std::size_t number = 0; ///< among all series of the chart
    std::string name;
    std::vector<std::optional<double>> values;
    std::vector<std::optional<ValueSpan>> spans; ///< of the values
    std::vector<double> x;                       ///< of scatter charts, one for each value
    book::Color color;
    std::vector<book::Color> pointColors; ///< one for each point; empty if they do not differ

    book::Color ColorOfPoint(std::size_t point) const;
};

struct PlottedGroup {
    const book::ChartGroup* group = nullptr;
    std::vector<PlottedSeries> series;

    bool IsStacked() const { return group->grouping != book::Grouping::Clustered; }
    bool IsPercent() const { return group->grouping == book::Grouping::PercentStacked; }
};

/// A chart with its values.
struct PlottedChart {
    // What is painted at most.
    static constexpr std::size_t kMaxPoints = 20000; ///< of a series
    static constexpr std::size_t kMaxPointsOfAll = 200000;

    const book::Chart* chart = nullptr;
    std::vector<PlottedGroup> groups;
    std::vector<std::string> categories; ///< labels, as many as the longest series has values

    /// The range of the values on the primary or on the secondary axis.
    ValueRange RangeOf(bool isSecondary) const;
    ValueRange RangeOfX() const;
    bool HasPercentAxis(bool isSecondary) const;
    /// The format of the labels of an axis of values.
    std::string FormatOf(bool isSecondary) const;
};

PlottedChart PlotValues(const book::Chart& chart, const ChartValues& values);

/// The text of a title: its own, or that of the cell that it is linked to.
std::string TitleText(const book::ChartText& title, const ChartValues& values);

} // namespace orrery::look
