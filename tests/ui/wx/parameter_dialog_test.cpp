#include "parameter_dialog_support.h"
#include "surroundings.h"
#include "ui/wx/native/text.h"

#include <fstream>
#include <gmock/gmock.h>
#include <utility>
#include <wx/checkbox.h>

namespace orrery::ui::wx {
namespace {

namespace fs = std::filesystem;
using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::StartsWith;

class ParametersTest : public ParameterDialogTest {
protected:
    std::vector<bool> Enabled(const std::vector<std::string>& names) const
    {
        std::vector<bool> enabled;
        for (const std::string& name : names)
            enabled.push_back(user_->IsEnabled(name));
        return enabled;
    }
    /// Presses Alt and the letter, and returns the control that then has the focus.
    std::string FocusAfterMnemonic(char letter, const std::string& expected)
    {
        user_->Key(letter, wxMOD_ALT);
        user_->WaitForFocus(expected);
        return user_->Focused();
    }
    void Save()
    {
        user_->Click("cmdSave");
        WaitFor("the parameter file", [this] { return !program_->form.working.Changed(); });
    }
};

TEST_F(ParametersTest, ShowsTheSetsOfTheTemplate)
{
    Open();
    EXPECT_TRUE(IsMonthlyInFront());
    EXPECT_TRUE(user_->IsChecked("chkMOutCalendar"));
    EXPECT_EQ(user_->TextOf("txtMSheetName"), "Month");
    EXPECT_EQ(user_->TextOf("cboMFirstDayofWeek"), "Sunday");
    EXPECT_EQ(user_->TextOf("txtMFirstCellofDay"), "B6");
    EXPECT_EQ(user_->TextOf("txtMRowInterval"), "4");
    EXPECT_THAT(user_->TextOf("cboMWeekdayName"), StartsWith("English: Sunday, Monday"));
    EXPECT_EQ(user_->TextOf("cboMMultiHolidays"), "Next Row");
    EXPECT_EQ(user_->TextOf("lblMHolidaySample"), "New Year's Day");
    EXPECT_EQ(user_->TextOf("cboLayoutofMonths"), "3 x 4 Months");
    EXPECT_EQ(user_->TextOf("txtYColIntervalofMonth"), "9");
    EXPECT_EQ(user_->TextOf("txtYFirstCellofDay"), "C5");
}

TEST_F(ParametersTest, ShowsTheYearlyTabFirstWhenOnlyThatIsOutput)
{
    WriteParameter("Desk.ini", "Monthly Calendar", "Output", "N");
    Open();
    EXPECT_FALSE(IsMonthlyInFront());
}

TEST_F(ParametersTest, OkStoresBothSets)
{
    Open();
    user_->Enter("txtMSheetName", "Leaf");
    user_->Choose("cboMFirstDayofWeek", "Monday");
    GoToYearly();
    user_->Choose("cboLayoutofMonths", "2 x 6 Months");
    user_->Enter("txtYSheetName", "Whole");
    Accept();
    Save();
    EXPECT_EQ(Parameter("Desk.ini", "Monthly Calendar", "SheetName"), "Leaf");
    EXPECT_EQ(Parameter("Desk.ini", "Monthly Calendar", "FirstDayOfWeek"), "1");
    EXPECT_EQ(Parameter("Desk.ini", "Yearly Calendar", "SheetName"), "Whole");
    EXPECT_EQ(Parameter("Desk.ini", "Yearly Calendar", "MonthLayout"), "2");
}

TEST_F(ParametersTest, OkWithoutChangesLeavesNothingToSave)
{
    Open();
    Accept();
    EXPECT_FALSE(user_->IsEnabled("cmdSave"));
}

TEST_F(ParametersTest, CancelAndEscapeStoreNothing)
{
    Open();
    user_->Enter("txtMSheetName", "Leaf");
    user_->Key(WXK_ESCAPE);
    user_->WaitForWindow("frmMain");
    EXPECT_FALSE(user_->IsEnabled("cmdSave"));
    user_->Click("cmdModify");
    user_->WaitForWindow("frmParameter");
    EXPECT_EQ(user_->TextOf("txtMSheetName"), "Month");
    user_->Enter("txtMSheetName", "Leaf");
    user_->Key('C', wxMOD_ALT);
    user_->WaitForWindow("frmMain");
    EXPECT_FALSE(user_->IsEnabled("cmdSave"));
}

TEST_F(ParametersTest, OnlyOkWritesTheDialogsPlace)
{
    const std::string before = testing_support::BytesOf(At("orrery.ini"));
    Open();
    user_->Key(WXK_ESCAPE);
    user_->WaitForWindow("frmMain");
    Settle();
    EXPECT_EQ(testing_support::BytesOf(At("orrery.ini")), before);
    user_->Click("cmdModify");
    user_->WaitForWindow("frmParameter");
    Accept();
    WaitFor("the place", [this] { return !Setting("Windows", "frmParameter").empty(); });
}

TEST_F(ParametersTest, ALineThatIsNotReadIsShownInAWindowOfTheSameWidth)
{
    const auto width = [] { return FrontWindow()->GetSize().x; };
    Open();
    EXPECT_EQ(user_->TextOf("lblMHolidayProblems"), "");
    const int before = OnMain(width);
    End();
    WriteParameter("Desk.ini", "Monthly Calendar", "Holiday99", std::string(300, 'x'));
    Open();
    EXPECT_EQ(OnMain(width), before);
    EXPECT_TRUE(user_->IsShown("lblMHolidayProblems"));
    EXPECT_THAT(user_->TextOf("lblMHolidayProblems"), HasSubstr("is not a holiday. Write the"));
    EXPECT_EQ(user_->TextOf("lblYHolidayProblems"), "");
    const auto tooltip =
        OnMain([] { return FromWx(FindControl("lblMHolidayProblems").GetToolTipText()); });
    EXPECT_EQ(tooltip, user_->TextOf("lblMHolidayProblems"));
}

TEST_F(ParametersTest, TheWindowManagersKeyClosesOnlyTheDialog)
{
    Open();
    user_->Enter("txtMSheetName", "Leaf");
    user_->Key(WXK_F4, wxMOD_ALT);
    user_->WaitForWindow("frmMain");
    EXPECT_FALSE(user_->IsEnabled("cmdSave"));
}

TEST_F(ParametersTest, AValidMonthlyTabIsStoredEvenIfTheYearlyFails)
{
    Open();
    user_->Enter("txtMSheetName", "Leaf");
    GoToYearly();
    user_->Enter("txtYSheetName", "");
    user_->Key(WXK_RETURN);
    user_->Answer(WXK_RETURN);
    user_->WaitForFocus("txtYSheetName");
    user_->Key(WXK_ESCAPE);
    user_->WaitForWindow("frmMain");
    EXPECT_TRUE(user_->IsEnabled("cmdSave"));
    Save();
    EXPECT_EQ(Parameter("Desk.ini", "Monthly Calendar", "SheetName"), "Leaf");
    EXPECT_EQ(Parameter("Desk.ini", "Yearly Calendar", "SheetName"), "Year");
}

TEST_F(ParametersTest, ADisabledMonthlyCalendarIsNotChecked)
{
    Open();
    user_->Enter("txtMSheetName", "");
    user_->Key('M', wxMOD_ALT); // the check box: the selected tab has no mnemonic
    WaitFor("the box", [this] { return !FindControl("txtMSheetName").IsEnabled(); });
    Accept();
    EXPECT_TRUE(user_->IsEnabled("cmdSave"));
}

TEST_F(ParametersTest, ControlsFollowTheirCheckBoxes)
{
    Open();
    const std::vector<std::string> inner = {"txtMFirstCellofWeekday", "cboMWeekdayName",
                                            "txtMFirstCellofMonth",   "cboMMonthName",
                                            "txtMFirstCellofYear",    "txtMFirstCellofHoliday",
                                            "cboMMultiHolidays",      "cmdMChangeHoliday"};
    EXPECT_THAT(Enabled(inner), Each(true));
    user_->Click("chkMOutWeekday");
    EXPECT_THAT(Enabled({"lblMFirstCellofWeekday", "txtMFirstCellofWeekday", "lblMWeekdayName",
                         "cboMWeekdayName", "txtMFirstCellofMonth"}),
                ElementsAre(false, false, false, false, true));
    user_->Click("chkMOutCalendar");
    EXPECT_THAT(Enabled(inner), Each(false));
    EXPECT_THAT(Enabled({"txtMSheetName", "cboMFirstDayofWeek", "updMColInterval", "chkMOutWeekday",
                         "chkMOutHoliday"}),
                Each(false));
    user_->Click("chkMOutCalendar");
    EXPECT_FALSE(user_->IsEnabled("cboMWeekdayName")) << "its own box is still unchecked";
    EXPECT_TRUE(user_->IsEnabled("cboMMonthName"));
}

TEST_F(ParametersTest, TheLayoutDecidesWhichMonthIntervalsAreEnabled)
{
    Open();
    GoToYearly();
    const std::vector<std::string> intervals = {"lblYColIntervalofMonth", "txtYColIntervalofMonth",
                                                "updYColIntervalofMonth", "lblYRowIntervalofMonth",
                                                "txtYRowIntervalofMonth", "updYRowIntervalofMonth"};
    user_->Choose("cboLayoutofMonths", "1 x 12 Months");
    EXPECT_THAT(Enabled(intervals), ElementsAre(false, false, false, true, true, true));
    user_->Choose("cboLayoutofMonths", "12 x 1 Months");
    EXPECT_THAT(Enabled(intervals), ElementsAre(true, true, true, false, false, false));
    user_->Choose("cboLayoutofMonths", "6 x 2 Months");
    EXPECT_THAT(Enabled(intervals), Each(true));
}

TEST_F(ParametersTest, StepsStayInTheRangeOfTheirChecks)
{
    Open();
    const auto most = [this](const char* field, const char* typed) {
        user_->Enter(field, typed);
        user_->Key(WXK_UP);
        user_->Key(WXK_UP);
        return user_->TextOf(field);
    };
    EXPECT_EQ(most("txtMColInterval", "35"), "36");
    EXPECT_EQ(most("txtMRowInterval", "9999"), "10000");
    GoToYearly();
    EXPECT_EQ(most("txtYRowIntervalofMonth", "35"), "36");
    EXPECT_EQ(most("txtYColIntervalofMonth", "35"), "36");
    user_->Enter("txtYColInterval", "2");
    user_->Key(WXK_DOWN);
    user_->Key(WXK_DOWN);
    EXPECT_EQ(user_->TextOf("txtYColInterval"), "1");
}

TEST_F(ParametersTest, MnemonicsOfTheMonthlyTab)
{
    Open();
    EXPECT_EQ(FocusAfterMnemonic('D', "txtMFirstCellofDay"), "txtMFirstCellofDay");
    FocusAfterMnemonic('S', "txtMSheetName");
    FocusAfterMnemonic('I', "txtMColInterval");
    FocusAfterMnemonic('R', "txtMRowInterval");
    for (const auto& [letter, box] :
         {std::pair('W', "chkMOutWeekday"), std::pair('N', "chkMOutMonth"),
          std::pair('E', "chkMOutYear"), std::pair('H', "chkMOutHoliday")}) {
        user_->Key(letter, wxMOD_ALT);
        WaitFor(box, [box = std::string(box)] {
            return !dynamic_cast<wxCheckBox&>(FindControl(box)).GetValue();
        });
        user_->Key(letter, wxMOD_ALT);
        WaitFor(box, [box = std::string(box)] {
            return dynamic_cast<wxCheckBox&>(FindControl(box)).GetValue();
        });
    }
    user_->Key('G', wxMOD_ALT);
    user_->WaitForWindow("frmHoliday");
}

TEST_F(ParametersTest, MnemonicsOfTheYearlyTab)
{
    Open();
    GoToYearly();
    FocusAfterMnemonic('L', "cboLayoutofMonths");
    FocusAfterMnemonic('S', "txtYSheetName");
    // Both column intervals share a letter, and so do both row intervals: it alternates between
    // them.
    FocusAfterMnemonic('I', "txtYColInterval");
    FocusAfterMnemonic('I', "txtYColIntervalofMonth");
    FocusAfterMnemonic('R', "txtYRowInterval");
    FocusAfterMnemonic('R', "txtYRowIntervalofMonth");
    user_->Key('G', wxMOD_ALT);
    user_->WaitForWindow("frmHoliday");
}

TEST_F(ParametersTest, TabGoesThroughTheMonthlyTabInItsOrder)
{
    Open();
    FocusAfterMnemonic('S', "txtMSheetName");
    std::vector<std::string> order;
    do {
        order.push_back(user_->Focused());
        user_->Key(WXK_TAB);
    } while (user_->Focused() != "txtMSheetName" && order.size() < 40);
    std::erase_if(order, [](const std::string& name) { return name.starts_with("upd"); });
    std::vector<std::string> expected = {
        "txtMSheetName",          "cboMFirstDayofWeek", "txtMFirstCellofDay",
        "txtMColInterval",        "txtMRowInterval",    "chkMOutWeekday",
        "txtMFirstCellofWeekday", "cboMWeekdayName",    "chkMOutMonth",
        "txtMFirstCellofMonth",   "cboMMonthName",      "chkMOutYear",
        "txtMFirstCellofYear",    "chkMOutHoliday",     "txtMFirstCellofHoliday",
        "cboMMultiHolidays",      "cmdMChangeHoliday"};
    for (const std::string& button : ClosingButtons())
        expected.push_back(button);
    expected.insert(expected.end(), {"chkSheet", "pvwSheet", "cmdPropose"});
    expected.insert(expected.end(), {"tabOrrery", "chkMOutCalendar"});
    EXPECT_THAT(order, ElementsAreArray(expected));
}

TEST_F(ParametersTest, HelpOpensItsPage)
{
    WriteHelp("parameters");
    Open();
    user_->Key(WXK_F1);
    EXPECT_EQ(WaitForOpened(), HelpPage("parameters"));
    EXPECT_EQ(user_->Front(), "frmParameter");
}

TEST_F(ParametersTest, AnUnexpectedFailureIsReportedAndTheDialogStaysUsable)
{
    Open();
    GoToYearly();
    user_->Enter("txtYColIntervalofMonth", "many"); // not checked in the next layout, but read
    user_->Choose("cboLayoutofMonths", "1 x 12 Months");
    user_->Click("cmdOK");
    EXPECT_THAT(user_->WaitForMessage(), StartsWith("Error!\nError Info: "));
    user_->Answer(WXK_RETURN);
    user_->WaitForWindow("frmParameter");
    user_->Choose("cboLayoutofMonths", "2 x 6 Months");
    user_->Enter("txtYColIntervalofMonth", "9");
    user_->Click("cmdOK");
    user_->WaitForWindow("frmMain");
    EXPECT_TRUE(user_->IsEnabled("cmdSave"));
}

} // namespace
} // namespace orrery::ui::wx
