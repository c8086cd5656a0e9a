#include "exchange/ics/plugin/event_parser.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

namespace orrery::exchange {
namespace {

constexpr int kFirst = 2026;
constexpr int kLast = 2028;

constexpr const char* kBerlin =
    "BEGIN:VTIMEZONE\r\nTZID:Europe/Berlin\r\n"
    "BEGIN:DAYLIGHT\r\nTZOFFSETFROM:+0100\r\nTZOFFSETTO:+0200\r\n"
    "DTSTART:19700329T020000\r\nRRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU\r\n"
    "END:DAYLIGHT\r\nBEGIN:STANDARD\r\nTZOFFSETFROM:+0200\r\n"
    "TZOFFSETTO:+0100\r\nDTSTART:19701025T030000\r\n"
    "RRULE:FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU\r\nEND:STANDARD\r\n"
    "END:VTIMEZONE\r\n";

std::string TextOf(std::int32_t day)
{
    const std::chrono::year_month_day date{std::chrono::sys_days(std::chrono::days(day))};
    char text[32];
    std::snprintf(text, sizeof text, "%04d%02u%02u", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    return text;
}

/// "20270501-20270503 20270601"
std::string DaysOf(const ParsedEvent& event)
{
    std::string text;
    for (std::size_t i = 0; i < event.dayCount; ++i) {
        const auto [first, last] = event.days[i];
        text +=
            (text.empty() ? "" : " ") + TextOf(first) + (first == last ? "" : '-' + TextOf(last));
    }
    return text;
}

std::string EventOf(const std::vector<std::string>& lines)
{
    std::string text = "BEGIN:VEVENT\r\nSUMMARY:Event\r\n";
    for (const std::string& line : lines)
        text += line + "\r\n";
    return text + "END:VEVENT\r\n";
}

struct DaysCase {
    const char* name;
    std::vector<std::string> lines;
    const char* days;
};
class ParsedDaysTest : public testing::TestWithParam<DaysCase> {};
TEST_P(ParsedDaysTest, AreThoseOfTheEvent)
{
    EventParser parser(kFirst, kLast);
    ASSERT_TRUE(parser.AddZone(kBerlin));
    const ParsedEvent& event = parser.Parse(EventOf(GetParam().lines));
    EXPECT_EQ(event.problem, "");
    EXPECT_EQ(event.loss, "");
    EXPECT_EQ(DaysOf(event), GetParam().days);
}
INSTANTIATE_TEST_SUITE_P(
    Events, ParsedDaysTest,
    testing::Values(
        DaysCase{"OneDay", {"DTSTART;VALUE=DATE:20270501"}, "20270501"},
        DaysCase{"AnyYearIfItIsOnce", {"DTSTART;VALUE=DATE:19990501"}, "19990501"},
        DaysCase{"TheEndDoesNotBelongToIt",
                 {"DTSTART;VALUE=DATE:20270501", "DTEND;VALUE=DATE:20270504"},
                 "20270501-20270503"},
        DaysCase{"AnEndAtTheStart",
                 {"DTSTART;VALUE=DATE:20270501", "DTEND;VALUE=DATE:20270501"},
                 "20270501"},
        DaysCase{"ADuration", {"DTSTART;VALUE=DATE:20270501", "DURATION:P2D"}, "20270501-20270502"},
        DaysCase{"ANegativeDuration", {"DTSTART;VALUE=DATE:20270501", "DURATION:-P2D"}, "20270501"},
        DaysCase{"PastMidnight",
                 {"DTSTART:20270501T230000", "DTEND:20270502T010000"},
                 "20270501-20270502"},
        DaysCase{"UpToMidnight", {"DTSTART:20270501T230000", "DTEND:20270502T000000"}, "20270501"},
        DaysCase{"TheDayOfItsOwnZone",
                 {"DTSTART;TZID=Europe/Berlin:20270501T003000", "DURATION:PT1H"},
                 "20270501"},
        DaysCase{"AnUnknownZone", {"DTSTART;TZID=Nowhere:20270501T003000"}, "20270501"},
        DaysCase{"AnEndInAnotherZone",
                 {"DTSTART;TZID=Europe/Berlin:20270501T230000", "DTEND:20270501T213000Z"},
                 "20270501"},
        DaysCase{"EveryYear", {"DTSTART;VALUE=DATE:20200229", "RRULE:FREQ=YEARLY"}, "20280229"},
        DaysCase{"TheStartCountsThoughNotInTheRule",
                 {"DTSTART;VALUE=DATE:20270501", "RRULE:FREQ=MONTHLY;BYMONTHDAY=3;COUNT=1"},
                 "20270501 20270503"},
        DaysCase{"AnExceptionInUtc",
                 {"DTSTART;TZID=Europe/Berlin:20270101T003000", "RRULE:FREQ=DAILY;COUNT=3",
                  "EXDATE:20270101T233000Z"},
                 "20270101 20270103"},
        DaysCase{"AnEndInUtc",
                 {"DTSTART;TZID=Europe/Berlin:20270101T003000",
                  "RRULE:FREQ=DAILY;UNTIL=20270101T233000Z"},
                 "20270101 20270102"},
        DaysCase{"SeveralExceptions",
                 {"DTSTART;VALUE=DATE:20270101", "RRULE:FREQ=DAILY;COUNT=5",
                  "EXDATE;VALUE=DATE:20270102,20270104", "EXDATE:20270105T000000Z"},
                 "20270101 20270103"},
        DaysCase{"MoreDates",
                 {"DTSTART;VALUE=DATE:20270101", "RDATE;VALUE=DATE:20270301,20270201"},
                 "20270101 20270201 20270301"},
        DaysCase{"APeriod",
                 {"DTSTART:20270101T120000", "RDATE;VALUE=PERIOD:20270201T120000/P2D"},
                 "20270101 20270201-20270203"},
        DaysCase{
            "BegunBeforeTheYears",
            {"DTSTART;VALUE=DATE:20201231", "DURATION:P3D", "RRULE:FREQ=YEARLY;UNTIL=20260101"},
            "20251231-20260102"},
        DaysCase{"WeeksThatBeginOnSunday",
                 {"DTSTART;VALUE=DATE:20270805",
                  "RRULE:FREQ=WEEKLY;INTERVAL=2;COUNT=4;BYDAY=TU,SU;WKST=SU"},
                 "20270805 20270815 20270817 20270829 20270831"},
        DaysCase{"EverySecond",
                 {"DTSTART:20270101T235959", "RRULE:FREQ=SECONDLY;COUNT=2"},
                 "20270101 20270102"}),
    [](const auto& row) { return std::string(row.param.name); });

struct YearlyCase {
    const char* name;
    std::vector<std::string> lines;
    const char* yearly; ///< "0502 1 2020-2030": month, day or ordinal, weekday or 0, years
};
class YearlyDayTest : public testing::TestWithParam<YearlyCase> {};
TEST_P(YearlyDayTest, IsWhatRulesCanSay)
{
    EventParser parser(kFirst, kLast);
    const YearlyDay yearly = parser.Parse(EventOf(GetParam().lines)).yearly;
    char text[64] = "none";
    if (yearly.kind == YearlyDay::Kind::LeapDay)
        std::snprintf(text, sizeof text, "leap day %d-%d", yearly.firstYear, yearly.lastYear);
    else if (yearly.kind != YearlyDay::Kind::None)
        std::snprintf(text, sizeof text, "%02d%02d %d %d-%d", yearly.month,
                      yearly.kind == YearlyDay::Kind::Date ? yearly.day : yearly.ordinal,
                      yearly.weekday, yearly.firstYear, yearly.lastYear);
    EXPECT_STREQ(text, GetParam().yearly);
}
const std::string kMay = "DTSTART;VALUE=DATE:20200510"; // the second Sunday
INSTANTIATE_TEST_SUITE_P(
    Rules, YearlyDayTest,
    testing::Values(
        YearlyCase{"ADate", {kMay, "RRULE:FREQ=YEARLY"}, "0510 0 2020-9999"},
        YearlyCase{
            "ADateInFull", {kMay, "RRULE:FREQ=YEARLY;BYMONTH=5;BYMONTHDAY=10"}, "0510 0 2020-9999"},
        YearlyCase{"AnotherDate", {kMay, "RRULE:FREQ=YEARLY;BYMONTH=6;BYMONTHDAY=10"}, "none"},
        YearlyCase{"ADayOfEachMonth", {kMay, "RRULE:FREQ=YEARLY;BYMONTHDAY=10"}, "none"},
        YearlyCase{"AWeekday", {kMay, "RRULE:FREQ=YEARLY;BYMONTH=5;BYDAY=2SU"}, "0502 1 2020-9999"},
        YearlyCase{"AWeekdayByPosition",
                   {kMay, "RRULE:FREQ=YEARLY;BYMONTH=5;BYDAY=SU;BYSETPOS=2"},
                   "0502 1 2020-9999"},
        YearlyCase{"AWeekdayByDays",
                   {kMay, "RRULE:FREQ=YEARLY;BYMONTH=5;BYDAY=SU;BYMONTHDAY=8,9,10,11,12,13,14"},
                   "0502 1 2020-9999"},
        YearlyCase{"TheLastWeekday",
                   {"DTSTART;VALUE=DATE:20200531", "RRULE:FREQ=YEARLY;BYMONTH=5;BYDAY=-1SU"},
                   "0505 1 2020-9999"},
        YearlyCase{"AnotherWeek", {kMay, "RRULE:FREQ=YEARLY;BYMONTH=5;BYDAY=3SU"}, "none"},
        YearlyCase{"TheSecondLastWeekday",
                   {"DTSTART;VALUE=DATE:20200524", "RRULE:FREQ=YEARLY;BYMONTH=5;BYDAY=-2SU"},
                   "none"},
        YearlyCase{"AWeekdayOfTheYear",
                   {"DTSTART;VALUE=DATE:20200112", "RRULE:FREQ=YEARLY;BYDAY=2SU"},
                   "none"},
        YearlyCase{"LeapDays",
                   {"DTSTART;VALUE=DATE:20200229", "RRULE:FREQ=YEARLY;COUNT=3"},
                   "leap day 2020-2028"},
        YearlyCase{"ACount", {kMay, "RRULE:FREQ=YEARLY;COUNT=3"}, "0510 0 2020-2022"},
        YearlyCase{"AnEndOnTheDay", {kMay, "RRULE:FREQ=YEARLY;UNTIL=20300510"}, "0510 0 2020-2030"},
        YearlyCase{
            "AnEndBeforeTheDay", {kMay, "RRULE:FREQ=YEARLY;UNTIL=20300509"}, "0510 0 2020-2029"},
        YearlyCase{"EverySecondYear", {kMay, "RRULE:FREQ=YEARLY;INTERVAL=2"}, "none"},
        YearlyCase{
            "AnException", {kMay, "RRULE:FREQ=YEARLY", "EXDATE;VALUE=DATE:20220510"}, "none"},
        YearlyCase{"MoreDays", {kMay, "DURATION:P2D", "RRULE:FREQ=YEARLY"}, "none"},
        YearlyCase{"InUtc", {"DTSTART:20200510T120000Z", "RRULE:FREQ=YEARLY"}, "none"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(EventParser, TellsTheYearOfABirthIfTheProducerDoes)
{
    EventParser parser(kFirst, kLast);
    const std::string start = "DTSTART;VALUE=DATE:19850302";
    const auto born = [&](const std::vector<std::string>& lines) {
        return parser.Parse(EventOf(lines)).born;
    };
    EXPECT_EQ(born({start, "RRULE:FREQ=YEARLY", "CATEGORIES:Birthday"}), 0);
    EXPECT_EQ(born({start, "X-KDE-KABC-BIRTHDAY:YES"}), 1985);
    EXPECT_EQ(born({start, "X-NEXTCLOUD-BC-FIELD-TYPE:BDAY", "X-NEXTCLOUD-BC-YEAR:1984"}), 1984);
    EXPECT_EQ(born({start, "X-NEXTCLOUD-BC-FIELD-TYPE:BDAY", "X-NEXTCLOUD-BC-UNKNOWN-YEAR:1"}), 0);
    EXPECT_EQ(born({start, "X-BIRTHDAY:1983-03-02"}), 1983);
    EXPECT_EQ(
        born({"DTSTART;VALUE=DATE:16040302", "X-APPLE-OMIT-YEAR:1604", "X-KDE-KABC-BIRTHDAY:YES"}),
        0);
    const std::string named = "BEGIN:VEVENT\r\nSUMMARY:Ann (*1985)\r\n" + start;
    EXPECT_EQ(parser.Parse(named + "\r\nCATEGORIES:BIRTHDAYS\r\nEND:VEVENT\r\n").born, 1985);
    EXPECT_EQ(parser.Parse(named + "\r\nEND:VEVENT\r\n").born, 0);
}

TEST(EventParser, KnowsWhatReplacesADayOfAnotherEvent)
{
    EventParser parser(kFirst, kLast);
    const ParsedEvent& event = parser.Parse(
        EventOf({"UID:a", "DTSTART:20270305T120000", "RECURRENCE-ID:20270301T233000"}));
    EXPECT_TRUE(event.isOverride);
    EXPECT_EQ(TextOf(event.replacedDay), "20270301");
    EXPECT_EQ(event.uid, "a");
    EXPECT_EQ(DaysOf(event), "20270305");
}

struct ProblemCase {
    const char* name;
    std::vector<std::string> lines;
    const char* problem;
    const char* loss;
};
class EventProblemTest : public testing::TestWithParam<ProblemCase> {};
TEST_P(EventProblemTest, IsASentence)
{
    EventParser parser(kFirst, kLast);
    const ParsedEvent& event = parser.Parse(EventOf(GetParam().lines));
    EXPECT_EQ(event.problem, GetParam().problem);
    EXPECT_EQ(event.loss, GetParam().loss);
}
INSTANTIATE_TEST_SUITE_P(
    Events, EventProblemTest,
    testing::Values(
        ProblemCase{"NoStart", {}, "The event has no start (DTSTART) that is understood.", ""},
        ProblemCase{"NoSuchDate",
                    {"DTSTART;VALUE=DATE:20270230"},
                    "The start of the event (DTSTART) is no date of the years 1 to 9999.",
                    ""},
        ProblemCase{"YearZero",
                    {"DTSTART;VALUE=DATE:00000101"},
                    "The start of the event (DTSTART) is no date of the years 1 to 9999.",
                    ""},
        ProblemCase{"Cancelled",
                    {"DTSTART;VALUE=DATE:20270101", "STATUS:CANCELLED"},
                    "The event is cancelled.",
                    ""},
        ProblemCase{"TooLong",
                    {"DTSTART;VALUE=DATE:20270101", "DURATION:P999999W"},
                    "The event ends behind the year 9999.",
                    ""},
        ProblemCase{"AWrongRule",
                    {"DTSTART;VALUE=DATE:20270101", "RRULE:FREQ=OFTEN"},
                    "",
                    "The repetition of the event (RRULE) is not understood. Only its first day is "
                    "taken over."},
        ProblemCase{"ALargeInterval",
                    {"DTSTART;VALUE=DATE:20270101", "RRULE:FREQ=DAILY;INTERVAL=65537"},
                    "",
                    "The repetition of the event (RRULE) is not understood. Only its first day is "
                    "taken over."},
        ProblemCase{
            "ARuleOfExceptions",
            {"DTSTART;VALUE=DATE:20270101", "RRULE:FREQ=YEARLY", "EXRULE:FREQ=YEARLY;INTERVAL=4"},
            "",
            "The rule of exceptions (EXRULE) is not taken over: the event has its days, too."},
        ProblemCase{"AnotherCalendar",
                    {"DTSTART;VALUE=DATE:20270101", "RRULE:RSCALE=CHINESE;FREQ=YEARLY"},
                    "",
                    "The repetition of the event (RRULE) is not understood. Only its first day is "
                    "taken over."}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(EventParser, PassesOverZonesThatChangeTooOften)
{
    EventParser parser(kFirst, kLast);
    std::string zone = kBerlin;
    const auto at = zone.find("BYDAY=-1SU");
    EXPECT_FALSE(parser.AddZone(std::string(zone).replace(at, 10, "BYHOUR=1,2")));
    EXPECT_FALSE(parser.AddZone(std::string(zone).replace(at, 10, "BYMONTHDAY=32")));
    EXPECT_FALSE(parser.AddZone(std::string(zone).replace(at, 10, "BYDAY=1SU;BYMONTHDAY=20")));
    EXPECT_FALSE(parser.AddZone("BEGIN:VTIMEZONE\r\nEND:VTIMEZONE\r\n"));
    EXPECT_TRUE(parser.AddZone(zone));
}

} // namespace
} // namespace orrery::exchange
