#pragma once

#include "holidays/calendars/calendar_year.h"

namespace orrery::holidays::calendars {

/// The calendars. All are promised for the Gregorian years 1900 to 2100; those that go by the sky
/// grow uncertain outside.
enum class Calendar {
    Julian,
    UmmAlQura,
    IslamicCivil,
    Hebrew,
    Chinese,
    Korean,
    Vietnamese,
    Persian,
    Coptic,
    Ethiopic,
    Indian,
};

/// A year of a calendar. Chinese, Korean and Vietnamese years have the number of the Gregorian
/// year in which they begin.
CalendarYear YearOf(Calendar calendar, int year);

/// The year of a calendar that a date is in.
CalendarYear YearAt(Calendar calendar, Date date);

/// The date as a calendar counts it.
CalendarDate FromDate(Calendar calendar, Date date);

/// The date of a day of a calendar, or nullopt if there is no such day.
std::optional<Date> ToDate(Calendar calendar, const CalendarDate& day);

/// The years of a calendar that have days in one to three Gregorian years. They are worth keeping
/// where many days are asked for: a year that goes by the sky is computed in some ten microseconds.
class CalendarSpan {
public:
    static constexpr int kMostYears = 3;

    /// Years after the third are left out.
    CalendarSpan(Calendar calendar, int firstGregorianYear, int lastGregorianYear);

    /// The dates in the Gregorian years of a day of a month that is no leap month: for each year
    /// none, one, or two of Islamic calendars.
    Dates Find(int month, int day) const;

private:
    static constexpr std::size_t kMost = 5; ///< three Gregorian years are in five Islamic ones
    std::array<std::optional<CalendarYear>, kMost> years_;
    Date first_;
    Date end_;
};

/// `CalendarSpan::Find` for a single day and year.
Dates DatesInYear(Calendar calendar, int gregorianYear, int month, int day);

} // namespace orrery::holidays::calendars
