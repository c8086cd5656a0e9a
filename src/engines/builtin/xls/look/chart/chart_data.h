#pragma once

#include "book/look/chart.h"
#include "engines/builtin/xls/look/chart/drawing_source.h"
#include "engines/builtin/xls/records/records.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::xls {

/// What a reference of a chart belongs to. [MS-XLS] 2.4.29
enum class ChartDataKind : std::uint8_t { Name, Values, Categories, BubbleSizes };

/// A reference to the cells of data: formula and number format. Throws Error(DamagedWorkbook) if
/// the data of the record is too short.
struct ChartReference {
    ChartDataKind kind = ChartDataKind::Name;
    std::string formula;                     ///< empty for constants
    std::optional<std::string> numberFormat; ///< absent: that of the cells
};
ChartReference ReadChartReference(std::string_view data, const DrawingSource& source);

/// The text of a SERIESTEXT record. Throws likewise. [MS-XLS] 2.4.254
std::string ReadChartText(std::string_view data);

/// A value that the chart keeps of its cells: the number of its series and its own.
struct CachedValue {
    std::size_t series = 0;
    std::size_t index = 0;
    book::CellContent content;
};
/// Nothing for records without a value. Throws likewise. [MS-XLS] 2.4.180, 2.4.148, 2.4.24
std::optional<CachedValue> ReadCachedValue(const Record& record);

} // namespace orrery::xls
