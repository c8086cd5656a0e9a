#pragma once

#include "holidays/holiday_dates.h"
#include "holidays/holiday_readers.h"
#include "model/name_lists.h"
#include "util/error_report.h"

#include <cstdint>
#include <functional>
#include <string>

namespace orrery::generate {

using holidays::CalendarKind;

/// What the runs of a program share. It outlives them: a run leaves its Easter date and its
/// holiday dates behind, and the next one overwrites them.
struct Context {
    const model::NameTables& names;
    util::ErrorReporter& reporter;
    /// Told after each month that was worked through, 1 to 12; may be empty.
    std::function<void(CalendarKind, std::int16_t month)> progress = {};
    /// Told the name of each sheet that was filled, twelve months and a year; may be empty, and
    /// then the application is not asked for names.
    std::function<void(const std::string& name)> calendarSheet = {};
    /// Told before the workbook is saved, which takes long when its sheets are large; may be empty.
    std::function<void()> saving = {};
    /// Told before a PDF is made, with its path; may be empty.
    std::function<void(const std::string& path)> printing = {};
    holidays::Date easter = {}; ///< Easter Sunday of the run's year
    holidays::HolidayDateList holidayDates = {};
};

} // namespace orrery::generate
