#pragma once

#include "book/look/chart.h"
#include "engines/builtin/xlsx/look/drawing/chart/chart_data.h"
#include "engines/builtin/xlsx/look/drawing/values/fills.h"

#include <optional>
#include <string>
#include <vector>

namespace orrery::xlsx::drawing {

/// What the texts of a chart are read with.
struct ChartTexts {
    const StyleSource& style;
    book::Font font;       ///< of texts that say nothing
    double titleSize = 18; ///< points
    PointBudget* points = nullptr;
};

/// A title's own text, ECMA-376 21.2.2.210; `automatic` is the text of one that has none.
book::ChartText ReadChartTitle(const xml::Element& title, const ChartTexts& texts,
                               const book::Font& font, const book::ChartText& automatic);

/// The axes of a plot area.
class ChartAxes {
public:
    ChartAxes(const xml::Element& plotArea, const ChartTexts& texts)
        : plotArea_(plotArea), texts_(texts)
    {
    }

    /// Whether a group's values have other axes than those of the first group.
    bool IsSecondary(const xml::Element& group);
    void Read(book::Chart& chart) const;

private:
    struct Pair {
        xml::Element categories;
        xml::Element values;
    };

    Pair AxesOf(const xml::Element& group) const;
    xml::Element FindAxis(const std::string& id) const;
    book::ChartAxis ReadAxis(const xml::Element& axis) const;

    xml::Element plotArea_;
    const ChartTexts& texts_;
    std::optional<Pair> primary_;
    std::optional<Pair> secondary_;
};

} // namespace orrery::xlsx::drawing
