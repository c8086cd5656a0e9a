#include "exchange/table/find_table.h"

#include "exchange/error.h"
#include "exchange/table/header_words.h"
#include "exchange/table/row_reader.h"
#include "exchange/table/table_entries.h"
#include "util/error.h"

#include <gmock/gmock.h>

namespace orrery::exchange {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

FoundTable Find(std::string text)
{
    return FindTable(TableText(std::move(text), "a.csv"), "a.csv");
}

TEST(FindTable, FindsTheSeparator)
{
    EXPECT_EQ(Find("2027-05-01,May Day\n").layout.separator, ',');
    EXPECT_EQ(Find("01.05.2027;Tag der Arbeit, frei\n").layout.separator, ';');
    EXPECT_EQ(Find("2027-05-01\tMay Day, at last; free\n").layout.separator, '\t');
    EXPECT_EQ(Find("2027-05-01|May Day\n").layout.separator, '|');
    EXPECT_EQ(Find("1.5.2027 May Day\n").layout.separator, kNoSeparator);
    EXPECT_EQ(Find("May 1, 2027, Labour Day\n").layout.separator, kNoSeparator);
    EXPECT_EQ(Find("\"May 1, 2027\",Labour Day\n").layout.separator, ',');
}

TEST(FindTable, FindsColumnsByTheirContent)
{
    const auto found = Find("No;Weekday;Holiday;Date\n"
                            "1;Sat;May Day;2027-05-01\n"
                            "2;Sat;Christmas;2027-12-25\n"
                            "3;Sun;Boxing Day;2027-12-26\n");
    EXPECT_TRUE(found.layout.hasHeader);
    EXPECT_EQ(found.layout.dateColumn, 3U);
    EXPECT_EQ(found.layout.nameColumn, 2U);
    EXPECT_EQ(found.layout.endColumn, std::nullopt);
    EXPECT_THAT(found.columns, ElementsAre("No", "Weekday", "Holiday", "Date"));
    EXPECT_THAT(found.ignored, ElementsAre("No", "Weekday"));
}

TEST(FindTable, NeedsNoHeader)
{
    const auto found = Find("Sat,2027-05-01,May Day\nSat,2027-12-25,Christmas\n"
                            "Sat,2027-07-03,Party\n");
    EXPECT_FALSE(found.layout.hasHeader);
    EXPECT_EQ(found.layout.dateColumn, 1U);
    EXPECT_EQ(found.layout.nameColumn, 2U);
    EXPECT_THAT(found.ignored, ElementsAre("Column 1"));
}

TEST(FindTable, KnowsLastDaysByTheirHeader)
{
    const auto found = Find("Bis,Von,Was\n5.5.2027,1.5.2027,Fair\n7.6.2027,3.6.2027,Trip\n");
    EXPECT_EQ(found.layout.endColumn, 0U);
    EXPECT_EQ(found.layout.dateColumn, 1U);
    EXPECT_EQ(found.layout.nameColumn, 2U);
    EXPECT_THAT(found.ignored, IsEmpty());
    const auto outlook = Find("Subject,Start Date,Start Time,End Date,End Time,Categories\n"
                              "Fair,5/1/2027,8:00,5/14/2027,9:00,Own\n");
    EXPECT_EQ(outlook.layout.dateColumn, 1U);
    EXPECT_EQ(outlook.layout.endColumn, 3U);
    EXPECT_EQ(outlook.layout.nameColumn, 0U);
    EXPECT_THAT(outlook.ignored, ElementsAre("Start Time", "End Time", "Categories"));
    EXPECT_EQ(Find("1.5.2027,5.5.2027,Fair\n").layout.endColumn, std::nullopt);
}

TEST(FindTable, FindsTheOrderFromAllRows)
{
    EXPECT_THAT(Find("1/2/2027,a\n3/4/2027,b\n13/1/2027,c\n").orders,
                ElementsAre(DateOrder::DayMonthYear));
    EXPECT_THAT(Find("1/2/2027,a\n3/4/2027,b\n1/13/2027,c\n").orders,
                ElementsAre(DateOrder::MonthDayYear));
    EXPECT_THAT(Find("1/2/2027,a\n3/4/2027,b\n").orders,
                ElementsAre(DateOrder::DayMonthYear, DateOrder::MonthDayYear));
    EXPECT_THAT(Find("1.2.2027,a\n3.4.2027,b\n").orders, ElementsAre(DateOrder::DayMonthYear));
    EXPECT_THAT(Find("2027-02-01,a\n").orders, ElementsAre(DateOrder::YearMonthDay));
    EXPECT_THAT(Find("05/05/2027,a\n06/06/2027,b\n").orders, ElementsAre(DateOrder::DayMonthYear))
        << "both orders give the same dates";
    EXPECT_THAT(Find("1 May 2027,a\n").orders, IsEmpty());
    EXPECT_THAT(Find("13/1/2027,a\n1/13/2027,b\n").orders,
                ElementsAre(DateOrder::DayMonthYear, DateOrder::MonthDayYear));
}

TEST(FindTable, OneWrongRowDoesNotDecideTheOrder)
{
    EXPECT_THAT(Find("13/1/2027,a\n14/2/2027,b\n1/13/2027,c\n").orders,
                ElementsAre(DateOrder::DayMonthYear));
}

TEST(FindTable, FindsTheLanguageOfMonths)
{
    // In Croatian listopad is October, in Czech and Polish November.
    EXPECT_EQ(Find("1. listopada 2027;a\n1. studenoga 2027;b\n1. prosinca 2027;c\n"
                   "1. travnja 2027;d\n")
                  .layout.dates.language,
              0x041A);
    EXPECT_EQ(Find("1 May 2027;a\n").layout.dates.language, 0x0409);
}

TEST(FindTable, RefusesTextsWithoutDates)
{
    for (const char* const text : {"", "\n\n", "a,b\nc,d\n", "46508,May Day\n", "2027-05-01\n",
                                   "2027-05-01,2027-05-02\n", "1.5.,May Day\n"}) {
        try {
            Find(text);
            ADD_FAILURE() << text;
        }
        catch (const Error& error) {
            EXPECT_EQ(error.Kind(), ErrorKind::NoDates) << text;
        }
    }
}

TEST(SplitLine, FindsTheDateOnEitherSide)
{
    const auto split = [](std::string_view line) {
        const TableEntry entry = SplitLine(line);
        return entry.date + " = " + entry.name;
    };
    EXPECT_EQ(split("1.5.2027 May Day"), "1.5.2027 = May Day");
    EXPECT_EQ(split("1 May 2027: Labour Day"), "1 May 2027 = Labour Day");
    EXPECT_EQ(split("Labour Day - 1 May 2027"), "1 May 2027 = Labour Day");
    EXPECT_EQ(split("Sat, 1 May 2027 10:00 Run 10 km"), "Sat, 1 May 2027 10:00 = Run 10 km");
    EXPECT_EQ(split("2027-05-01 10 km run"), "2027-05-01 = 10 km run");
    EXPECT_EQ(split("Labour Day"), " = Labour Day");
    EXPECT_EQ(split("1.5.2027"), " = 1.5.2027");
    EXPECT_EQ(split(""), " = ");
}

TEST(Headers, AreKnownInSomeLanguages)
{
    EXPECT_TRUE(IsHeader(HeaderWord::End, "End Date"));
    EXPECT_TRUE(IsHeader(HeaderWord::End, "bis"));
    EXPECT_TRUE(IsHeader(HeaderWord::End, "Enddatum"));
    EXPECT_TRUE(IsHeader(HeaderWord::End, "Fin"));
    EXPECT_FALSE(IsHeader(HeaderWord::End, "End Time"));
    EXPECT_FALSE(IsHeader(HeaderWord::End, "Friend"));
    EXPECT_TRUE(IsHeader(HeaderWord::Start, "Date"));
    EXPECT_FALSE(IsHeader(HeaderWord::Start, "End date"));
    EXPECT_TRUE(IsHeader(HeaderWord::Name, "SUBJECT"));
    EXPECT_TRUE(IsHeader(HeaderWord::Name, "Événement"));
}

} // namespace
} // namespace orrery::exchange
