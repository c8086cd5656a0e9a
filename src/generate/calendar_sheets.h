#pragma once

#include "book/spreadsheet.h"
#include "generate/context.h"
#include "model/parameters.h"

#include <cstdint>

namespace orrery::generate {

// Both do nothing unless `Output` is set. Each reports its own failures, and the run goes on; they
// throw nothing but RunEnded.

/// Turns the model sheet into twelve sheets, one for each month and named after it. All copies are
/// made before the first one is filled. Renaming and copying fail silently: the first sheet then
/// keeps its name, a copy takes the name of the first list, or else the name it was born with.
void MakeMonthlyCalendar(book::Workbook& workbook, std::int16_t year,
                         const model::MonthlyParameters& parameters, Context& context);

/// Names the model sheet after the year and fills twelve month blocks on it, `MonthLayout` of them
/// side by side. The cell positions of the parameters are shifted from block to block; they are
/// put back at the normal end and may stay shifted after a failure.
void MakeYearlyCalendar(book::Workbook& workbook, std::int16_t year,
                        model::YearlyParameters& parameters, Context& context);

} // namespace orrery::generate
