#include "main_thread.h"
#include "ui/tip_form.h"
#include "window_test.h"

#include <gmock/gmock.h>

namespace orrery::ui::wx {
namespace {

/// Dialogs leave nothing behind, however often they are opened: a leak checker finds leaked memory,
/// and leaked windows are counted here.
class RepeatedDialogsTest : public WindowTest {
protected:
    static constexpr int kTimes = 50;

    static std::size_t Windows()
    {
        return OnMain([] { return wxTopLevelWindows.size(); });
    }
    void OpenAndClose(const char* button, const char* window, const char* under)
    {
        user_->Click(button);
        user_->WaitForWindow(window);
        user_->Key(WXK_ESCAPE);
        user_->WaitForWindow(under);
    }
};

TEST_F(RepeatedDialogsTest, About)
{
    Start();
    const std::size_t before = Windows();
    for (int i = 0; i < kTimes; ++i)
        OpenAndClose("cmdAbout", "frmAbout", "frmMain");
    EXPECT_EQ(Windows(), before);
}

TEST_F(RepeatedDialogsTest, Tip)
{
    Start();
    const std::size_t before = Windows();
    for (int i = 0; i < kTimes; ++i) {
        PostToMain([this] {
            TipForm tip(At("orrery.ini").string(), At("tips.txt").string());
            program_->desktop.ShowModal(tip);
        });
        user_->WaitForWindow("frmTip");
        user_->Key(WXK_ESCAPE);
        user_->WaitForWindow("frmMain");
    }
    EXPECT_EQ(Windows(), before);
}

TEST_F(RepeatedDialogsTest, Parameters)
{
    Start();
    user_->Choose("cboTemplateFile", "Desk.xlsx");
    const std::size_t before = Windows();
    for (int i = 0; i < kTimes; ++i)
        OpenAndClose("cmdModify", "frmParameter", "frmMain");
    EXPECT_EQ(Windows(), before);
}

TEST_F(RepeatedDialogsTest, HolidaysAndMessages)
{
    StartModifying();
    const std::size_t before = Windows();
    for (int i = 0; i < kTimes; ++i)
        OpenAndClose("cmdMChangeHoliday", "frmHoliday", "frmParameter");
    user_->Enter("txtMSheetName", "");
    for (int i = 0; i < kTimes; ++i) {
        user_->Click("cmdOK");
        user_->Answer(WXK_RETURN);
        user_->WaitForWindow("frmParameter");
    }
    EXPECT_EQ(Windows(), before);
}

} // namespace
} // namespace orrery::ui::wx
