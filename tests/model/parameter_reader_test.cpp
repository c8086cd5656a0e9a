#include "model/parameter_file.h"
#include "parameter_samples.h"
#include "util/scratch_folder.h"

#include <functional>
#include <gtest/gtest.h>

namespace orrery::model {
namespace {

using namespace samples;
using testing_support::BytesOf;
using testing_support::ScratchFolder;

/// The defaults as reading leaves them before it applies any line.
ParameterSets WithoutHolidays(ParameterSets sets)
{
    sets.Monthly.Holidays.Clear();
    sets.Yearly.Holidays.Clear();
    return sets;
}

struct Read {
    ParameterSets sets = SomeDefaults();
    NameTables names = SomeNames();

    explicit Read(std::string_view bytes)
    {
        const ScratchFolder scratch;
        ReadParameterFile(scratch.Write("Desk.ini", bytes), names, sets);
    }
};

/// A line in a section, and what it changes.
struct LineCase {
    const char* name;
    std::string_view line;
    std::function<void(YearlyParameters&)> change;
};
void Unchanged(YearlyParameters& /*set*/) {}

class ParameterLineTest : public testing::TestWithParam<LineCase> {};
TEST_P(ParameterLineTest, AppliesToTheYearlySet)
{
    ParameterSets expected = WithoutHolidays(SomeDefaults());
    GetParam().change(expected.Yearly);
    ExpectSets(Read("[Yearly Calendar]\r\n" + std::string(GetParam().line) + "\r\n").sets,
               expected);
}
TEST_P(ParameterLineTest, AppliesToTheMonthlySet)
{
    ParameterSets expected = WithoutHolidays(SomeDefaults());
    YearlyParameters changed; // its extra fields are not compared
    static_cast<CalendarParameters&>(changed) = expected.Monthly;
    GetParam().change(changed);
    static_cast<CalendarParameters&>(expected.Monthly) = changed;
    ExpectSets(Read("[Monthly Calendar]\n" + std::string(GetParam().line)).sets, expected);
}

// One letter, because the tables below are long.
using Y = YearlyParameters;
const auto kName = [](const auto& row) { return std::string(row.param.name); };

INSTANTIATE_TEST_SUITE_P(
    Flags, ParameterLineTest,
    testing::Values(LineCase{"OutputNo", "Output=N", [](Y& set) { set.Output = false; }},
                    LineCase{"OutputOther", "Output=Yes", [](Y& set) { set.Output = false; }},
                    LineCase{"OutputLowerCase", "Output=y", [](Y& set) { set.Output = true; }},
                    LineCase{"OutputEmpty", "Output=", Unchanged},
                    LineCase{"OutWeekdayFree", " outweekday = y ",
                             [](Y& set) { set.OutWeekday = true; }},
                    LineCase{"OutMonth", "OUTMONTH=Y", [](Y& set) { set.OutMonth = true; }},
                    LineCase{"OutYear", "OutYear=Y", [](Y& set) { set.OutYear = true; }},
                    LineCase{"OutHoliday", "OutHoliday=Y", [](Y& set) { set.OutHoliday = true; }}),
    kName);
INSTANTIATE_TEST_SUITE_P(Sheets, ParameterLineTest,
                         testing::Values(LineCase{"Name", "SheetName= My Sheet ",
                                                  [](Y& set) { set.SheetName = "My Sheet"; }},
                                         LineCase{"Quotes", "SheetName=\"a\"",
                                                  [](Y& set) { set.SheetName = "\"a\""; }},
                                         LineCase{"EqualsDoubled", "SheetName==a", Unchanged},
                                         LineCase{"Empty", "SheetName=", Unchanged}),
                         kName);
INSTANTIATE_TEST_SUITE_P(FirstDays, ParameterLineTest,
                         testing::Values(LineCase{"One", "FirstDayOfWeek=1",
                                                  [](Y& set) { set.FirstDayOfWeek = 1; }},
                                         LineCase{"OneInAnotherForm", "FirstDayOfWeek=1.0e0",
                                                  [](Y& set) { set.FirstDayOfWeek = 1; }},
                                         LineCase{"Monday", "FirstDayOfWeek=monday",
                                                  [](Y& set) { set.FirstDayOfWeek = 1; }},
                                         LineCase{"Zero", "FirstDayOfWeek=0", Unchanged},
                                         LineCase{"Two", "FirstDayOfWeek=2", Unchanged},
                                         LineCase{"AlmostOne", "FirstDayOfWeek=0.9", Unchanged},
                                         LineCase{"Sunday", "FirstDayOfWeek=Sunday", Unchanged}),
                         kName);
INSTANTIATE_TEST_SUITE_P(Cells, ParameterLineTest,
                         testing::Values(LineCase{"Day", "FirstCellOfDay=c7",
                                                  [](Y& set) {
                                                      set.FirstCellOfDay = {7, 3};
                                                  }},
                                         LineCase{"Weekday", "FirstCellOfWeekday=IV65536",
                                                  [](Y& set) {
                                                      set.FirstCellOfWeekday = {65536, 256};
                                                  }},
                                         LineCase{"Month", "FirstCellOfMonth=A1",
                                                  [](Y& set) {
                                                      set.FirstCellOfMonth = {1, 1};
                                                  }},
                                         LineCase{"Year", "FirstCellOfYear=A2",
                                                  [](Y& set) {
                                                      set.FirstCellOfYear = {2, 1};
                                                  }},
                                         LineCase{"Holiday", "FirstCellOfHoliday=A3",
                                                  [](Y& set) {
                                                      set.FirstCellOfHoliday = {3, 1};
                                                  }},
                                         LineCase{"NoRow", "FirstCellOfDay=C", Unchanged},
                                         LineCase{"NoColumn", "FirstCellOfDay=7", Unchanged},
                                         LineCase{"RowZero", "FirstCellOfDay=C0", Unchanged},
                                         LineCase{"ColumnBeyond", "FirstCellOfDay=IW1", Unchanged},
                                         LineCase{"RowBeyond", "FirstCellOfDay=A65537", Unchanged},
                                         LineCase{"RowOverflows", "FirstCellOfDay=A99999999999",
                                                  Unchanged},
                                         LineCase{"Dollars", "FirstCellOfDay=$C$7", Unchanged}),
                         kName);
INSTANTIATE_TEST_SUITE_P(
    Numbers, ParameterLineTest,
    testing::Values(
        LineCase{"ColLast", "ColIntervalOfDay=36", [](Y& set) { set.ColIntervalOfDay = 36; }},
        LineCase{"ColFirst", "ColIntervalOfDay=1", [](Y& set) { set.ColIntervalOfDay = 1; }},
        LineCase{"ColBeyond", "ColIntervalOfDay=37", Unchanged},
        LineCase{"ColBelow", "ColIntervalOfDay=0", Unchanged},
        LineCase{"ColRangeBeforeRounding", "ColIntervalOfDay=36.2", Unchanged},
        LineCase{"ColHalfToEven", "ColIntervalOfDay=2.5", [](Y& set) { set.ColIntervalOfDay = 2; }},
        LineCase{"ColHuge", "ColIntervalOfDay=1e999", Unchanged},
        LineCase{"ColText", "ColIntervalOfDay=two", Unchanged},
        LineCase{"RowLast", "RowIntervalOfDay=10000", [](Y& set) { set.RowIntervalOfDay = 10000; }},
        LineCase{"RowBeyond", "RowIntervalOfDay=10001", Unchanged},
        LineCase{"RowBelow", "RowIntervalOfDay=0.9", Unchanged},
        LineCase{"MultiZero", "MultiHolidays=0", [](Y& set) { set.MultiHolidays = 0; }},
        LineCase{"MultiTwo", "MultiHolidays=2", [](Y& set) { set.MultiHolidays = 2; }},
        LineCase{"MultiBeyond", "MultiHolidays=3", Unchanged},
        LineCase{"MultiBelow", "MultiHolidays=-0.1", Unchanged}),
    kName);
INSTANTIATE_TEST_SUITE_P(
    NameLists, ParameterLineTest,
    testing::Values(LineCase{"Weekdays", "WeekdayName= Sun , Mon,Tue,Wed,Thu,Fri,Sat",
                             [](Y& set) { set.WeekdayName = 1; }},
                    LineCase{"WeekdaysAndMore", "WeekdayName=Sun,Mon,Tue,Wed,Thu,Fri,Sat,x",
                             [](Y& set) { set.WeekdayName = 1; }},
                    LineCase{"Months", "MonthName=Jan,Feb,Mar,Apr,May,Jun,Jul,Aug,Sep,Oct,Nov,Dec",
                             [](Y& set) { set.MonthName = 1; }},
                    LineCase{"UnknownWeekdays", "WeekdayName=a,b,c,d,e,f,g",
                             [](Y& set) { set.WeekdayName = 2; }},
                    LineCase{"UnknownMonths", "MonthName=a,b,c,d,e,f,g,h,i,j,k,l",
                             [](Y& set) { set.MonthName = 2; }},
                    LineCase{"Empty", "WeekdayName=", Unchanged}),
    kName);
INSTANTIATE_TEST_SUITE_P(
    Holidays, ParameterLineTest,
    testing::Values(LineCase{"Rule", "Holiday1=0704,DAY, Independence Day",
                             [](Y& set) {
                                 set.Holidays.Append({704, 0, " Independence Day"});
                             }},
                    LineCase{"NoNumber", "holiday = ,EASTER MON,x",
                             [](Y& set) {
                                 set.Holidays.Append({1, 8, "x"});
                             }},
                    LineCase{"AnyNumber", "HOLIDAY_99=0505,Monday,x",
                             [](Y& set) {
                                 set.Holidays.Append({505, 2, "x"});
                             }},
                    LineCase{"NoRule", "Holiday1=0229,DAY,x", Unchanged}),
    kName);
INSTANTIATE_TEST_SUITE_P(Others, ParameterLineTest,
                         testing::Values(LineCase{"UnknownKey", "Colour=7", Unchanged},
                                         LineCase{"NoEquals", "Output N", Unchanged},
                                         LineCase{"Comment", "/* Output=N", Unchanged},
                                         LineCase{"QuotedKey", "\"Output\"=N", Unchanged},
                                         LineCase{"Blank", "   ", Unchanged}),
                         kName);

struct YearlyCase {
    const char* name;
    std::string_view line;
    std::function<void(YearlyParameters&)> change;
};
class YearlyLineTest : public testing::TestWithParam<YearlyCase> {};
TEST_P(YearlyLineTest, AppliesInTheYearlySection)
{
    ParameterSets expected = WithoutHolidays(SomeDefaults());
    GetParam().change(expected.Yearly);
    ExpectSets(Read("[Yearly Calendar]\n" + std::string(GetParam().line)).sets, expected);
}
TEST_P(YearlyLineTest, IsIgnoredInTheMonthlySection)
{
    ExpectSets(Read("[Monthly Calendar]\n" + std::string(GetParam().line)).sets,
               WithoutHolidays(SomeDefaults()));
}
INSTANTIATE_TEST_SUITE_P(
    Keys, YearlyLineTest,
    testing::Values(YearlyCase{"Layout", "MonthLayout=12", [](Y& set) { set.MonthLayout = 12; }},
                    YearlyCase{"LayoutBeyond", "MonthLayout=13", Unchanged},
                    YearlyCase{"LayoutBelow", "MonthLayout=0", Unchanged},
                    YearlyCase{"Col", "ColIntervalOfMonth=256",
                               [](Y& set) { set.ColIntervalOfMonth = 256; }},
                    YearlyCase{"ColBeyond", "ColIntervalOfMonth=257", Unchanged},
                    YearlyCase{"Row", "RowIntervalOfMonth=10000",
                               [](Y& set) { set.RowIntervalOfMonth = 10000; }},
                    YearlyCase{"RowBeyond", "RowIntervalOfMonth=10001", Unchanged}),
    kName);

TEST(ReadParameterFile, ClearsTheHolidaysEvenWithoutAFile)
{
    const ScratchFolder scratch;
    ParameterSets sets = SomeDefaults();
    NameTables names = SomeNames();
    ReadParameterFile(scratch / "missing.ini", names, sets);
    ExpectSets(sets, WithoutHolidays(SomeDefaults()));
}

TEST(ReadParameterFile, ChangesOnlyKeysInTheFile)
{
    ParameterSets expected = WithoutHolidays(SomeDefaults());
    expected.Monthly.Output = false;
    ExpectSets(Read("[Monthly Calendar]\r\nOutput=N\r\n").sets, expected);
}

TEST(ReadParameterFile, RequiresItsExactHeaders)
{
    const ParameterSets expected = WithoutHolidays(SomeDefaults());
    for (const char* header :
         {"[MONTHLY CALENDAR]", "[Monthly  Calendar]", "[Other]", "[Monthly Calendar", "x"})
        ExpectSets(Read(std::string(header) + "\nOutput=N\n").sets, expected);
    // Another header closes the section; the right one opens it again.
    ParameterSets changed = expected;
    changed.Monthly.SheetName = "b";
    ExpectSets(Read("[Monthly Calendar]\n[Other]\nSheetName=a\n \t[Monthly Calendar] "
                    "\nSheetName=b\n[x\nSheetName=c")
                   .sets,
               changed);
}

TEST(ReadParameterFile, UsesListZeroForTooFewNames)
{
    const Read read("[Monthly Calendar]\nWeekdayName=" + std::string(kWeekdays) +
                    "\nWeekdayName=a,b,c,d,e,f\nMonthName=" + kMonths +
                    "\nMonthName=1,2,3,4,5,6,7,8,9,10,11\n");
    EXPECT_EQ(read.sets.Monthly.WeekdayName, 0);
    EXPECT_EQ(read.sets.Monthly.MonthName, 0);
    EXPECT_EQ(read.names.Weekdays.Count(), 2);
}

TEST(ReadParameterFile, AddsUnknownListsOnce)
{
    const Read read("[Monthly Calendar]\nMonthName=a,b,c,d,e,f,g,h,i,j,k, l \n"
                    "[Yearly Calendar]\nMonthName=a,b,c,d,e,f,g,h,i,j,k,l,m\n");
    EXPECT_EQ(read.sets.Monthly.MonthName, 2);
    EXPECT_EQ(read.sets.Yearly.MonthName, 2);
    EXPECT_EQ(read.names.Months.Count(), 3);
    EXPECT_EQ(read.names.Months.Name(2, 11), "l");
    const ScratchFolder scratch;
    WriteParameterFile(scratch / "a.ini", read.names, read.sets);
    EXPECT_NE(BytesOf(scratch / "a.ini").find("\r\nMonthName=a,b,c,d,e,f,g,h,i,j,k,l\r\n"),
              std::string::npos);
}

TEST(ReadParameterFile, StopsAtAFullNameTable)
{
    NameTables names = SomeNames();
    while (names.Weekdays.Count() < 257)
        names.Weekdays.Add(*SplitNames<7>(std::to_string(names.Weekdays.Count()) + ",,,,,,"));
    ParameterSets sets = SomeDefaults();
    const ScratchFolder scratch;
    const auto reading = ReadParameterFile(
        scratch.Write("a.ini", "[Monthly Calendar]\nSheetName=a\nWeekdayName=256,,,,,,\n"
                               "WeekdayName=new,,,,,,\nSheetName=b\n"),
        names, sets);
    EXPECT_EQ(sets.Monthly.SheetName, "a");
    EXPECT_EQ(sets.Monthly.WeekdayName, 256) << "a known list is still found";
    EXPECT_EQ(names.Weekdays.Count(), 257);
    ASSERT_EQ(reading.monthlyProblems.size(), 1U);
    EXPECT_EQ(holidays::DescribeProblem(reading.monthlyProblems[0]),
              "Line 4: The names \"new,,,,,,\" are a new list, and there are already 257. Remove "
              "lists from the settings file. Nothing after this line is read.");
    EXPECT_EQ(reading.extras.unread, "[Monthly Calendar]\r\nWeekdayName=new,,,,,,\nSheetName=b\n");
}

TEST(ReadParameterFile, StopsAtARuleThatThrows)
{
    for (const char* rule : {"40000,EASTER,x", "0001,DAY,x", "99999999999,MON,x"}) {
        const Read read("[Monthly Calendar]\nHoliday1=0101,,a\nHoliday2=" + std::string(rule) +
                        "\nHoliday3=0102,,b\nSheetName=late\n");
        EXPECT_EQ(read.sets.Monthly.Holidays.Count(), 1) << rule;
        EXPECT_EQ(read.sets.Monthly.SheetName, "Sheet2") << rule;
    }
}

TEST(ReadParameterFile, IgnoresHolidaysBeyondTheCapacity)
{
    std::string text = "[Monthly Calendar]\n";
    for (int i = 1; i <= 1025; ++i)
        text += "Holiday=0101,," + std::to_string(i) + '\n';
    text += "Holiday=0101,,too much\nHoliday=0001,DAY,also no error\nSheetName=late\n";
    text += "[Yearly Calendar]\nHoliday=0101,,y\n";
    const Read read(text);
    EXPECT_EQ(read.sets.Monthly.Holidays.Count(), 1025);
    EXPECT_EQ(read.sets.Monthly.Holidays[1024].Name, "1025");
    EXPECT_EQ(read.sets.Monthly.SheetName, "late");
    EXPECT_EQ(read.sets.Yearly.Holidays.Count(), 1);
}

} // namespace
} // namespace orrery::model
