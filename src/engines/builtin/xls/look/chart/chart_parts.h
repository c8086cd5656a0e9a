#pragma once

#include "book/look/chart.h"
#include "engines/builtin/xls/look/chart/chart_formats.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// The parts of a chart as its records list them.
namespace orrery::xls {

/// The types of records in charts that matter here. [MS-XLS] 2.3.2
enum class ChartRecord : std::uint16_t {
    Chart = 0x1002,
    Series = 0x1003,
    DataFormat = 0x1006,
    LineFormat = 0x1007,
    MarkerFormat = 0x1009,
    AreaFormat = 0x100A,
    AttachedLabel = 0x100C,
    SeriesText = 0x100D,
    ChartFormat = 0x1014,
    Legend = 0x1015,
    Bar = 0x1017,
    Line = 0x1018,
    Pie = 0x1019,
    Area = 0x101A,
    Scatter = 0x101B,
    ConnectingLine = 0x101C, // "CrtLine"
    Axis = 0x101D,
    Tick = 0x101E,
    ValueRange = 0x101F,
    CategoryRange = 0x1020, // "CatSerRange"
    AxisLine = 0x1021,
    DefaultText = 0x1024,
    Text = 0x1025,
    Font = 0x1026, // "FontX"
    ObjectLink = 0x1027,
    Frame = 0x1032,
    Begin = 0x1033,
    End = 0x1034,
    Chart3D = 0x103A,
    DropBar = 0x103D,
    Radar = 0x103E,
    Surface = 0x103F,
    RadarArea = 0x1040,
    AxisParent = 0x1041,
    SeriesToGroup = 0x1045, // "SerToCrt"
    SeriesParent = 0x104A,
    NumberFormat = 0x104E, // "IFmtRecord"
    Reference = 0x1051,    // "BRAI"
    SeriesFormat = 0x105D,
    PieOfPie = 0x1061, // "BopPop"
    DataIndex = 0x1065 // "SIIndex"
};

struct SeriesPart {
    book::ChartData name;
    book::ChartData values;
    book::ChartData categories;
    std::size_t group = 0;
    bool isAuxiliary = false; ///< a trend line or error bars of another series
    DataLook look;
    std::map<std::uint16_t, DataLook> points;
};

struct GroupPart {
    book::ChartGroup group; ///< without series
    bool isStock = false;
    bool is3D = false;
    DataLook look; ///< of series that do not say otherwise
};

/// A text and what it belongs to. [MS-XLS] 2.4.182
struct TextPart {
    static constexpr std::uint16_t kTitle = 1;
    static constexpr std::uint16_t kValueAxis = 2;
    static constexpr std::uint16_t kCategoryAxis = 3;

    book::ChartText text;
    std::optional<std::uint16_t> link;
    bool isDeleted = false;
    bool isAutomatic = false;
    std::optional<book::Color> color;
};

/// The two axes of a group of axes; absent ones are not shown.
struct AxesPart {
    std::optional<book::ChartAxis> category;
    std::optional<book::ChartAxis> value;
    std::optional<book::ChartText> categoryTitle;
    std::optional<book::ChartText> valueTitle;
};

struct ChartParts {
    bool isChart = false;
    std::vector<SeriesPart> series;
    std::vector<GroupPart> groups;
    std::array<AxesPart, 2> axes; ///< primary, secondary
    std::optional<TextPart> title;
    std::optional<book::LegendPlace> legend;
    DataLook frame; ///< of the whole chart
    DataLook plot;
    std::optional<book::Font> font;
};

} // namespace orrery::xls
