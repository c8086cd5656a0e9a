#include "holidays/calendars/calendar.h"

#include "holidays/calendars/hebrew.h"
#include "holidays/calendars/indian.h"
#include "holidays/calendars/islamic.h"
#include "holidays/calendars/julian.h"
#include "holidays/calendars/lunisolar.h"
#include "holidays/calendars/persian.h"

#include <algorithm>

namespace orrery::holidays::calendars {
namespace {

/// The number of the year of a calendar in which a Gregorian year begins, or the one before or
/// after it.
int RoughYear(Calendar calendar, int gregorianYear)
{
    switch (calendar) {
    case Calendar::UmmAlQura:
    case Calendar::IslamicCivil:
        return FloorDivide((gregorianYear - 622) * 33, 32);
    case Calendar::Hebrew:
        return gregorianYear + 3760;
    case Calendar::Persian:
        return gregorianYear - 622;
    case Calendar::Coptic:
        return gregorianYear - 284;
    case Calendar::Ethiopic:
        return gregorianYear - 8;
    case Calendar::Indian:
        return gregorianYear - 79;
    case Calendar::Julian:
    case Calendar::Chinese:
    case Calendar::Korean:
    case Calendar::Vietnamese:
        break;
    }
    return gregorianYear - 1;
}

} // namespace

CalendarYear YearOf(Calendar calendar, int year)
{
    switch (calendar) {
    case Calendar::UmmAlQura:
        return UmmAlQuraYear(year);
    case Calendar::IslamicCivil:
        return IslamicCivilYear(year);
    case Calendar::Hebrew:
        return HebrewYear(year);
    case Calendar::Chinese:
        return LunisolarYear(year, China());
    case Calendar::Korean:
        return LunisolarYear(year, Korea());
    case Calendar::Vietnamese:
        return LunisolarYear(year, Vietnam());
    case Calendar::Persian:
        return PersianYear(year);
    case Calendar::Coptic:
        return CopticYear(year);
    case Calendar::Ethiopic:
        return EthiopicYear(year);
    case Calendar::Indian:
        return IndianYear(year);
    case Calendar::Julian:
        break;
    }
    return JulianYear(year);
}

CalendarYear YearAt(Calendar calendar, Date date)
{
    CalendarYear year = YearOf(calendar, RoughYear(calendar, GregorianYear(date)));
    while (date < year.FirstDay())
        year = YearOf(calendar, year.Year() - 1);
    while (date >= year.End())
        year = YearOf(calendar, year.Year() + 1);
    return year;
}

CalendarDate FromDate(Calendar calendar, Date date)
{
    return YearAt(calendar, date).At(date);
}

std::optional<Date> ToDate(Calendar calendar, const CalendarDate& day)
{
    return YearOf(calendar, day.year).Find(day.month, day.day, day.leap);
}

CalendarSpan::CalendarSpan(Calendar calendar, int firstGregorianYear, int lastGregorianYear)
    : first_(NewYearsDay(firstGregorianYear)),
      end_(NewYearsDay(std::min(lastGregorianYear, firstGregorianYear + kMostYears - 1) + 1))
{
    CalendarYear year = YearAt(calendar, first_);
    for (std::optional<CalendarYear>& one : years_) {
        one = year;
        if (year.End() >= end_)
            return;
        year = YearOf(calendar, year.Year() + 1);
    }
}

Dates CalendarSpan::Find(int month, int day) const
{
    Dates dates;
    for (const std::optional<CalendarYear>& year : years_) {
        const std::optional<Date> date = year ? year->Find(month, day) : std::nullopt;
        if (date && *date >= first_ && *date < end_)
            dates.Add(*date);
    }
    return dates;
}

Dates DatesInYear(Calendar calendar, int gregorianYear, int month, int day)
{
    return CalendarSpan(calendar, gregorianYear, gregorianYear).Find(month, day);
}

} // namespace orrery::holidays::calendars
