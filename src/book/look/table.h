#pragma once

#include "book/cell_address.h"
#include "book/look/cell_style.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace orrery::book {

/// The parts of a table style, the later ones over the earlier ones. ECMA-376 18.18.93
enum class TablePart : std::uint8_t {
    WholeTable,
    FirstColumnStripe,
    SecondColumnStripe,
    FirstRowStripe,
    SecondRowStripe,
    LastColumn,
    FirstColumn,
    HeaderRow,
    TotalRow,
    FirstHeaderCell,
    LastHeaderCell,
    FirstTotalCell,
    LastTotalCell
};

struct TableStyle {
    std::map<TablePart, PartialStyle> parts;
    std::array<std::int32_t, 2> rowStripe = {1, 1}; ///< rows of the first and of the second stripe
    std::array<std::int32_t, 2> columnStripe = {1, 1};
};

/// A table with a style; a pivot table's style likewise.
struct Table {
    std::string name;
    CellRange range;
    std::int32_t headerRows = 1;
    std::int32_t totalRows = 0;
    std::vector<std::string> columns; ///< names, for references of formulas
    TableStyle style; ///< resolved: a built-in one by its definition, with the theme's colours
    bool showsRowStripes = false;
    bool showsColumnStripes = false;
    bool showsFirstColumn = false;
    bool showsLastColumn = false;
};

enum class SparklineKind : std::uint8_t { Line, Column, WinLoss };

struct SparklineGroup {
    SparklineKind kind = SparklineKind::Line;
    Color color{0x37, 0x60, 0x92};
    std::optional<Color> negative; ///< colours of the points that are marked
    std::optional<Color> first;
    std::optional<Color> last;
    std::optional<Color> high;
    std::optional<Color> low;
    std::optional<Color> markers;
    double lineWidth = 0.75; ///< points
    bool showsAxis = false;
    bool isRightToLeft = false;
    std::optional<double> minimum; ///< of the vertical axis; absent: that of the values
    std::optional<double> maximum;
    struct Sparkline {
        std::string formula; ///< of its values: "Sheet1!A2:F2"
        CellAddress cell;
    };
    std::vector<Sparkline> sparklines;
};

} // namespace orrery::book
