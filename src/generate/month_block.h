#pragma once

#include "book/spreadsheet.h"
#include "generate/context.h"
#include "model/parameters.h"

#include <cstdint>

namespace orrery::generate {

/// Writes one month [1:12] to a sheet, in this order: year, month name, weekday names, then for
/// each day its number and its holidays. Reads the holiday dates from their cursor and advances it,
/// so months must be written from January to December. Cells of the grid outside the month stay
/// unchanged, which is kept on purpose.
///
/// An error ends this month and is reported. Cells already written stay, and the cursor is not
/// moved back. Throws only RunEnded.
void FillMonth(book::Worksheet& sheet, std::int16_t year, std::int16_t month,
               const model::CalendarParameters& parameters, Context& context);

} // namespace orrery::generate
