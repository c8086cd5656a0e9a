// Prints what the calendars give from 1900 to 2100, for the comparison with other programs.
//
// print_calendars          every month, the dates of the sun and the moon, Easter
// print_calendars --cost   what the dates of a year and its neighbours take, in microseconds

#include "holidays/calendars/calendar.h"
#include "holidays/calendars/julian.h"
#include "holidays/calendars/moon.h"
#include "holidays/calendars/sky_dates.h"
#include "holidays/calendars/sun.h"

#include <chrono>
#include <cstdio>
#include <string>
#include <string_view>

namespace {

using namespace orrery::holidays::calendars;

constexpr int kFirstYear = 1900;
constexpr int kLastYear = 2100;

struct Named {
    const char* name;
    Calendar calendar;
};

constexpr std::array kCalendars = {
    Named{"julian", Calendar::Julian},
    Named{"umm-al-qura", Calendar::UmmAlQura},
    Named{"islamic-civil", Calendar::IslamicCivil},
    Named{"hebrew", Calendar::Hebrew},
    Named{"chinese", Calendar::Chinese},
    Named{"korean", Calendar::Korean},
    Named{"vietnamese", Calendar::Vietnamese},
    Named{"persian", Calendar::Persian},
    Named{"coptic", Calendar::Coptic},
    Named{"ethiopic", Calendar::Ethiopic},
    Named{"indian", Calendar::Indian},
};

std::string Iso(Date date)
{
    const std::chrono::year_month_day day(date);
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02u", static_cast<int>(day.year()),
                  static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()));
    return text.data();
}

/// "month chinese 2033 11 1 2033-12-22 29": calendar, year, month, whether leap, first day, length.
void PrintMonths(const Named& named)
{
    const Date end = NewYearsDay(kLastYear + 1);
    CalendarYear year = YearAt(named.calendar, NewYearsDay(kFirstYear));
    while (year.FirstDay() < end) {
        Date first = year.FirstDay();
        for (const CalendarMonth& month : year) {
            std::printf("month %s %d %d %d %s %d\n", named.name, year.Year(), month.number,
                        month.leap ? 1 : 0, Iso(first).c_str(), month.days);
            first += std::chrono::days(month.days);
        }
        year = YearOf(named.calendar, year.Year() + 1);
    }
}

/// "sun 2027 270 2461397.123 2027-12-22 ...": longitude, moment as Julian day, dates in London,
/// Beijing, Seoul, Hanoi and Tokyo; "moon" likewise with the number of the phase.
void PrintDates(const char* kind, int year, int number, JulianDay moment)
{
    std::printf("%s %d %d %.6f", kind, year, number, moment);
    for (const Zone* zone : {&Greenwich(), &China(), &Korea(), &Vietnam(), &Japan()})
        std::printf(" %s", Iso(zone->DateAt(moment)).c_str());
    std::printf("\n");
}

void PrintAll()
{
    for (const Named& named : kCalendars)
        PrintMonths(named);
    for (int year = kFirstYear; year <= kLastYear; ++year) {
        std::printf("easter %d %s\n", year, Iso(OrthodoxEaster(year)).c_str());
        for (int degrees = 0; degrees < 360; degrees += 15)
            PrintDates("sun", year, degrees, SunMoment(year, degrees));
    }
    const JulianDay start = Greenwich().StartOf(NewYearsDay(kFirstYear));
    const JulianDay end = Greenwich().StartOf(NewYearsDay(kLastYear + 1));
    for (int quarters = NewMoonBefore(start);; ++quarters) {
        const JulianDay moment = MoonPhase(quarters);
        if (moment >= end)
            break;
        if (moment >= start)
            PrintDates("moon", GregorianYear(Greenwich().DateAt(moment)),
                       FloorRemainder(quarters, 4), moment);
    }
}

/// Prints the mean time of what is done for each year.
template <class Work> void PrintCost(const char* name, Work work)
{
    constexpr int repetitions = 5;
    std::size_t found = 0;
    const auto start = std::chrono::steady_clock::now();
    for (int repetition = 0; repetition < repetitions; ++repetition)
        for (int year = kFirstYear; year <= kLastYear; ++year)
            found += work(year);
    const std::chrono::duration<double, std::micro> taken =
        std::chrono::steady_clock::now() - start;
    std::printf("cost %-14s %8.2f us (%zu dates)\n", name,
                taken.count() / (repetitions * (kLastYear - kFirstYear + 1)), found);
}

void PrintCosts()
{
    for (const Named& named : kCalendars)
        PrintCost(named.name, [&](int year) {
            const CalendarSpan span(named.calendar, year - 1, year + 1);
            return span.Find(1, 1).size() + span.Find(8, 15).size();
        });
    PrintCost("sun", [](int year) { return SunDate(year, 0, Japan()) > Date() ? 1U : 0U; });
    PrintCost("moon",
              [](int year) { return MoonDates(year, MoonPhaseName::FullMoon, Japan()).size(); });
}

} // namespace

int main(int count, char** arguments)
{
    if (count > 1 && std::string_view(arguments[1]) == "--cost")
        PrintCosts();
    else
        PrintAll();
    return 0;
}
