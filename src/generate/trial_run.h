#pragma once

#include "book/spreadsheet.h"
#include "generate/recording_workbook.h"
#include "generate/run_observer.h"
#include "model/name_lists.h"
#include "model/parameters.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orrery::generate {

/// A sheet that a trial filled.
struct TrialSheet {
    std::string name;                ///< as it would be saved
    std::string model;               ///< the template's sheet that it is, or that it is a copy of
    std::int16_t month = 0;          ///< [1:12]; 0 for the yearly calendar's
    std::vector<RecordedCell> cells; ///< in the order of writing; a later one replaces an earlier
};

struct Trial {
    std::vector<std::string> findings; ///< what would go wrong, one line each
    std::vector<TrialSheet> sheets;    ///< in the order of filling
};

/// Makes both calendars of a year in an open workbook without saving it. What would go wrong is a
/// sheet that is missing or cannot be named or copied, and for each month the cells that cannot be
/// written. Throws OverflowError if the year's Easter Sunday cannot be computed.
Trial TryCalendars(book::Workbook& workbook, std::int16_t year, model::ParameterSets sets,
                   const model::NameTables& names);

} // namespace orrery::generate
