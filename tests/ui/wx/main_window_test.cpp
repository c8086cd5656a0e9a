#include "main_thread.h"
#include "native_eyes.h"
#include "ui/wx/native/text.h"
#include "window_test.h"

#include <fstream>
#include <gmock/gmock.h>
#include <thread>
#include <wx/clipbrd.h>
#include <wx/dnd.h>
#include <wx/utils.h>

namespace orrery::ui::wx {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// The text on the clipboard; empty if it has none.
std::string CopiedText()
{
    const wxClipboardLocker clipboard;
    wxTextDataObject copied;
    if (!clipboard || !wxTheClipboard->GetData(copied))
        return {};
    return FromWx(copied.GetText());
}

class MainWindowTest : public WindowTest {
protected:
    void StartWith(const std::string& templateFile)
    {
        Start();
        user_->Choose("cboTemplateFile", templateFile);
    }
    void GenerateWith(const std::string& templateFile, const std::string& year)
    {
        StartWith(templateFile);
        user_->Enter("txtYear", year);
        user_->Key('G', wxMOD_ALT);
        WaitFor("the run's end", [this] { return program_->form.cmdOpenFolder.visible; });
    }
    std::vector<bool> Enabled(const std::vector<std::string>& names) const
    {
        std::vector<bool> enabled;
        for (const std::string& name : names)
            enabled.push_back(user_->IsEnabled(name));
        return enabled;
    }
    /// The controls in Tab order, starting with the list of templates.
    std::vector<std::string> TabOrder()
    {
        user_->Key('F', wxMOD_ALT);
        user_->WaitForFocus("cboTemplateFile");
        std::vector<std::string> order;
        do {
            order.push_back(user_->Focused());
            user_->Key(WXK_TAB);
        } while (user_->Focused() != "cboTemplateFile" && order.size() < 20);
        std::erase(order, "updYear"); // it takes the focus only in some toolkits
        return order;
    }
    /// Which of Generate, Open, Modify and Save are enabled.
    std::vector<bool> Commands() const
    {
        return Enabled({"cmdGenerate", "cmdOpenTemplate", "cmdModify", "cmdSave"});
    }
    /// Changes the monthly set of the chosen template.
    void ChangeSheetName(const std::string& name)
    {
        user_->Click("cmdModify");
        user_->WaitForWindow("frmParameter");
        user_->Enter("txtMSheetName", name);
        user_->Key(WXK_RETURN);
        user_->WaitForWindow("frmMain");
    }
    /// Drops these files on the window.
    void Drop(const std::vector<fs::path>& files)
    {
        wxArrayString names;
        for (const fs::path& file : files)
            names.push_back(wxString::FromUTF8(file.string()));
        PostToMain([this, names] {
            auto& target = dynamic_cast<wxFileDropTarget&>(*program_->window->GetDropTarget());
            target.OnDropFiles(1, 1, names);
        });
    }
    fs::path Outside(const std::string& name) const
    {
        fs::create_directories(At("elsewhere"));
        return At("elsewhere") / name;
    }
    void WaitForTemplate(const std::string& name) const
    {
        WaitFor("template " + name,
                [this, name] { return program_->form.CurrentTemplate() == name && !wxIsBusy(); });
    }
};

TEST_F(MainWindowTest, StartsWithTemplatesAndNextYearButNoChoice)
{
    Start();
    EXPECT_THAT(user_->EntriesOf("cboTemplateFile"), ElementsAre("Desk.xlsx", "Wall.xls"));
    EXPECT_EQ(user_->TextOf("cboTemplateFile"), "");
    EXPECT_EQ(user_->TextOf("txtYear"), "2027"); // it is November 2026
    EXPECT_THAT(Commands(), ElementsAre(false, false, false, false));
    EXPECT_THAT(Enabled({"cmdHelp", "cmdAbout", "cmdExit"}), ElementsAre(true, true, true));
    EXPECT_FALSE(user_->IsShown("cmdCopyTemplates"));
    EXPECT_FALSE(user_->IsShown("cmdOpenFolder"));
    EXPECT_FALSE(user_->IsShown("chkPdf"));
}

TEST_F(MainWindowTest, ChoosingATemplateEnablesItsCommands)
{
    StartWith("Desk.xlsx");
    EXPECT_THAT(Commands(), ElementsAre(true, true, true, false));
}

TEST_F(MainWindowTest, TemplateWithoutParameterFileOffersToSaveTheDefaults)
{
    fs::remove(At("template/Wall.ini"));
    StartWith("Wall.xls");
    EXPECT_THAT(Commands(), ElementsAre(true, true, true, true));
    user_->Key('S', wxMOD_ALT);
    WaitFor("the button to follow", [this] { return !program_->form.cmdSave.enabled; });
    EXPECT_FALSE(user_->IsEnabled("cmdSave"));
    EXPECT_TRUE(fs::exists(At("template/Wall.ini")));
}

TEST_F(MainWindowTest, AnotherTemplateAsksToSaveAndYesSaves)
{
    StartWith("Desk.xlsx");
    ChangeSheetName("Leaf");
    EXPECT_TRUE(user_->IsEnabled("cmdSave"));
    user_->Choose("cboTemplateFile", "Wall.xls");
    EXPECT_EQ(user_->WaitForMessage(), "The parameters for Desk.xlsx has been changed.\n"
                                       "Do you want to save the changes?");
    user_->Answer('Y', wxMOD_ALT);
    WaitForTemplate("Wall.xls");
    EXPECT_EQ(Parameter("Desk.ini", "Monthly Calendar", "SheetName"), "Leaf");
    EXPECT_FALSE(user_->IsEnabled("cmdSave"));
}

TEST_F(MainWindowTest, AnotherTemplateAsksToSaveAndNoDropsTheChanges)
{
    StartWith("Desk.xlsx");
    ChangeSheetName("Leaf");
    user_->Choose("cboTemplateFile", "Wall.xls");
    user_->Answer('N', wxMOD_ALT);
    WaitForTemplate("Wall.xls");
    EXPECT_EQ(Parameter("Desk.ini", "Monthly Calendar", "SheetName"), "Month");
    user_->Choose("cboTemplateFile", "Desk.xlsx");
    user_->Click("cmdModify");
    user_->WaitForWindow("frmParameter");
    EXPECT_EQ(user_->TextOf("txtMSheetName"), "Month");
}

TEST_F(MainWindowTest, ChoosingTheCurrentTemplateAgainAsksNothing)
{
    StartWith("Desk.xlsx");
    ChangeSheetName("Leaf");
    user_->Choose("cboTemplateFile", "Desk.xlsx");
    EXPECT_EQ(user_->Front(), "frmMain");
    EXPECT_TRUE(user_->IsEnabled("cmdSave"));
}

TEST_F(MainWindowTest, GeneratesAReadableWorkbook)
{
    GenerateWith("Desk.xlsx", "2028");
    EXPECT_THAT(Cells("output/2028Desk.xlsx", "January", {"B2", "G2", "G6", "H6", "B10"}),
                ElementsAre("January", "2028", "", "1", "2")); // a Saturday
    EXPECT_THAT(Cells("output/2028Desk.xlsx", "2028", {"B2"}), ElementsAre("2028"));
    EXPECT_EQ(WaitForOpened(), At("output/2028Desk.xlsx").string());
    EXPECT_EQ(user_->TextOf("lblStatus"),
              "Saved as " + At("output/2028Desk.xlsx").string() + " by the built-in engine");
    EXPECT_FALSE(user_->IsShown("prgRun"));
    EXPECT_FALSE(OnMain([] { return wxIsBusy(); })) << "the hourglass is still there";
}

TEST_F(MainWindowTest, GeneratesTheOldFormat)
{
    GenerateWith("Wall.xls", "2028");
    EXPECT_THAT(Cells("output/2028Wall.xls", "January", {"B13", "G13", "G17", "H17"}),
                ElementsAre("January", "2028", "1", "2")); // weeks begin on Monday
}

TEST_F(MainWindowTest, MakesAPdfIfPossible)
{
    options_.printsPdf = true;
    Start();
    EXPECT_TRUE(user_->IsShown("chkPdf"));
    EXPECT_FALSE(user_->IsChecked("chkPdf"));
    user_->Key('D', wxMOD_ALT);
    EXPECT_TRUE(user_->IsChecked("chkPdf"));
    EXPECT_EQ(Setting("Environment", "Pdf"), "Y");
    End();

    GenerateWith("Desk.xlsx", "2028"); // the choice was saved
    EXPECT_THAT(testing_support::BytesOf(At("output/2028Desk.pdf")), StartsWith("January"));
    EXPECT_EQ(user_->TextOf("lblStatus"), "Saved by the built-in engine as " +
                                              At("output/2028Desk.xlsx").string() +
                                              " and 2028Desk.pdf");
    EXPECT_EQ(WaitForOpened(), At("output/2028Desk.xlsx").string());
    EXPECT_FALSE(OnMain([] { return wxIsBusy(); })) << "the hourglass is still there";
}

TEST_F(MainWindowTest, CancelEndsARunThatWaitsForAnApplication)
{
    StartWith("Desk.xlsx");
    EXPECT_FALSE(user_->IsShown("cmdCancel"));
    OnMain([this] { return program_->engines.isStuck = true; });
    user_->Key('G', wxMOD_ALT);
    WaitFor("Cancel", [this] { return program_->form.cmdCancel.visible; });
    EXPECT_EQ(user_->TextOf("lblStatus"), "The spreadsheet program has not answered for a minute.");
    user_->Click("cmdAbout"); // nothing but Cancel takes input
    user_->Click("cmdCancel");
    EXPECT_THAT(user_->WaitForMessage(), HasSubstr("does not answer any more"));
    user_->Answer(WXK_RETURN);
    WaitFor("the run's end", [this] { return !program_->form.cmdCancel.visible; });
    EXPECT_EQ(user_->TextOf("lblStatus"), "2027Desk.xlsx was not finished.");
    EXPECT_FALSE(OnMain([] { return wxIsBusy(); })) << "the hourglass is still there";
    EXPECT_FALSE(user_->IsShown("cmdCancel"));
    EXPECT_TRUE(OnMain([this] { return FrontWindow() == program_->window; }));
}

TEST_F(MainWindowTest, TabReachesTheCheckBoxAfterTheGenerateButton)
{
    options_.printsPdf = true;
    StartWith("Desk.xlsx");
    EXPECT_THAT(TabOrder(), ElementsAre("cboTemplateFile", "cmdOpenTemplate", "txtYear",
                                        "cmdModify", "cmdGenerate", "chkPdf", "cmdHelp", "cmdAbout",
                                        "cmdExit", "chkPreview", "pvwPages"));
}

TEST_F(MainWindowTest, OpensTheFolderOfTheSavedWorkbook)
{
    GenerateWith("Desk.xlsx", "2028");
    WaitForOpened();
    EXPECT_TRUE(user_->IsShown("cmdOpenFolder"));
    user_->Key('L', wxMOD_ALT);
    EXPECT_THAT(WaitForOpened(2), StartsWith(At("output").string()));
}

TEST_F(MainWindowTest, TheStatusLineHasATooltipAndAMenuThatCopiesThePath)
{
    GenerateWith("Desk.xlsx", "2028");
    WaitForOpened();
    const auto tooltip = OnMain([] { return FromWx(FindControl("lblStatus").GetToolTipText()); });
    EXPECT_EQ(tooltip, user_->TextOf("lblStatus"));
    user_->RightClick("lblStatus");
    user_->Key(WXK_DOWN);
    user_->Key(WXK_RETURN);
    const std::string path = At("output/2028Desk.xlsx").string();
    WaitFor("the path on the clipboard", [path] { return CopiedText() == path; });
}

TEST_F(MainWindowTest, TheFolderIsListedAgainByF5AndByActivation)
{
    Start();
    fs::copy(At("template/Desk.xlsx"), At("template/New.xlsx"));
    user_->Key(WXK_F5);
    EXPECT_THAT(user_->EntriesOf("cboTemplateFile"),
                ElementsAre("Desk.xlsx", "New.xlsx", "Wall.xls"));
    fs::remove(At("template/New.xlsx"));
    user_->Click("cmdAbout");
    user_->WaitForWindow("frmAbout");
    user_->Key(WXK_ESCAPE);
    user_->WaitForWindow("frmMain");
    WaitFor("the list without the template",
            [this] { return program_->form.cboTemplateFile.entries.size() == 2; });
}

TEST_F(MainWindowTest, AMissingYearIsAskedFor)
{
    StartWith("Desk.xlsx");
    user_->Enter("txtYear", "");
    user_->Click("cmdGenerate");
    EXPECT_EQ(user_->WaitForMessage(), "Please inupt a year.");
    user_->Answer(WXK_RETURN);
    user_->WaitForFocus("txtYear");
    EXPECT_THAT(Opened(), IsEmpty());
}

TEST_F(MainWindowTest, AFailingRunIsReportedAndTheWindowStaysUsable)
{
    std::ofstream(At("template/Broken.xlsx")) << "no workbook";
    StartWith("Broken.xlsx");
    user_->Click("cmdGenerate");
    EXPECT_THAT(user_->WaitForMessage(), StartsWith("Error!\nError Info: "));
    user_->Answer(WXK_RETURN);
    user_->WaitForWindow("frmMain");
    EXPECT_FALSE(OnMain([] { return wxIsBusy(); })) << "the hourglass is still there";
    EXPECT_FALSE(user_->IsShown("prgRun"));
    EXPECT_THAT(Commands(), ElementsAre(true, true, true, true));
}

TEST_F(MainWindowTest, OpensTheTemplateInItsOwnApplication)
{
    StartWith("Desk.xlsx");
    user_->Key('P', wxMOD_ALT);
    EXPECT_EQ(WaitForOpened(), At("template/Desk.xlsx").string());
}

TEST_F(MainWindowTest, ADeletedTemplateIsReported)
{
    StartWith("Desk.xlsx");
    fs::remove(At("template/Desk.xlsx"));
    user_->Click("cmdOpenTemplate");
    EXPECT_EQ(user_->WaitForMessage(), "Error!\nError Info: File not found");
    user_->Answer(WXK_RETURN);
    user_->WaitForWindow("frmMain");
    EXPECT_THAT(Opened(), IsEmpty());
}

TEST_F(MainWindowTest, ArrowKeysStepTheYearWithinItsRange)
{
    Start();
    user_->Click("txtYear");
    user_->Key(WXK_UP);
    EXPECT_EQ(user_->TextOf("txtYear"), "2028");
    user_->Enter("txtYear", "6552");
    user_->Key(WXK_UP);
    user_->Key(WXK_UP);
    EXPECT_EQ(user_->TextOf("txtYear"), "6553");
    user_->Enter("txtYear", "2");
    user_->Key(WXK_DOWN);
    user_->Key(WXK_DOWN);
    EXPECT_EQ(user_->TextOf("txtYear"), "1");
}

TEST_F(MainWindowTest, TheArrowsStepTheYearByMouse)
{
    Start();
    const auto ends = OnMain([] {
        const wxRect arrows = FindControl("updYear").GetScreenRect();
        const bool wide = arrows.width > arrows.height;
        const wxPoint less(arrows.x + arrows.width / 4, arrows.y + arrows.height * 3 / 4);
        const wxPoint more(arrows.x + arrows.width * 3 / 4, arrows.y + arrows.height / 4);
        const int middle = arrows.y + arrows.height / 2;
        return wide ? std::pair(wxPoint(less.x, middle), wxPoint(more.x, middle))
                    : std::pair(less, more);
    });
    user_->ClickAt(ends.second);
    EXPECT_EQ(user_->TextOf("txtYear"), "2028");
    user_->ClickAt(ends.first);
    EXPECT_EQ(user_->TextOf("txtYear"), "2027");
}

TEST_F(MainWindowTest, HelpOpensByButtonAndKey)
{
    WriteHelp("main");
    Start();
    user_->Key('H', wxMOD_ALT);
    EXPECT_EQ(WaitForOpened(1), HelpPage("main"));
    user_->Key(WXK_F1);
    EXPECT_EQ(WaitForOpened(2), HelpPage("main"));
}

TEST_F(MainWindowTest, MissingHelpIsReported)
{
    Start();
    user_->Key(WXK_F1);
    EXPECT_THAT(user_->WaitForMessage(), StartsWith("Error!\nError Info: "));
    user_->Answer(WXK_ESCAPE);
    user_->WaitForWindow("frmMain");
}

TEST_F(MainWindowTest, MnemonicsOfLabelsFocusTheirFields)
{
    Start();
    user_->Key('Y', wxMOD_ALT);
    user_->WaitForFocus("txtYear");
    user_->Key('F', wxMOD_ALT);
    user_->WaitForFocus("cboTemplateFile");
}

TEST_F(MainWindowTest, MnemonicsOfButtonsPressThem)
{
    StartWith("Desk.xlsx");
    user_->Key('M', wxMOD_ALT);
    user_->WaitForWindow("frmParameter");
    user_->Key(WXK_ESCAPE);
    user_->WaitForWindow("frmMain");
    user_->Key('A', wxMOD_ALT);
    user_->WaitForWindow("frmAbout");
    user_->Key(WXK_ESCAPE);
    user_->WaitForWindow("frmMain");
    user_->Key('X', wxMOD_ALT);
    WaitFor("the window to close", [this] { return !program_->window; });
}

TEST_F(MainWindowTest, ExitAsksNothingAboutUnsavedChanges)
{
    StartWith("Desk.xlsx");
    ChangeSheetName("Leaf");
    user_->Click("cmdExit");
    WaitFor("the window to close", [this] { return !program_->window; });
    EXPECT_EQ(Parameter("Desk.ini", "Monthly Calendar", "SheetName"), "Month");
}

TEST_F(MainWindowTest, TabGoesThroughTheControlsInOrder)
{
    StartWith("Desk.xlsx");
    ChangeSheetName("Leaf"); // enables Save
    EXPECT_THAT(TabOrder(), ElementsAre("cboTemplateFile", "cmdOpenTemplate", "txtYear",
                                        "cmdModify", "cmdSave", "cmdGenerate", "cmdHelp",
                                        "cmdAbout", "cmdExit", "chkPreview", "pvwPages"));
}

TEST_F(MainWindowTest, EscapeLeavesItOpen)
{
    Start();
    user_->Key(WXK_ESCAPE);
    EXPECT_EQ(user_->Front(), "frmMain");
    EXPECT_TRUE(user_->IsShown("cmdGenerate"));
}

TEST_F(MainWindowTest, ReturnGenerates)
{
    StartWith("Desk.xlsx");
    user_->Enter("txtYear", "2031");
    user_->Key(WXK_RETURN);
    WaitFor("the run's end", [this] { return program_->form.cmdOpenFolder.visible; });
    EXPECT_TRUE(fs::exists(At("output/2031Desk.xlsx")));
}

TEST_F(MainWindowTest, AnEmptyFolderSaysWhatToDoAndOffersTheShippedTemplates)
{
    fs::remove_all(At("template"));
    Start();
    EXPECT_THAT(user_->TextOf("lblEmptyFolder"), HasSubstr(At("template").string()));
    EXPECT_TRUE(user_->IsShown("lblEmptyFolder"));
    EXPECT_THAT(Commands(), ElementsAre(false, false, false, false));
    EXPECT_THAT(Enabled({"cmdHelp", "cmdAbout", "cmdExit"}), ElementsAre(true, true, true));
    user_->Key('C', wxMOD_ALT);
    WaitFor("the templates", [this] { return !program_->form.cboTemplateFile.entries.empty(); });
    EXPECT_THAT(user_->EntriesOf("cboTemplateFile"), testing::Contains("Desk.xlsx"));
    EXPECT_FALSE(user_->IsShown("lblEmptyFolder"));
    EXPECT_FALSE(user_->IsShown("cmdCopyTemplates"));
}

TEST_F(MainWindowTest, ADroppedFileIsCopiedAndChosen)
{
    fs::copy(At("template/Desk.xlsx"), Outside("Mine.xlsx"));
    Start();
    Drop({Outside("Mine.xlsx")});
    WaitForTemplate("Mine.xlsx");
    EXPECT_EQ(user_->TextOf("cboTemplateFile"), "Mine.xlsx");
    EXPECT_TRUE(fs::exists(At("template/Mine.xlsx")));
    EXPECT_THAT(Commands(), ElementsAre(true, true, true, true)); // it has no parameter file
}

TEST_F(MainWindowTest, ADroppedFileThatIsNoTemplateIsReported)
{
    std::ofstream(Outside("notes.txt")) << "notes";
    Start();
    Drop({Outside("notes.txt")});
    EXPECT_THAT(user_->WaitForMessage(), HasSubstr("notes.txt"));
    user_->Answer(WXK_RETURN);
    EXPECT_FALSE(fs::exists(At("template/notes.txt")));
    EXPECT_EQ(user_->TextOf("cboTemplateFile"), "");
}

TEST_F(MainWindowTest, ADroppedFileReplacesAnotherOnlyAfterAQuestion)
{
    std::ofstream(Outside("Wall.xls")) << "another";
    Start();
    const auto size = fs::file_size(At("template/Wall.xls"));
    Drop({Outside("Wall.xls")});
    EXPECT_THAT(user_->WaitForMessage(), HasSubstr("Wall.xls"));
    user_->Answer('N', wxMOD_ALT);
    EXPECT_EQ(fs::file_size(At("template/Wall.xls")), size);
    Drop({Outside("Wall.xls")});
    user_->Answer('Y', wxMOD_ALT);
    WaitForTemplate("Wall.xls");
    EXPECT_EQ(fs::file_size(At("template/Wall.xls")), std::string("another").size());
}

TEST_F(MainWindowTest, FilesOnTheCommandLineAreCopied)
{
    fs::copy(At("template/Desk.xlsx"), Outside("Mine.xlsx"));
    Start({Outside("Mine.xlsx").string()});
    WaitForTemplate("Mine.xlsx");
    EXPECT_THAT(user_->EntriesOf("cboTemplateFile"),
                ElementsAre("Desk.xlsx", "Mine.xlsx", "Wall.xls"));
}

TEST_F(MainWindowTest, RemembersItsSizeAndPlace)
{
    Start();
    const wxRect wanted(300, 200, 700, 500);
    // The window manager responds later, and adds its frame to the window.
    const auto isThere = [this, wanted] {
        const wxRect place = program_->window->GetRect();
        const wxPoint off = place.GetPosition() - wanted.GetPosition();
        return place.GetSize() == wanted.GetSize() && std::abs(off.x) + std::abs(off.y) <= 2;
    };
    OnMain([this, wanted] { program_->window->SetSize(wanted); });
    WaitFor("the new place", isThere);
    std::this_thread::sleep_for(std::chrono::milliseconds(300)); // late events of the old window
    WaitFor("the new place", isThere);
    End();
    Start();
    WaitFor("the place that was kept", isThere);
}

} // namespace
} // namespace orrery::ui::wx
