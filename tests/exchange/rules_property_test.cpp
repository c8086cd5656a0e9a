#include "events.h"
#include "exchange/event_name.h"
#include "exchange/holiday_file.h"
#include "exchange/rules_of.h"
#include "holidays/files/holiday_readers.h"
#include "holidays/language/evaluation.h"
#include "util/scratch_folder.h"

#include <algorithm>
#include <array>
#include <gmock/gmock.h>
#include <random>
#include <set>

namespace orrery::exchange {
namespace {

using holidays::Date;
using sample::Day;
using DaysAndNames = std::set<std::pair<Date, std::string>>;

constexpr int kFirst = 1900;
constexpr int kLast = 2100;

/// Names that a reader of lines could take for something else.
constexpr std::array<std::string_view, 18> kNames = {"Club",
                                                     "Martin Luther King, Jr.",
                                                     ",DAY,x",
                                                     "> born 1984",
                                                     "# Weekend: Fri Sat",
                                                     ">> days 3",
                                                     "20270101,DATE,x",
                                                     "Müller; years 2020",
                                                     "{name}",
                                                     "Further file: x",
                                                     "Holiday1=0101,DAY,x",
                                                     "\"quoted\"",
                                                     "  blanks around  ",
                                                     "two\r\nlines",
                                                     "春節",
                                                     "Ben (43)",
                                                     "a,b,c,d,e",
                                                     "[Monthly Calendar]"};

/// Events of chance and, computed on another way, what they mean.
class RandomEvents {
public:
    explicit RandomEvents(unsigned seed) : random_(seed) {}

    Event Next()
    {
        Event event;
        event.name = kNames.at(static_cast<std::size_t>(Number(0, int{kNames.size()} - 1)));
        if (Number(0, 2) > 0)
            AddDates(event);
        else
            AddYearly(event);
        return event;
    }

    const DaysAndNames& Expected() const { return expected_; }

private:
    int Number(int least, int most) { return std::uniform_int_distribution(least, most)(random_); }

    void Expect(Date date, std::string_view name, const std::string& age = "")
    {
        if (Day(kFirst, 1, 1) <= date && date <= Day(kLast, 12, 31))
            expected_.emplace(date, CleanName(name) + age);
    }

    void AddDates(Event& event)
    {
        for (int i = Number(1, 4); i > 0; --i) {
            const Date first = Day(kFirst, 1, 1) + std::chrono::days(Number(0, 73'000));
            const int days = std::array{0, 0, 1, 6, 900}.at(static_cast<std::size_t>(Number(0, 4)));
            event.days.emplace_back(first, first + std::chrono::days(days));
            for (int day = 0; day <= days; ++day)
                Expect(first + std::chrono::days(day), event.name);
        }
    }

    void AddYearly(Event& event)
    {
        Yearly yearly;
        if (Number(0, 1) == 0)
            yearly.years.first = Number(kFirst, kLast);
        if (Number(0, 1) == 0)
            yearly.years.last = Number(std::max(kFirst, yearly.years.first), kLast);
        const int kind = Number(0, 7);
        const int month = Number(1, 12);
        const int day = kind == 0 ? Number(1, 31) : Number(1, 5);
        yearly.day.kind = holidays::PlainDay{static_cast<std::int16_t>(month * 100 + day),
                                             static_cast<std::int16_t>(kind)};
        if (kind == 0 && Number(0, 1) == 0)
            event.born = Number(kFirst, kLast);
        for (int year = kFirst; year <= kLast; ++year) {
            const auto date = DateIn(year, month, kind, day);
            const bool isThere = yearly.years.Contains(year) && year >= event.born.value_or(year);
            if (!date || !isThere)
                continue;
            const int age = year - event.born.value_or(year);
            Expect(*date, event.name, age > 0 ? " (" + std::to_string(age) + ')' : "");
        }
        const bool exists = kind != 0 || DateIn(2024, month, kind, day);
        if (exists) // else the days, of which there are none
            event.yearly = yearly;
    }

    static std::optional<Date> DateIn(int year, int month, int kind, int day)
    {
        namespace c = std::chrono;
        const c::year_month part = c::year(year) / c::month(static_cast<unsigned>(month));
        if (kind == 0) {
            const auto date = part / c::day(static_cast<unsigned>(day));
            return date.ok() ? std::optional<Date>(date) : std::nullopt;
        }
        const c::weekday weekday(static_cast<unsigned>(kind - 1));
        if (day == 5)
            return Date(part / weekday[c::last]);
        return Date(part / weekday[static_cast<unsigned>(day)]);
    }

    std::mt19937 random_;
    DaysAndNames expected_;
};

DaysAndNames DaysOfFile(const std::string& text)
{
    const testing_support::ScratchFolder scratch;
    const auto file = holidays::LoadHolidayFile(scratch.Write("own.txt", text));
    for (const holidays::LineProblem& problem : file.problems)
        ADD_FAILURE() << DescribeProblem(problem);
    DaysAndNames days;
    for (int year = kFirst; year <= kLast; ++year) {
        for (const holidays::Holiday& day : holidays::HolidaysOf(file.rules, year, {}))
            days.emplace(day.date, day.name);
    }
    return days;
}

TEST(RulesProperty, ReadersGetExactlyTheDaysOfTheEvents)
{
    for (unsigned seed = 1; seed <= 8; ++seed) {
        RandomEvents random(seed);
        Calendar calendar;
        for (int i = 0; i < 40; ++i)
            calendar.events.push_back(random.Next());
        const std::string text = HolidayFileText(RulesOf(calendar), "Random", "random.csv");
        const DaysAndNames days = DaysOfFile(text);
        ASSERT_EQ(days == random.Expected(), true) << "seed " << seed << '\n' << text;
        ASSERT_GT(days.size(), 1000U);
    }
}

} // namespace
} // namespace orrery::exchange
