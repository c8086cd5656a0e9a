#include "generate/month_block.h"

#include "book/fake_spreadsheet.h"
#include "generate/run_support.h"

#include <gtest/gtest.h>

#include <limits>

using namespace orrery;
using book::CellValue;
using holidays::MakeDate;
using std::int16_t;

namespace {

using Place = std::pair<std::int32_t, std::int32_t>;

class FillMonthTest : public testing::Test {
protected:
    FillMonthTest()
        : names_(fake::TestNames()), context_{names_, observer_}, workbook_(log_, {{"Sheet", {}}}),
          set_(fake::DaysOnly())
    {
        sheet_ = workbook_.FindWorksheet("Sheet");
        log_.Clear();
    }

    void Fill(int year, int month)
    {
        generate::FillMonth(*sheet_, static_cast<int16_t>(year), static_cast<int16_t>(month), set_,
                            context_);
    }

    /// Fills the shared list with sorted holidays.
    void SetHolidays(const std::vector<std::pair<holidays::Date, std::string>>& entries)
    {
        set_.OutHoliday = true;
        auto& list = context_.holidayDates;
        list.Count = static_cast<int16_t>(entries.size());
        list.Cursor = 0;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            list.Dates[i] = entries[i].first;
            list.Names[i] = entries[i].second;
        }
    }

    const fake::Cells& Cells() const { return workbook_.CellsOf("Sheet"); }

    /// The cell's value; an empty text if nothing was written.
    CellValue At(std::int32_t row, std::int32_t column) const
    {
        const auto found = Cells().find({row, column});
        return found == Cells().end() ? CellValue("") : found->second;
    }

    fake::CallLog log_;
    fake::ListObserver observer_;
    model::NameTables names_;
    generate::Context context_;
    fake::Workbook workbook_;
    book::Worksheet* sheet_ = nullptr;
    model::MonthlyParameters set_;
};

TEST_F(FillMonthTest, WritesInTheFixedOrder)
{
    set_.OutYear = set_.OutMonth = set_.OutWeekday = true;
    SetHolidays({{MakeDate(2024, 3, 1), "One"}, {MakeDate(2024, 3, 2), "Two"}});
    Fill(2024, 3);
    const std::vector<std::string> head(log_.Calls().begin(), log_.Calls().begin() + 14);
    EXPECT_EQ(head,
              (std::vector<std::string>{"Sheet(1,2) = 2024", "Sheet(3,2) = \"March\"",
                                        "Sheet(4,2) = \"Sunday\"", "Sheet(4,3) = \"Monday\"",
                                        "Sheet(4,4) = \"Tuesday\"", "Sheet(4,5) = \"Wednesday\"",
                                        "Sheet(4,6) = \"Thursday\"", "Sheet(4,7) = \"Friday\"",
                                        "Sheet(4,8) = \"Saturday\"", "Sheet(5,7) = 1 Value",
                                        "Sheet(6,7) = \"One\" Value", "Sheet(5,8) = 2 Value",
                                        "Sheet(6,8) = \"Two\" Value", "Sheet(7,2) = 3 Value"}));
    EXPECT_EQ(log_.Calls().size(), 9U + 31U + 2U);
    EXPECT_TRUE(observer_.reports.empty());
}

TEST_F(FillMonthTest, WritesOnlyTheDaysWhenTheRestIsSwitchedOff)
{
    Fill(2024, 3);
    EXPECT_EQ(Cells().size(), 31U);
    for (const auto& [place, value] : Cells())
        EXPECT_TRUE(std::holds_alternative<int16_t>(value));
}

TEST_F(FillMonthTest, UsesTheSelectedLists)
{
    set_.OutMonth = set_.OutWeekday = true;
    set_.MonthName = 1;
    set_.WeekdayName = 1;
    Fill(2024, 12);
    EXPECT_EQ(At(3, 2), CellValue("M12"));
    EXPECT_EQ(At(4, 2), CellValue("W0"));
    EXPECT_EQ(At(4, 8), CellValue("W6"));
}

TEST_F(FillMonthTest, PutsSundayLastWhenWeeksBeginOnMonday)
{
    set_.OutWeekday = true;
    set_.WeekdayName = 1;
    set_.FirstDayOfWeek = 1;
    set_.ColIntervalOfDay = 3;
    Fill(2024, 3);
    std::vector<CellValue> names;
    for (int column = 2; column <= 20; column += 3)
        names.push_back(At(4, column));
    EXPECT_EQ(names, (std::vector<CellValue>{"W1", "W2", "W3", "W4", "W5", "W6", "W0"}));
}

struct GridCase {
    const char* name;
    int year;
    int month;
    int firstDayOfWeek;
    int day;
    int week;
    int column;
};

class GridTest : public FillMonthTest, public testing::WithParamInterface<GridCase> {};

TEST_P(GridTest, PlacesTheDay)
{
    const GridCase& row = GetParam();
    set_.FirstDayOfWeek = static_cast<int16_t>(row.firstDayOfWeek);
    set_.RowIntervalOfDay = 10;
    set_.ColIntervalOfDay = 3;
    Fill(row.year, row.month);
    EXPECT_EQ(At(5 + row.week * 10, 2 + row.column * 3), CellValue(static_cast<int16_t>(row.day)));
}

INSTANTIATE_TEST_SUITE_P(
    Months, GridTest,
    testing::Values(GridCase{"FebruaryThatBeginsOnMonday", 2021, 2, 0, 1, 0, 1},
                    GridCase{"LastDayOfThatFebruary", 2021, 2, 0, 28, 4, 0},
                    GridCase{"SundayAloneInTheFirstWeek", 2023, 1, 1, 1, 0, 6},
                    GridCase{"MondayAfterThatSunday", 2023, 1, 1, 2, 1, 0},
                    GridCase{"SixWeeksFromMonday", 2023, 1, 1, 31, 5, 1},
                    GridCase{"MondayFirstOfTheMonth", 2024, 1, 1, 1, 0, 0},
                    GridCase{"FirstSundayOfThatMonth", 2024, 1, 1, 7, 0, 6},
                    GridCase{"SixWeeksFromSunday", 2024, 6, 0, 30, 5, 0},
                    GridCase{"AnyOtherFirstDayCountsAsMonday", 2023, 1, 5, 2, 1, 0}),
    [](const auto& each) { return std::string(each.param.name); });

struct LengthCase {
    int year;
    int month;
    std::size_t days;
};

class MonthLengthTest : public FillMonthTest, public testing::WithParamInterface<LengthCase> {};

TEST_P(MonthLengthTest, WritesEveryDayOnce)
{
    Fill(GetParam().year, GetParam().month);
    EXPECT_EQ(Cells().size(), GetParam().days);
    EXPECT_EQ(log_.Calls().size(), GetParam().days);
}

INSTANTIATE_TEST_SUITE_P(Lengths, MonthLengthTest,
                         testing::Values(LengthCase{2000, 2, 29}, LengthCase{1900, 2, 28},
                                         LengthCase{2024, 2, 29}, LengthCase{2023, 2, 28},
                                         LengthCase{2024, 1, 31}, LengthCase{2024, 4, 30}),
                         [](const auto& each) {
                             return std::to_string(each.param.year) + "_" +
                                    std::to_string(each.param.month);
                         });

/// Walks the calendar day by day from a known Monday.
TEST_F(FillMonthTest, AgreesWithADayByDayCalendar)
{
    int weekday = 1; // Monday, 1 January 1900
    for (int year = 1900; year <= 2100; ++year) {
        const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
        for (int month = 1; month <= 12; ++month) {
            const int thirty = month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
            const int days = month == 2 ? (leap ? 29 : 28) : thirty;
            std::map<Place, int> expected[2];
            int week[2] = {0, 0};
            for (int day = 1; day <= days; ++day) {
                for (int mondayFirst = 0; mondayFirst < 2; ++mondayFirst) {
                    const int column = (weekday + (mondayFirst ? 6 : 0)) % 7;
                    expected[mondayFirst][{5 + week[mondayFirst] * 2, 2 + column}] = day;
                    week[mondayFirst] += column == 6 ? 1 : 0;
                }
                weekday = (weekday + 1) % 7;
            }
            for (int mondayFirst = 0; mondayFirst < 2; ++mondayFirst) {
                fake::Workbook fresh(log_, {{"Sheet", {}}});
                set_.FirstDayOfWeek = static_cast<int16_t>(mondayFirst);
                generate::FillMonth(*fresh.FindWorksheet("Sheet"), static_cast<int16_t>(year),
                                    static_cast<int16_t>(month), set_, context_);
                std::map<Place, int> written;
                for (const auto& [place, value] : fresh.CellsOf("Sheet"))
                    written[place] = std::get<int16_t>(value);
                ASSERT_EQ(written, expected[mondayFirst]) << year << '-' << month;
            }
        }
        log_.Clear();
    }
}

TEST_F(FillMonthTest, KeepsCellsOutsideTheMonth)
{
    fake::Workbook filled(log_, {{"Sheet", {{{5, 2}, "before"}, {{15, 8}, "after"}}}});
    generate::FillMonth(*filled.FindWorksheet("Sheet"), 2024, 3, set_, context_);
    EXPECT_EQ(filled.CellsOf("Sheet").at({5, 2}), CellValue("before"));
    EXPECT_EQ(filled.CellsOf("Sheet").at({15, 8}), CellValue("after"));
}

struct PolicyCase {
    const char* name;
    int policy;
    std::map<Place, std::string> expected;
};

class MultiHolidaysTest : public FillMonthTest, public testing::WithParamInterface<PolicyCase> {};

TEST_P(MultiHolidaysTest, PlacesThreeHolidaysOfOneDay)
{
    const auto day = MakeDate(2024, 3, 8); // Friday of the second week
    SetHolidays({{day, "A"}, {day, "B"}, {day, "C"}, {MakeDate(2024, 3, 31), "Last"}});
    set_.MultiHolidays = static_cast<int16_t>(GetParam().policy);
    set_.FirstCellOfHoliday = {50, 20};
    Fill(2024, 3);
    std::map<Place, std::string> written;
    for (const auto& [place, value] : Cells()) {
        if (place.first >= 50)
            written[place] = std::get<std::string>(value);
    }
    EXPECT_EQ(written, GetParam().expected);
    EXPECT_EQ(context_.holidayDates.Cursor, 4);
}

INSTANTIATE_TEST_SUITE_P(
    Policies, MultiHolidaysTest,
    testing::Values(
        PolicyCase{"OverwriteKeepsTheLast", 0, {{{52, 25}, "C"}, {{60, 20}, "Last"}}},
        PolicyCase{"NextRowGoesDown",
                   1,
                   {{{52, 25}, "A"}, {{53, 25}, "B"}, {{54, 25}, "C"}, {{60, 20}, "Last"}}},
        PolicyCase{"NextColumnGoesRight",
                   2,
                   {{{52, 25}, "A"}, {{52, 26}, "B"}, {{52, 27}, "C"}, {{60, 20}, "Last"}}},
        PolicyCase{"AnyOtherWritesNoneButReadsOn", 3, {}}, PolicyCase{"ANegativeOneToo", -1, {}}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(FillMonthTest, OverwritingWritesEveryHolidayInListOrder)
{
    const auto day = MakeDate(2024, 3, 8);
    SetHolidays({{day, "A"}, {day, "B"}});
    Fill(2024, 3);
    EXPECT_EQ(log_.CallsWith("(8,7)"),
              (std::vector<std::string>{"Sheet(8,7) = \"A\" Value", "Sheet(8,7) = \"B\" Value"}));
}

TEST_F(FillMonthTest, SkipsEarlierEntriesForGood)
{
    SetHolidays({{MakeDate(2023, 12, 1), "Year before"},
                 {MakeDate(2024, 1, 1), "Month before"},
                 {MakeDate(2024, 3, 5), "Here"},
                 {MakeDate(2024, 2, 1), "Out of order"},
                 {MakeDate(2024, 3, 6), "Here too"}});
    Fill(2024, 3);
    EXPECT_EQ(log_.CallsWith("\"").size(), 2U);
    EXPECT_EQ(At(8, 4), CellValue("Here"));
    EXPECT_EQ(At(8, 5), CellValue("Here too"));
    EXPECT_EQ(context_.holidayDates.Cursor, 5);
}

TEST_F(FillMonthTest, LeavesLaterEntriesForTheNextMonth)
{
    SetHolidays({{MakeDate(2024, 3, 5), "March"}, {MakeDate(2024, 4, 1), "April"}});
    Fill(2024, 3);
    EXPECT_EQ(context_.holidayDates.Cursor, 1);
    Fill(2024, 4);
    EXPECT_EQ(context_.holidayDates.Cursor, 2);
    EXPECT_EQ(log_.CallsWith("\"").size(), 2U);
}

TEST_F(FillMonthTest, TouchesNoHolidayCellForAnEmptyListOrWhenSwitchedOff)
{
    SetHolidays({});
    Fill(2024, 3);
    EXPECT_EQ(Cells().size(), 31U);
    SetHolidays({{MakeDate(2024, 3, 5), "Off"}});
    set_.OutHoliday = false;
    Fill(2024, 3);
    EXPECT_EQ(Cells().size(), 31U);
    EXPECT_EQ(context_.holidayDates.Cursor, 0);
}

TEST_F(FillMonthTest, KeepsALeadingBlankOfAHolidayName)
{
    SetHolidays({{MakeDate(2024, 3, 5), " Spring Day"}});
    Fill(2024, 3);
    EXPECT_EQ(At(8, 4), CellValue(" Spring Day"));
}

TEST_F(FillMonthTest, ReportsAnErrorAndAbandonsTheMonth)
{
    log_.FailAt("Sheet(5,8) = 2 Value", "The cell is locked.");
    Fill(2024, 3);
    EXPECT_EQ(observer_.reports,
              (std::vector<std::string>{"Error in filling data(2024-3).\r\nThe cell is locked."}));
    EXPECT_EQ(Cells().size(), 1U); // day 1 stays
}

TEST_F(FillMonthTest, KeepsTheCursorAtTheError)
{
    SetHolidays(
        {{MakeDate(2024, 3, 1), "A"}, {MakeDate(2024, 3, 2), "B"}, {MakeDate(2024, 4, 1), "C"}});
    log_.FailAt("Sheet(6,8) = \"B\" Value", "no");
    Fill(2024, 3);
    EXPECT_EQ(context_.holidayDates.Cursor, 1);
    EXPECT_EQ(observer_.reports.size(), 1U);
    Fill(2024, 4); // continues there: B is skipped, C is written
    EXPECT_EQ(context_.holidayDates.Cursor, 3);
    EXPECT_EQ(log_.CallsWith("\"C\"").size(), 1U);
}

TEST_F(FillMonthTest, RunsOutOfRangeOnceAllSlotsAreUsedUp)
{
    std::vector<std::pair<holidays::Date, std::string>> entries(1024,
                                                                {MakeDate(2024, 3, 1), "first"});
    entries.emplace_back(MakeDate(2024, 3, 4), "last");
    SetHolidays(entries);
    Fill(2024, 3);
    ASSERT_EQ(observer_.reports.size(), 1U);
    EXPECT_TRUE(observer_.reports[0].starts_with("Error in filling data(2024-3).\r\n"));
    EXPECT_EQ(context_.holidayDates.Cursor, 1025);
    EXPECT_EQ(At(7, 4), CellValue(int16_t{5})); // the day after the last holiday
    EXPECT_EQ(At(7, 5), CellValue(""));
    Fill(2024, 4);
    EXPECT_EQ(observer_.reports.size(), 2U);
}

TEST_F(FillMonthTest, WritesAllSlotsWhenTheLastHolidayIsOnTheLastDay)
{
    std::vector<std::pair<holidays::Date, std::string>> entries(1025,
                                                                {MakeDate(2024, 12, 31), "last"});
    SetHolidays(entries);
    Fill(2024, 12);
    EXPECT_TRUE(observer_.reports.empty());
    EXPECT_EQ(log_.CallsWith("\"last\"").size(), 1025U);
}

struct FailureCase {
    const char* name;
    void (*change)(model::MonthlyParameters&);
    int month;
    std::size_t callsBefore; ///< calls before the failure
};

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();

class FillMonthFailureTest : public FillMonthTest,
                             public testing::WithParamInterface<FailureCase> {};

TEST_P(FillMonthFailureTest, EndsTheMonthWithAReport)
{
    GetParam().change(set_);
    Fill(2024, GetParam().month);
    ASSERT_EQ(observer_.reports.size(), 1U);
    const std::string head =
        "Error in filling data(2024-" + std::to_string(GetParam().month) + ").\r\n";
    EXPECT_TRUE(observer_.reports[0].starts_with(head)) << observer_.reports[0];
    EXPECT_GT(observer_.reports[0].size(), head.size());
    EXPECT_EQ(log_.Calls().size(), GetParam().callsBefore);
}

INSTANTIATE_TEST_SUITE_P(
    Failures, FillMonthFailureTest,
    testing::Values(
        FailureCase{"WeekdayListBeyondTheTable",
                    [](auto& set) { set.OutWeekday = true, set.WeekdayName = 257; }, 3, 0},
        FailureCase{"MonthListBeyondTheTable",
                    [](auto& set) { set.OutMonth = true, set.MonthName = 257; }, 3, 0},
        FailureCase{"NegativeMonthList", [](auto& set) { set.OutMonth = true, set.MonthName = -1; },
                    3, 0},
        FailureCase{"MonthThirteen", [](auto& set) { set.OutMonth = true; }, 13, 0},
        FailureCase{"MonthZeroOfTheGrid", [](auto&) {}, 0, 0},
        FailureCase{
            "RowBeyondThirtyTwoBits", // in the second week; Friday and Saturday were written
            [](auto& set) { set.RowIntervalOfDay = kLargest; }, 3, 2},
        FailureCase{"ColumnBeyondThirtyTwoBits", // five times the interval for Friday
                    [](auto& set) { set.ColIntervalOfDay = kLargest / 2; }, 3, 0},
        FailureCase{"CellOutsideTheSheet",
                    [](auto& set) {
                        set.FirstCellOfDay = {0, 1};
                    },
                    3, 1},
        FailureCase{"ColumnOutsideTheSheet",
                    [](auto& set) {
                        set.FirstCellOfDay = {1, 16384};
                    },
                    3, 1}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(FillMonthTest, ComputesAHolidayCellOnlyForAHoliday)
{
    set_.OutHoliday = true;
    set_.FirstCellOfHoliday = {kLargest, kLargest};
    SetHolidays({{MakeDate(2024, 4, 1), "April"}});
    Fill(2024, 3);
    EXPECT_TRUE(observer_.reports.empty());
    Fill(2024, 4);
    EXPECT_EQ(observer_.reports.size(), 1U);
}

} // namespace
