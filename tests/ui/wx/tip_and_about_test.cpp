#include "main_thread.h"
#include "window_test.h"

#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>

namespace orrery::ui::wx {
namespace {

namespace fs = std::filesystem;

class TipTest : public WindowTest {
protected:
    void StartWithTip(const std::string& setting = "Y")
    {
        WriteSetting("Environment", "ShowTips", setting);
        StartWithoutWaiting();
        user_->WaitForWindow("frmTip");
    }
    void WriteTips(const std::string& text) const { std::ofstream(At("tips.txt")) << text; }
};

TEST_F(TipTest, IsShownAtTheStartUnlessTheSettingIsN)
{
    StartWithTip();
    EXPECT_TRUE(user_->IsChecked("chkLoadTipsAtStartup"));
    const auto [tip, main] = OnMain([this] {
        return std::pair(FrontWindow()->GetScreenRect(), program_->window->GetScreenRect());
    });
    EXPECT_TRUE(main.Contains(tip.GetPosition() + tip.GetSize() / 2)) << "it lies elsewhere";
    user_->Key(WXK_ESCAPE);
    user_->WaitForWindow("frmMain");
}

TEST_F(TipTest, TheCheckBoxIsSavedAtOnce)
{
    StartWithTip();
    user_->Key('S', wxMOD_ALT);
    WaitFor("the setting", [this] { return Setting("Environment", "ShowTips") == "N"; });
    user_->Click("chkLoadTipsAtStartup");
    WaitFor("the setting", [this] { return Setting("Environment", "ShowTips") == "Y"; });
    user_->Click("chkLoadTipsAtStartup");
    WaitFor("the setting", [this] { return Setting("Environment", "ShowTips") == "N"; });
    End();
    Start();
    EXPECT_EQ(user_->Front(), "frmMain"); // no tip any more
}

TEST_F(TipTest, NextTipWrapsAround)
{
    WriteTips("One\n\nTwo\\nand more\nThree\n");
    StartWithTip();
    std::vector<std::string> seen;
    for (int i = 0; i < 4; ++i) {
        seen.push_back(user_->TextOf("lblTipText"));
        user_->Key('N', wxMOD_ALT);
        WaitFor("another tip", [&] { return FindControl("lblTipText").GetLabel() != seen.back(); });
    }
    EXPECT_EQ(seen[3], seen[0]);
    EXPECT_THAT(seen, testing::IsSupersetOf({"One", "Two\nand more", "Three"}));
}

TEST_F(TipTest, AMissingFileIsExplainedAndNextChangesNothing)
{
    fs::remove(At("tips.txt"));
    StartWithTip();
    const std::string expected =
        "That the tips.txt file was not found? \n\nCreate a text file named tips.txt using NotePad "
        "with 1 tip per line. Then place it in the same directory as the application. ";
    const auto words = [](std::string text) { // lines may be wrapped
        std::replace(text.begin(), text.end(), '\n', ' ');
        text.erase(std::unique(text.begin(), text.end(),
                               [](char a, char b) { return a == ' ' && b == ' '; }),
                   text.end());
        return text;
    };
    EXPECT_EQ(words(user_->TextOf("lblTipText")), words(expected));
    user_->Click("cmdNextTip");
    EXPECT_EQ(words(user_->TextOf("lblTipText")), words(expected));
}

TEST_F(TipTest, CloseAndReturnCloseIt)
{
    StartWithTip();
    user_->Click("cmdOK");
    user_->WaitForWindow("frmMain");
    End();
    StartWithTip();
    user_->Key(WXK_RETURN);
    user_->WaitForWindow("frmMain");
}

class AboutTest : public WindowTest {
protected:
    void StartWithAbout()
    {
        Start();
        user_->Click("cmdAbout");
        user_->WaitForWindow("frmAbout");
    }
};

TEST_F(AboutTest, ShowsNameVersionAndNotice)
{
    StartWithAbout();
    EXPECT_EQ(OnMain([] { return FindControl("frmAbout").GetLabel(); }), "About Orrery");
    EXPECT_EQ(user_->TextOf("lblSysName"), "Orrery");
    EXPECT_EQ(user_->TextOf("lblSysVer"), "Version " ORRERY_VERSION);
    EXPECT_NE(user_->TextOf("lblCopyright"), "");
    EXPECT_TRUE(user_->IsShown("imgLogo"));
}

TEST_F(AboutTest, LinksOpenByClick)
{
    StartWithAbout();
    user_->Click("lblEmail");
    EXPECT_EQ(WaitForOpened(1), "mailto:" ORRERY_EMAIL);
    user_->Click("lblHomePage");
    EXPECT_EQ(WaitForOpened(2), ORRERY_HOMEPAGE);
    EXPECT_EQ(user_->Front(), "frmAbout");
}

TEST_F(AboutTest, HelpOpensItsPage)
{
    WriteHelp("about");
    StartWithAbout();
    user_->Key(WXK_F1);
    EXPECT_EQ(WaitForOpened(), HelpPage("about"));
}

TEST_F(AboutTest, EscapeAndReturnCloseIt)
{
    StartWithAbout();
    user_->Key(WXK_ESCAPE);
    user_->WaitForWindow("frmMain");
    user_->Key('A', wxMOD_ALT);
    user_->WaitForWindow("frmAbout");
    user_->Key(WXK_RETURN);
    user_->WaitForWindow("frmMain");
}

} // namespace
} // namespace orrery::ui::wx
