#include "holidays/calendars/sky_dates.h"

#include "holidays/calendars/moon.h"
#include "holidays/calendars/sun.h"

namespace orrery::holidays::calendars {

Date SunDate(int gregorianYear, double degrees, const Zone& zone)
{
    // A rough moment is enough but for moments near midnight.
    const JulianDay rough = RoughSunMoment(gregorianYear, degrees);
    const Date date = zone.DateAt(rough - kSunRoughness);
    return date == zone.DateAt(rough + kSunRoughness)
               ? date
               : zone.DateAt(SunMoment(gregorianYear, degrees));
}

Dates MoonDates(int gregorianYear, MoonPhaseName phase, const Zone& zone)
{
    Dates dates;
    const Date end = NewYearsDay(gregorianYear + 1);
    const JulianDay start = zone.StartOf(NewYearsDay(gregorianYear));
    for (int quarters = NewMoonBefore(start) - 4 + static_cast<int>(phase);; quarters += 4) {
        const Date date = zone.DateAt(MoonPhase(quarters));
        if (date >= end)
            return dates;
        if (date >= NewYearsDay(gregorianYear))
            dates.Add(date);
    }
}

} // namespace orrery::holidays::calendars
