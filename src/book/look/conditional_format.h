#pragma once

#include "book/cell_address.h"
#include "book/look/cell_style.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrery::book {

/// ECMA-376 18.18.12 (ST_CfType). A kind for which the files also hold a formula is the kind, and
/// the formula is kept.
enum class ConditionKind : std::uint8_t {
    Expression,
    CellIs,
    ContainsText,
    NotContainsText,
    BeginsWith,
    EndsWith,
    ContainsBlanks,
    NotContainsBlanks,
    ContainsErrors,
    NotContainsErrors,
    DuplicateValues,
    UniqueValues,
    Top10,
    AboveAverage,
    TimePeriod,
    ColorScale,
    DataBar,
    IconSet
};

/// Of `CellIs`, in the order of [MS-XLS] 2.4.42 (from 1 there).
enum class ComparisonOperator : std::uint8_t {
    Between,
    NotBetween,
    Equal,
    NotEqual,
    GreaterThan,
    LessThan,
    GreaterOrEqual,
    LessOrEqual
};

enum class TimePeriod : std::uint8_t {
    Today,
    Yesterday,
    Tomorrow,
    Last7Days,
    ThisMonth,
    LastMonth,
    NextMonth,
    ThisWeek,
    LastWeek,
    NextWeek
};

/// A bound of a scale, a bar or an icon. ECMA-376 18.18.13
struct ScalePoint {
    enum class Kind : std::uint8_t {
        Number,
        Percent,
        Percentile,
        Minimum,
        Maximum,
        Formula,
        AutomaticMinimum,
        AutomaticMaximum
    };
    Kind kind = Kind::Minimum;
    std::string value;            ///< a number or a formula; empty where the kind needs none
    bool isGreaterOrEqual = true; ///< of icons
    Color color;                  ///< of colour scales
};

struct DataBar {
    ScalePoint minimum;
    ScalePoint maximum;
    Color color;
    std::optional<Color> borderColor;
    std::optional<Color> negativeColor;
    std::optional<Color> axisColor;
    bool isGradient = true;
    bool showsValue = true;
    bool isRightToLeft = false;
    enum class Axis : std::uint8_t { Automatic, Middle, None } axis = Axis::None;
    double minimumLength = 10; ///< percent of the cell
    double maximumLength = 90;
};

struct IconSet {
    std::string name = "3TrafficLights1"; ///< ECMA-376 18.18.42
    std::vector<ScalePoint> points;       ///< as many as the set has icons
    bool showsValue = true;
    bool isReversed = false;
    /// Icons of their own: the name of the set ("NoIcons" for none) and the position in it; empty,
    /// or one for each point.
    struct Icon {
        std::string set;
        std::int32_t position = 0;
    };
    std::vector<Icon> icons;
};

/// One rule. Formulas are relative to the upper left cell of the rectangle
/// around all ranges of the format. [MS-XLS] 2.4.56 (refBound)
struct ConditionalRule {
    ConditionKind kind = ConditionKind::Expression;
    std::int32_t priority = 0; ///< a lower number wins
    bool stopIfTrue = false;
    PartialStyle style;
    std::vector<std::string> formulas; ///< at most three, without "="
    ComparisonOperator comparison = ComparisonOperator::Equal;
    std::string text; ///< of the kinds that look for one
    TimePeriod period = TimePeriod::Today;
    std::int32_t rank = 10; ///< of Top10
    bool isPercent = false;
    bool isBottom = false;
    bool isBelow = false; ///< of AboveAverage
    bool includesEqual = false;
    std::int32_t deviations = 0;   ///< standard deviations from the average
    std::vector<ScalePoint> scale; ///< of ColorScale: two or three
    std::optional<DataBar> bar;
    std::optional<IconSet> icons;
};

struct ConditionalFormat {
    std::vector<CellRange> ranges;
    std::vector<ConditionalRule> rules;
};

} // namespace orrery::book
