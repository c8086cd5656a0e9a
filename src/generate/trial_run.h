#pragma once

#include "book/spreadsheet.h"
#include "model/name_lists.h"
#include "model/parameters.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orrery::generate {

/// Makes both calendars of a year in an open workbook without saving it, and returns what would go
/// wrong, one line each: a sheet that is missing or cannot be named or copied, and for each month
/// the cells that cannot be written. Throws OverflowError if the year's Easter Sunday cannot be
/// computed.
std::vector<std::string> TryCalendars(book::Workbook& workbook, std::int16_t year,
                                      model::ParameterSets sets, const model::NameTables& names);

} // namespace orrery::generate
