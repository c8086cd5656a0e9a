#include "exchange/rules_of.h"

#include "exchange/error.h"
#include "exchange/event_name.h"
#include "holidays/language/kind_parser.h"
#include "holidays/language/own_day.h"
#include "holidays/language/rule_dates.h"
#include "util/error.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace orrery::exchange {
namespace {

using holidays::Date;
using holidays::ListEntry;
using Range = std::pair<Date, Date>;

constexpr int kFirstYear = 1;
constexpr int kMostYear = 9999;
constexpr std::int16_t kLeapDate = 229;
constexpr std::chrono::days kLongest(holidays::kMostListedDays); ///< of one range in a rule
constexpr std::size_t kMostRules = holidays::HolidayList::kCapacity;

int YearOf(Date date)
{
    return static_cast<int>(std::chrono::year_month_day(date).year());
}

bool IsYear(int year)
{
    return kFirstYear <= year && year <= kMostYear;
}

bool Overlaps(const Range& days, const std::optional<Years>& years)
{
    return !years || (YearOf(days.first) <= years->last && YearOf(days.second) >= years->first);
}

/// "20270514".
std::string DateText(Date date)
{
    const std::chrono::year_month_day parts(date);
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d%02u%02u", static_cast<int>(parts.year()),
                  static_cast<unsigned>(parts.month()), static_cast<unsigned>(parts.day()));
    return text.data();
}

/// The refinement that limits a rule to its years, where it would give days from `least` on.
std::optional<std::string> YearsLine(const holidays::YearRange& years, int least)
{
    const std::string first = years.first > least ? std::to_string(years.first) : "";
    const std::string last = years.last < kMostYear ? std::to_string(years.last) : "";
    if (first.empty() && last.empty())
        return std::nullopt;
    return "> years " + (first == last ? first : first + '-' + last);
}

bool IsLeapDay(const holidays::RuleDay& day)
{
    const auto* const plain = std::get_if<holidays::PlainDay>(&day.kind);
    return day.shift == 0 &&
           (std::holds_alternative<holidays::LeapDay>(day.kind) ||
            (plain != nullptr && *plain == holidays::PlainDay{kLeapDate, holidays::kFixedDay}));
}

/// A rule's line without its refinements; nothing if a holiday file cannot say it.
std::vector<ListEntry> EntryOf(const holidays::RuleDay& day, const std::string& name)
{
    if (IsLeapDay(day))
        return {"0229,LEAP DAY," + name};
    if (const auto own = holidays::OwnDayOf({day, name, {}}); own && !ProblemOf(*own))
        return EntriesOf(*own);
    const auto* const plain = std::get_if<holidays::PlainDay>(&day.kind);
    if (plain == nullptr || day.shift != 0)
        return {};
    const holidays::HolidayDef rule{plain->dateCode, plain->kind, name};
    const auto parsed = holidays::ParseHolidayLine(LineOf(rule));
    const auto* const same = std::get_if<holidays::HolidayDef>(&parsed);
    return same != nullptr && *same == rule ? std::vector<ListEntry>{rule}
                                            : std::vector<ListEntry>();
}

/// The rules of every year, and the dates for each name, with what was met twice.
class Collector {
public:
    explicit Collector(std::optional<Years> years) : years_(years) {}

    void Add(const Event& event)
    {
        const std::string name = CleanName(event.name);
        if (name.empty()) {
            result_.passedOver.push_back({event.line, "The event has no name."});
            return;
        }
        if (!event.yearly || !AddYearly(name, *event.yearly, event.born))
            AddDates(name, event.days);
    }

    ImportedRules Take()
    {
        const std::vector<Named> named = InOrder();
        std::size_t lines = result_.rules;
        for (const auto& [name, ranges] : named)
            lines += CountLines(ranges);
        if (lines > kMostRules)
            throw Error(ErrorKind::TooManyRules, std::to_string(lines));
        for (const auto& [name, ranges] : named)
            AppendDates(name, ranges);
        return std::move(result_);
    }

private:
    using Named = std::pair<std::string, std::vector<Range>>;

    /// False if no rule can say it.
    bool AddYearly(const std::string& name, const Yearly& yearly, std::optional<int> born)
    {
        holidays::YearRange years{std::max(yearly.years.first, kFirstYear),
                                  std::min(yearly.years.last, kMostYear)};
        const bool isInYears =
            !years_ || (years.first <= years_->last && years.last >= years_->first);
        if (years.last < years.first || !isInYears) {
            ++result_.outside;
            return true;
        }
        std::vector<ListEntry> entries = EntryOf(yearly.day, name);
        if (entries.empty())
            return false;
        const bool isBirthday = born && IsYear(*born);
        const int least = isBirthday ? *born : kFirstYear; // there are none before the birth
        if (isBirthday)
            entries.emplace_back("> born " + std::to_string(least));
        if (const auto line = YearsLine(years, least))
            entries.emplace_back(*line);
        std::string text;
        for (const ListEntry& entry : entries)
            text += LineOf(entry) + '\n';
        if (!seen_.insert(std::move(text)).second) {
            ++result_.duplicates;
            return true;
        }
        ++result_.rules;
        if (!isBirthday) // else the names differ by the age
            yearly_[name].push_back({yearly.day, years});
        std::move(entries.begin(), entries.end(), std::back_inserter(result_.entries));
        return true;
    }

    void AddDates(const std::string& name, const std::vector<Range>& days)
    {
        bool isInYears = false;
        for (const Range& range : days) {
            if (range.second < range.first || !IsYear(YearOf(range.first)) ||
                !IsYear(YearOf(range.second)) || !Overlaps(range, years_))
                continue;
            isInYears = true;
            const auto [place, isNew] = places_.emplace(name, dates_.size());
            if (isNew)
                dates_.emplace_back(name, std::vector<Range>());
            dates_[place->second].second.push_back(range);
        }
        if (!isInYears)
            ++result_.outside;
    }

    /// Whether a rule of every year with that name gives the day as well.
    bool IsGiven(const std::string& name, const Range& range) const
    {
        const auto found = yearly_.find(name);
        if (found == yearly_.end() || range.first != range.second)
            return false;
        const int year = YearOf(range.first);
        return std::any_of(found->second.begin(), found->second.end(), [&](const Yearly& rule) {
            const auto dates = holidays::DateFinder(year, year).DatesOf(rule.day, year);
            return rule.years.Contains(year) &&
                   std::find(dates.begin(), dates.end(), range.first) != dates.end();
        });
    }

    /// The ranges in order, without those that are there twice; ranges with days in common are one.
    std::vector<Range> Merged(const std::string& name, std::vector<Range> ranges)
    {
        std::sort(ranges.begin(), ranges.end());
        std::vector<Range> merged;
        for (const Range& range : ranges) {
            if (IsGiven(name, range) || (!merged.empty() && merged.back() == range))
                ++result_.duplicates;
            else if (!merged.empty() && range.first <= merged.back().second)
                merged.back().second = std::max(merged.back().second, range.second);
            else
                merged.push_back(range);
        }
        return merged;
    }

    /// The names with dates, by their first day.
    std::vector<Named> InOrder()
    {
        for (auto& [name, ranges] : dates_)
            ranges = Merged(name, std::move(ranges));
        std::erase_if(dates_, [](const Named& named) { return named.second.empty(); });
        std::stable_sort(dates_.begin(), dates_.end(), [](const Named& a, const Named& b) {
            return a.second.front().first < b.second.front().first;
        });
        return std::move(dates_);
    }

    /// How many rules list the dates.
    static std::size_t CountLines(const std::vector<Range>& ranges)
    {
        std::size_t pieces = 0;
        for (const auto& [first, last] : ranges)
            pieces += static_cast<std::size_t>((last - first) / kLongest) + 1;
        return (pieces + holidays::kMostListedRanges - 1) / holidays::kMostListedRanges;
    }

    void AppendDates(const std::string& name, const std::vector<Range>& ranges)
    {
        std::string text;
        std::size_t inLine = 0;
        const auto finish = [&] {
            result_.entries.emplace_back(std::exchange(text, {}) + ",DATE," + name);
            inLine = 0;
        };
        for (auto [first, last] : ranges) {
            result_.datedDays += static_cast<std::size_t>((last - first).count()) + 1;
            for (; first <= last; first += kLongest) {
                const Date end = std::min(last, first + kLongest - std::chrono::days(1));
                text += (text.empty() ? "" : " ") + DateText(first);
                if (end != first)
                    text += '-' + DateText(end);
                if (++inLine == holidays::kMostListedRanges)
                    finish();
            }
        }
        if (!text.empty())
            finish();
    }

    std::optional<Years> years_;
    ImportedRules result_;
    std::unordered_set<std::string> seen_; ///< the lines of each rule
    std::unordered_map<std::string, std::vector<Yearly>> yearly_;
    std::unordered_map<std::string, std::size_t> places_; ///< of each name in `dates_`
    std::vector<Named> dates_;
};

} // namespace

ImportedRules RulesOf(const Calendar& calendar, std::optional<Years> years)
{
    Collector collector(years);
    for (const Event& event : calendar.events)
        collector.Add(event);
    ImportedRules result = collector.Take();
    result.passedOver.insert(result.passedOver.begin(), calendar.passedOver.begin(),
                             calendar.passedOver.end());
    std::stable_sort(result.passedOver.begin(), result.passedOver.end(),
                     [](const PassedOver& a, const PassedOver& b) { return a.line < b.line; });
    return result;
}

} // namespace orrery::exchange
