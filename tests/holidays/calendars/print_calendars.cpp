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

const std::array<const Zone*, 5> kZones = {&Greenwich(), &China(), &Korea(), &Vietnam(), &Japan()};

/// "sun 2027 270 2461761.614 2027-12-22 ...": longitude, moment as Julian day, the dates in
/// London, Beijing, Seoul, Hanoi and Tokyo.
void PrintSun(int year)
{
    for (int degrees = 0; degrees < 360; degrees += 15) {
        std::printf("sun %d %d %.6f", year, degrees, SunMoment(year, degrees));
        for (const Zone* zone : kZones)
            std::printf(" %s", Iso(SunDate(year, degrees, *zone)).c_str());
        std::printf("\n");
    }
}

/// "moon 2 2461427.55": phase, moment as Julian day.
void PrintMoon()
{
    const JulianDay end = Greenwich().StartOf(NewYearsDay(kLastYear + 1));
    int quarters = NewMoonBefore(Greenwich().StartOf(NewYearsDay(kFirstYear)));
    for (; MoonPhase(quarters) < end; ++quarters)
        std::printf("moon %d %.6f\n", FloorRemainder(quarters, 4), MoonPhase(quarters));
}

/// "dates 2027 2 1 2027-01-22 ...": phase, number of the zone, dates.
void PrintMoonDates(int year)
{
    for (int phase = 0; phase < 4; ++phase)
        for (std::size_t zone = 0; zone < kZones.size(); ++zone) {
            std::printf("dates %d %d %zu", year, phase, zone);
            for (const Date date :
                 MoonDates(year, static_cast<MoonPhaseName>(phase), *kZones[zone]))
                std::printf(" %s", Iso(date).c_str());
            std::printf("\n");
        }
}

void PrintAll()
{
    for (const Named& named : kCalendars)
        PrintMonths(named);
    PrintMoon();
    for (int year = kFirstYear; year <= kLastYear; ++year) {
        std::printf("easter %d %s\n", year, Iso(OrthodoxEaster(year)).c_str());
        PrintSun(year);
        PrintMoonDates(year);
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
