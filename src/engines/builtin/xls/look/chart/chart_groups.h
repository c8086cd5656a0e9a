#pragma once

#include "engines/builtin/xls/look/chart/chart_parts.h"

#include <string_view>

namespace orrery::xls {

/// Takes a record between those that begin and end a group of series: its kind and how it is drawn.
/// Throws Error(DamagedWorkbook) if its data is too short.
void ReadGroupRecord(ChartRecord type, std::string_view data, GroupPart& part);

} // namespace orrery::xls
