#include "main_thread.h"
#include "window_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orrery::ui::wx {
namespace {

/// The preview beside the controls of the main window.
class PreviewWindowTest : public WindowTest {
protected:
    void StartWith(const std::string& templateFile)
    {
        Start();
        user_->Choose("cboTemplateFile", templateFile);
        WaitForPages();
    }
    void WaitForPages()
    {
        WaitFor("the preview", [this] {
            const Preview& preview = program_->form.pvwPages;
            return !preview.Pages().empty() && !preview.IsExample();
        });
    }
    std::size_t Selected() const
    {
        return OnMain([this] { return program_->form.pvwPages.Selected(); });
    }
    wxSize WindowSize() const
    {
        return OnMain([this] { return program_->window->GetClientSize(); });
    }
    wxRect PlaceOf(const std::string& name) const
    {
        return OnMain([name] { return FindControl(name).GetScreenRect(); });
    }
};

TEST_F(PreviewWindowTest, ShowsAnExampleAtFirst)
{
    Start();
    WaitFor("the example", [this] { return program_->form.pvwPages.IsExample(); });
    EXPECT_EQ(user_->TextOf("lblNotes"), "Choose a template.");
    EXPECT_FALSE(user_->IsEnabled("cmdGenerate"));
}

TEST_F(PreviewWindowTest, KeysTurnThePages)
{
    StartWith("Desk.xlsx");
    user_->Click("pvwPages");
    EXPECT_EQ(user_->Focused(), "pvwPages");
    user_->Key(WXK_PAGEDOWN);
    user_->Key(WXK_RIGHT);
    EXPECT_EQ(Selected(), 2U);
    user_->Key(WXK_END);
    EXPECT_EQ(Selected(), 12U);
    user_->Key(WXK_PAGEUP);
    EXPECT_EQ(Selected(), 11U);
    user_->Key(WXK_HOME);
    EXPECT_EQ(Selected(), 0U);
}

TEST_F(PreviewWindowTest, FollowsTheYear)
{
    StartWith("Desk.xlsx");
    const auto version = OnMain([this] { return program_->form.pvwPages.Version(); });
    user_->Enter("txtYear", "2031");
    WaitFor("the other year", [&] { return program_->form.pvwPages.Version() > version; });
    user_->Enter("txtYear", "x");
    WaitFor("the sentence",
            [this] { return program_->form.pvwPages.Sentence() == "Please inupt a year."; });
}

TEST_F(PreviewWindowTest, EveryPageIsPaintedWhenTheProgramIsIdle)
{
    StartWith("Desk.xlsx");
    WaitFor("all pages", [this] { return !program_->form.pvwPages.NextUnseen(); });
    EXPECT_EQ(user_->TextOf("lblNotes"), "");
}

TEST_F(PreviewWindowTest, IsHiddenAndTheControlsStay)
{
    StartWith("Desk.xlsx");
    const wxRect generate = PlaceOf("cmdGenerate");
    const wxSize wide = WindowSize();
    user_->Click("chkPreview");
    WaitFor("the narrow window", [&] { return program_->window->GetClientSize().x < wide.x; });
    EXPECT_FALSE(user_->IsShown("pvwPages"));
    EXPECT_EQ(PlaceOf("cmdGenerate").GetSize(), generate.GetSize());
    End();
    EXPECT_THAT(Setting("Windows", "frmMain.Preview"), testing::EndsWith("hidden"));
    StartWithoutWaiting();
    user_->WaitForWindow("frmMain");
    EXPECT_FALSE(user_->IsShown("pvwPages"));
    EXPECT_FALSE(user_->IsChecked("chkPreview"));
    user_->Click("chkPreview");
    WaitFor("the picture", [this] { return FindControl("pvwPages").IsShownOnScreen(); });
}

TEST_F(PreviewWindowTest, LiesBelowTheControlsInANarrowWindow)
{
    StartWith("Desk.xlsx");
    EXPECT_GT(PlaceOf("pvwPages").x, PlaceOf("cmdExit").GetRight());
    OnMain(
        [this] { program_->window->SetClientSize(program_->window->FromDIP(wxSize(300, 700))); });
    WaitFor("the place below", [this] {
        return FindControl("pvwPages").GetScreenRect().y >
               FindControl("cmdExit").GetScreenRect().GetBottom();
    });
    EXPECT_TRUE(user_->IsShown("cmdGenerate"));
}

} // namespace
} // namespace orrery::ui::wx
