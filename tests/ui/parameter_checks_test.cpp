#include "ui/parameter_checks.h"

#include "ui/parameter_test.h"
#include <algorithm>

namespace orrery::ui {
namespace {

/// What the user changes in a valid dialog, and what OK then reports.
struct CheckCase {
    const char* name;
    void (*edit)(ParameterForm& form);
    const char* message;
    const char* focus;
};

const std::vector<CheckCase> kMonthlyChecks{
    {"1SheetName", [](ParameterForm& form) { form.monthly.txtSheetName.Type(""); },
     "Please input sheet name.", "txtMSheetName"},
    {"2CellOfDay", [](ParameterForm& form) { form.monthly.txtFirstCellofDay.Type("B"); },
     "The first cell of day is not valid.", "txtMFirstCellofDay"},
    {"3ColInterval", [](ParameterForm& form) { form.monthly.txtColInterval.Type("37"); },
     "The col interval of day should be 1 to 36.", "txtMColInterval"},
    {"4RowInterval", [](ParameterForm& form) { form.monthly.txtRowInterval.Type("10001"); },
     "The row interval of day should be 1 to 10000.", "txtMRowInterval"},
    {"5ColumnsOfDay", [](ParameterForm& form) { form.monthly.txtFirstCellofDay.Type("IQ5"); },
     "The max col of day is greater than 256,\r\n"
     "please change the first cell of day or col interval of day.",
     "txtMFirstCellofDay"},
    {"6RowsOfDay", [](ParameterForm& form) { form.monthly.txtFirstCellofDay.Type("B65512"); },
     "The max row of day is greater than 65536,\r\n"
     "please change the first cell of day or row interval of day.",
     "txtMFirstCellofDay"},
    {"7CellOfWeekday", [](ParameterForm& form) { form.monthly.txtFirstCellofWeekday.Type("4"); },
     "The first cell of weekday is not valid.", "txtMFirstCellofWeekday"},
    {"8Weekdays", [](ParameterForm& form) { form.monthly.cboWeekdayName.Select(-1); },
     "Please select the name of weekdays.", "cboMWeekdayName"},
    {"9ColumnsOfWeekday",
     [](ParameterForm& form) { form.monthly.txtFirstCellofWeekday.Type("IQ4"); },
     "The max col of weekday is greater than 256,\r\n"
     "please change the first cell of weekday or col interval of day.",
     "txtMFirstCellofWeekday"},
    {"10CellOfMonth", [](ParameterForm& form) { form.monthly.txtFirstCellofMonth.Type("$B$3"); },
     "The first cell of month is not valid.", "txtMFirstCellofMonth"},
    {"11Months", [](ParameterForm& form) { form.monthly.cboMonthName.Select(-1); },
     "Please select the name of months.", "cboMMonthName"},
    {"12CellOfYear", [](ParameterForm& form) { form.monthly.txtFirstCellofYear.Type(""); },
     "The first cell of year is not valid.", "txtMFirstCellofYear"},
    {"13CellOfHoliday", [](ParameterForm& form) { form.monthly.txtFirstCellofHoliday.Type("B0"); },
     "The first cell of holiday is not valid.", "txtMFirstCellofHoliday"},
    // Only these two move the focus to a cell other than the wrong one.
    {"14ColumnsOfHoliday",
     [](ParameterForm& form) { form.monthly.txtFirstCellofHoliday.Type("IQ6"); },
     "The max col of holiday is greater than 256,\r\n"
     "please change the first cell of holiday or col interval of day.",
     "txtMFirstCellofDay"},
    {"15RowsOfHoliday",
     [](ParameterForm& form) { form.monthly.txtFirstCellofHoliday.Type("B65512"); },
     "The max row of holiday is greater than 65536,\r\n"
     "please change the first cell of holiday or row interval of day.",
     "txtMFirstCellofDay"},
};

const std::vector<CheckCase> kYearlyChecks{
    {"1SheetName", [](ParameterForm& form) { form.yearly.txtSheetName.Type(""); },
     "Please input sheet name.", "txtYSheetName"},
    {"2CellOfDay", [](ParameterForm& form) { form.yearly.txtFirstCellofDay.Type("5"); },
     "The first cell of day is not valid.", "txtYFirstCellofDay"},
    {"3Layout", [](ParameterForm& form) { form.yearly.cboLayoutofMonths.Select(-1); },
     "Please select the layout of months.", "cboLayoutofMonths"},
    {"4ColIntervalOfMonth",
     [](ParameterForm& form) { form.yearly.txtColIntervalofMonth.Type("37"); },
     "The col interval of month should be 1 to 36.", "txtYColIntervalofMonth"},
    {"5RowIntervalOfMonth",
     [](ParameterForm& form) { form.yearly.txtRowIntervalofMonth.Type("37"); },
     "The row interval of month should be 1 to 10000.", "txtYRowIntervalofMonth"},
    {"6ColInterval", [](ParameterForm& form) { form.yearly.txtColInterval.Type("0"); },
     "The col interval of day should be 1 to 36.", "txtYColInterval"},
    {"7RowInterval", [](ParameterForm& form) { form.yearly.txtRowInterval.Type("0"); },
     "The row interval of day should be 1 to 10000.", "txtYRowInterval"},
    {"8ColumnsOfDay", [](ParameterForm& form) { form.yearly.txtFirstCellofDay.Type("IA5"); },
     "The max col of day is greater than 256,\r\n"
     "please change the first cell of day, col interval of day or col interval of month.",
     "txtYFirstCellofDay"},
    {"9RowsOfDay", [](ParameterForm& form) { form.yearly.txtFirstCellofDay.Type("B65505"); },
     "The max row of day is greater than 65536,\r\n"
     "please change the first cell of day, row interval of day or row interval of month.",
     "txtYFirstCellofDay"},
    {"10CellOfWeekday", [](ParameterForm& form) { form.yearly.txtFirstCellofWeekday.Type("B-4"); },
     "The first cell of weekday is not valid.", "txtYFirstCellofWeekday"},
    {"11Weekdays", [](ParameterForm& form) { form.yearly.cboWeekdayName.Select(-1); },
     "Please select the name of weekdays.", "cboYWeekdayName"},
    {"12ColumnsOfWeekday",
     [](ParameterForm& form) { form.yearly.txtFirstCellofWeekday.Type("IA4"); },
     "The max col of weekday is greater than 256,\r\n"
     "please change the first cell of weekday, col interval of day or col interval of month.",
     "txtYFirstCellofWeekday"},
    {"13RowsOfWeekday",
     [](ParameterForm& form) { form.yearly.txtFirstCellofWeekday.Type("B65510"); },
     "The max row of weekday is greater than 65536,\r\n"
     "please change the first cell of weekday or row interval of month.",
     "txtYFirstCellofWeekday"},
    {"14CellOfMonth", [](ParameterForm& form) { form.yearly.txtFirstCellofMonth.Type("IW3"); },
     "The first cell of month is not valid.", "txtYFirstCellofMonth"},
    {"15Months", [](ParameterForm& form) { form.yearly.cboMonthName.Select(-1); },
     "Please select the name of months.", "cboYMonthName"},
    {"16ColumnsOfMonth", [](ParameterForm& form) { form.yearly.txtFirstCellofMonth.Type("IG3"); },
     "The max col of month is greater than 256,\r\n"
     "please change the first cell of month or col interval of month.",
     "txtYFirstCellofMonth"},
    {"17RowsOfMonth", [](ParameterForm& form) { form.yearly.txtFirstCellofMonth.Type("B65510"); },
     "The max row of month is greater than 65536,\r\n"
     "please change the first cell of month or row interval of month.",
     "txtYFirstCellofMonth"},
    {"18CellOfYear", [](ParameterForm& form) { form.yearly.txtFirstCellofYear.Type("1B"); },
     "The first cell of year is not valid.", "txtYFirstCellofYear"},
    {"19CellOfHoliday", [](ParameterForm& form) { form.yearly.txtFirstCellofHoliday.Type("ABC6"); },
     "The first cell of holiday is not valid.", "txtYFirstCellofHoliday"},
    {"20ColumnsOfHoliday",
     [](ParameterForm& form) { form.yearly.txtFirstCellofHoliday.Type("IA6"); },
     "The max col of holiday is greater than 256,\r\n"
     "please change the first cell of holiday, col interval of day or col interval of month.",
     "txtYFirstCellofHoliday"},
    {"21RowsOfHoliday",
     [](ParameterForm& form) { form.yearly.txtFirstCellofHoliday.Type("B65505"); },
     "The max row of holiday is greater than 65536,\r\n"
     "please change the first cell of holiday, row interval of day or row interval of month.",
     "txtYFirstCellofHoliday"},
};

class CheckTest : public ParameterTest, public testing::WithParamInterface<CheckCase> {
protected:
    /// Expects exactly one message, its tab shown, the focus on its control and the dialog still
    /// open.
    void ExpectProblem(const CheckCase& expected, int tab)
    {
        EXPECT_EQ(desktop.TakeCalls(), std::vector{std::string("Report: ") + expected.message});
        EXPECT_EQ(form().tabOrrery.selected, tab);
        ASSERT_NE(form().focus, nullptr);
        EXPECT_EQ(form().focus->name, expected.focus);
        EXPECT_TRUE(form().isOpen);
    }
};

std::string NameOf(const testing::TestParamInfo<CheckCase>& info)
{
    return std::string("Step") + info.param.name;
}

class MonthlyCheckTest : public CheckTest {};

TEST_P(MonthlyCheckTest, IsReportedOnOk)
{
    const auto before = working.sets;
    GetParam().edit(Open());
    form().tabOrrery_Click(2);
    form().cmdOK_Click();
    ExpectProblem(GetParam(), 1);
    EXPECT_EQ(working.sets.Monthly, before.Monthly);
    EXPECT_FALSE(working.monthlyChanged);
}

TEST_P(MonthlyCheckTest, PrecedesTheLaterOnes)
{
    for (std::size_t later = kMonthlyChecks.size(); later-- > 0;) {
        if (kMonthlyChecks[later].name == std::string(GetParam().name))
            break;
        SCOPED_TRACE(kMonthlyChecks[later].name);
        kMonthlyChecks[later].edit(Open());
        GetParam().edit(form());
        EXPECT_FALSE(form().ValidateMParameters());
        ExpectProblem(GetParam(), 1);
    }
}

TEST_P(MonthlyCheckTest, IsSkippedWithoutTheCalendar)
{
    GetParam().edit(Open());
    form().monthly.chkOutCalendar.Toggle();
    form().cmdOK_Click();
    EXPECT_TRUE(desktop.calls.empty());
    EXPECT_FALSE(form().isOpen);
}

INSTANTIATE_TEST_SUITE_P(Steps, MonthlyCheckTest, testing::ValuesIn(kMonthlyChecks), NameOf);

class YearlyCheckTest : public CheckTest {};

TEST_P(YearlyCheckTest, IsReportedOnOk)
{
    const auto before = working.sets;
    GetParam().edit(Open());
    form().tabOrrery_Click(1);
    form().cmdOK_Click();
    ExpectProblem(GetParam(), 2);
    EXPECT_EQ(working.sets.Yearly, before.Yearly);
    EXPECT_FALSE(working.yearlyChanged);
}

TEST_P(YearlyCheckTest, PrecedesTheLaterOnes)
{
    for (std::size_t later = kYearlyChecks.size(); later-- > 0;) {
        if (kYearlyChecks[later].name == std::string(GetParam().name))
            break;
        SCOPED_TRACE(kYearlyChecks[later].name);
        kYearlyChecks[later].edit(Open());
        GetParam().edit(form());
        EXPECT_FALSE(form().ValidateYParameters());
        ExpectProblem(GetParam(), 2);
    }
}

TEST_P(YearlyCheckTest, IsSkippedWithoutTheCalendar)
{
    GetParam().edit(Open());
    form().yearly.chkOutCalendar.Toggle();
    form().cmdOK_Click();
    EXPECT_TRUE(desktop.calls.empty());
    EXPECT_FALSE(form().isOpen);
}

INSTANTIATE_TEST_SUITE_P(Steps, YearlyCheckTest, testing::ValuesIn(kYearlyChecks), NameOf);

// ---- checks of one text box

/// A text with which two checks of its box fail, and the check that has to report it. The pairs
/// above cannot show that: the second edit of a box replaces the first.
struct OneBoxCase {
    bool isYearly;
    TextBox ParameterTab::*box;
    const char* text;
    std::string check;
};

const std::vector<OneBoxCase> kOneBoxCases{
    // no row, or no column, although the other one is the last
    {false, &ParameterTab::txtFirstCellofDay, "IV0", "2CellOfDay"},
    {false, &ParameterTab::txtFirstCellofDay, "65536", "2CellOfDay"},
    {false, &ParameterTab::txtFirstCellofWeekday, "IV0", "7CellOfWeekday"},
    {false, &ParameterTab::txtFirstCellofHoliday, "IV0", "13CellOfHoliday"},
    {false, &ParameterTab::txtFirstCellofHoliday, "65536", "13CellOfHoliday"},
    {true, &ParameterTab::txtFirstCellofDay, "IV0", "2CellOfDay"},
    {true, &ParameterTab::txtFirstCellofDay, "65536", "2CellOfDay"},
    {true, &ParameterTab::txtFirstCellofWeekday, "IV0", "10CellOfWeekday"},
    {true, &ParameterTab::txtFirstCellofWeekday, "65536", "10CellOfWeekday"},
    {true, &ParameterTab::txtFirstCellofMonth, "IV0", "14CellOfMonth"},
    {true, &ParameterTab::txtFirstCellofMonth, "65536", "14CellOfMonth"},
    {true, &ParameterTab::txtFirstCellofHoliday, "IV0", "19CellOfHoliday"},
    {true, &ParameterTab::txtFirstCellofHoliday, "65536", "19CellOfHoliday"},
    // too far right and too far down
    {false, &ParameterTab::txtFirstCellofDay, "IQ65512", "5ColumnsOfDay"},
    {false, &ParameterTab::txtFirstCellofHoliday, "IQ65512", "14ColumnsOfHoliday"},
    {true, &ParameterTab::txtFirstCellofDay, "IA65505", "8ColumnsOfDay"},
    {true, &ParameterTab::txtFirstCellofWeekday, "IA65510", "12ColumnsOfWeekday"},
    {true, &ParameterTab::txtFirstCellofMonth, "IG65510", "16ColumnsOfMonth"},
    {true, &ParameterTab::txtFirstCellofHoliday, "IA65505", "20ColumnsOfHoliday"},
};

TEST_F(ParameterTest, OfTwoChecksOfOneBoxTheFirstReportsIt)
{
    for (const OneBoxCase& typed : kOneBoxCases) {
        SCOPED_TRACE(typed.check + ' ' + typed.text + (typed.isYearly ? " yearly" : " monthly"));
        const auto& checks = typed.isYearly ? kYearlyChecks : kMonthlyChecks;
        const auto expected = std::ranges::find(checks, typed.check, &CheckCase::name);
        ASSERT_NE(expected, checks.end());
        Open();
        ParameterTab& tab =
            typed.isYearly ? static_cast<ParameterTab&>(form().yearly) : form().monthly;
        (tab.*typed.box).Type(typed.text);
        form().cmdOK_Click();
        EXPECT_EQ(desktop.TakeCalls(), std::vector{std::string("Report: ") + expected->message});
    }
}

// ---- checks that depend on a check box

struct BoxCase {
    const char* name;
    CheckBox ParameterTab::*box;
    std::vector<std::string> monthly; ///< checks that depend on the box
    std::vector<std::string> yearly;
};

class BoxTest : public ParameterTest, public testing::WithParamInterface<BoxCase> {
protected:
    static bool Contains(const std::vector<std::string>& steps, const std::string& name)
    {
        return std::find(steps.begin(), steps.end(),
                         name.substr(0, name.find_first_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ"))) !=
               steps.end();
    }
};

TEST_P(BoxTest, SwitchesOnlyItsChecks)
{
    for (const CheckCase& check : kMonthlyChecks) {
        check.edit(Open());
        (form().monthly.*GetParam().box).Toggle();
        EXPECT_EQ(form().ValidateMParameters(), Contains(GetParam().monthly, check.name))
            << check.name;
    }
    for (const CheckCase& check : kYearlyChecks) {
        check.edit(Open());
        (form().yearly.*GetParam().box).Toggle();
        EXPECT_EQ(form().ValidateYParameters(), Contains(GetParam().yearly, check.name))
            << check.name;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Boxes, BoxTest,
    testing::Values(
        BoxCase{"Weekday", &ParameterTab::chkOutWeekday, {"7", "8", "9"}, {"10", "11", "12", "13"}},
        BoxCase{"Month", &ParameterTab::chkOutMonth, {"10", "11"}, {"14", "15", "16", "17"}},
        BoxCase{"Year", &ParameterTab::chkOutYear, {"12"}, {"18"}},
        BoxCase{"Holiday", &ParameterTab::chkOutHoliday, {"13", "14", "15"}, {"19", "20", "21"}}),
    [](const auto& each) { return std::string(each.param.name); });

} // namespace
} // namespace orrery::ui
