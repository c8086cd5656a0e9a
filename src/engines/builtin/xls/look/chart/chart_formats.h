#pragma once

#include "book/look/chart.h"
#include "book/look/color.h"

#include <cstdint>
#include <optional>
#include <string_view>

/// How the parts of a chart are filled and drawn. These functions throw Error(DamagedWorkbook) if
/// the data of a record is too short.
namespace orrery::xls {

/// [MS-XLS] 2.4.4
struct AreaFormat {
    bool isAutomatic = true;
    bool isVisible = true;
    book::Color color = book::kWhite;
};
AreaFormat ReadAreaFormat(std::string_view data);

/// [MS-XLS] 2.4.156
struct LineFormat {
    bool isAutomatic = true;
    bool isAxisVisible = false; ///< of axes: the line is that of the axis and is drawn
    book::Outline outline;      ///< with the colour that it has if it is not automatic
};
LineFormat ReadLineFormat(std::string_view data);

/// [MS-XLS] 2.4.166
struct MarkerFormat {
    bool isAutomatic = true;
    bool isVisible = true;
    book::Color color = book::kBlack;
};
MarkerFormat ReadMarkerFormat(std::string_view data);

/// How a series or a point looks, as far as the records say.
struct DataLook {
    std::optional<AreaFormat> area;
    std::optional<LineFormat> line;
    std::optional<MarkerFormat> marker;
    std::optional<std::uint16_t> number; ///< which automatic colours it has
    bool isSmooth = false;
    bool hasLabels = false;
    bool hasPercents = false;
};

/// "LongRGB", [MS-XLS] 2.5.178
book::Color ReadChartColor(std::string_view data, std::size_t at);

} // namespace orrery::xls
