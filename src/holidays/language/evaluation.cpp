#include "holidays/language/evaluation.h"

#include "holidays/language/rule_dates.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <utility>

namespace orrery::holidays {
namespace {

constexpr std::string_view kNamePlace = "{name}";
constexpr int kMostSteps = 366; ///< of a search for the next day
/// Before those of one year are taken; a list has room for 1,025 of that.
constexpr std::size_t kMostDays = 20'000;

int YearOf(Date date)
{
    return static_cast<int>(std::chrono::year_month_day(date).year());
}

std::string Named(std::string pattern, const std::string& name)
{
    if (const std::size_t place = pattern.find(kNamePlace); place != std::string::npos)
        pattern.replace(place, kNamePlace.size(), name);
    return pattern;
}

/// The days that are holidays already; several rules may give the same one.
class DaySet {
public:
    void Add(Date date) { ++count_[date]; }
    void Remove(Date date)
    {
        const auto found = count_.find(date);
        if (found != count_.end() && --found->second == 0)
            count_.erase(found);
    }
    bool Contains(Date date) const { return count_.contains(date); }

private:
    std::map<Date, int> count_;
};

/// The evaluation of a set of rules for one year, step by step.
class Evaluation {
public:
    Evaluation(const RuleSet& set, int year, const HolidayChoice& choice)
        : set_(set), year_(year), choice_(choice), finder_(year - 1, year + 1)
    {
    }

    std::vector<Holiday> Run()
    {
        for (std::size_t rule = 0; rule < set_.rules.size(); ++rule) {
            if (IsInRegion(set_.rules[rule].refinements, choice_.region))
                AddDaysOf(rule);
        }
        for (const Holiday& day : days_) {
            if (day.category == Category::Public)
                taken_.Add(day.date);
        }
        MoveDays();
        own_ = taken_;
        AddSubstitutes();
        AddDaysBetween();
        return TakeYear();
    }

private:
    const Refinements& RefinementsOf(const Holiday& day) const
    {
        return set_.rules[day.rule].refinements;
    }
    bool HasRoom() const { return days_.size() < kMostDays; }
    static Category CategoryOf(const Rule& rule)
    {
        return rule.refinements.category.value_or(Category::Public);
    }

    /// The name of a rule's day in a year, with the age of who was born; nothing before the birth.
    std::optional<std::string> NameIn(const Rule& rule, int year) const
    {
        std::string name = NameOf(rule, choice_.language);
        const auto born = rule.refinements.born;
        if (born && year < *born)
            return std::nullopt;
        if (born && year > *born)
            name += " (" + std::to_string(year - *born) + ')';
        return name;
    }

    /// The days of a rule in the year and those around it, before they move.
    void AddDaysOf(std::size_t index)
    {
        const Rule& rule = set_.rules[index];
        for (int year = year_ - 1; year <= year_ + 1; ++year) {
            const auto name = NameIn(rule, year);
            if (!name)
                continue;
            bool isEstimated = IsEstimate(rule.when.kind);
            for (const Date first : FirstDays(rule, year, isEstimated)) {
                if (!Contains(rule.refinements.weekdays, WeekdayOf(first)))
                    continue;
                for (int day = 0; day < rule.refinements.days && HasRoom(); ++day)
                    days_.push_back({first + std::chrono::days(day),
                                     isEstimated ? Named(set_.estimated, *name) : *name,
                                     CategoryOf(rule), index, false, isEstimated});
            }
        }
    }

    /// The dates of a year as its rule or, for single years, its refinements give them.
    std::vector<Date> FirstDays(const Rule& rule, int year, bool& isEstimated)
    {
        const Refinements& refinements = rule.refinements;
        const auto given =
            std::find_if(refinements.inYears.begin(), refinements.inYears.end(),
                         [year](const DatesInYear& dates) { return dates.year == year; });
        if (given != refinements.inYears.end()) {
            isEstimated = false;
            std::vector<Date> dates;
            for (const MonthDay& day : given->days)
                dates.push_back(MakeDate(static_cast<std::int16_t>(year),
                                         static_cast<std::int16_t>(day.month),
                                         static_cast<std::int16_t>(day.day)));
            return dates;
        }
        return HoldsIn(rule, year) ? finder_.DatesOf(refinements.exact.value_or(rule.when), year)
                                   : std::vector<Date>();
    }

    /// Indexes of the days, by date, equal dates in the order of the rules.
    std::vector<std::size_t> InOrder() const
    {
        std::vector<std::size_t> order(days_.size());
        for (std::size_t i = 0; i < order.size(); ++i)
            order[i] = i;
        std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
            return std::pair(days_[a].date, days_[a].rule) <
                   std::pair(days_[b].date, days_[b].rule);
        });
        return order;
    }

    bool IsGivenAbove(const Holiday& day) const
    {
        const auto first = firstRules_.find(day.date);
        return first != firstRules_.end() && first->second < day.rule;
    }

    /// Notes which rule comes first for each day.
    void NoteFirstRules()
    {
        firstRules_.clear();
        for (const Holiday& day : days_) {
            if (day.category != Category::Public)
                continue;
            const auto [place, isNew] = firstRules_.emplace(day.date, day.rule);
            if (!isNew)
                place->second = std::min(place->second, day.rule);
        }
    }

    const Substitute* FindSubstitute(const Holiday& day, bool isMove) const
    {
        for (const Substitute& substitute : RefinementsOf(day).substitutes) {
            if (substitute.isMove == isMove && substitute.years.Contains(YearOf(day.date)) &&
                (Contains(substitute.weekdays, WeekdayOf(day.date)) ||
                 (substitute.ifHoliday && IsGivenAbove(day))))
                return &substitute;
        }
        return nullptr;
    }

    Date NextFree(Date date, bool skipsWeekends) const
    {
        for (int step = 0; step < kMostSteps; ++step) {
            date += std::chrono::days(1);
            const bool isWeekend = skipsWeekends && Contains(set_.weekend, WeekdayOf(date));
            if (!isWeekend && !taken_.Contains(date))
                break;
        }
        return date;
    }

    Date TargetFrom(Date date, const Substitute::Target& target) const
    {
        using Kind = Substitute::Target::Kind;
        constexpr int week = 7;
        switch (target.kind) {
        case Kind::NextWorkday:
            return NextFree(date, true);
        case Kind::NextDay:
            return NextFree(date, false);
        case Kind::WeekdayBefore:
            return date - std::chrono::days((WeekdayOf(date) - target.value + week - 1) % week + 1);
        case Kind::WeekdayAfter:
            return date + std::chrono::days((target.value - WeekdayOf(date) + week - 1) % week + 1);
        case Kind::Days:
            return date + std::chrono::days(target.value);
        }
        return date;
    }

    void MoveDays()
    {
        NoteFirstRules();
        for (const std::size_t index : InOrder()) {
            Holiday& day = days_[index];
            const Substitute* const move = FindSubstitute(day, true);
            if (move == nullptr)
                continue;
            const bool counts = day.category == Category::Public;
            if (counts)
                taken_.Remove(day.date);
            day.date = TargetFrom(day.date, move->target);
            if (!move->name.empty())
                day.name = move->name;
            if (counts)
                taken_.Add(day.date);
        }
    }

    void AddSubstitutes()
    {
        NoteFirstRules();
        for (const std::size_t index : InOrder()) {
            const Substitute* const substitute = FindSubstitute(days_[index], false);
            if (substitute == nullptr || !HasRoom())
                continue;
            Holiday day = days_[index];
            day.date = TargetFrom(day.date, substitute->target);
            day.name = substitute->name.empty() ? Named(set_.observed, day.name) : substitute->name;
            day.isSubstitute = true;
            if (day.category == Category::Public)
                taken_.Add(day.date);
            days_.push_back(std::move(day));
        }
    }

    void AddDaysBetween()
    {
        for (std::size_t index = 0; index < set_.rules.size(); ++index) {
            const Rule& rule = set_.rules[index];
            if (!std::holds_alternative<BetweenHolidays>(rule.when.kind) ||
                !IsInRegion(rule.refinements, choice_.region))
                continue;
            const Date last = Date(std::chrono::year(year_) / 12 / 31);
            for (Date date(std::chrono::year(year_) / 1 / 1); date <= last;
                 date += std::chrono::days(1)) {
                if (HasRoom() && IsBetween(date) &&
                    Contains(rule.refinements.weekdays, WeekdayOf(date)) && HoldsIn(rule, year_))
                    days_.push_back({date, NameIn(rule, year_).value_or(""), CategoryOf(rule),
                                     index, false, false});
            }
        }
    }

    bool IsBetween(Date date) const
    {
        const auto day = std::chrono::days(1);
        return !taken_.Contains(date) && own_.Contains(date - day) && own_.Contains(date + day);
    }

    static bool HoldsIn(const Rule& rule, int year)
    {
        return std::all_of(
            rule.refinements.years.begin(), rule.refinements.years.end(),
            [year](const YearCondition& condition) { return condition.Holds(year); });
    }

    std::vector<Holiday> TakeYear()
    {
        const auto isShown = [this](const Holiday& day) {
            return YearOf(day.date) == year_ &&
                   std::find(choice_.categories.begin(), choice_.categories.end(), day.category) !=
                       choice_.categories.end();
        };
        std::vector<Holiday> shown;
        for (const std::size_t index : InOrder()) {
            if (isShown(days_[index]))
                shown.push_back(std::move(days_[index]));
        }
        return shown;
    }

    const RuleSet& set_;
    const int year_;
    const HolidayChoice& choice_;
    DateFinder finder_;
    std::vector<Holiday> days_;
    DaySet taken_; ///< public days
    DaySet own_;   ///< those of them that are no substitutes
    std::map<Date, std::size_t> firstRules_;
};

} // namespace

bool IsInRegion(const Refinements& refinements, const std::string& region)
{
    const auto holds = [&region](const std::vector<std::string>& regions) {
        return std::find(regions.begin(), regions.end(), region) != regions.end();
    };
    return (refinements.onlyIn.empty() || holds(refinements.onlyIn)) && !holds(refinements.notIn);
}

const std::string& NameOf(const Rule& rule, const std::string& language)
{
    const auto& names = rule.refinements.names;
    const auto found = std::find_if(names.rbegin(), names.rend(), [&language](const auto& name) {
        return name.first == language;
    });
    return found == names.rend() ? rule.name : found->second;
}

std::vector<Holiday> HolidaysOf(const RuleSet& set, int year, const HolidayChoice& choice)
{
    std::vector<Holiday> days = Evaluation(set, year, choice).Run();
    std::size_t above = set.rules.size();
    for (const RuleSet& further : set.further) {
        for (Holiday& day : Evaluation(further, year, choice).Run()) {
            day.rule += above;
            days.push_back(std::move(day));
        }
        above += further.rules.size();
    }
    std::stable_sort(days.begin(), days.end(),
                     [](const Holiday& a, const Holiday& b) { return a.date < b.date; });
    return days;
}

void FillHolidayDates(std::int16_t year, const HolidayList& list, const HolidayChoice& choice,
                      Date easter, HolidayDateList& out)
{
    if (list.Extras().empty())
        return ComputeHolidayDates(year, list, easter, out);
    std::vector<Holiday> days = HolidaysOf(RulesOf(list), year, choice);
    days.resize(std::min(days.size(), HolidayDateList::kCapacity));
    out.Cursor = 0;
    out.Count = static_cast<std::int16_t>(days.size());
    for (std::size_t i = 0; i < days.size(); ++i) {
        out.Dates[i] = days[i].date;
        out.Names[i] = std::move(days[i].name);
    }
}

} // namespace orrery::holidays
