#include "main_thread.h"
#include "ui/wx/preview/page_strip.h"
#include "ui/wx/preview/page_view.h"
#include "ui/wx/preview/print_pages.h"
#include "window_test.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <wx/dcmemory.h>
#include <wx/image.h>

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
    const PageView& View() const { return dynamic_cast<PageView&>(FindControl("pvwPages")); }
    wxPoint Scrolled() const
    {
        return OnMain([this] { return View().GetViewStart(); });
    }
    double Scale() const
    {
        return OnMain([this] { return View().Scale(); });
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

TEST_F(PreviewWindowTest, KeysZoomAndTheMouseDrags)
{
    StartWith("Desk.xlsx");
    user_->Click("pvwPages");
    const double fitting = Scale();
    user_->Key('1');
    EXPECT_EQ(Scale(), OnMain([this] { return View().FromDIP(1000) / 1000.0; }));
    user_->Key('=');
    user_->Key('=');
    const double larger = Scale();
    EXPECT_GT(larger, 1.4 * fitting);
    const wxPoint before = Scrolled();
    const wxRect place = PlaceOf("pvwPages");
    const wxPoint middle = place.GetPosition() + place.GetSize() / 2;
    user_->Drag(middle, middle - wxPoint(60, 40));
    WaitFor("the page below the pointer",
            [&] { return View().GetViewStart() == before + wxPoint(60, 40); });
    user_->Key(WXK_DOWN); // moves a page that exceeds the window
    EXPECT_EQ(Selected(), 0U);
    EXPECT_GT(Scrolled().y, before.y + 40);
    user_->Key('-');
    EXPECT_LT(Scale(), larger);
    user_->Key('0');
    EXPECT_EQ(Scale(), fitting);
    user_->Key(WXK_DOWN);
    EXPECT_EQ(Selected(), 1U);
}

TEST_F(PreviewWindowTest, AClickOnASmallPageShowsItLarge)
{
    StartWith("Desk.xlsx");
    const wxRect strip = OnMain([this] { return View().GetPrevSibling()->GetScreenRect(); });
    const auto rowHeight =
        OnMain([this] { return dynamic_cast<PageStrip*>(View().GetPrevSibling())->RowHeight(); });
    user_->ClickAt(strip.GetPosition() + wxPoint(strip.width / 3, 2 * rowHeight + rowHeight / 2));
    EXPECT_EQ(Selected(), 2U);
    EXPECT_EQ(user_->Focused(), "pvwPages");
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

TEST_F(PreviewWindowTest, PrintsEveryPageOnItsPaper)
{
    StartWith("Desk.xlsx");
    OnMain([this] {
        PictureCache pictures;
        PagesPrintout printout(program_->form.pvwPages, pictures);
        EXPECT_FALSE(printout.HasPage(0));
        EXPECT_TRUE(printout.HasPage(13));
        EXPECT_FALSE(printout.HasPage(14));
        // A Letter paper with 50 dots in an inch, which a printer cannot reach at its edge.
        wxBitmap paper(600, 430, 24);
        wxMemoryDC dc(paper);
        dc.SetBackground(*wxWHITE_BRUSH);
        dc.Clear();
        printout.SetDC(&dc);
        printout.SetPaperRectPixels({-10, -8, 550, 425});
        EXPECT_TRUE(printout.OnPrintPage(2));
        EXPECT_FALSE(printout.OnPrintPage(14));
        dc.SelectObject(wxNullBitmap);
        const wxImage printed = paper.ConvertToImage();
        int left = printed.GetWidth();
        int right = 0;
        for (int y = 0; y < printed.GetHeight(); ++y) {
            for (int x = 0; x < printed.GetWidth(); ++x) {
                if (printed.GetRed(x, y) < 200) {
                    left = std::min(left, x);
                    right = std::max(right, x);
                }
            }
        }
        EXPECT_LT(left, 60);
        EXPECT_GT(right, 490);
        EXPECT_LT(right, 540) << "it fits the paper";
    });
}

} // namespace
} // namespace orrery::ui::wx
