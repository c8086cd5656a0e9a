#include "parameter_dialog_support.h"

#include "util/text.h"

#include <chrono>
#include <fstream>
#include <gmock/gmock.h>
#include <thread>
#include <wx/checkbox.h>

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

// ---- the rules in words

constexpr const char* kGermany = "# Language: de\n"
                                 "# Regions: BY Bayern; SN Sachsen\n"
                                 "0101,DAY,Neujahr\n"
                                 "> name en New Year's Day\n"
                                 "0106,FIXED,Heilige Drei Könige\n"
                                 "> only in BY; name en Epiphany\n"
                                 "1224,FIXED,Heiligabend\n"
                                 "> kind bank\n";

class HolidayRulesTest : public HolidayTest {
protected:
    HolidayRulesTest() { WriteHolidays("Germany.txt", kGermany); }
    void OpenGermany()
    {
        Start();
        user_->Choose("cboTemplateFile", "Desk.xlsx");
        user_->Enter("txtYear", "2027");
        user_->Click("cmdModify");
        user_->WaitForWindow("frmParameter");
        user_->Click("cmdMChangeHoliday");
        user_->WaitForWindow("frmHoliday");
        user_->Choose("cboHolidayFile", "Germany.txt");
    }
    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const std::string& row : user_->RowsOf("lstRules"))
            names.push_back(row.substr(0, row.find('\t')));
        return names;
    }
    /// Waits for the list to follow what was typed.
    void WaitForCount(std::size_t count) const
    {
        constexpr auto kStep = std::chrono::milliseconds(20);
        for (int i = 0; i < 250 && Names().size() != count; ++i)
            std::this_thread::sleep_for(kStep);
        EXPECT_THAT(Names(), SizeIs(count));
    }
    std::string NextOf(std::size_t row) const
    {
        constexpr std::size_t column = 2;
        return util::Split(user_->RowsOf("lstRules").at(row), '\t').at(column);
    }
    /// Closes both dialogs by OK and saves the parameters.
    void Save()
    {
        Leave("cmdOK");
        user_->Click("cmdOK");
        user_->WaitForWindow("frmMain");
        user_->Click("cmdSave");
        WaitFor("the parameter file", [this] { return !program_->form.working.Changed(); });
    }
};

TEST_F(HolidayRulesTest, EveryRuleIsShownInWordsBesideThePlainOnes)
{
    OpenGermany();
    EXPECT_THAT(user_->RowsOf("lstHoliday"), ElementsAre("0101\t\tNeujahr"));
    const auto rows = user_->RowsOf("lstRules");
    EXPECT_THAT(rows, ElementsAre("Neujahr\t1 January\tFri 1 January 2027\tPublic",
                                  "Heilige Drei Könige\t6 January; only in Bayern\t"
                                  "other region\tPublic",
                                  "Heiligabend\t24 December\tkind not shown\tBank"));
}

TEST_F(HolidayRulesTest, ChoosersAreShownOnlyWithFilesThatHaveAChoice)
{
    OpenMonthly();
    for (const char* const name : {"cboRegion", "cboLanguage", "chkPublic", "chkBank"})
        EXPECT_FALSE(user_->IsShown(name)) << name;
    user_->Choose("cboHolidayFile", "Germany.txt");
    for (const char* const name : {"cboRegion", "cboLanguage", "chkPublic", "chkBank"})
        EXPECT_TRUE(user_->IsShown(name)) << name;
    EXPECT_FALSE(user_->IsShown("chkSchool"));
}

TEST_F(HolidayRulesTest, TheListNarrowsWhileTyping)
{
    OpenGermany();
    user_->Key('N', wxMOD_ALT);
    user_->WaitForFocus("txtFind");
    user_->Type("eil");
    WaitForCount(2);
    user_->Type("ige");
    WaitForCount(1);
    EXPECT_EQ(Names().front(), "Heilige Drei Könige");
    user_->Enter("txtFind", "zzz");
    WaitForCount(0);
    user_->Enter("txtFind", "EPIPH");
    WaitForCount(1);
    EXPECT_EQ(Names().front(), "Heilige Drei Könige") << "by its English name";
    EXPECT_THAT(user_->RowsOf("lstHoliday"), SizeIs(1));
}

TEST_F(HolidayRulesTest, TheMouseChoosesRegionKindAndLanguageWhichAreSaved)
{
    OpenGermany();
    user_->Choose("cboRegion", "Bayern");
    EXPECT_EQ(NextOf(1), "Wed 6 January 2027");
    user_->Click("chkBank");
    EXPECT_EQ(NextOf(2), "Fri 24 December 2027");
    user_->Choose("cboLanguage", "English");
    EXPECT_EQ(Names().front(), "New Year's Day");
    Save();
    EXPECT_EQ(Parameter("Desk.ini", "Holidays", "MonthlyRegion"), "BY");
    EXPECT_EQ(Parameter("Desk.ini", "Holidays", "MonthlyKinds"), "public bank");
    EXPECT_EQ(Parameter("Desk.ini", "Holidays", "MonthlyLanguage"), "en");
    EXPECT_EQ(Parameter("Desk.ini", "Holidays", "YearlyRegion"), "");
    EXPECT_EQ(Parameter("Desk.ini", "Monthly Calendar", "Holiday1"), "# Language: de");
}

TEST_F(HolidayRulesTest, TheKeyboardReachesAllOfThem)
{
    OpenGermany();
    user_->Key('R', wxMOD_ALT);
    user_->WaitForFocus("cboRegion");
    user_->Key('G', wxMOD_ALT);
    user_->WaitForFocus("cboLanguage");
    user_->Key('A', wxMOD_ALT);
    user_->WaitForFocus("lstRules");
    user_->Key('B', wxMOD_ALT);
    WaitFor("the box", [] { return dynamic_cast<wxCheckBox&>(FindControl("chkBank")).GetValue(); });
    EXPECT_EQ(NextOf(2), "Fri 24 December 2027");
}

TEST_F(HolidayRulesTest, TheSelectedRuleIsShownWhole)
{
    OpenGermany();
    EXPECT_EQ(user_->TextOf("txtRule"), "Neujahr: 1 January");
    user_->Key('A', wxMOD_ALT);
    user_->WaitForFocus("lstRules");
    const auto press = [this](int key, const std::string& expected) {
        user_->Key(key);
        WaitFor(expected, [&] {
            return dynamic_cast<wxTextCtrl&>(FindControl("txtRule")).GetValue() == ToWx(expected);
        });
    };
    press(WXK_DOWN, "Heilige Drei Könige: 6 January; only in Bayern");
    press(WXK_DOWN, "Heiligabend: 24 December");
    press(WXK_UP, "Heilige Drei Könige: 6 January; only in Bayern");
    user_->Choose("cboLanguage", "English");
    EXPECT_EQ(user_->TextOf("txtRule"), "Epiphany: 6 January; only in Bayern");
    user_->Key('W', wxMOD_ALT);
    user_->WaitForFocus("txtRule");
    user_->Type("x");
    Settle();
    EXPECT_EQ(user_->TextOf("txtRule"), "Epiphany: 6 January; only in Bayern") << "read only";
    user_->Key(WXK_ESCAPE);
    user_->WaitForWindow("frmParameter");
}

TEST_F(HolidayRulesTest, TheButtonsComeBeforeTheRulesInTheTabOrder)
{
    OpenGermany();
    user_->Key('L', wxMOD_ALT);
    user_->WaitForFocus("lstHoliday");
    std::vector<std::string> buttons; // in the system's order
    for (int i = 0; i < 2; ++i) {
        user_->Key(WXK_TAB);
        Settle();
        buttons.push_back(user_->Focused());
    }
    EXPECT_THAT(buttons, testing::UnorderedElementsAre("cmdOK", "cmdCancel"));
    for (const char* const next :
         {"txtFind", "cboRegion", "cboLanguage", "chkPublic", "chkBank", "lstRules", "txtRule",
          "cmdFiles", "cmdAddDay", "cmdRemove", "cmdCountry", "cboHolidayFile", "lstHoliday"}) {
        user_->Key(WXK_TAB);
        user_->WaitForFocus(next);
    }
}

TEST_F(HolidayRulesTest, AFileWithoutAChoiceLeavesNoSectionInTheParameterFile)
{
    OpenMonthly();
    user_->Choose("cboHolidayFile", "Other.txt");
    Save();
    EXPECT_EQ(testing_support::BytesOf(At("template/Desk.ini")).find("[Holidays]"),
              std::string::npos);
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
