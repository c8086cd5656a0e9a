#pragma once

#include "book/look/cell.h"
#include "book/look/cell_style.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrery::book {

/// A rectangle in shares of the box around it.
struct ShareBox {
    double left = 0;
    double top = 0;
    double right = 1;
    double bottom = 1;
    friend bool operator==(const ShareBox&, const ShareBox&) = default;
};

/// The line around or through something; absent colours are automatic ones.
struct Outline {
    bool isVisible = true;
    std::optional<Color> color;
    double width = 0.75; ///< points
    LineStyle style = LineStyle::Thin;
};

/// Values of a chart: where they stand, and what the file last knew of them.
struct ChartData {
    std::string formula; ///< "Sheet1!$A$2:$A$9", without "="; empty for constants
    std::vector<CellContent> cached;
    std::string numberFormat = "General";
};

enum class ChartKind : std::uint8_t {
    Bar,
    Column,
    Line,
    Area,
    Pie,
    Doughnut,
    Scatter,
    Bubble,
    Radar,
    Stock,
    Surface,
    Other
};
enum class Grouping : std::uint8_t { Clustered, Stacked, PercentStacked };

struct ChartSeries {
    ChartData name;
    ChartData categories; ///< of scatter charts the x values
    ChartData values;
    std::optional<Color> color; ///< absent: the theme's accent at its position
    bool hasFill = true;
    Outline outline;
    struct Point {
        std::int32_t index = 0;
        std::optional<Color> color;
    };
    std::vector<Point> points; ///< that differ from the series
    bool hasMarkers = false;
    bool hasLabels = false;   ///< the values beside the points
    bool hasPercents = false; ///< of pies: shares instead
    bool isSmooth = false;
};

/// The series of one kind; a chart may have several such groups.
struct ChartGroup {
    ChartKind kind = ChartKind::Column;
    Grouping grouping = Grouping::Clustered;
    double gapWidth = 150; ///< percent of a bar's width
    double overlap = 0;    ///< percent
    double holeSize = 50;  ///< percent, of doughnuts
    double firstAngle = 0; ///< degrees clockwise from the top, of pies
    bool usesSecondaryAxis = false;
    bool variesColors = false;
    std::vector<ChartSeries> series;
};

struct ChartText {
    std::string text;    ///< empty: none, or taken from `formula`
    std::string formula; ///< of a title that is linked to a cell
    std::optional<Font> font;
};

struct ChartAxis {
    bool isVisible = true;
    std::optional<ChartText> title;
    std::optional<double> minimum;
    std::optional<double> maximum;
    std::optional<double> majorUnit;
    bool isReversed = false;
    bool isLogarithmic = false;
    bool hasMajorGridLines = false;
    std::optional<Color> gridColor;
    bool hasLabels = true;
    std::string numberFormat; ///< empty: that of the values
    std::optional<Font> font;
    bool hasLine = true; ///< the axis itself
    std::optional<Color> lineColor;
};

enum class LegendPlace : std::uint8_t { Right, Left, Top, Bottom, TopRight };

struct Chart {
    std::optional<ChartText> title;
    std::vector<ChartGroup> groups;
    ChartAxis categoryAxis;
    ChartAxis valueAxis;
    std::optional<ChartAxis> secondaryAxis; ///< of values
    std::optional<LegendPlace> legend;
    std::optional<Color> fill; ///< of the whole chart; absent: none
    std::optional<Color> plotFill;
    std::optional<ShareBox> plotPlace; ///< of the plot between its axes, if it was set by hand
    Outline outline;
    bool is3D = false;
    std::string kindName;       ///< of `ChartKind::Other`, as the file calls it ("waterfall")
    std::vector<Color> accents; ///< of the theme: the colours of series without their own
    Font font;                  ///< of texts without one of their own
};

} // namespace orrery::book
