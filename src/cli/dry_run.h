#pragma once

#include "generate/spreadsheet.h"
#include "holidays/holiday_dates.h"
#include "model/name_lists.h"
#include "model/parameters.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orrery::cli {

/// How many rows and columns the sheets of a workbook have.
struct SheetLimits {
    std::int32_t rows = 0;
    std::int32_t columns = 0;
};

/// The limits of the file type that the name ends in.
SheetLimits LimitsOf(const std::string& fileName);

/// Makes both calendars of a year without writing anything and says what would go wrong: a sheet
/// that is not there, and for each month the cells that lie outside the sheet. One line each.
std::vector<std::string> DryRun(generate::Workbook& workbook, SheetLimits limits, std::int16_t year,
                                model::ParameterSets sets, const model::NameTables& names,
                                holidays::Date easter);

} // namespace orrery::cli
