#include "parameter_dialog_support.h"

#include <fstream>
#include <gmock/gmock.h>

namespace orrery::ui::wx {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::SizeIs;

class HolidayTest : public ParameterDialogTest {
protected:
    HolidayTest()
    {
        fs::remove_all(At("holiday"));
        fs::create_directory(At("holiday"));
        WriteHolidays("Mine.txt", "0101, DAY, New Year\n0505, MON, Memorial Day\n"
                                  ", EASTER FRI, Good Friday\n");
        WriteHolidays("Other.txt", "0228,DAY,Late Day\n1225,DAY,Christmas\n");
    }
    void WriteHolidays(const std::string& name, const std::string& text) const
    {
        std::ofstream(At("holiday") / name) << text;
    }
    void OpenMonthly()
    {
        Open();
        user_->Click("cmdMChangeHoliday");
        user_->WaitForWindow("frmHoliday");
    }
    void Leave(const std::string& button)
    {
        user_->Click(button);
        user_->WaitForWindow("frmParameter");
    }
};

TEST_F(HolidayTest, ShowsTheHolidaysOfTheCalendarAndTheFilesWithoutAChoice)
{
    OpenMonthly();
    EXPECT_THAT(user_->EntriesOf("cboHolidayFile"),
                ElementsAre("(Template)", "Mine.txt", "Other.txt"));
    EXPECT_EQ(user_->TextOf("cboHolidayFile"), "");
    EXPECT_EQ(user_->TextOf("lblHolidayList"), " Date        Weekday     Name");
    const auto rows = user_->RowsOf("lstHoliday");
    ASSERT_THAT(rows, SizeIs(11));
    EXPECT_EQ(rows[0], "0101\t\tNew Year's Day");
    EXPECT_EQ(rows[9], "1104\tThursday\tThanksgiving Day");
}

TEST_F(HolidayTest, AChosenFileIsShownAndStoredByOk)
{
    OpenMonthly();
    user_->Choose("cboHolidayFile", "Mine.txt");
    EXPECT_THAT(user_->RowsOf("lstHoliday"),
                ElementsAre("0101\t\t New Year", "0505\tMonday\t Memorial Day",
                            "-2\tEaster\t Good Friday"));
    user_->Choose("cboHolidayFile", "Other.txt");
    EXPECT_THAT(user_->RowsOf("lstHoliday"), ElementsAre("0228\t\tLate Day", "1225\t\tChristmas"));
    Leave("cmdOK");
    EXPECT_EQ(user_->TextOf("lblMHolidaySample"), "Late Day");
    EXPECT_EQ(user_->TextOf("lblYHolidaySample"), "New Year's Day");
    user_->Click("cmdOK");
    user_->WaitForWindow("frmMain");
    user_->Click("cmdSave");
    WaitFor("the parameter file", [this] { return !program_->form.working.Changed(); });
    EXPECT_EQ(Parameter("Desk.ini", "Monthly Calendar", "Holiday1"), "0228,,Late Day");
    EXPECT_EQ(Parameter("Desk.ini", "Yearly Calendar", "Holiday1"), "0101,,New Year's Day");
}

TEST_F(HolidayTest, TheYearlyCalendarHasItsOwn)
{
    Open();
    GoToYearly();
    user_->Click("cmdYChangeHoliday");
    user_->WaitForWindow("frmHoliday");
    user_->Choose("cboHolidayFile", "Other.txt");
    Leave("cmdOK");
    EXPECT_EQ(user_->TextOf("lblYHolidaySample"), "Late Day");
    EXPECT_EQ(user_->TextOf("lblMHolidaySample"), "New Year's Day");
}

TEST_F(HolidayTest, TheTemplatesOwnRulesComeBack)
{
    OpenMonthly();
    user_->Choose("cboHolidayFile", "Other.txt");
    Leave("cmdOK");
    user_->Click("cmdMChangeHoliday");
    user_->WaitForWindow("frmHoliday");
    EXPECT_THAT(user_->RowsOf("lstHoliday"), SizeIs(2));
    user_->Choose("cboHolidayFile", "(Template)");
    EXPECT_THAT(user_->RowsOf("lstHoliday"), SizeIs(11));
    Leave("cmdOK");
    EXPECT_EQ(user_->TextOf("lblMHolidaySample"), "New Year's Day");
}

TEST_F(HolidayTest, ATemplateWithoutAFileHasNoRulesOfItsOwn)
{
    fs::remove(At("template/Desk.ini"));
    OpenMonthly();
    EXPECT_THAT(user_->EntriesOf("cboHolidayFile"), ElementsAre("Mine.txt", "Other.txt"));
}

TEST_F(HolidayTest, CancelAndEscapeDiscardTheChoice)
{
    OpenMonthly();
    user_->Choose("cboHolidayFile", "Other.txt");
    Leave("cmdCancel");
    EXPECT_EQ(user_->TextOf("lblMHolidaySample"), "New Year's Day");
    user_->Click("cmdMChangeHoliday");
    user_->WaitForWindow("frmHoliday");
    user_->Choose("cboHolidayFile", "Other.txt");
    user_->Key(WXK_ESCAPE);
    user_->WaitForWindow("frmParameter");
    EXPECT_EQ(user_->TextOf("lblMHolidaySample"), "New Year's Day");
}

TEST_F(HolidayTest, OnlyOkWritesTheDialogsPlace)
{
    const std::string before = testing_support::BytesOf(At("orrery.ini"));
    OpenMonthly();
    Leave("cmdCancel");
    Settle();
    EXPECT_EQ(testing_support::BytesOf(At("orrery.ini")), before);
    user_->Click("cmdMChangeHoliday");
    user_->WaitForWindow("frmHoliday");
    Leave("cmdOK");
    WaitFor("the place", [this] { return !Setting("Windows", "frmHoliday").empty(); });
}

TEST_F(HolidayTest, LinesThatAreNotReadAreShownInAWindowOfTheSameWidth)
{
    WriteHolidays("Bad.txt", "0230, DAY, " + std::string(300, 'x') + "\n0101, DAI, y\n");
    const auto width = [] { return FrontWindow()->GetSize().x; };
    OpenMonthly();
    const int before = OnMain(width);
    user_->Choose("cboHolidayFile", "Bad.txt");
    EXPECT_THAT(user_->TextOf("lblProblems"),
                testing::StartsWith("2 lines are not read. Line 1: The date \"0230\""));
    EXPECT_EQ(OnMain(width), before);
    user_->Choose("cboHolidayFile", "Other.txt");
    EXPECT_EQ(user_->TextOf("lblProblems"), "");
}

TEST_F(HolidayTest, OkWithoutAChoiceChangesNothing)
{
    OpenMonthly();
    Leave("cmdOK");
    user_->Click("cmdOK");
    user_->WaitForWindow("frmMain");
    EXPECT_FALSE(user_->IsEnabled("cmdSave"));
}

TEST_F(HolidayTest, AFileThatCannotBeReadShowsNothing)
{
    OpenMonthly();
    fs::remove(At("holiday/Mine.txt"));
    user_->Choose("cboHolidayFile", "Mine.txt");
    EXPECT_THAT(user_->RowsOf("lstHoliday"), SizeIs(0));
}

TEST_F(HolidayTest, MnemonicsReachTheListsAndButtons)
{
    OpenMonthly();
    user_->Key('L', wxMOD_ALT);
    user_->WaitForFocus("lstHoliday");
    user_->Key('F', wxMOD_ALT);
    user_->WaitForFocus("cboHolidayFile");
    user_->Key('C', wxMOD_ALT);
    user_->WaitForWindow("frmParameter");
    user_->Click("cmdMChangeHoliday");
    user_->WaitForWindow("frmHoliday");
    user_->Key('O', wxMOD_ALT);
    user_->WaitForWindow("frmParameter");
}

TEST_F(HolidayTest, HelpOpensItsPage)
{
    WriteHelp("holidays");
    OpenMonthly();
    user_->Key(WXK_F1);
    EXPECT_EQ(WaitForOpened(), HelpPage("holidays"));
}

} // namespace
} // namespace orrery::ui::wx
