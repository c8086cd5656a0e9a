#pragma once

#include "book/look/chart.h"
#include "engines/builtin/xlsx/look/drawing/values/fills.h"
#include "engines/builtin/xlsx/package/package.h"

#include <memory>
#include <string>

namespace orrery::xlsx::drawing {

/// Reads a chart part (ECMA-376 21.2), or one of the newer kinds ([MS-ODRAWXML] 2.24), of which
/// only kind and title are kept. Nothing if it has no chart. Throws Error for a damaged part.
std::shared_ptr<const book::Chart> ReadChartPart(const Package& package, const std::string& part,
                                                 bool isExtended, const StyleSource& style);

/// The same from the text of a part.
book::Chart ReadChart(const xml::Element& chartSpace, const StyleSource& style);
book::Chart ReadExtendedChart(const xml::Element& chartSpace, const StyleSource& style);

} // namespace orrery::xlsx::drawing
