#pragma once

#include "look/chart/series_painter.h"

#include <string>
#include <vector>

namespace orrery::look {

/// The names of the series, or of a pie's points, with a sample of each.
class Legend {
public:
    Legend(const PlottedChart& chart, const SeriesPainter& painter);

    /// Takes the legend's room from what is left of the chart.
    void TakeRoom(Box& left);
    void Paint() const;

private:
    struct Entry {
        std::string name;
        book::Color color;
        const PlottedSeries* series = nullptr;
        bool isLine = false;
    };

    void AddSeries(const PlottedGroup& group);
    void AddPoints(const PlottedChart& chart, const PlottedSeries& series);
    double EntryWidth(const Entry& entry) const;
    void TakeColumn(Box& left, book::LegendPlace place);
    void TakeRows(Box& left, book::LegendPlace place);
    void PaintEntry(const Entry& entry, Point at) const;

    const SeriesPainter& painter_;
    std::vector<Entry> entries_;
    std::vector<Point> places_; // the left middle of each entry that is shown
    book::LegendPlace place_ = book::LegendPlace::Right;
    double lineHeight_ = 0;
};

} // namespace orrery::look
