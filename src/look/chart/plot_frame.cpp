#include "look/chart/plot_frame.h"

#include <algorithm>
#include <cmath>

namespace orrery::look {
namespace {

using book::ChartKind;

constexpr double kTickLength = 4;
constexpr double kLabelDistance = 3;
constexpr double kTitleDistance = 4;
constexpr double kMaxLabelShare = 0.4; // of the chart's width or height
constexpr book::Color kGray{0x86, 0x86, 0x86};

bool HasKind(const PlottedChart& chart, ChartKind kind)
{
    return std::any_of(chart.groups.begin(), chart.groups.end(),
                       [&](const PlottedGroup& group) { return group.group->kind == kind; });
}

bool HasOnlyAreas(const PlottedChart& chart)
{
    return std::all_of(chart.groups.begin(), chart.groups.end(), [](const PlottedGroup& group) {
        return group.group->kind == ChartKind::Area;
    });
}

bool HasSecondary(const PlottedChart& chart)
{
    return chart.chart->secondaryAxis &&
           std::any_of(chart.groups.begin(), chart.groups.end(),
                       [](const PlottedGroup& group) { return group.group->usesSecondaryAxis; });
}

/// The axis as it is used: in charts of percents it ends at 100 %.
book::ChartAxis WithPercentEnd(const book::ChartAxis& axis, const PlottedChart& chart,
                               bool isSecondary)
{
    book::ChartAxis result = axis;
    if (chart.HasPercentAxis(isSecondary) && !result.maximum)
        result.maximum = 1;
    const ValueRange range = chart.RangeOf(isSecondary);
    if (chart.HasPercentAxis(isSecondary) && !result.minimum && range.low < 0)
        result.minimum = -1;
    return result;
}

} // namespace

PlotFrame::PlotFrame(const PlottedChart& chart, const SeriesPainter& painter, const Box& left,
                     const Box& whole)
    : chart_(chart), painter_(painter)
{
    plot_.categories = chart.categories.size();
    plot_.isSideways = HasKind(chart, ChartKind::Bar);
    plot_.isReversed = chart.chart->categoryAxis.isReversed;
    plot_.reachesTheEdges = HasOnlyAreas(chart);
    valueSide_ = plot_.isReversed ? 1 : 0;
    Box box = left;
    if (const auto& place = chart.chart->plotPlace) {
        plot_.box = {whole.x + place->left * whole.width, whole.y + place->top * whole.height,
                     (place->right - place->left) * whole.width,
                     (place->bottom - place->top) * whole.height};
        titles_ = left;
        ChooseScales(plot_.box);
        SetLabels();
        CategoryDepth(plot_.box);
        SetCategoryStep();
        return;
    }
    titles_ = left;
    TakeTitles(box);
    ChooseScales(box);
    SetLabels();
    TakeLabels(box);
    plot_.box = {box.x, box.y, std::max(box.width, 1.0), std::max(box.height, 1.0)};
    ChooseScales(plot_.box); // what is left may have room for fewer labels
    SetLabels();
    SetCategoryStep();
}

const book::Font& PlotFrame::FontOf(const book::ChartAxis& axis) const
{
    return axis.font ? *axis.font : painter_.font;
}

double PlotFrame::RoomFor(const book::ChartAxis& axis, double length, bool isSideways) const
{
    const double line = painter_.text.LineHeight(FontOf(axis));
    return std::floor(length / std::max(line * (isSideways ? 3 : 1.25), 1.0));
}

void PlotFrame::ChooseScales(const Box& box)
{
    const book::Chart& chart = *chart_.chart;
    const double length = plot_.isSideways ? box.width : box.height;
    plot_.values =
        ChooseScale(chart_.RangeOf(false), WithPercentEnd(chart.valueAxis, chart_, false),
                    RoomFor(chart.valueAxis, length, plot_.isSideways));
    if (HasSecondary(chart_))
        plot_.secondary =
            ChooseScale(chart_.RangeOf(true), WithPercentEnd(*chart.secondaryAxis, chart_, true),
                        RoomFor(*chart.secondaryAxis, length, plot_.isSideways));
    if (HasKind(chart_, ChartKind::Scatter))
        plot_.x = ChooseScale(chart_.RangeOfX(), chart.categoryAxis,
                              RoomFor(chart.categoryAxis, box.width, true));
    if (plot_.x)
        valueSide_ = std::clamp(plot_.x->Share(plot_.x->Crossing()), 0.0, 1.0);
}

std::vector<PlotFrame::Label> PlotFrame::ValueLabels(const AxisScale& scale, bool isSecondary) const
{
    std::vector<Label> labels;
    const std::string format = chart_.FormatOf(isSecondary);
    for (const double value : scale.Ticks())
        labels.push_back({painter_.values.Format(value, format), scale.Share(value)});
    return labels;
}

std::vector<PlotFrame::Label> PlotFrame::XLabels() const
{
    std::vector<Label> labels;
    const std::string& own = chart_.chart->categoryAxis.numberFormat;
    for (const double value : plot_.x->Ticks())
        labels.push_back(
            {painter_.values.Format(value, own.empty() ? "General" : own), plot_.x->Share(value)});
    return labels;
}

void PlotFrame::SetLabels()
{
    valueLabels_ = ValueLabels(plot_.values, false);
    if (plot_.secondary)
        secondaryLabels_ = ValueLabels(*plot_.secondary, true);
    if (plot_.x) {
        categoryLabels_ = XLabels();
        return;
    }
    categoryLabels_.clear();
    for (std::size_t i = 0; i < chart_.categories.size(); ++i)
        categoryLabels_.push_back({chart_.categories[i], plot_.CategoryShare(i, 0.5)});
}

double PlotFrame::WidestOf(const std::vector<Label>& labels, const book::ChartAxis& axis) const
{
    double width = 0;
    if (!axis.isVisible || !axis.hasLabels)
        return 0;
    for (const Label& label : labels)
        width = std::max(width, painter_.text.Width(label.text, FontOf(axis)));
    return width + kLabelDistance + kTickLength;
}

std::string PlotFrame::TitleOf(const book::ChartAxis& axis) const
{
    return axis.isVisible && axis.title ? TitleText(*axis.title, painter_.values) : "";
}

void PlotFrame::TakeTitles(Box& box)
{
    const book::Chart& chart = *chart_.chart;
    const auto depth = [&](const book::ChartAxis& axis) {
        if (TitleOf(axis).empty())
            return 0.0;
        return painter_.text.LineHeight(axis.title->font.value_or(painter_.font)) + kTitleDistance;
    };
    const double below = depth(plot_.isSideways ? chart.valueAxis : chart.categoryAxis);
    const double beside = depth(plot_.isSideways ? chart.categoryAxis : chart.valueAxis);
    const double far = plot_.secondary ? depth(*chart.secondaryAxis) : 0;
    box = {box.x + beside, box.y, box.width - beside - far, box.height - below};
}

/// How much the labels of the axis at the bottom need: one line, or the longest one upwards.
double PlotFrame::CategoryDepth(const Box& box)
{
    const book::ChartAxis& axis = chart_.chart->categoryAxis;
    if (!axis.isVisible || !axis.hasLabels)
        return 0;
    const book::Font& font = FontOf(axis);
    const double line = painter_.text.LineHeight(font);
    const double slot = box.width * plot_.SlotShare();
    const double widest = WidestOf(categoryLabels_, axis);
    areCategoriesUpright_ = !plot_.x && widest > slot;
    if (!areCategoriesUpright_)
        return line + kLabelDistance + kTickLength;
    return std::min(widest, box.height * kMaxLabelShare);
}

/// Where lines of labels lie closer than they are high, some categories have none.
void PlotFrame::SetCategoryStep()
{
    const double line = painter_.text.LineHeight(FontOf(chart_.chart->categoryAxis));
    const double slot = plot_.CategoryLength() * plot_.SlotShare();
    const bool areLines = !plot_.x && (plot_.isSideways || areCategoriesUpright_);
    if (areLines)
        categoryStep_ =
            static_cast<std::size_t>(std::max(1.0, std::ceil(line * 0.9 / std::max(slot, 1e-3))));
}

/// How much a row of labels needs, those of bars' values.
double PlotFrame::RowDepth(const book::ChartAxis& axis) const
{
    if (!axis.isVisible || !axis.hasLabels)
        return 0;
    return painter_.text.LineHeight(FontOf(axis)) + kLabelDistance + kTickLength;
}

void PlotFrame::TakeSidewaysLabels(Box& box)
{
    const book::Chart& chart = *chart_.chart;
    const double line = painter_.text.LineHeight(FontOf(chart.categoryAxis));
    const double beside =
        std::min(WidestOf(categoryLabels_, chart.categoryAxis), box.width * kMaxLabelShare);
    double above = plot_.secondary ? RowDepth(*chart.secondaryAxis) : line / 2;
    double below = RowDepth(chart.valueAxis);
    if (valueSide_ == 1)
        std::swap(above, below);
    box = {box.x + beside, box.y + above, box.width - beside - line, box.height - above - below};
}

void PlotFrame::TakeLabels(Box& box)
{
    if (plot_.isSideways)
        return TakeSidewaysLabels(box);
    const book::Chart& chart = *chart_.chart;
    const double line = painter_.text.LineHeight(FontOf(chart.valueAxis));
    double beside = std::min(WidestOf(valueLabels_, chart.valueAxis), box.width * kMaxLabelShare);
    double far = line / 2;
    if (plot_.secondary)
        far = std::min(WidestOf(secondaryLabels_, *chart.secondaryAxis), box.width * 0.3);
    if (valueSide_ == 1)
        std::swap(beside, far);
    box = {box.x + beside, box.y + line / 2, box.width - beside - far, box.height - line / 2};
    box.height -= std::max(CategoryDepth(box), line / 2);
}

double PlotFrame::CrossingShare() const
{
    return std::clamp(plot_.values.Share(plot_.values.Crossing()), 0.0, 1.0);
}

void PlotFrame::PaintGrid(const book::ChartAxis& axis, const std::vector<Label>& labels,
                          bool isOfValues) const
{
    if (!axis.hasMajorGridLines)
        return;
    Pen pen;
    pen.color = axis.gridColor.value_or(kGray);
    for (const Label& label : labels) {
        if (isOfValues)
            painter_.canvas.DrawLine(plot_.At(0, label.share), plot_.At(1, label.share), pen);
        else
            painter_.canvas.DrawLine(plot_.At(label.share, 0), plot_.At(label.share, 1), pen);
    }
}

void PlotFrame::PaintBelow() const
{
    const book::Chart& chart = *chart_.chart;
    if (chart.plotFill)
        painter_.canvas.FillBox(plot_.box, SolidBrush(*chart.plotFill));
    PaintGrid(chart.valueAxis, valueLabels_, true);
    if (plot_.x)
        PaintGrid(chart.categoryAxis, categoryLabels_, false);
    if (plot_.secondary)
        PaintGrid(*chart.secondaryAxis, secondaryLabels_, true);
}

void PlotFrame::PaintLine(const book::ChartAxis& axis, Point from, Point to) const
{
    if (!axis.isVisible || !axis.hasLine)
        return;
    Pen pen;
    pen.color = axis.lineColor.value_or(kGray);
    painter_.canvas.DrawLine(from, to, pen);
}

void PlotFrame::PaintAxisLines() const
{
    const book::Chart& chart = *chart_.chart;
    PaintLine(chart.categoryAxis, plot_.At(0, CrossingShare()), plot_.At(1, CrossingShare()));
    PaintLine(chart.valueAxis, plot_.At(valueSide_, 0), plot_.At(valueSide_, 1));
    if (plot_.secondary)
        PaintLine(*chart.secondaryAxis, plot_.At(1 - valueSide_, 0), plot_.At(1 - valueSide_, 1));
}

void PlotFrame::PaintValueLabels(const book::ChartAxis& axis, const std::vector<Label>& labels,
                                 double category, bool isFarSide) const
{
    if (!axis.isVisible || !axis.hasLabels)
        return;
    const double distance = (kLabelDistance + kTickLength) * (isFarSide ? 1 : -1);
    for (const Label& label : labels) {
        const Point at = plot_.At(category, label.share);
        if (plot_.isSideways) {
            const double half = painter_.text.LineHeight(FontOf(axis)) / 2;
            painter_.text.DrawCentered(label.text, FontOf(axis),
                                       {at.x, at.y - distance - (isFarSide ? half : -half)},
                                       TextSide::Middle);
        }
        else
            painter_.text.DrawCentered(label.text, FontOf(axis), {at.x + distance, at.y},
                                       isFarSide ? TextSide::Left : TextSide::Right);
    }
}

void PlotFrame::PaintCategoryLabels() const
{
    const book::ChartAxis& axis = chart_.chart->categoryAxis;
    if (!axis.isVisible || !axis.hasLabels)
        return;
    const book::Font& font = FontOf(axis);
    const double distance = kLabelDistance + kTickLength;
    for (std::size_t i = 0; i < categoryLabels_.size(); i += categoryStep_) {
        const Label& label = categoryLabels_[i];
        const Point at = plot_.At(label.share, CrossingShare());
        if (plot_.isSideways) {
            painter_.text.DrawCentered(label.text, font, {at.x - distance, at.y}, TextSide::Right);
        }
        else if (areCategoriesUpright_) {
            const double half = painter_.text.Width(label.text, font) / 2;
            painter_.text.DrawUpwards(label.text, font, {at.x, at.y + distance + half});
        }
        else {
            painter_.text.Draw(label.text, font, {at.x, at.y + distance}, TextSide::Middle);
        }
    }
}

void PlotFrame::PaintTitles() const
{
    const book::Chart& chart = *chart_.chart;
    const auto paint = [&](const book::ChartAxis& axis, bool isUpright, double edge) {
        const std::string text = TitleOf(axis);
        if (text.empty())
            return;
        const book::Font font = axis.title->font.value_or(painter_.font);
        const double half = painter_.text.LineHeight(font) / 2;
        if (isUpright)
            painter_.text.DrawUpwards(
                text, font, {edge + (edge > plot_.box.x ? -half : half), plot_.box.Middle().y});
        else
            painter_.text.DrawCentered(text, font, {plot_.box.Middle().x, edge - half},
                                       TextSide::Middle);
    };
    paint(plot_.isSideways ? chart.valueAxis : chart.categoryAxis, false, titles_.Bottom());
    paint(plot_.isSideways ? chart.categoryAxis : chart.valueAxis, true, titles_.x);
    if (plot_.secondary)
        paint(*chart.secondaryAxis, true, titles_.Right());
}

void PlotFrame::PaintAbove() const
{
    const bool isFar = valueSide_ == 1;
    PaintAxisLines();
    PaintValueLabels(chart_.chart->valueAxis, valueLabels_, valueSide_, isFar);
    if (plot_.secondary)
        PaintValueLabels(*chart_.chart->secondaryAxis, secondaryLabels_, 1 - valueSide_, !isFar);
    PaintCategoryLabels();
    PaintTitles();
}

} // namespace orrery::look
