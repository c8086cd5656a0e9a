#include "layout_check.h"
#include "main_thread.h"
#include "parameter_dialog_support.h"
#include "places/places.h"
#include "screenshot.h"
#include "surroundings.h"
#include "ui/wx/native/text.h"

#include <cstdlib>
#include <fstream>
#include <gmock/gmock.h>
#include <sstream>
#include <thread>
#include <wx/stattext.h>

namespace orrery::ui::wx {
namespace {

namespace fs = std::filesystem;
using testing::IsEmpty;

/// Writes a picture of every window to the folder of the variant ("light-100") that is set in the
/// environment, and checks each window's layout.
class PicturesTest : public ParameterDialogTest, public testing::WithParamInterface<bool> {
protected:
    PicturesTest() { options_.longCaptions = GetParam(); }

    fs::path Folder() const
    {
        const char* const variant = std::getenv("ORRERY_PICTURES_VARIANT");
        const fs::path folder = places::PicturesFolder() / (variant == nullptr ? "any" : variant);
        return options_.longCaptions ? folder / "long-captions" : folder;
    }
    /// Checks the layout of the window in front and takes its picture.
    void Look(const std::string& name)
    {
        HidePaths();
        user_->MoveAway();
        Settle();
        LookAtOnce(name);
    }
    /// The same while the window takes no input.
    void LookAtOnce(const std::string& name)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(150)); // wait for painting
        EXPECT_THAT(OnMain([] { return LayoutProblems(*FrontWindow()); }), IsEmpty()) << name;
        const fs::path file = Folder() / (name + ".png");
        CaptureFrontWindow(file);
        ExpectNotBlank(file);
    }
    void StartWith(const std::string& templateFile)
    {
        Start();
        user_->Choose("cboTemplateFile", templateFile);
    }
    void OpenFromMain(const char* button, const char* window)
    {
        user_->Click(button);
        user_->WaitForWindow(window);
    }

private:
    /// Replaces the test's folder with a typical user's.
    void HidePaths() const
    {
        OnMain([own = OwnFolder()] {
            for (const char* const name : {"lblStatus", "lblEmptyFolder"}) {
                wxWindow* const label = wxWindow::FindWindowByName(name, FrontWindow());
                if (label == nullptr)
                    continue;
                wxString text = label->GetLabel();
                text.Replace(own, ToWx(TypicalUserFolder()));
                label->SetLabel(text);
            }
        });
    }
    wxString OwnFolder() const { return ToWx(At("").parent_path().string()); }

    static void ExpectNotBlank(const fs::path& file)
    {
        const std::size_t colours = OnMain([file] { return CountColours(file, 100); });
        EXPECT_GT(colours, 20U) << file << " is blank";
    }
};

TEST_P(PicturesTest, Main)
{
    StartWith("Desk.xlsx");
    Look("main");
}

TEST_P(PicturesTest, MainSaved)
{
    StartWith("Desk.xlsx");
    user_->Click("cmdGenerate");
    WaitFor("the run's end", [this] { return program_->form.cmdOpenFolder.visible; });
    Look("main-saved");
}

TEST_P(PicturesTest, MainPdf)
{
    options_.printsPdf = true;
    StartWith("Desk.xlsx");
    user_->Click("chkPdf");
    user_->Click("cmdGenerate");
    WaitFor("the run's end", [this] { return program_->form.cmdOpenFolder.visible; });
    Look("main-pdf");
}

TEST_P(PicturesTest, MainThatWaits)
{
    StartWith("Desk.xlsx");
    OnMain([this] { return program_->engines.isStuck = true; });
    user_->Key('G', wxMOD_ALT);
    WaitFor("Cancel", [this] { return program_->form.cmdCancel.visible; });
    LookAtOnce("main-waits");
    user_->Click("cmdCancel");
    user_->WaitForMessage();
    user_->Answer(WXK_RETURN);
    WaitFor("the run's end", [this] { return !program_->form.cmdCancel.visible; });
}

TEST_P(PicturesTest, MainWithProposal)
{
    fs::copy(At("template/Desk.xlsx"), At("template/Mine.xlsx"));
    StartWith("Mine.xlsx");
    WaitFor("the bar", [] { return FindControl("cmdLookFirst").IsShownOnScreen(); });
    Look("main-proposal");
}

TEST_P(PicturesTest, MainEmpty)
{
    fs::remove_all(At("template"));
    Start();
    Look("main-empty");
}

TEST_P(PicturesTest, ParametersMonthly)
{
    Open();
    Look("parameters-monthly");
}

TEST_P(PicturesTest, ParametersYearly)
{
    Open();
    GoToYearly();
    Look("parameters-yearly");
}

TEST_P(PicturesTest, ParametersWithUnreadRules)
{
    WriteParameter("Desk.ini", "Monthly Calendar", "Holiday99", "99999,EASTER,typo");
    Open();
    Look("parameters-unread");
}

TEST_P(PicturesTest, HolidaysWithUnreadLines)
{
    std::ofstream(At("holiday/Mine.txt")) << "0101,DAY,New Year\n0230,DAY,Never\n0101,DAI,Odd\n";
    Open();
    OpenFromMain("cmdMChangeHoliday", "frmHoliday");
    user_->Choose("cboHolidayFile", "Mine.txt");
    Look("holidays-unread");
}

TEST_P(PicturesTest, Holidays)
{
    Open();
    OpenFromMain("cmdMChangeHoliday", "frmHoliday");
    user_->Choose("cboHolidayFile", "UnitedStates.txt");
    Look("holidays");
}

TEST_P(PicturesTest, HolidaysWithChoosers)
{
    std::ofstream(At("holiday/Mine.txt"))
        << "# Language: de\n# Regions: BW Baden-Württemberg; BY Bayern\n0101,DAY,Neujahr\n"
           "> name en New Year's Day\n0106,FIXED,Heilige Drei Könige\n> only in BW BY\n"
           "0830,DAY,Ben\n> born 1984\n1224,FIXED,Heiligabend\n> kind bank\n"
           "0401,FIXED,Ferien\n> kind school; days 12\n"
           "1231,FIXED,Silvester\n> kind half\n0508,FIXED,Muttertag\n> kind observance\n"
           "0708,FIXED,Brauch\n> kind optional\n";
    Open();
    OpenFromMain("cmdMChangeHoliday", "frmHoliday");
    user_->Choose("cboHolidayFile", "Mine.txt");
    Look("holidays-choosers");
}

TEST_P(PicturesTest, Country)
{
    Open();
    OpenFromMain("cmdMChangeHoliday", "frmHoliday");
    user_->Click("cmdCountry");
    user_->WaitForWindow("frmCountry");
    user_->Enter("txtFind", "sch");
    Look("country");
}

TEST_P(PicturesTest, OwnDay)
{
    Open();
    OpenFromMain("cmdMChangeHoliday", "frmHoliday");
    user_->Click("cmdAddDay");
    user_->WaitForWindow("frmOwnDay");
    user_->Choose("cboKind", "Several days in a row");
    Look("own-day");
}

TEST_P(PicturesTest, Import)
{
    fs::create_directories(At("holiday/own"));
    std::ofstream(At("holiday/own/Imported days.txt")) << "0101,DAY,New Year\n";
    Open();
    OpenFromMain("cmdMChangeHoliday", "frmHoliday");
    PutOnClipboard("Date\tEvent\tPlace\n3/4/2027\tSpring market\tTown hall\n"
                   "5/6/2027\tSummer party of the rowing club\tBoat house\n"
                   "soon\tTournament\tEverywhere\n7/8/2027\t\tNowhere\n"
                   "9/10/2027\tTournament\tSports ground\n");
    user_->Click("lstRules");
    user_->Key('V', wxMOD_CONTROL);
    user_->WaitForWindow("frmImport");
    Look("import");
}

TEST_P(PicturesTest, Tip)
{
    const std::string tips = testing_support::BytesOf(At("tips.txt"));
    std::ofstream(At("tips.txt")) << tips.substr(0, tips.find('\n') + 1);
    WriteSetting("Environment", "ShowTips", "Y");
    StartWithoutWaiting();
    user_->WaitForWindow("frmTip");
    Look("tip");
}

TEST_P(PicturesTest, LongestTip)
{
    const std::string tips = testing_support::BytesOf(At("tips.txt"));
    std::istringstream lines(tips);
    std::string longest;
    for (std::string line; std::getline(lines, line);)
        longest = line.size() > longest.size() ? line : longest;
    std::ofstream(At("tips.txt")) << longest;
    WriteSetting("Environment", "ShowTips", "Y");
    StartWithoutWaiting();
    user_->WaitForWindow("frmTip");
    Look("tip-longest");
}

TEST_P(PicturesTest, About)
{
    Start();
    OpenFromMain("cmdAbout", "frmAbout");
    Look("about");
}

TEST_P(PicturesTest, Error)
{
    Open();
    user_->Enter("txtMFirstCellofDay", "IQ6");
    user_->Click("cmdOK");
    user_->WaitForMessage();
    Look("error");
}

TEST_P(PicturesTest, Question)
{
    fs::remove(At("template/Desk.ini"));
    StartWith("Desk.xlsx");
    user_->Choose("cboTemplateFile", "Wall.xls");
    user_->WaitForMessage();
    Look("question");
}

INSTANTIATE_TEST_SUITE_P(Captions, PicturesTest, testing::Bool(),
                         [](const auto& captions) { return captions.param ? "Long" : "English"; });

} // namespace
} // namespace orrery::ui::wx
