#include "holidays/language/kind_parser.h"

#include "holidays/error.h"
#include "holidays/language/words.h"
#include "util/text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orrery::holidays {
namespace {

using DayOrError = std::variant<RuleDay, util::Error>;

constexpr const char* kWriteMonthDay = "Write the month and the day, such as 1225.";

util::Error WrongDate(std::string_view date, const char* howToWrite)
{
    return util::Error(ErrorKind::WrongRuleDate, std::string(date), howToWrite);
}

// Places whose clocks tell a day.

struct Place {
    std::string_view word;
    double hours;
};
constexpr std::array<Place, 5> kPlaces = {
    {{"JAPAN", 9}, {"CHINA", 8}, {"KOREA", 9}, {"VIETNAM", 7}, {"GMT", 0}}};
constexpr const char* kWritePlace =
    "Write JAPAN, CHINA, KOREA, VIETNAM, GMT or hours such as +5.5.";

/// Hours from UTC [-12:14] of a place or of a text such as "+5" or "-3.5".
std::optional<double> HoursOfPlace(std::string_view word)
{
    const auto place = std::find_if(kPlaces.begin(), kPlaces.end(),
                                    [word](const Place& known) { return known.word == word; });
    if (place != kPlaces.end())
        return place->hours;
    const std::size_t point = word.find('.');
    const auto hours = IntegerOf(word.substr(0, point));
    const bool isSigned = word.starts_with('+') || word.starts_with('-');
    if (!hours || !isSigned || *hours < -12 || *hours > 14)
        return std::nullopt;
    if (point == std::string_view::npos)
        return *hours;
    const std::string_view fraction = word.substr(point + 1);
    if (fraction != "5" && fraction != "75" && fraction != "25")
        return std::nullopt;
    const double share = fraction == "5" ? 0.5 : *IntegerOf(fraction) / 100.0;
    return word.starts_with('-') ? *hours - share : *hours + share;
}

// Dates of other calendars.

struct System {
    std::string_view word;
    CalendarSystem system;
};
constexpr std::array<System, 11> kSystems = {{{"JULIAN", CalendarSystem::Julian},
                                              {"ISLAMIC", CalendarSystem::Islamic},
                                              {"ISLAMIC CIVIL", CalendarSystem::IslamicCivil},
                                              {"HEBREW", CalendarSystem::Hebrew},
                                              {"CHINESE", CalendarSystem::Chinese},
                                              {"KOREAN", CalendarSystem::Korean},
                                              {"VIETNAMESE", CalendarSystem::Vietnamese},
                                              {"PERSIAN", CalendarSystem::Persian},
                                              {"COPTIC", CalendarSystem::Coptic},
                                              {"ETHIOPIC", CalendarSystem::Ethiopic},
                                              {"INDIAN", CalendarSystem::Indian}}};

struct MonthName {
    std::string_view word;
    int month;
};
constexpr std::array<MonthName, 14> kIslamicMonths = {{{"MUHARRAM", 1},
                                                       {"SAFAR", 2},
                                                       {"RABI-I", 3},
                                                       {"RABI-II", 4},
                                                       {"JUMADA-I", 5},
                                                       {"JUMADA-II", 6},
                                                       {"RAJAB", 7},
                                                       {"SHABAN", 8},
                                                       {"SHA'BAN", 8},
                                                       {"RAMADAN", 9},
                                                       {"SHAWWAL", 10},
                                                       {"DHU-AL-QADAH", 11},
                                                       {"DHU-AL-HIJJAH", 12},
                                                       {"DHUL-HIJJAH", 12}}};
constexpr std::array<MonthName, 17> kHebrewMonths = {{{"NISAN", 1},
                                                      {"IYAR", 2},
                                                      {"IYYAR", 2},
                                                      {"SIVAN", 3},
                                                      {"TAMMUZ", 4},
                                                      {"TAMUZ", 4},
                                                      {"AV", 5},
                                                      {"ELUL", 6},
                                                      {"TISHREI", 7},
                                                      {"TISHRI", 7},
                                                      {"CHESHVAN", 8},
                                                      {"HESHVAN", 8},
                                                      {"KISLEV", 9},
                                                      {"TEVET", 10},
                                                      {"SHEVAT", 11},
                                                      {"SHVAT", 11},
                                                      {"ADAR", 12}}};

std::span<const MonthName> MonthNamesOf(CalendarSystem system)
{
    switch (system) {
    case CalendarSystem::Islamic:
    case CalendarSystem::IslamicCivil:
        return kIslamicMonths;
    case CalendarSystem::Hebrew:
        return kHebrewMonths;
    default:
        return {};
    }
}

std::optional<MonthDay> ParseNamedMonthDay(std::string_view text, CalendarSystem system)
{
    const std::vector<std::string> words = WordsOf(text);
    const auto day = words.size() == 2 ? IntegerOf(words[0]) : std::nullopt;
    if (!day)
        return std::nullopt;
    for (const MonthName& name : MonthNamesOf(system)) {
        if (name.word == words[1])
            return MonthDay{name.month, *day};
    }
    return std::nullopt;
}

/// The longest month that a calendar can have.
int MostDays(CalendarSystem system, int month)
{
    switch (system) {
    case CalendarSystem::Julian:
        return month > 12   ? 0
               : month == 2 ? 29
                            : TableDaysInMonth(static_cast<std::int16_t>(month));
    case CalendarSystem::Persian:
    case CalendarSystem::Indian:
        return month > 12 ? 0 : 31;
    case CalendarSystem::Coptic:
    case CalendarSystem::Ethiopic:
        return month == 13 ? 6 : 30;
    default:
        return month > 12 ? 0 : 30;
    }
}

DayOrError ParseCalendarDay(std::string_view date, CalendarSystem system)
{
    auto day = ParseMonthDay(date);
    if (!day)
        day = ParseNamedMonthDay(date, system);
    if (!day || day->day < 1 || day->day > MostDays(system, day->month)) {
        return WrongDate(date, MonthNamesOf(system).empty()
                                   ? "Write the month and the day of that calendar, such as 0115."
                                   : "Write the month and the day of that calendar, such as 0915, "
                                     "or its name, such as 1 Shawwal or 15 Nisan.");
    }
    return RuleDay{CalendarDay{system, *day}};
}

// Sun and moon.

constexpr std::array<MonthName, 4> kSeasons = {
    {{"MARCH", 0}, {"JUNE", 90}, {"SEPTEMBER", 180}, {"DECEMBER", 270}}};
constexpr std::array<std::string_view, 4> kPhases = {"NEW MOON", "FIRST QUARTER", "FULL MOON",
                                                     "LAST QUARTER"};

DayOrError ParseSolarDay(std::string_view date, std::string_view place)
{
    const auto hours = HoursOfPlace(place);
    if (!hours)
        return WrongDate(place, kWritePlace);
    const std::string word = util::ToUpperAscii(date);
    for (const MonthName& season : kSeasons) {
        if (season.word == word)
            return RuleDay{SolarDay{season.month, *hours}};
    }
    const auto degrees = IntegerOf(date);
    if (!degrees || *degrees < 0 || *degrees > 359)
        return WrongDate(date, "Write MARCH, JUNE, SEPTEMBER, DECEMBER or degrees from 0 to 359.");
    return RuleDay{SolarDay{*degrees, *hours}};
}

DayOrError ParseMoonDay(std::string_view date, MoonDay::Phase phase)
{
    const auto hours = date.empty() ? 0 : HoursOfPlace(util::ToUpperAscii(date));
    if (!hours)
        return WrongDate(date, kWritePlace);
    return RuleDay{MoonDay{phase, *hours}};
}

// Dates of our calendar.

/// YYYYMMDD.
std::optional<Date> ParseDate(std::string_view text)
{
    constexpr std::size_t digits = 8;
    const auto number = text.size() == digits ? IntegerOf(text) : std::nullopt;
    if (!number || *number < 0)
        return std::nullopt;
    const std::chrono::year_month_day date(std::chrono::year(*number / 10000),
                                           std::chrono::month(unsigned(*number / 100 % 100)),
                                           std::chrono::day(unsigned(*number % 100)));
    if (!date.ok() || date.year() < std::chrono::year(1))
        return std::nullopt;
    return Date(date);
}

DayOrError ParseListedDates(std::string_view text)
{
    constexpr std::size_t dateLength = 8;
    constexpr int mostDays = 366;
    ListedDates dates;
    for (const std::string& word : WordsOf(text)) {
        const std::string_view range = word;
        const bool isRange = range.size() > dateLength && range[dateLength] == '-';
        const auto first = ParseDate(isRange ? range.substr(0, dateLength) : range);
        const auto last = isRange ? ParseDate(range.substr(dateLength + 1)) : first;
        if (!first || !last || *last < *first || (*last - *first).count() >= mostDays) {
            return WrongDate(word, "Write dates such as 20270503, or from the first to the last "
                                   "day such as 20270503-20270507.");
        }
        dates.ranges.emplace_back(*first, *last);
    }
    if (dates.ranges.empty())
        return WrongDate(text, "Write at least one date such as 20270503.");
    return RuleDay{std::move(dates)};
}

struct RelationWord {
    std::string_view word;
    NearWeekday::Relation relation;
};
constexpr std::array<RelationWord, 5> kRelations = {
    {{"ON OR AFTER", NearWeekday::Relation::OnOrAfter},
     {"AFTER", NearWeekday::Relation::After},
     {"ON OR BEFORE", NearWeekday::Relation::OnOrBefore},
     {"BEFORE", NearWeekday::Relation::Before},
     {"NEAREST", NearWeekday::Relation::Nearest}}};

std::optional<DayOrError> ParseNearWeekday(std::string_view date, std::int16_t weekday,
                                           std::string_view relation)
{
    for (const RelationWord& known : kRelations) {
        if (known.word != relation)
            continue;
        const auto day = ParseMonthDay(date);
        if (!day || day->day > MostDays(CalendarSystem::Julian, day->month))
            return WrongDate(date, kWriteMonthDay);
        return RuleDay{NearWeekday{weekday, known.relation, *day}};
    }
    return std::nullopt;
}

/// What the plain rules know, by a word that they do not read or with days to add.
DayOrError ParsePlainDay(std::string_view date, std::string_view kind)
{
    const auto parsed = ParseHolidayLine(std::string(date) + ',' + std::string(kind) + ",");
    if (const auto* const error = std::get_if<util::Error>(&parsed))
        return *error;
    const auto& rule = std::get<HolidayDef>(parsed);
    return RuleDay{PlainDay{rule.DateCode, rule.Kind}};
}

DayOrError ParseOffset(std::string_view date)
{
    constexpr int mostDays = 366;
    const auto offset = IntegerOf(date);
    if (!offset || std::abs(*offset) > mostDays)
        return WrongDate(date, "Write the days from Easter Sunday, such as -2 or 39.");
    return RuleDay{OrthodoxEasterDay{*offset}};
}

/// A text that is like a kind, for a hint.
std::string ClosestKind(std::string_view kind)
{
    std::vector<std::string> kinds = {"DAY",         "FIXED",     "WESTERN",         "ORTHODOX",
                                      "DATE",        "LEAP DAY",  "SOLAR JAPAN",     "SOLAR CHINA",
                                      "SOLAR KOREA", "SOLAR GMT", "BETWEEN HOLIDAYS"};
    for (const System& system : kSystems)
        kinds.emplace_back(system.word);
    kinds.insert(kinds.end(), kPhases.begin(), kPhases.end());
    const std::string first(kind.substr(0, kind.find(' ')));
    for (const RelationWord& relation : kRelations) {
        if (WeekdayOfWord(first))
            kinds.push_back(first + ' ' + std::string(relation.word));
    }
    const std::vector<std::string_view> words(kinds.begin(), kinds.end());
    return std::string(ClosestWord(kind, words).value_or(""));
}

DayOrError ParseKind(std::string_view date, std::string_view kind)
{
    const std::size_t blank = std::min(kind.find(' '), kind.size());
    const std::string_view first = kind.substr(0, blank);
    const std::string_view rest = kind.substr(std::min(blank + 1, kind.size()));
    if (const auto weekday = WeekdayOfWord(first)) {
        if (rest.empty())
            return ParsePlainDay(date, kind);
        if (auto parsed = ParseNearWeekday(date, *weekday, rest))
            return *std::move(parsed);
    }
    if (kind == "DAY" || kind == "FIXED")
        return ParsePlainDay(date, "DAY");
    if (kind == "WESTERN")
        return ParsePlainDay(date, "EASTER");
    if (kind == "ORTHODOX")
        return ParseOffset(date);
    if (kind == "DATE")
        return ParseListedDates(date);
    if (kind == "LEAP DAY")
        return date == "0229" ? DayOrError(RuleDay{LeapDay{}}) : WrongDate(date, "Write 0229.");
    if (kind == "BETWEEN HOLIDAYS")
        return date.empty() ? DayOrError(RuleDay{BetweenHolidays{}})
                            : WrongDate(date, "Leave it empty.");
    if (first == "SOLAR")
        return ParseSolarDay(date, rest);
    if (const auto phase = std::find(kPhases.begin(), kPhases.end(), kind); phase != kPhases.end())
        return ParseMoonDay(date, static_cast<MoonDay::Phase>(phase - kPhases.begin()));
    for (const System& system : kSystems) {
        if (system.word == kind)
            return ParseCalendarDay(date, system.system);
    }
    return util::Error(ErrorKind::UnknownRuleKind, std::string(kind), ClosestKind(kind));
}

} // namespace

std::optional<MonthDay> ParseMonthDay(std::string_view text)
{
    constexpr std::size_t digits = 4;
    const bool isNumber =
        text.size() == digits &&
        std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
    const auto number = isNumber ? IntegerOf(text) : std::nullopt;
    if (!number)
        return std::nullopt;
    const MonthDay day{*number / 100, *number % 100};
    if (day.month < 1 || day.month > 13 || day.day < 1 || day.day > 31)
        return std::nullopt;
    return day;
}

std::variant<RuleDay, util::Error> ParseRuleDay(std::string_view date, std::string_view kind)
{
    constexpr int mostShift = 366;
    std::vector<std::string> words = WordsOf(kind);
    int shift = 0;
    const bool isPlace = words.size() == 2 && words.front() == "SOLAR"; // "SOLAR +5" is a zone
    if (words.size() > 1 && !isPlace &&
        (words.back().starts_with('+') || words.back().starts_with('-'))) {
        const auto days = IntegerOf(words.back());
        if (!days || std::abs(*days) > mostShift)
            return util::Error(ErrorKind::UnknownRuleKind, util::Join(words, " "));
        shift = *days;
        words.pop_back();
    }
    auto parsed = ParseKind(util::Trim(date), util::Join(words, " "));
    if (auto* const day = std::get_if<RuleDay>(&parsed))
        day->shift = shift;
    return parsed;
}

} // namespace orrery::holidays
