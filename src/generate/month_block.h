#pragma once

#include "book/spreadsheet.h"
#include "generate/context.h"
#include "model/parameters.h"

#include <cstdint>

namespace orrery::generate {

/// Writes one month [1:12] into a sheet, in this order: year, month name, weekday names, then for
/// each day its number and its holidays. Reads the holiday dates from their cursor on and advances
/// it, so the months of a sheet are written from January to December. Cells of the grid that the
/// month does not reach keep what they hold.
///
/// An error ends this month and goes to the reporter. What was written stays, and the cursor stays
/// where it was. Throws nothing but RunEnded.
void FillMonth(book::Worksheet& sheet, std::int16_t year, std::int16_t month,
               const model::CalendarParameters& parameters, Context& context);

} // namespace orrery::generate
