#include "holidays/calendars/calendar_year.h"

namespace orrery::holidays::calendars {

void CalendarYear::Add(int number, int days, bool leap)
{
    if (count_ == kMostMonths)
        return;
    months_[count_++] = {static_cast<std::uint8_t>(number), static_cast<std::uint8_t>(days), leap};
    end_ += std::chrono::days(days);
}

std::optional<Date> CalendarYear::Find(int month, int day, bool leap) const
{
    Date first = firstDay_;
    for (const CalendarMonth& one : *this) {
        if (one.number == month && one.leap == leap) {
            if (day < 1 || day > one.days)
                return std::nullopt;
            return first + std::chrono::days(day - 1);
        }
        first += std::chrono::days(one.days);
    }
    return std::nullopt;
}

CalendarDate CalendarYear::At(Date date) const
{
    int day = static_cast<int>((date - firstDay_).count());
    for (const CalendarMonth& one : *this) {
        if (day < one.days)
            return {year_, one.number, day + 1, one.leap};
        day -= one.days;
    }
    return {year_, 0, 0, false};
}

} // namespace orrery::holidays::calendars
