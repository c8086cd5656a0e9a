#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace orrery::holidays::calendars {

/// A day without a time, as the holidays have it.
using Date = std::chrono::sys_days;

/// A day as a calendar counts it.
struct CalendarDate {
    int year = 0;
    int month = 0;     ///< [1:13]; of the Hebrew calendar 1 is Nisan, 7 Tishri and 12 Adar
    int day = 0;       ///< [1:31]
    bool leap = false; ///< in the leap month of that number; of the Hebrew calendar in Adar I
    friend bool operator==(const CalendarDate&, const CalendarDate&) = default;
};

/// A month of one year of a calendar.
struct CalendarMonth {
    std::uint8_t number = 0; ///< as in `CalendarDate`
    std::uint8_t days = 0;
    bool leap = false;
};

/// One year of a calendar: where its months begin. A value that may be kept and asked often.
class CalendarYear {
public:
    static constexpr std::size_t kMostMonths = 13;

    CalendarYear(int year, Date firstDay) : year_(year), firstDay_(firstDay) {}

    /// Adds the next month. Further ones than `kMostMonths` are left out.
    void Add(int number, int days, bool leap = false);

    int Year() const { return year_; }
    Date FirstDay() const { return firstDay_; }
    /// The first day of the next year.
    Date End() const { return end_; }
    const CalendarMonth* begin() const { return months_.data(); }
    const CalendarMonth* end() const { return months_.data() + count_; }

    /// The date of a day, or nullopt where the year has no such month or the month no such day.
    std::optional<Date> Find(int month, int day, bool leap = false) const;
    /// The day of the year at a date in [FirstDay:End).
    CalendarDate At(Date date) const;

private:
    int year_;
    Date firstDay_;
    Date end_ = firstDay_;
    std::size_t count_ = 0;
    std::array<CalendarMonth, kMostMonths> months_{};
};

/// A few dates in their order, without allocation.
class Dates {
public:
    static constexpr std::size_t kMost = 14; ///< phases of the moon in a year

    /// Further dates than `kMost` are left out.
    void Add(Date date)
    {
        if (count_ < kMost)
            dates_[count_++] = date;
    }
    std::size_t size() const { return count_; }
    bool empty() const { return count_ == 0; }
    const Date* begin() const { return dates_.data(); }
    const Date* end() const { return dates_.data() + count_; }
    Date operator[](std::size_t index) const { return dates_[index]; }

private:
    std::size_t count_ = 0;
    std::array<Date, kMost> dates_{};
};

/// The quotient rounded down; the divisor is positive.
constexpr int FloorDivide(int dividend, int divisor)
{
    return dividend / divisor - (dividend % divisor < 0 ? 1 : 0);
}

/// What `FloorDivide` leaves, [0:divisor).
constexpr int FloorRemainder(int dividend, int divisor)
{
    return dividend - divisor * FloorDivide(dividend, divisor);
}

/// The date of 1 January of a Gregorian year.
constexpr Date NewYearsDay(int year)
{
    return std::chrono::year(year) / std::chrono::January / 1;
}

/// The Gregorian year of a date.
constexpr int GregorianYear(Date date)
{
    return static_cast<int>(std::chrono::year_month_day(date).year());
}

} // namespace orrery::holidays::calendars
