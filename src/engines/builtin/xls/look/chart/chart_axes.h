#pragma once

#include "book/look/chart.h"
#include "engines/builtin/xls/look/chart/chart_parts.h"
#include "engines/builtin/xls/look/chart/drawing_styles.h"

#include <cstdint>
#include <string_view>

namespace orrery::xls {

/// Reads the records of one axis.
class AxisReader {
public:
    AxisReader(book::ChartAxis& axis, const DrawingStyles& styles) : axis_(axis), styles_(styles)
    {
        axis_.hasMajorGridLines = false;
    }
    /// Takes a record between those that begin and end the axis. Throws Error(DamagedWorkbook) if
    /// its data is too short.
    void Add(ChartRecord type, std::string_view data);

private:
    void ReadValueRange(std::string_view data);
    void ReadTick(std::string_view data);
    void ReadLine(std::string_view data);

    book::ChartAxis& axis_;
    const DrawingStyles& styles_;
    std::uint16_t line_ = 0; // what the next line format is for
    std::optional<book::Color> textColor_;
};

} // namespace orrery::xls
