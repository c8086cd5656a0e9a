#pragma once

#include "generate/run_observer.h"
#include "holidays/holiday_dates.h"
#include "model/name_lists.h"

#include <string>
#include <vector>

namespace orrery::generate {

/// State that the runs of a program share. Easter and holiday dates stay after a run, until the
/// next one overwrites them.
struct Context {
    const model::NameTables& names;
    RunObserver& observer;
    /// Receives the name of each sheet that is filled, twelve months and a year. If null, the
    /// application is not asked for names.
    std::vector<std::string>* filledSheets = nullptr;
    holidays::Date easter = {}; ///< Easter Sunday of the run's year
    holidays::HolidayDateList holidayDates = {};
};

} // namespace orrery::generate
