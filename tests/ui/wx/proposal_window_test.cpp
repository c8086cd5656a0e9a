#include "main_thread.h"
#include "ui/wx/native/text.h"
#include "window_test.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>
#include <wx/dnd.h>

namespace orrery::ui::wx {
namespace {

namespace fs = std::filesystem;

/// The bar above the preview, which says what was found in a template without parameters.
class ProposalWindowTest : public WindowTest {
protected:
    /// Drops a workbook from elsewhere, without parameters, on the window.
    void StartAndDrop()
    {
        fs::create_directories(At("elsewhere"));
        fs::copy(At("template/Desk.xlsx"), At("elsewhere/Mine.xlsx"));
        Start();
        PostToMain([this] {
            wxArrayString names;
            names.push_back(ToWx(At("elsewhere/Mine.xlsx").string()));
            dynamic_cast<wxFileDropTarget&>(*program_->window->GetDropTarget())
                .OnDropFiles(1, 1, names);
        });
        WaitForBar();
    }
    void WaitForBar() const
    {
        WaitFor("the bar", [] {
            return FindControl("lblProposal").IsShownOnScreen() &&
                   FindControl("cmdUseProposal").IsShownOnScreen() &&
                   FindControl("cmdLookFirst").IsShownOnScreen();
        });
    }
    void WaitForPages() const
    {
        WaitFor("the pages", [this] {
            const Preview& preview = program_->form.pvwPages;
            return !preview.Pages().empty() && !preview.IsExample();
        });
    }
};

TEST_F(ProposalWindowTest, ADroppedWorkbookIsACalendarAfterTwoClicks)
{
    StartAndDrop();
    std::string text = user_->TextOf("lblProposal");
    std::ranges::replace(text, '\n', ' ');
    EXPECT_THAT(text, testing::StartsWith("Orrery found a month grid on 'Month' and a year page on "
                                          "'Year'."));
    user_->Click("cmdUseProposal");
    WaitForPages();
    EXPECT_FALSE(user_->IsShown("lblProposal"));
    EXPECT_FALSE(user_->IsShown("cmdUseProposal"));
    user_->WaitForFocus("cmdGenerate");
    EXPECT_FALSE(fs::exists(At("template/Mine.ini")));
    user_->Click("cmdGenerate");
    WaitFor("the run's end", [this] { return program_->form.cmdOpenFolder.visible; });
    EXPECT_THAT(Cells("output/2027Mine.xlsx", "May", {"H6", "B10"}),
                testing::ElementsAre("1", "2")); // it begins with a Saturday
}

TEST_F(ProposalWindowTest, LookFirstShowsTheProposalInTheDialog)
{
    StartAndDrop();
    user_->Key('K', wxMOD_ALT);
    user_->WaitForWindow("frmParameter");
    EXPECT_EQ(user_->TextOf("txtMSheetName"), "Month");
    EXPECT_EQ(user_->TextOf("txtMFirstCellofDay"), "B6");
    user_->Key(WXK_ESCAPE);
    user_->WaitForWindow("frmMain");
    WaitForBar();
    user_->Click("cmdLookFirst");
    user_->WaitForWindow("frmParameter");
    user_->WaitForFocus("cboMWeekdayName"); // the first that is not known
    user_->Click("cmdOK");
    user_->WaitForWindow("frmMain");
    WaitForPages();
    EXPECT_FALSE(user_->IsShown("cmdLookFirst"));
}

TEST_F(ProposalWindowTest, KeysReachTheButtonsBeforeThePages)
{
    StartAndDrop();
    OnMain([] { FindControl("chkPreview").SetFocus(); });
    user_->Key(WXK_TAB);
    EXPECT_EQ(user_->Focused(), "cmdUseProposal");
    user_->Key(WXK_TAB);
    EXPECT_EQ(user_->Focused(), "cmdLookFirst");
    user_->Key(WXK_TAB);
    EXPECT_EQ(user_->Focused(), "pvwPages");
    user_->Key('U', wxMOD_ALT);
    WaitForPages();
}

TEST_F(ProposalWindowTest, TheTextHasAsManyLinesAsItNeeds)
{
    StartAndDrop();
    const auto waitForLines = [this](int width, int least, int most) {
        OnMain([this, width] {
            program_->window->SetClientSize(program_->window->FromDIP(wxSize(width, 600)));
        });
        WaitFor("the lines", [=] {
            const wxWindow& text = FindControl("lblProposal");
            const int lines = text.GetSize().y / text.GetCharHeight();
            return lines >= least && lines <= most;
        });
    };
    waitForLines(1500, 1, 1);
    waitForLines(900, 2, 9);
    waitForLines(1500, 1, 1);
}

} // namespace
} // namespace orrery::ui::wx
