#include "main_thread.h"
#include "native_eyes.h"
#include "window_test.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <string>

namespace orrery::ui::wx {
namespace {

using testing::ElementsAre;
using testing::StartsWith;
using testing::UnorderedElementsAre;

/// What each kind of message box shows.
class MessageBoxTest : public WindowTest {
protected:
    /// Waits for the box in front.
    auto Look() const
    {
        user_->WaitForMessage();
        return OnMain([] { return FindMessageBox().value(); });
    }
};

TEST_F(MessageBoxTest, AReportHasAnExclamationMarkAndOk)
{
    std::ofstream(At("template/Broken.xlsx")) << "no workbook";
    Start();
    user_->Choose("cboTemplateFile", "Broken.xlsx");
    user_->Click("cmdGenerate");
    const auto box = Look();
    EXPECT_EQ(box.title, "Orrery");
    EXPECT_THAT(box.text, StartsWith("Error!\nError Info: Failed to open the calendar file"));
    EXPECT_EQ(box.sign, Sign::Exclamation);
    EXPECT_THAT(box.buttons, ElementsAre("OK"));
    user_->Answer(WXK_RETURN);
}

TEST_F(MessageBoxTest, AMessageHasAnExclamationMarkAndOk)
{
    Start();
    user_->Choose("cboTemplateFile", "Desk.xlsx");
    user_->Enter("txtYear", "none");
    user_->Click("cmdGenerate");
    const auto box = Look();
    EXPECT_EQ(box.title, "Orrery");
    EXPECT_EQ(box.text, "Please inupt a year.");
    EXPECT_EQ(box.sign, Sign::Exclamation);
    EXPECT_THAT(box.buttons, ElementsAre("OK"));
    user_->Answer(WXK_RETURN);
}

TEST_F(MessageBoxTest, AQuestionHasAQuestionMarkAndYesAndNo)
{
    std::filesystem::remove(At("template/Desk.ini")); // so there are parameters to save
    Start();
    user_->Choose("cboTemplateFile", "Desk.xlsx");
    user_->Choose("cboTemplateFile", "Wall.xls");
    const auto box = Look();
    EXPECT_EQ(box.title, "Orrery");
    EXPECT_THAT(box.text, StartsWith("The parameters for Desk.xlsx has been changed.\n"));
    EXPECT_EQ(box.sign, Sign::Question);
    EXPECT_THAT(box.buttons, UnorderedElementsAre("Yes", "No"));
    user_->Answer('N', wxMOD_ALT);
}

} // namespace
} // namespace orrery::ui::wx
