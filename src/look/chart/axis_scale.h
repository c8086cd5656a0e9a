#pragma once

#include "book/look/chart.h"

#include <vector>

namespace orrery::look {

/// The values of an axis.
struct AxisScale {
    double minimum = 0;
    double maximum = 1; ///< above the minimum
    double majorUnit = 1;
    bool isLogarithmic = false;
    bool isReversed = false;

    /// Where a value lies: 0 at the axis' beginning, 1 at its end; beyond them for values outside.
    double Share(double value) const;
    /// The values with a label, from the minimum on; at most 1000.
    std::vector<double> Ticks() const;
    /// The value at which the other axis crosses: 0, or the end that is next to it.
    double Crossing() const;
};

/// The lowest and highest value that is shown.
struct ValueRange {
    double low = 0;
    double high = 0;
    bool isEmpty = true;

    void Add(double value);
};

/// The scale that Excel chooses for the values where the axis does not say. `room` is how many
/// intervals have room on the axis, at least 1.
AxisScale ChooseScale(const ValueRange& range, const book::ChartAxis& axis, double room);

} // namespace orrery::look
