#pragma once

#include "book/look/chart.h"
#include "engines/builtin/xlsx/look/drawing/chart/chart_axes.h"

#include <optional>
#include <vector>

namespace orrery::xlsx::drawing {

/// A group of a plot area ("c:barChart", "c:pie3DChart" ...); nothing for other elements.
std::optional<book::ChartGroup> ReadChartGroup(const xml::Element& element, const ChartTexts& texts,
                                               const std::vector<book::Color>& accents);

/// The colours of series in a style of charts, 1 to 48 (ECMA-376 21.2.2.227).
std::vector<book::Color> ChartColors(int style, const builtin::ThemeColors& theme);
/// The colour of a series by its number from 0: the list again and again, darker and brighter.
book::Color SeriesColor(const std::vector<book::Color>& accents, std::size_t number);

} // namespace orrery::xlsx::drawing
