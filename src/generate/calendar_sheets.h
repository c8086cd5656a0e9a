#pragma once

#include "book/spreadsheet.h"
#include "generate/context.h"
#include "model/parameters.h"

#include <cstdint>

namespace orrery::generate {

// Both do nothing unless `Output` is set. They report their failures, and the run goes on; they
// throw only RunEnded.

/// Turns the model sheet into twelve sheets named after the months. All copies are made before the
/// first sheet is filled. Failures of renaming and copying are not reported: the first sheet then
/// keeps its name, a copy gets its name from the first list, or else keeps its default name.
void MakeMonthlyCalendar(book::Workbook& workbook, std::int16_t year,
                         const model::MonthlyParameters& parameters, Context& context);

/// Names the model sheet after the year and fills twelve month blocks on it, `MonthLayout` of them
/// side by side. Shifts the cell positions in `parameters` from block to block; they are restored
/// at the end but may stay shifted after a failure, which is kept on purpose.
void MakeYearlyCalendar(book::Workbook& workbook, std::int16_t year,
                        model::YearlyParameters& parameters, Context& context);

} // namespace orrery::generate
