#include "parameter_dialog_support.h"

#include <utility>
#include <wx/choice.h>

namespace orrery::ui::wx {
namespace {

/// Input that makes OK fail: what the user typed, the message, and the control that gets the focus.
struct FailingCheck {
    const char* name;
    /// Texts by control; a list with an empty text loses its selection.
    std::vector<std::pair<std::string, std::string>> typed;
    std::string message;
    std::string focus;
};

void PrintTo(const FailingCheck& check, std::ostream* out)
{
    *out << check.name;
}

std::string NameOf(const testing::TestParamInfo<FailingCheck>& check)
{
    return check.param.name;
}

/// The message for a cell beyond a sheet's last column ("256") or row ("65536").
std::string TooFar(const std::string& what, const std::string& limit, const std::string& advice)
{
    return "The max " + what + " is greater than " + limit + ",\nplease change the " + advice + ".";
}

/// Clears a list's selection, which cannot be done with keys.
void Unselect(const std::string& name)
{
    auto& list = dynamic_cast<wxChoice&>(FindControl(name));
    list.SetSelection(wxNOT_FOUND);
    wxCommandEvent event(wxEVT_CHOICE, list.GetId());
    event.SetEventObject(&list);
    event.SetInt(wxNOT_FOUND);
    list.ProcessWindowEvent(event);
}

class FailingCheckTest : public ParameterDialogTest,
                         public testing::WithParamInterface<FailingCheck> {
protected:
    void Fill()
    {
        for (const auto& [control, text] : GetParam().typed) {
            if (control.starts_with("cbo"))
                OnMain([control = control] { Unselect(control); });
            else
                user_->Enter(control, text);
        }
    }
    void ExpectTheFailure()
    {
        EXPECT_EQ(user_->WaitForMessage(), "Error!\nError Info: " + GetParam().message);
        user_->Answer(WXK_RETURN);
        user_->WaitForWindow("frmParameter");
        user_->WaitForFocus(GetParam().focus);
        EXPECT_TRUE(user_->IsShown(GetParam().focus));
    }
};

class FailingMonthlyCheckTest : public FailingCheckTest {};

TEST_P(FailingMonthlyCheckTest, ShowsItsMessageAndFocusesItsControl)
{
    Open();
    Fill();
    GoToYearly();
    user_->Click("cmdOK");
    ExpectTheFailure();
    EXPECT_TRUE(IsMonthlyInFront());
}

INSTANTIATE_TEST_SUITE_P(
    InOrder, FailingMonthlyCheckTest,
    testing::Values(
        FailingCheck{
            "SheetName", {{"txtMSheetName", ""}}, "Please input sheet name.", "txtMSheetName"},
        FailingCheck{"FirstCellOfDay",
                     {{"txtMFirstCellofDay", "day"}},
                     "The first cell of day is not valid.",
                     "txtMFirstCellofDay"},
        FailingCheck{"ColIntervalOfDay",
                     {{"txtMColInterval", "37"}},
                     "The col interval of day should be 1 to 36.",
                     "txtMColInterval"},
        FailingCheck{"RowIntervalOfDay",
                     {{"txtMRowInterval", "few"}},
                     "The row interval of day should be 1 to 10000.",
                     "txtMRowInterval"},
        FailingCheck{"LastColumnOfDay",
                     {{"txtMFirstCellofDay", "IQ6"}},
                     TooFar("col of day", "256", "first cell of day or col interval of day"),
                     "txtMFirstCellofDay"},
        FailingCheck{"LastRowOfDay",
                     {{"txtMFirstCellofDay", "B65517"}},
                     TooFar("row of day", "65536", "first cell of day or row interval of day"),
                     "txtMFirstCellofDay"},
        FailingCheck{"FirstCellOfWeekday",
                     {{"txtMFirstCellofWeekday", "4B"}},
                     "The first cell of weekday is not valid.",
                     "txtMFirstCellofWeekday"},
        FailingCheck{"WeekdayName",
                     {{"cboMWeekdayName", ""}},
                     "Please select the name of weekdays.",
                     "cboMWeekdayName"},
        FailingCheck{
            "LastColumnOfWeekday",
            {{"txtMFirstCellofWeekday", "IQ4"}},
            TooFar("col of weekday", "256", "first cell of weekday or col interval of day"),
            "txtMFirstCellofWeekday"},
        FailingCheck{"FirstCellOfMonth",
                     {{"txtMFirstCellofMonth", ""}},
                     "The first cell of month is not valid.",
                     "txtMFirstCellofMonth"},
        FailingCheck{"MonthName",
                     {{"cboMMonthName", ""}},
                     "Please select the name of months.",
                     "cboMMonthName"},
        FailingCheck{"FirstCellOfYear",
                     {{"txtMFirstCellofYear", "A0"}},
                     "The first cell of year is not valid.",
                     "txtMFirstCellofYear"},
        FailingCheck{"FirstCellOfHoliday",
                     {{"txtMFirstCellofHoliday", "B"}},
                     "The first cell of holiday is not valid.",
                     "txtMFirstCellofHoliday"},
        FailingCheck{
            "LastColumnOfHoliday", // the focus goes to the day
            {{"txtMFirstCellofHoliday", "IQ7"}},
            TooFar("col of holiday", "256", "first cell of holiday or col interval of day"),
            "txtMFirstCellofDay"},
        FailingCheck{
            "LastRowOfHoliday", // here too
            {{"txtMFirstCellofHoliday", "B65517"}},
            TooFar("row of holiday", "65536", "first cell of holiday or row interval of day"),
            "txtMFirstCellofDay"}),
    NameOf);

class FailingYearlyCheckTest : public FailingCheckTest {};

TEST_P(FailingYearlyCheckTest, ShowsItsMessageAndFocusesItsControl)
{
    Open();
    GoToYearly();
    Fill();
    GoToMonthly();
    user_->Click("cmdOK");
    ExpectTheFailure();
    EXPECT_FALSE(IsMonthlyInFront());
}

INSTANTIATE_TEST_SUITE_P(
    InOrder, FailingYearlyCheckTest,
    testing::Values(
        FailingCheck{
            "SheetName", {{"txtYSheetName", ""}}, "Please input sheet name.", "txtYSheetName"},
        FailingCheck{"FirstCellOfDay",
                     {{"txtYFirstCellofDay", "day"}},
                     "The first cell of day is not valid.",
                     "txtYFirstCellofDay"},
        FailingCheck{"MonthLayout",
                     {{"cboLayoutofMonths", ""}},
                     "Please select the layout of months.",
                     "cboLayoutofMonths"},
        FailingCheck{"ColIntervalOfMonth",
                     {{"txtYColIntervalofMonth", "0"}},
                     "The col interval of month should be 1 to 36.",
                     "txtYColIntervalofMonth"},
        FailingCheck{"RowIntervalOfMonth", // the maximum is 36, despite the message
                     {{"txtYRowIntervalofMonth", "37"}},
                     "The row interval of month should be 1 to 10000.",
                     "txtYRowIntervalofMonth"},
        FailingCheck{"ColIntervalOfDay",
                     {{"txtYColInterval", ""}},
                     "The col interval of day should be 1 to 36.",
                     "txtYColInterval"},
        FailingCheck{"RowIntervalOfDay",
                     {{"txtYRowInterval", "10001"}},
                     "The row interval of day should be 1 to 10000.",
                     "txtYRowInterval"},
        FailingCheck{"LastColumnOfDay",
                     {{"txtYFirstCellofDay", "HY5"}},
                     TooFar("col of day", "256",
                            "first cell of day, col interval of day or col interval of month"),
                     "txtYFirstCellofDay"},
        FailingCheck{"LastRowOfDay",
                     {{"txtYFirstCellofDay", "C65485"}},
                     TooFar("row of day", "65536",
                            "first cell of day, row interval of day or row interval of month"),
                     "txtYFirstCellofDay"},
        FailingCheck{"FirstCellOfWeekday",
                     {{"txtYFirstCellofWeekday", "$C$4"}},
                     "The first cell of weekday is not valid.",
                     "txtYFirstCellofWeekday"},
        FailingCheck{"WeekdayName",
                     {{"cboYWeekdayName", ""}},
                     "Please select the name of weekdays.",
                     "cboYWeekdayName"},
        FailingCheck{"LastColumnOfWeekday",
                     {{"txtYFirstCellofWeekday", "HY4"}},
                     TooFar("col of weekday", "256",
                            "first cell of weekday, col interval of day or col interval of month"),
                     "txtYFirstCellofWeekday"},
        FailingCheck{
            "LastRowOfWeekday",
            {{"txtYFirstCellofWeekday", "C65495"}},
            TooFar("row of weekday", "65536", "first cell of weekday or row interval of month"),
            "txtYFirstCellofWeekday"},
        FailingCheck{"FirstCellOfMonth",
                     {{"txtYFirstCellofMonth", "B 4"}},
                     "The first cell of month is not valid.",
                     "txtYFirstCellofMonth"},
        FailingCheck{"MonthName",
                     {{"cboYMonthName", ""}},
                     "Please select the name of months.",
                     "cboYMonthName"},
        FailingCheck{"LastColumnOfMonth",
                     {{"txtYFirstCellofMonth", "IE4"}},
                     TooFar("col of month", "256", "first cell of month or col interval of month"),
                     "txtYFirstCellofMonth"},
        FailingCheck{
            "LastRowOfMonth",
            {{"txtYFirstCellofMonth", "B65495"}},
            TooFar("row of month", "65536", "first cell of month or row interval of month"),
            "txtYFirstCellofMonth"},
        FailingCheck{"FirstCellOfYear",
                     {{"txtYFirstCellofYear", "2"}},
                     "The first cell of year is not valid.",
                     "txtYFirstCellofYear"},
        FailingCheck{"FirstCellOfHoliday",
                     {{"txtYFirstCellofHoliday", "C0"}},
                     "The first cell of holiday is not valid.",
                     "txtYFirstCellofHoliday"},
        FailingCheck{"LastColumnOfHoliday", // the focus goes to the holiday here
                     {{"txtYFirstCellofHoliday", "HY6"}},
                     TooFar("col of holiday", "256",
                            "first cell of holiday, col interval of day or col interval of month"),
                     "txtYFirstCellofHoliday"},
        FailingCheck{"LastRowOfHoliday",
                     {{"txtYFirstCellofHoliday", "C65485"}},
                     TooFar("row of holiday", "65536",
                            "first cell of holiday, row interval of day or row interval of month"),
                     "txtYFirstCellofHoliday"}),
    NameOf);

} // namespace
} // namespace orrery::ui::wx
