// Any text is a holiday file: its lines are read, are comments, or have a sentence. What is read
// gives days of the year, in their order.

#include "require.h"

#include "holidays/files/rule_reader.h"
#include "holidays/language/evaluation.h"
#include "util/text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

using namespace orrery;

holidays::HolidayList ReadLines(std::string_view text)
{
    holidays::HolidayList list;
    holidays::RuleReader reader(list);
    std::size_t number = 0;
    for (const std::string_view line : util::SplitLines(text)) {
        if (!reader.HasEnded())
            reader.Read(++number, util::Trim(line));
    }
    for (const holidays::LineProblem& problem : reader.TakeProblems())
        fuzz::Require(!holidays::DescribeProblem(problem).empty());
    return list;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const holidays::HolidayList list =
        ReadLines(std::string_view(reinterpret_cast<const char*>(data), size));
    const holidays::RuleSet rules = holidays::RulesOf(list);
    fuzz::Require(rules.rules.size() >= static_cast<std::size_t>(list.Count()));
    holidays::HolidayChoice choice;
    choice.categories = holidays::AllCategories();
    constexpr int year = 2028;
    const auto days = holidays::HolidaysOf(rules, year, choice);
    for (const holidays::Holiday& day : days)
        fuzz::Require(std::chrono::year_month_day(day.date).year() == std::chrono::year(year) &&
                      day.rule < rules.rules.size());
    fuzz::Require(std::is_sorted(days.begin(), days.end(),
                                 [](const auto& a, const auto& b) { return a.date < b.date; }));

    static holidays::HolidayDateList dates;
    holidays::FillHolidayDates(year, list, choice, holidays::EasterDate(year), dates);
    fuzz::Require(dates.Count >= 0 && dates.Cursor == 0);
    return 0;
}
