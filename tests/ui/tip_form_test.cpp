#include "ui/tip_form.h"

#include "util/error.h"
#include "util/file_replace.h"
#include "util/scratch_folder_test.h"

#include <map>

namespace orrery::ui {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

constexpr const char* kMissing =
    "That the tips.txt file was not found? \r\n\r\nCreate a text file named tips.txt using NotePad "
    "with 1 tip per line. Then place it in the same directory as the application. ";

class TipFormTest : public testing_support::ScratchFolderTest {
protected:
    TipForm MakeForm() const { return TipForm(settings_, At("tips.txt")); }
    Texts TipsOf(const std::string& text) const
    {
        Write("tips.txt", text);
        return MakeForm().tipList;
    }
    const std::string settings_ = At("orrery.ini");
};

TEST_F(TipFormTest, ControlsHaveTheirCaptions)
{
    const TipForm form = MakeForm();
    EXPECT_EQ(form.name, "frmTip");
    EXPECT_EQ(form.caption, "Tip of the Day");
    EXPECT_EQ(form.helpPage, "tips");
    EXPECT_EQ(form.lblDidYouKnow.caption, "Did you know...");
    EXPECT_EQ(form.chkLoadTipsAtStartup.caption, "&Show Tips at Startup");
    EXPECT_EQ(form.cmdNextTip.caption, "&Next Tip");
    EXPECT_EQ(form.cmdOK.caption, "&Close");
}

// ---- reading

TEST_F(TipFormTest, EveryLineIsATip)
{
    EXPECT_EQ(TipsOf("One\r\nTwo\nThree"), (Texts{"One", "Two", "Three"}));
}

TEST_F(TipFormTest, BlankLinesAreSkippedAndOtherBlanksKept)
{
    EXPECT_EQ(TipsOf("\n  \t \n  leading\ntrailing  \n\n"), (Texts{"  leading", "trailing  "}));
}

TEST_F(TipFormTest, BackslashNIsALineBreak)
{
    EXPECT_EQ(TipsOf("Line one\\nLine two\n"), Texts{"Line one\r\nLine two"});
    EXPECT_EQ(TipsOf("\\n\\na\\\\nb\\N\\"), Texts{"\r\n\r\na\\\r\nb\\N\\"});
}

TEST_F(TipFormTest, TheFileMayBeUtf8OrInTheCodePage)
{
    EXPECT_EQ(TipsOf("\xEF\xBB\xBFM\xC3\xA4rz\n"), Texts{"M\xC3\xA4rz"});
    EXPECT_EQ(TipsOf("M\xE4rz\n"), Texts{"M\xC3\xA4rz"});
}

TEST_F(TipFormTest, AMissingFileShowsAMessageAndNoNextTip)
{
    TipForm form = MakeForm();
    EXPECT_EQ(form.lblTipText.caption, kMissing);
    EXPECT_TRUE(form.tipList.empty());
    form.cmdNextTip_Click();
    form.cmdNextTip_Click();
    EXPECT_EQ(form.lblTipText.caption, kMissing);
}

TEST_F(TipFormTest, LoadTipsReturnsWhetherTheFileWasRead)
{
    TipForm form = MakeForm();
    EXPECT_FALSE(form.LoadTips(""));
    EXPECT_FALSE(form.LoadTips(At("none.txt")));
    EXPECT_FALSE(form.LoadTips(folder_.string())) << "a folder is no file";
    EXPECT_TRUE(form.LoadTips(Write("some.txt", "A tip\n")));
    EXPECT_EQ(form.lblTipText.caption, "A tip");
}

TEST_F(TipFormTest, AFileOfBlankLinesKeepsTheText)
{
    Write("tips.txt", "  \n\n");
    TipForm form = MakeForm();
    EXPECT_EQ(form.lblTipText.caption, "");
    form.cmdNextTip_Click();
    EXPECT_EQ(form.lblTipText.caption, "");
}

// ---- choosing

TEST_F(TipFormTest, TheNextTipAfterTheLastIsTheFirst)
{
    Write("tips.txt", "One\nTwo & a half\nThree\n");
    TipForm form = MakeForm();
    form.currentTip = 3;
    Texts shown;
    for (int i = 0; i < 4; ++i) {
        form.cmdNextTip_Click();
        shown.push_back(form.lblTipText.caption);
    }
    EXPECT_EQ(shown, (Texts{"One", "Two & a half", "Three", "One"}));
    EXPECT_TRUE(form.lblTipText.isLiteral);
}

TEST_F(TipFormTest, EveryTipIsEquallyLikelyToBeTheFirst)
{
    Write("tips.txt", "One\nTwo\nThree\n");
    TipForm form = MakeForm();
    std::map<std::string, int> counts;
    constexpr int draws = 3000;
    for (int i = 0; i < draws; ++i) {
        form.PickFirstTip();
        ASSERT_EQ(form.lblTipText.caption,
                  form.tipList.at(static_cast<std::size_t>(form.currentTip - 1)));
        ++counts[form.lblTipText.caption];
    }
    ASSERT_EQ(counts.size(), 3U);
    for (const auto& [tip, count] : counts) // eight standard deviations
        EXPECT_NEAR(count, draws / 3, 206) << tip;
}

// ---- the setting

struct SettingCase {
    const char* name;
    const char* settings; ///< nullptr if there is no file
    bool checked;
};

class ShowTipsBoxTest : public TipFormTest, public testing::WithParamInterface<SettingCase> {};

TEST_P(ShowTipsBoxTest, OnlyNUnchecksTheBox)
{
    if (GetParam().settings != nullptr)
        Write("orrery.ini", GetParam().settings);
    EXPECT_EQ(MakeForm().chkLoadTipsAtStartup.checked, GetParam().checked);
}

INSTANTIATE_TEST_SUITE_P(
    Settings, ShowTipsBoxTest,
    testing::Values(SettingCase{"NoFile", nullptr, true},
                    SettingCase{"NoKey", "[Environment]\n", true},
                    SettingCase{"Y", "[Environment]\nShowTips=Y\n", true},
                    SettingCase{"N", "[Environment]\nShowTips=N\n", false},
                    SettingCase{"SmallN", "[Environment]\nShowTips=n\n", false},
                    SettingCase{"QuotedN", "[Environment]\nShowTips=\" N \"\n", false},
                    SettingCase{"No", "[Environment]\nShowTips=No\n", true},
                    SettingCase{"EmptyValue", "[Environment]\nShowTips=\n", true},
                    SettingCase{"OtherSection", "[Other]\nShowTips=N\n", true}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(TipFormTest, EveryClickIsWrittenAtOnce)
{
    Write("orrery.ini", "; mine\r\n[Environment]\r\nShowTips=Y\r\nEngine=auto\r\n");
    TipForm form = MakeForm();
    form.chkLoadTipsAtStartup.Toggle();
    form.chkLoadTipsAtStartup_Click();
    EXPECT_EQ(util::ReadFile(settings_),
              "; mine\r\n[Environment]\r\nShowTips=N\r\nEngine=auto\r\n");
    form.chkLoadTipsAtStartup.Toggle();
    form.chkLoadTipsAtStartup_Click();
    EXPECT_EQ(util::ReadFile(settings_),
              "; mine\r\n[Environment]\r\nShowTips=Y\r\nEngine=auto\r\n");
    EXPECT_TRUE(form.isOpen);
}

TEST_F(TipFormTest, ChangesByOtherProgramsAreKept)
{
    Write("orrery.ini", "[Environment]\r\nShowTips=Y\r\n");
    TipForm form = MakeForm();
    Write("orrery.ini", "[Environment]\r\nShowTips=Y\r\nEngine=builtin\r\n");
    form.chkLoadTipsAtStartup.Toggle();
    form.chkLoadTipsAtStartup_Click();
    EXPECT_EQ(util::ReadFile(settings_), "[Environment]\r\nShowTips=N\r\nEngine=builtin\r\n");
}

TEST_F(TipFormTest, ASettingThatCannotBeWrittenIsAnErrorAndReverted)
{
    fs::create_directories(settings_); // no file can be written there
    TipForm form = MakeForm();
    form.chkLoadTipsAtStartup.Toggle();
    try {
        form.chkLoadTipsAtStartup_Click();
        FAIL() << "nothing was thrown";
    }
    catch (const Error& error) {
        EXPECT_EQ(error.Kind(), util::ErrorKind::FileNotWritable);
        EXPECT_EQ(error.Subject(), settings_);
    }
    EXPECT_TRUE(form.chkLoadTipsAtStartup.checked);
}

TEST_F(TipFormTest, CloseAndEscapeClose)
{
    TipForm form = MakeForm();
    form.cmdOK_Click();
    EXPECT_FALSE(form.isOpen);
    TipForm other(settings_, At("tips.txt"));
    other.Form_KeyPress(27);
    EXPECT_FALSE(other.isOpen);
}

} // namespace
} // namespace orrery::ui
