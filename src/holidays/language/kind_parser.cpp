#include "holidays/language/kind_parser.h"

#include "holidays/calendars/month_names.h"
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

using calendars::Calendar;
using DayOrError = std::variant<RuleDay, util::Error>;

constexpr const char* kWriteMonthDay = "Write the month and the day, such as 1225.";

util::Error WrongDate(std::string_view date, const char* howToWrite)
{
    return util::Error(ErrorKind::WrongRuleDate, std::string(date), howToWrite);
}

// Places whose clocks tell a day.

struct PlaceWord {
    std::string_view word;
    Place place;
};
constexpr std::array<PlaceWord, 5> kPlaces = {{{"CHINA", {Place::Country::China}},
                                               {"GMT", {}},
                                               {"JAPAN", {Place::Country::Japan}},
                                               {"KOREA", {Place::Country::Korea}},
                                               {"VIETNAM", {Place::Country::Vietnam}}}};
constexpr const char* kWritePlace =
    "Write CHINA, JAPAN, KOREA, VIETNAM, GMT or hours such as +5.5.";

/// Hours from Greenwich [-12:14] such as "+5" or "-3.5".
std::optional<double> ParseHours(std::string_view word)
{
    constexpr std::array<std::pair<std::string_view, double>, 4> shares = {
        {{"", 0}, {".25", .25}, {".5", .5}, {".75", .75}}};
    const bool isSigned = word.starts_with('+') || word.starts_with('-');
    const std::size_t point = std::min(word.find('.'), word.size());
    const auto hours = IntegerOf(word.substr(0, point));
    const auto* const share = std::find_if(shares.begin(), shares.end(), [&](const auto& known) {
        return known.first == word.substr(point);
    });
    if (!isSigned || !hours || *hours < -12 || *hours > 14 || share == shares.end())
        return std::nullopt;
    return word.starts_with('-') ? *hours - share->second : *hours + share->second;
}

std::optional<Place> ParsePlace(std::string_view word)
{
    for (const PlaceWord& known : kPlaces) {
        if (known.word == word)
            return known.place;
    }
    const auto hours = ParseHours(word);
    return hours ? std::optional(Place{Place::Country::None, *hours}) : std::nullopt;
}

// Dates of other calendars.

struct CalendarWord {
    std::string_view word;
    Calendar calendar;
};
constexpr std::array<CalendarWord, 11> kCalendars = {{{"JULIAN", Calendar::Julian},
                                                      {"ISLAMIC", Calendar::UmmAlQura},
                                                      {"ISLAMIC CIVIL", Calendar::IslamicCivil},
                                                      {"HEBREW", Calendar::Hebrew},
                                                      {"CHINESE", Calendar::Chinese},
                                                      {"KOREAN", Calendar::Korean},
                                                      {"VIETNAMESE", Calendar::Vietnamese},
                                                      {"PERSIAN", Calendar::Persian},
                                                      {"COPTIC", Calendar::Coptic},
                                                      {"ETHIOPIC", Calendar::Ethiopic},
                                                      {"INDIAN", Calendar::Indian}}};

/// "1 Shawwal".
std::optional<MonthDay> ParseNamedMonthDay(std::string_view text, Calendar calendar)
{
    const std::size_t blank = std::min(text.find(' '), text.size());
    const auto day = IntegerOf(text.substr(0, blank));
    const auto month = calendars::FindMonth(calendar, util::Trim(text.substr(blank)));
    if (!day || !month || month->leap)
        return std::nullopt;
    return MonthDay{month->number, *day};
}

/// The longest month that a calendar can have; 0 if it has no such month.
int MostDays(Calendar calendar, int month)
{
    constexpr int months = 12;
    switch (calendar) {
    case Calendar::Coptic:
    case Calendar::Ethiopic:
        return month == months + 1 ? 6 : 30;
    case Calendar::Julian:
        if (month == 2)
            return 29;
        return month > months ? 0 : TableDaysInMonth(static_cast<std::int16_t>(month));
    case Calendar::Persian:
    case Calendar::Indian:
        return month > months ? 0 : 31;
    default:
        return month > months ? 0 : 30;
    }
}

DayOrError ParseCalendarDay(std::string_view date, Calendar calendar)
{
    auto day = ParseMonthDay(date);
    if (!day)
        day = ParseNamedMonthDay(date, calendar);
    if (day && day->day >= 1 && day->day <= MostDays(calendar, day->month))
        return RuleDay{CalendarDay{calendar, *day}};
    const bool hasNames = !calendars::MonthName(calendar, {1}).empty();
    return WrongDate(date, hasNames
                               ? "Write the month and the day of that calendar, such as 0915, "
                                 "or its name, such as 1 Shawwal or 15 Nisan."
                               : "Write the month and the day of that calendar, such as 0115.");
}

// Sun and moon.

struct Season {
    std::string_view word;
    int degrees;
};
constexpr std::array<Season, 4> kSeasons = {
    {{"MARCH", 0}, {"JUNE", 90}, {"SEPTEMBER", 180}, {"DECEMBER", 270}}};
constexpr std::array<std::string_view, 4> kPhases = {"NEW MOON", "FIRST QUARTER", "FULL MOON",
                                                     "LAST QUARTER"};

DayOrError ParseSolarDay(std::string_view date, std::string_view placeWord)
{
    const auto place = ParsePlace(placeWord);
    if (!place)
        return WrongDate(placeWord, kWritePlace);
    const std::string word = util::ToUpperAscii(date);
    for (const Season& season : kSeasons) {
        if (season.word == word)
            return RuleDay{SolarDay{season.degrees, *place}};
    }
    const auto degrees = IntegerOf(date);
    if (!degrees || *degrees < 0 || *degrees > 359)
        return WrongDate(date, "Write MARCH, JUNE, SEPTEMBER, DECEMBER or degrees from 0 to 359.");
    return RuleDay{SolarDay{*degrees, *place}};
}

DayOrError ParseMoonDay(std::string_view date, calendars::MoonPhaseName phase)
{
    const auto place = date.empty() ? std::optional(Place()) : ParsePlace(util::ToUpperAscii(date));
    if (!place)
        return WrongDate(date, kWritePlace);
    return RuleDay{MoonDay{phase, *place}};
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
    ListedDates dates;
    for (const std::string& word : WordsOf(text)) {
        const std::string_view range = word;
        const bool isRange = range.size() > dateLength && range[dateLength] == '-';
        const auto first = ParseDate(isRange ? range.substr(0, dateLength) : range);
        const auto last = isRange ? ParseDate(range.substr(dateLength + 1)) : first;
        if (!first || !last || *last < *first || (*last - *first).count() >= kMostListedDays) {
            return WrongDate(word, "Write dates such as 20270503, or from the first to the last "
                                   "day such as 20270503-20270507.");
        }
        dates.ranges.emplace_back(*first, *last);
    }
    if (dates.ranges.empty() || dates.ranges.size() > kMostListedRanges)
        return WrongDate(text, "Write one date such as 20270503 or several, at most 1,000.");
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
        if (!day || day->day > MostDays(Calendar::Julian, day->month))
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
    for (const CalendarWord& calendar : kCalendars)
        kinds.emplace_back(calendar.word);
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
        return ParseMoonDay(date, static_cast<calendars::MoonPhaseName>(phase - kPhases.begin()));
    for (const CalendarWord& known : kCalendars) {
        if (known.word == kind)
            return ParseCalendarDay(date, known.calendar);
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
