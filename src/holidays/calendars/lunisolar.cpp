#include "holidays/calendars/lunisolar.h"

#include "holidays/calendars/moon.h"
#include "holidays/calendars/sun.h"

namespace orrery::holidays::calendars {
namespace {

/// A month as the moon and the sun make it: its first day, and the sun's twelfth at its start.
struct Lunation {
    Date first;
    int twelfth = 0;
};

/// The months around two December solstices.
class Months {
public:
    /// Finds the months from the one with the December solstice before a Gregorian year to the
    /// one with the solstice after it.
    Months(int gregorianYear, const Zone& zone);

    /// Places of months, from the one with the solstice, which is 0, to the next one with it.
    std::size_t Count() const { return count_; }
    /// The first day of a month [0:Count].
    Date First(std::size_t place) const { return months_[start_ + place].first; }
    /// The place of the leap month, or `Count` if the year has none.
    std::size_t Leap() const;

private:
    static constexpr std::size_t kMost = 16;
    std::size_t SolsticeAfter(std::size_t index) const;

    std::array<Lunation, kMost> months_{};
    std::size_t start_ = 0;
    std::size_t count_ = 0;
};

/// The date of a new moon. A rough moment is enough but for moments near midnight.
Date NewMoonDate(int newMoon, const Zone& zone)
{
    const JulianDay rough = RoughNewMoon(newMoon);
    const Date date = zone.DateAt(rough - kNewMoonRoughness);
    return date == zone.DateAt(rough + kNewMoonRoughness) ? date : zone.DateAt(MoonPhase(newMoon));
}

Months::Months(int gregorianYear, const Zone& zone)
{
    // New moons from October or November on.
    const JulianDay from = zone.StartOf(NewYearsDay(gregorianYear)) - 42;
    int newMoon = NewMoonBefore(from);
    for (Lunation& month : months_) {
        month.first = NewMoonDate(newMoon, zone);
        month.twelfth = SunTwelfth(zone.StartOf(month.first));
        newMoon += 4;
    }
    start_ = SolsticeAfter(0);
    count_ = SolsticeAfter(start_ + 11) - start_;
}

/// The month at or after a place in which the sun reaches the December solstice.
std::size_t Months::SolsticeAfter(std::size_t index) const
{
    constexpr int solstice = 9;
    for (; index + 2 < kMost; ++index)
        if (months_[index].twelfth < solstice && months_[index + 1].twelfth >= solstice)
            break;
    return index;
}

std::size_t Months::Leap() const
{
    if (count_ < 13)
        return count_;
    for (std::size_t place = 1; place < count_; ++place)
        if (months_[start_ + place].twelfth == months_[start_ + place + 1].twelfth)
            return place;
    return count_;
}

/// Adds the months at the places [from:to), of which the one at `from` has a number.
void AddMonths(CalendarYear& year, const Months& months, std::size_t from, std::size_t to,
               int number)
{
    for (std::size_t place = from; place < to; ++place) {
        const bool leap = place == months.Leap();
        if (place > from && !leap)
            ++number;
        year.Add(number, static_cast<int>((months.First(place + 1) - months.First(place)).count()),
                 leap);
    }
}

/// The place of month 1, which is the second month behind the one with the solstice.
std::size_t NewYearPlace(const Months& months)
{
    return months.Leap() <= 2 ? 3 : 2;
}

} // namespace

CalendarYear LunisolarYear(int gregorianYear, const Zone& zone)
{
    const Months months(gregorianYear, zone);
    const Months next(gregorianYear + 1, zone);
    const std::size_t first = NewYearPlace(months);
    CalendarYear year(gregorianYear, months.First(first));
    AddMonths(year, months, first, months.Count(), 1);
    AddMonths(year, next, 0, NewYearPlace(next), 11);
    return year;
}

} // namespace orrery::holidays::calendars
