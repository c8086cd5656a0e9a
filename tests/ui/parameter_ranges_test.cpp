#include "ui/parameter_checks.h"

#include "ui/parameter_test.h"
#include "util/error.h"

#include <utility>

namespace orrery::ui {
namespace {

class RangeTest : public ParameterTest {
protected:
    void SetUp() override
    {
        Open();
        SetLayout(2);
    }
    void SetLayout(int index)
    {
        form().yearly.cboLayoutofMonths.selected = index;
        form().yearly.cboLayoutofMonths_Click();
    }
    /// The first problem of the monthly tab after typing one text; empty if there is none.
    std::string Monthly(TextBox& box, const std::string& text)
    {
        return Try(box, text, [this] { return CheckMonthly(form().monthly); });
    }
    std::string Yearly(TextBox& box, const std::string& text)
    {
        return Try(box, text, [this] { return CheckYearly(form().yearly); });
    }

private:
    template <typename Run>
    static std::string Try(TextBox& box, const std::string& text, const Run& run)
    {
        const std::string before = std::exchange(box.text, text);
        const auto problem = run();
        box.text = before;
        return problem ? problem->message : std::string();
    }
};

TEST_F(RangeTest, ASheetNameOfBlanksIsValid)
{
    EXPECT_EQ(Monthly(form().monthly.txtSheetName, " "), "");
    EXPECT_EQ(Yearly(form().yearly.txtSheetName, " "), "");
}

TEST_F(RangeTest, BlanksAroundACellDoNotCount)
{
    EXPECT_EQ(Monthly(form().monthly.txtFirstCellofDay, "  b5 "), "");
    EXPECT_EQ(Yearly(form().yearly.txtFirstCellofHoliday, " aa6\t"), "");
}

TEST_F(RangeTest, ACellNeedsBothNumbersInsideTheSheet)
{
    for (const char* text : {"", " ", "B", "5", "B0", "IW5", "B65537", "B 5", "5B", "$B$5", "ABC5",
                             "B99999999999999999999"}) {
        EXPECT_EQ(Monthly(form().monthly.txtFirstCellofDay, text),
                  "The first cell of day is not valid.")
            << text;
        EXPECT_EQ(Yearly(form().yearly.txtFirstCellofYear, text),
                  "The first cell of year is not valid.")
            << text;
    }
}

struct IntervalCase {
    const char* text;
    bool fits36;
    bool fits10000;
};

const std::vector<IntervalCase> kIntervals{
    {"1", true, true},      {"36", true, true},       {"37", false, true},
    {"10000", false, true}, {"10001", false, false},  {"0", false, false},
    {"-1", false, false},   {"", false, false},       {"abc", false, false},
    {"1 2", false, false},  {" 3 ", true, true},      {"2.5", true, true},
    {"0.5", false, false},  {"0.51", true, true},     {"36.5", true, true},
    {"36.6", false, true},  {"10000.5", false, true}, {"99999999999", false, false},
    {"1e1", true, true},    {"1e999", false, false},  {"0x10", false, false},
};

TEST_F(RangeTest, IntervalsOfDay)
{
    // Far from the last row, so that no interval leaves the sheet.
    form().monthly.txtFirstCellofDay.text = form().monthly.txtFirstCellofHoliday.text = "A1";
    form().monthly.txtFirstCellofWeekday.text = "A1";
    form().yearly.txtFirstCellofDay.text = form().yearly.txtFirstCellofHoliday.text = "A1";
    form().yearly.txtFirstCellofWeekday.text = "A1";
    for (const IntervalCase& each : kIntervals) {
        SCOPED_TRACE(each.text);
        const std::string col = each.fits36 ? "" : "The col interval of day should be 1 to 36.";
        const std::string row =
            each.fits10000 ? "" : "The row interval of day should be 1 to 10000.";
        EXPECT_EQ(Monthly(form().monthly.txtColInterval, each.text), col);
        EXPECT_EQ(Monthly(form().monthly.txtRowInterval, each.text), row);
        EXPECT_EQ(Yearly(form().yearly.txtColInterval, each.text), col);
        EXPECT_EQ(Yearly(form().yearly.txtRowInterval, each.text), row);
    }
}

TEST_F(RangeTest, IntervalsOfMonth)
{
    for (const IntervalCase& each : kIntervals) {
        SCOPED_TRACE(each.text);
        EXPECT_EQ(Yearly(form().yearly.txtColIntervalofMonth, each.text),
                  each.fits36 ? "" : "The col interval of month should be 1 to 36.");
        EXPECT_EQ(Yearly(form().yearly.txtRowIntervalofMonth, each.text),
                  each.fits36 ? "" : "The row interval of month should be 1 to 10000.");
    }
}

TEST_F(RangeTest, HalvesRoundToEven)
{
    form().monthly.txtColInterval.text = "2.5"; // 2: 244 + 12 = 256
    EXPECT_EQ(Monthly(form().monthly.txtFirstCellofDay, "IJ5"), "");
    EXPECT_NE(Monthly(form().monthly.txtFirstCellofDay, "IK5"), "");
    form().monthly.txtColInterval.text = "3.5"; // 4: 232 + 24 = 256
    EXPECT_EQ(Monthly(form().monthly.txtFirstCellofDay, "HX5"), "");
    EXPECT_NE(Monthly(form().monthly.txtFirstCellofDay, "HY5"), "");
}

TEST_F(RangeTest, MonthlyBlocksReachTheEdgeOfTheSheet)
{
    ParameterTab& tab = form().monthly;
    tab.txtColInterval.text = "5"; // 226 + 30 = 256
    for (TextBox* box :
         {&tab.txtFirstCellofDay, &tab.txtFirstCellofWeekday, &tab.txtFirstCellofHoliday}) {
        SCOPED_TRACE(box->name);
        EXPECT_EQ(Monthly(*box, "HR6"), "");
        EXPECT_NE(Monthly(*box, "HS6"), "");
    }
    EXPECT_EQ(Monthly(tab.txtFirstCellofDay, "B65511"), ""); // 65511 + 25 = 65536
    EXPECT_NE(Monthly(tab.txtFirstCellofDay, "B65512"), "");
    EXPECT_EQ(Monthly(tab.txtFirstCellofHoliday, "B65511"), "");
    EXPECT_NE(Monthly(tab.txtFirstCellofHoliday, "B65512"), "");
}

TEST_F(RangeTest, ColumnsAreCheckedBeforeRows)
{
    EXPECT_TRUE(
        Monthly(form().monthly.txtFirstCellofDay, "IV65536").starts_with("The max col of day"));
    EXPECT_TRUE(Monthly(form().monthly.txtFirstCellofHoliday, "IV65536")
                    .starts_with("The max col of holiday"));
    for (TextBox* box : {&form().yearly.txtFirstCellofDay, &form().yearly.txtFirstCellofWeekday,
                         &form().yearly.txtFirstCellofMonth, &form().yearly.txtFirstCellofHoliday})
        EXPECT_TRUE(Yearly(*box, "IV65536").starts_with("The max col of ")) << box->name;
}

TEST_F(RangeTest, MonthlyNamesHaveFewerLimits)
{
    EXPECT_EQ(Monthly(form().monthly.txtFirstCellofWeekday, "B65536"), "") << "no check of rows";
    EXPECT_EQ(Monthly(form().monthly.txtFirstCellofMonth, "IV65536"), "");
    EXPECT_EQ(Monthly(form().monthly.txtFirstCellofYear, "IV65536"), "");
    EXPECT_EQ(Yearly(form().yearly.txtFirstCellofYear, "IV65536"), "");
}

// ---- layouts of months

struct LayoutCase {
    const char* name;
    int index;
    int columnSteps; ///< months side by side, minus one
    int rowSteps;    ///< rows of months, minus one
};

class LayoutTest : public RangeTest, public testing::WithParamInterface<LayoutCase> {
protected:
    static std::string Cell(int row, int column) { return model::FormatCellRef({row, column}); }
    /// The last first cell that passes for a block that extends by `columns` and `rows`.
    void ExpectLast(TextBox& box, int columns, int rows)
    {
        SCOPED_TRACE(box.name);
        const int column = 256 - columns;
        const int row = 65536 - rows;
        EXPECT_EQ(Yearly(box, Cell(row, column)), "");
        EXPECT_NE(Yearly(box, Cell(row, column + 1)), "");
        EXPECT_NE(Yearly(box, Cell(row + 1, column)), "");
    }
};

TEST_P(LayoutTest, MonthsReachTheEdgeOfTheSheet)
{
    SetLayout(GetParam().index);
    YearlyTab& tab = form().yearly;
    tab.txtColInterval.text = "2";
    tab.txtRowInterval.text = "3";
    tab.txtColIntervalofMonth.text = "20";
    tab.txtRowIntervalofMonth.text = "30";
    const int columns = 20 * GetParam().columnSteps;
    const int rows = 30 * GetParam().rowSteps;
    ExpectLast(tab.txtFirstCellofDay, columns + 12, rows + 15);
    ExpectLast(tab.txtFirstCellofWeekday, columns + 12, rows);
    ExpectLast(tab.txtFirstCellofHoliday, columns + 12, rows + 15);
    ExpectLast(tab.txtFirstCellofMonth, columns, rows);
}

INSTANTIATE_TEST_SUITE_P(Layouts, LayoutTest,
                         testing::Values(LayoutCase{"1x12", 0, 0, 11}, LayoutCase{"2x6", 1, 1, 5},
                                         LayoutCase{"3x4", 2, 2, 3}, LayoutCase{"4x3", 3, 3, 2},
                                         LayoutCase{"6x2", 4, 5, 1}, LayoutCase{"12x1", 5, 11, 0}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(RangeTest, WideMonthsLeaveTheSheet)
{
    YearlyTab& tab = form().yearly;
    tab.txtFirstCellofDay.text = "A5";
    tab.txtColInterval.text = "36"; // 1 + 216 + 2 x 20 = 257
    EXPECT_EQ(Yearly(tab.txtColIntervalofMonth, "19"),
              "The max col of weekday is greater than 256,\r\nplease change the first cell of "
              "weekday, col interval of day or col interval of month.");
    EXPECT_EQ(Yearly(tab.txtColIntervalofMonth, "20"),
              "The max col of day is greater than 256,\r\nplease change the first cell of day, col "
              "interval of day or col interval of month.");
    EXPECT_EQ(Yearly(tab.txtColIntervalofMonth, "100"),
              "The col interval of month should be 1 to 36.")
        << "an interval is checked before the sums";
}

TEST_F(RangeTest, OneColumnOfMonthsHasNoIntervalBetweenColumns)
{
    SetLayout(0);
    for (const char* text : {"0", "37", "-5", "2147483647", "0.4"})
        EXPECT_EQ(Yearly(form().yearly.txtColIntervalofMonth, text), "") << text;
}

TEST_F(RangeTest, OneRowOfMonthsHasNoIntervalBetweenRows)
{
    SetLayout(5);
    for (const char* text : {"0", "37", "-5", "", "abc", "99999999999"})
        EXPECT_EQ(Yearly(form().yearly.txtRowIntervalofMonth, text), "") << text;
}

TEST_F(RangeTest, AnUncheckedColIntervalOfMonthIsStillRead)
{
    SetLayout(0);
    try {
        Yearly(form().yearly.txtColIntervalofMonth, "abc");
        FAIL() << "no exception";
    }
    catch (const Error& error) {
        EXPECT_EQ(error.Kind(), util::ErrorKind::NotNumeric);
        EXPECT_EQ(error.Subject(), "abc");
    }
    form().yearly.txtColIntervalofMonth.text = "8";
    EXPECT_THROW(Yearly(form().yearly.txtColIntervalofMonth, "99999999999"), util::OverflowError);
}

TEST_F(RangeTest, TheChecksBeforeASumComeFirst)
{
    SetLayout(0);
    form().yearly.txtColIntervalofMonth.text = "abc";
    EXPECT_EQ(Yearly(form().yearly.txtRowInterval, "0"),
              "The row interval of day should be 1 to 10000.");
}

} // namespace
} // namespace orrery::ui
