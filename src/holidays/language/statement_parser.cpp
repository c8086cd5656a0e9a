#include "holidays/language/statement_parser.h"

#include "holidays/error.h"
#include "holidays/language/holiday_choice.h"
#include "holidays/language/kind_parser.h"
#include "holidays/language/substitute_parser.h"
#include "holidays/language/words.h"
#include "holidays/language/year_condition.h"
#include "util/text.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <vector>

namespace orrery::holidays {
namespace {

/// What follows the words that a statement begins with: as words in capitals and as it is written.
struct Rest {
    std::span<const std::string> words;
    std::string_view text;
};

/// A kind of statement: its first words, how it is written, and what it adds. False if it is
/// written in another way.
struct Statement {
    std::string_view words;
    const char* howToWrite;
    bool (*add)(const Rest& rest, Refinements& refinements);
};

bool AddExact(const Rest& rest, Refinements& refinements)
{
    if (rest.words.size() < 2)
        return false;
    const std::vector<std::string> kind(rest.words.begin() + 1, rest.words.end());
    const std::string text = util::Join(kind, " ");
    auto parsed = ParseRuleDay(rest.words.front(), text);
    auto* const day = std::get_if<RuleDay>(&parsed);
    if (day != nullptr)
        refinements.exact = std::move(*day);
    return day != nullptr;
}

bool AddYearsStatement(const Rest& rest, Refinements& refinements, bool isNegated)
{
    auto condition = ParseYearCondition(rest.words);
    if (!condition)
        return false;
    condition->isNegated = isNegated;
    refinements.years.push_back(*std::move(condition));
    return true;
}

bool AddDatesInYear(const Rest& rest, Refinements& refinements)
{
    constexpr std::size_t beforeDates = 2;
    if (rest.words.size() <= beforeDates || rest.words[1] != "ON")
        return false;
    const auto year = IntegerOf(rest.words[0]);
    DatesInYear dates{year.value_or(0), {}};
    for (const std::string& word : rest.words.subspan(beforeDates)) {
        const auto day = ParseMonthDay(word);
        const auto date =
            day && year
                ? std::chrono::year_month_day(std::chrono::year(*year),
                                              std::chrono::month(static_cast<unsigned>(day->month)),
                                              std::chrono::day(static_cast<unsigned>(day->day)))
                : std::chrono::year_month_day();
        if (!day || !IsRuleYear(*year) || !date.ok())
            return false;
        dates.days.push_back(*day);
    }
    refinements.inYears.push_back(std::move(dates));
    return true;
}

std::optional<WeekdaySet> WeekdaysOf(std::span<const std::string> words)
{
    WeekdaySet set = 0;
    for (const std::string& word : words) {
        const auto weekday = WeekdayOfWord(word);
        if (!weekday)
            return std::nullopt;
        set |= 1U << static_cast<unsigned>(*weekday);
    }
    return words.empty() ? std::nullopt : std::optional(set);
}

bool AddOnlyOn(const Rest& rest, Refinements& refinements)
{
    const auto set = WeekdaysOf(rest.words);
    refinements.weekdays &= set.value_or(kEveryWeekday);
    return set.has_value();
}

bool AddNotOn(const Rest& rest, Refinements& refinements)
{
    const auto set = WeekdaysOf(rest.words);
    refinements.weekdays &= ~set.value_or(0U);
    return set.has_value();
}

bool AddDays(const Rest& rest, Refinements& refinements)
{
    constexpr int mostDays = 366;
    const auto days = rest.words.size() == 1 ? IntegerOf(rest.words.front()) : std::nullopt;
    if (!days || *days < 1 || *days > mostDays)
        return false;
    refinements.days = *days;
    return true;
}

bool AddKind(const Rest& rest, Refinements& refinements)
{
    if (rest.words.size() == 1)
        refinements.category = FindCategory(rest.words.front());
    return rest.words.size() == 1 && refinements.category.has_value();
}

bool AddRegions(const Rest& rest, std::vector<std::string>& regions)
{
    regions.insert(regions.end(), rest.words.begin(), rest.words.end());
    return !rest.words.empty();
}

bool AddBorn(const Rest& rest, Refinements& refinements)
{
    const auto year = rest.words.size() == 1 ? IntegerOf(rest.words.front()) : std::nullopt;
    if (!year || !IsRuleYear(*year))
        return false;
    refinements.born = *year;
    return true;
}

bool AddName(const Rest& rest, Refinements& refinements)
{
    if (rest.words.size() < 2)
        return false;
    const std::string language = util::ToLowerAscii(rest.words.front());
    const std::string_view name = rest.text.substr(language.size());
    refinements.names.emplace_back(language, util::Trim(name));
    return true;
}

bool AddSubstitute(const Rest& rest, Refinements& refinements)
{
    auto substitute = ParseSubstitute(rest.text);
    if (!substitute)
        return false;
    refinements.substitutes.push_back(*std::move(substitute));
    return true;
}

constexpr std::array<Statement, 13> kStatements = {{
    {"IF",
     "Write it like: if Sat or Sun also next workday; if Sun move to Mon after; if holiday also "
     "next day.",
     AddSubstitute},
    {"EXACT", "Write the date and the kind behind it, such as: exact 1031 SAT ON OR AFTER.",
     AddExact},
    {"YEARS", "Write it like: years 2006-; years 1990-1999 2004-; years every 4 from 2008.",
     [](const Rest& rest, Refinements& out) { return AddYearsStatement(rest, out, false); }},
    {"NOT YEARS", "Write it like: not years 2020.",
     [](const Rest& rest, Refinements& out) { return AddYearsStatement(rest, out, true); }},
    {"IN", "Write it like: in 2020 on 0508.", AddDatesInYear},
    {"ONLY ON", "Write it like: only on Mon Tue.", AddOnlyOn},
    {"NOT ON", "Write it like: not on Sun.", AddNotOn},
    {"DAYS", "Write it like: days 3.", AddDays},
    {"KIND", "Write public, bank, school, optional, observance or half behind it.", AddKind},
    {"ONLY IN", "Write regions behind it, such as: only in BW BY.",
     [](const Rest& rest, Refinements& out) { return AddRegions(rest, out.onlyIn); }},
    {"NOT IN", "Write regions behind it, such as: not in SN.",
     [](const Rest& rest, Refinements& out) { return AddRegions(rest, out.notIn); }},
    {"BORN", "Write it like: born 1984.", AddBorn},
    {"NAME", "Write it like: name de Tag der Arbeit.", AddName},
}};

/// A statement's text behind a number of words.
std::string_view TextBehind(std::string_view text, std::size_t words)
{
    constexpr std::string_view blanks = " \t";
    for (; words > 0; --words) {
        text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
        text.remove_prefix(std::min(text.find_first_of(blanks), text.size()));
    }
    return util::Trim(text);
}

util::Error Unknown(std::string_view statement, const std::vector<std::string>& words)
{
    std::vector<std::string_view> known;
    known.reserve(kStatements.size());
    for (const Statement& each : kStatements)
        known.push_back(each.words);
    const bool isTwo = words.size() > 1 && (words[0] == "ONLY" || words[0] == "NOT");
    const std::string first = isTwo ? words[0] + ' ' + words[1] : words[0];
    return util::Error(ErrorKind::UnknownRefinement, std::string(statement),
                       std::string(ClosestWord(first, known).value_or("")));
}

/// Whether a rule has so many statements that no more are read.
bool IsFull(const Refinements& refinements)
{
    constexpr std::size_t most = 300;
    return refinements.years.size() + refinements.inYears.size() + refinements.names.size() +
               refinements.substitutes.size() + refinements.onlyIn.size() +
               refinements.notIn.size() >=
           most;
}

std::optional<util::Error> ParseStatement(std::string_view text, Refinements& refinements)
{
    constexpr std::size_t mostWords = 400;
    const std::vector<std::string> words = WordsOf(text);
    if (IsFull(refinements) || words.size() > mostWords)
        return util::Error(ErrorKind::WrongRefinement, std::string(text),
                           "A holiday has at most 300 refinements of 400 words each.");
    for (const Statement& known : kStatements) {
        const std::vector<std::string> begin = WordsOf(known.words);
        if (words.size() < begin.size() || !std::equal(begin.begin(), begin.end(), words.begin()))
            continue;
        const Rest rest{std::span(words).subspan(begin.size()), TextBehind(text, begin.size())};
        if (known.add(rest, refinements))
            return std::nullopt;
        return util::Error(ErrorKind::WrongRefinement, std::string(text), known.howToWrite);
    }
    return Unknown(text, words);
}

} // namespace

std::optional<util::Error> ParseStatements(std::string_view text, Refinements& refinements)
{
    for (const std::string& piece : util::Split(text, ';')) {
        const std::string_view statement = util::Trim(piece);
        if (statement.empty())
            continue;
        if (auto error = ParseStatement(statement, refinements))
            return error;
    }
    return std::nullopt;
}

Refinements Merge(Refinements own, const Refinements& common)
{
    const auto append = [](auto& list, const auto& more) {
        list.insert(list.end(), more.begin(), more.end());
    };
    if (!own.exact)
        own.exact = common.exact;
    if (!own.category)
        own.category = common.category;
    if (!own.born)
        own.born = common.born;
    if (own.days == 1)
        own.days = common.days;
    if (own.onlyIn.empty() && own.notIn.empty()) {
        own.onlyIn = common.onlyIn;
        own.notIn = common.notIn;
    }
    own.weekdays &= common.weekdays;
    append(own.years, common.years);
    append(own.inYears, common.inYears);
    append(own.names, common.names);
    append(own.substitutes, common.substitutes);
    return own;
}

} // namespace orrery::holidays
