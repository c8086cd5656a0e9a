#include "parameter_dialog_support.h"

#include <chrono>
#include <fstream>
#include <gmock/gmock.h>
#include <wx/textctrl.h>

namespace orrery::ui::wx {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class OwnDaysTest : public ParameterDialogTest {
protected:
    OwnDaysTest()
    {
        fs::remove_all(At("holiday"));
        fs::create_directories(At("holiday/own"));
        std::ofstream(At("holiday/Land.txt")) << "0101,DAY,New Year\n";
        std::ofstream(At("holiday/own/Club.txt")) << "0102,DAY,Party\n";
    }
    void OpenLand()
    {
        Open();
        user_->Click("cmdMChangeHoliday");
        user_->WaitForWindow("frmHoliday");
        user_->Choose("cboHolidayFile", "Land.txt");
    }
    void Leave(const std::string& button, const std::string& window)
    {
        user_->Click(button);
        user_->WaitForWindow(window);
    }
    void Remove()
    {
        constexpr auto kGlance = std::chrono::seconds(3);
        const auto selected = user_->TextOf("txtRule");
        const auto isRemoved = [selected] {
            return FromWx(dynamic_cast<wxTextCtrl&>(FindControl("txtRule")).GetValue()) != selected;
        };
        user_->Key('M', wxMOD_ALT);
        // On a busy machine a key may get lost in a window that has just come to the front.
        if (!HappensWithin(kGlance, isRemoved))
            user_->Key('M', wxMOD_ALT);
    }
    /// The names of the rules in the list.
    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const std::string& row : user_->RowsOf("lstRules"))
            names.push_back(row.substr(0, row.find('\t')));
        return names;
    }
};

TEST_F(OwnDaysTest, TheMouseAddsChangesAndRemovesADayThatIsSaved)
{
    OpenLand();
    user_->Click("cmdAddDay");
    user_->WaitForWindow("frmOwnDay");
    user_->Choose("cboKind", "Birthday");
    user_->Choose("cboMonth", "August");
    user_->Enter("txtDay", "30");
    user_->Enter("txtYear", "1984");
    EXPECT_EQ(user_->TextOf("lblDate"), "Next: Mon 30 August 2027: 43 years");
    user_->Enter("txtName", "Ben");
    Leave("cmdOK", "frmHoliday");
    EXPECT_THAT(Names(), ElementsAre("New Year", "Ben"));
    EXPECT_TRUE(user_->IsEnabled("cmdEditDay"));
    user_->Click("cmdEditDay");
    user_->WaitForWindow("frmOwnDay");
    EXPECT_EQ(user_->TextOf("txtName"), "Ben");
    user_->Enter("txtDay", "31");
    Leave("cmdOK", "frmHoliday");
    Leave("cmdOK", "frmParameter");
    Leave("cmdOK", "frmMain");
    user_->Click("cmdSave");
    WaitFor("the parameter file", [this] { return !program_->form.working.Changed(); });
    EXPECT_EQ(Parameter("Desk.ini", "Monthly Calendar", "Holiday2"), "# Further file: Own days");
    EXPECT_EQ(Parameter("Desk.ini", "Monthly Calendar", "Holiday3"), "0831,,Ben");
    EXPECT_EQ(Parameter("Desk.ini", "Monthly Calendar", "Holiday4"), "> born 1984");
}

TEST_F(OwnDaysTest, TheKeyboardAddsADay)
{
    OpenLand();
    user_->Key('Y', wxMOD_ALT);
    user_->WaitForWindow("frmOwnDay");
    user_->WaitForFocus("txtName");
    user_->Type("Exam");
    user_->Key('D', wxMOD_ALT);
    user_->WaitForFocus("txtDay");
    user_->Key('A', wxMOD_CONTROL);
    user_->Type("32");
    user_->Key(WXK_RETURN);
    EXPECT_EQ(user_->TextOf("lblDate"), "January has no day 32.");
    user_->WaitForFocus("txtDay");
    user_->Key('A', wxMOD_CONTROL);
    user_->Type("14");
    EXPECT_EQ(user_->TextOf("lblDate"), "Next: Thu 14 January 2027");
    user_->Key(WXK_RETURN);
    user_->WaitForWindow("frmHoliday");
    EXPECT_THAT(Names(), ElementsAre("New Year", "Exam"));
    Remove();
    EXPECT_THAT(Names(), ElementsAre("New Year"));
    user_->Key('Y', wxMOD_ALT);
    user_->WaitForWindow("frmOwnDay");
    user_->Key(WXK_ESCAPE);
    user_->WaitForWindow("frmHoliday");
    EXPECT_THAT(Names(), ElementsAre("New Year"));
}

TEST_F(OwnDaysTest, AFileIsAddedFromTheMenu)
{
    OpenLand();
    user_->Click("cmdFiles");
    user_->Key(WXK_DOWN);
    user_->Key(WXK_RETURN);
    EXPECT_THAT(Names(), ElementsAre("New Year", "Party"));
}

TEST_F(OwnDaysTest, DaysArePastedIntoTheList)
{
    OpenLand();
    PutOnClipboard("1.5.2027\tFair\n");
    user_->Click("lstRules");
    user_->Key('V', wxMOD_CONTROL);
    user_->WaitForWindow("frmImport");
    EXPECT_EQ(user_->TextOf("txtEvents"), "1 May 2027  Fair");
    user_->Enter("txtTarget", "Market");
    Leave("cmdOK", "frmHoliday");
    EXPECT_THAT(Names(), ElementsAre("New Year", "Fair"));
    EXPECT_TRUE(fs::exists(At("holiday/own/Market.txt")));
}

TEST_F(OwnDaysTest, DaysArePastedFromTheMenu)
{
    OpenLand();
    PutOnClipboard("Nothing");
    user_->Click("cmdFiles");
    user_->Key('P');
    user_->WaitForMessage();
    user_->Answer(WXK_RETURN);
    user_->WaitForWindow("frmHoliday");
    PutOnClipboard("1 May 2027 Fair");
    user_->Click("cmdFiles");
    user_->Key('P');
    user_->WaitForWindow("frmImport");
    Leave("cmdCancel", "frmHoliday");
    EXPECT_THAT(Names(), ElementsAre("New Year"));
}

} // namespace
} // namespace orrery::ui::wx
