#pragma once

#include "book/spreadsheet.h"
#include "generate/recording_workbook.h"
#include "generate/run_observer.h"
#include "model/name_lists.h"
#include "model/parameters.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrery::generate {

/// A cell that a trial wrote, or failed to write.
struct TrialCell : RecordedCell {
    std::int16_t month = 0; ///< [1:12]
    std::int16_t day = 0;   ///< whose number or holiday it is; 0 for titles and weekdays
};

/// A sheet that a trial filled.
struct TrialSheet {
    std::string name;             ///< as it would be saved
    std::string model;            ///< the template's sheet that it is, or that it is a copy of
    std::int16_t month = 0;       ///< [1:12]; 0 for the yearly calendar's
    std::vector<TrialCell> cells; ///< in the order of writing; a later one replaces an earlier
};

/// Something that would go wrong.
struct Finding {
    std::string text;                  ///< one line
    std::optional<std::int16_t> month; ///< of the sheet: [1:12], 0 the year's; absent if of none
};

std::vector<std::string> TextsOf(const std::vector<Finding>& findings);

struct Trial {
    std::vector<Finding> findings;
    std::vector<TrialSheet> sheets; ///< in the order of filling
};

/// Makes both calendars of a year in an open workbook without saving it. What would go wrong is a
/// sheet that is missing or cannot be named or copied, and for each month the cells that cannot be
/// written. Throws OverflowError if the year's Easter Sunday cannot be computed.
Trial TryCalendars(book::Workbook& workbook, std::int16_t year, model::ParameterSets sets,
                   const model::NameTables& names);

} // namespace orrery::generate
