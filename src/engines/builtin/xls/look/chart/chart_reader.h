#pragma once

#include "book/look/chart.h"
#include "engines/builtin/xls/look/chart/drawing_source.h"
#include "engines/builtin/xls/records/globals.h"

#include <memory>

namespace orrery::xls {

/// Reads the substream of a chart, BOF to EOF, on a sheet or of a chart sheet. Damaged records are
/// left out; nullptr if there is no chart in it. Never throws for what it contains.
/// [MS-XLS] 2.1.7.20.1
std::shared_ptr<const book::Chart> ReadChart(const DrawingSource& source, const Span& chart,
                                             ChartBudget& budget);

} // namespace orrery::xls
