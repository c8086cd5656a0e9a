#include "look/chart/legend.h"

#include <algorithm>
#include <cmath>

namespace orrery::look {
namespace {

constexpr std::size_t kMaxEntries = 200;
constexpr double kMargin = 8;
constexpr double kBoxSample = 7;   // the side of a square
constexpr double kLineSample = 28; // the length of a line
constexpr double kNameDistance = 5;
constexpr double kEntryDistance = 14;
constexpr double kMaxShare = 0.4; // of the chart

bool IsLine(book::ChartKind kind)
{
    return kind == book::ChartKind::Line || kind == book::ChartKind::Scatter;
}

} // namespace

Legend::Legend(const PlottedChart& chart, const SeriesPainter& painter) : painter_(painter)
{
    place_ = chart.chart->legend.value_or(book::LegendPlace::Right);
    lineHeight_ = painter.text.LineHeight(painter.font) * 1.15;
    if (!chart.chart->legend)
        return;
    for (const PlottedGroup& group : chart.groups) {
        const bool isRound = group.group->kind == book::ChartKind::Pie ||
                             group.group->kind == book::ChartKind::Doughnut;
        if (isRound && !group.series.empty())
            AddPoints(chart, group.series.front());
        else
            AddSeries(group);
    }
}

void Legend::AddPoints(const PlottedChart& chart, const PlottedSeries& series)
{
    for (std::size_t i = 0; i < series.values.size() && entries_.size() < kMaxEntries; ++i) {
        const std::string name = i < chart.categories.size() ? chart.categories[i] : "";
        entries_.push_back({name, series.ColorOfPoint(i), &series, false});
    }
}

void Legend::AddSeries(const PlottedGroup& group)
{
    std::vector<Entry> added;
    for (const PlottedSeries& series : group.series) {
        if (entries_.size() + added.size() < kMaxEntries)
            added.push_back({series.name, series.color, &series, IsLine(group.group->kind)});
    }
    // A column of names has the order that the eye meets: stacked columns grow upwards, and so do
    // the bars of a category.
    const bool isColumn = place_ != book::LegendPlace::Top && place_ != book::LegendPlace::Bottom;
    const bool areBars = group.group->kind == book::ChartKind::Bar;
    if (isColumn && areBars != group.IsStacked())
        std::reverse(added.begin(), added.end());
    entries_.insert(entries_.end(), added.begin(), added.end());
}

double Legend::EntryWidth(const Entry& entry) const
{
    const double sample = entry.isLine ? kLineSample : kBoxSample;
    return sample + kNameDistance + painter_.text.Width(entry.name, painter_.font);
}

void Legend::TakeRoom(Box& left)
{
    if (entries_.empty())
        return;
    if (place_ == book::LegendPlace::Top || place_ == book::LegendPlace::Bottom)
        TakeRows(left, place_);
    else
        TakeColumn(left, place_);
}

void Legend::TakeColumn(Box& left, book::LegendPlace place)
{
    double width = 0;
    for (const Entry& entry : entries_)
        width = std::max(width, EntryWidth(entry));
    width = std::min(width + 2 * kMargin, left.width * kMaxShare);
    const bool isLeft = place == book::LegendPlace::Left;
    const double x = isLeft ? left.x + kMargin : left.Right() - width + kMargin;
    const double shown = std::min(static_cast<double>(entries_.size()),
                                  std::floor(left.height / std::max(lineHeight_, 1.0)));
    double y = left.y + lineHeight_ / 2;
    if (place != book::LegendPlace::TopRight)
        y += (left.height - shown * lineHeight_) / 2;
    for (std::size_t i = 0; i < static_cast<std::size_t>(std::max(shown, 0.0)); ++i)
        places_.push_back({x, y + static_cast<double>(i) * lineHeight_});
    left.width -= width;
    if (isLeft)
        left.x += width;
}

void Legend::TakeRows(Box& left, book::LegendPlace place)
{
    struct Row {
        std::size_t entries = 0;
        double width = 0;
    };
    std::vector<Row> rows(1);
    for (const Entry& entry : entries_) {
        const double width = EntryWidth(entry) + kEntryDistance;
        if (rows.back().entries > 0 && rows.back().width + width > left.width)
            rows.emplace_back();
        ++rows.back().entries;
        rows.back().width += width;
    }
    const double room = std::floor(left.height * kMaxShare / std::max(lineHeight_, 1.0));
    if (static_cast<double>(rows.size()) > room)
        rows.resize(static_cast<std::size_t>(std::max(room, 1.0)));
    const double height = static_cast<double>(rows.size()) * lineHeight_ + kMargin;
    const bool isTop = place == book::LegendPlace::Top;
    double y = (isTop ? left.y : left.Bottom() - height + kMargin / 2) + lineHeight_ / 2;
    std::size_t at = 0;
    for (const Row& row : rows) {
        double x = left.x + (left.width - row.width + kEntryDistance) / 2;
        for (std::size_t i = 0; i < row.entries; ++i, ++at) {
            places_.push_back({x, y});
            x += EntryWidth(entries_[at]) + kEntryDistance;
        }
        y += lineHeight_;
    }
    left.height -= height;
    if (isTop)
        left.y += height;
}

void Legend::PaintEntry(const Entry& entry, Point at) const
{
    const book::ChartSeries& look = *entry.series->series;
    const double sample = entry.isLine ? kLineSample : kBoxSample;
    if (entry.isLine) {
        if (look.outline.isVisible)
            painter_.canvas.DrawLine(at, {at.x + sample, at.y},
                                     painter_.PenOf(look.outline, entry.color));
        if (look.hasMarkers)
            painter_.PaintMarker(entry.series->number, {at.x + sample / 2, at.y}, entry.color);
    }
    else if (look.hasFill)
        painter_.canvas.FillBox({at.x, at.y - sample / 2, sample, sample}, SolidBrush(entry.color));
    painter_.text.DrawCentered(entry.name, painter_.font, {at.x + sample + kNameDistance, at.y},
                               TextSide::Left);
}

void Legend::Paint() const
{
    for (std::size_t i = 0; i < places_.size(); ++i)
        PaintEntry(entries_[i], places_[i]);
}

} // namespace orrery::look
