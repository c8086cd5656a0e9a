#pragma once

#include "look/chart/series_painter.h"

#include <string>
#include <vector>

namespace orrery::look {

/// The axes around a plot: their labels, titles and grid lines.
class PlotFrame {
public:
    /// `left` is what title and legend leave of the chart.
    PlotFrame(const PlottedChart& chart, const SeriesPainter& painter, const Box& left,
              const Box& whole);

    const Plot& Place() const { return plot_; }
    /// Under the series: the plot's fill and grid lines.
    void PaintBelow() const;
    /// Over them: axes and labels.
    void PaintAbove() const;

private:
    struct Label {
        std::string text;
        double share = 0; ///< of the axis
    };

    void ChooseScales(const Box& box);
    double RoomFor(const book::ChartAxis& axis, double length, bool isSideways) const;
    std::vector<Label> ValueLabels(const AxisScale& scale, bool isSecondary) const;
    std::vector<Label> XLabels() const;
    void SetLabels();
    void TakeTitles(Box& box);
    void TakeLabels(Box& box);
    void TakeSidewaysLabels(Box& box);
    double RowDepth(const book::ChartAxis& axis) const;
    void SetCategoryStep();
    double WidestOf(const std::vector<Label>& labels, const book::ChartAxis& axis) const;
    double CategoryDepth(const Box& box);
    void PaintGrid(const book::ChartAxis& axis, const std::vector<Label>& labels,
                   bool isOfValues) const;
    void PaintValueLabels(const book::ChartAxis& axis, const std::vector<Label>& labels,
                          double category, bool isFarSide) const;
    void PaintCategoryLabels() const;
    void PaintAxisLines() const;
    void PaintTitles() const;
    void PaintLine(const book::ChartAxis& axis, Point from, Point to) const;
    const book::Font& FontOf(const book::ChartAxis& axis) const;
    std::string TitleOf(const book::ChartAxis& axis) const;
    /// Where the axis of categories lies on that of values.
    double CrossingShare() const;

    const PlottedChart& chart_;
    const SeriesPainter& painter_;
    Plot plot_;
    std::vector<Label> valueLabels_;
    std::vector<Label> secondaryLabels_;
    std::vector<Label> categoryLabels_; // of categories, or of the values of x
    bool areCategoriesUpright_ = false;
    std::size_t categoryStep_ = 1; // between the categories that have a label
    double valueSide_ = 0;         // where the axis of values lies on that of categories
    Box titles_;                   // what the titles of the axes surround
};

} // namespace orrery::look
