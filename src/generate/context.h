#pragma once

#include "generate/run_observer.h"
#include "holidays/holiday_dates.h"
#include "model/name_lists.h"

#include <string>
#include <vector>

namespace orrery::generate {

/// What the runs of a program share. It outlives them: a run leaves its Easter date and its
/// holiday dates behind, and the next one overwrites them.
struct Context {
    const model::NameTables& names;
    RunObserver& observer;
    /// Takes the name of each sheet that is filled, twelve months and a year. Null: the application
    /// is not asked for names.
    std::vector<std::string>* filledSheets = nullptr;
    holidays::Date easter = {}; ///< Easter Sunday of the run's year
    holidays::HolidayDateList holidayDates = {};
};

} // namespace orrery::generate
