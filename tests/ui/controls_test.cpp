#include "ui/controls.h"
#include "ui/form.h"

#include <gtest/gtest.h>

namespace orrery::ui {
namespace {

TEST(ControlsTest, UserActionsSetTheChangedMark)
{
    CheckBox box("chkBox");
    TextBox text("txtText");
    ComboBox list("cboList");
    list.entries = {"a", "b"};
    EXPECT_FALSE(box.changed || text.changed || list.changed);
    EXPECT_FALSE(list.HasSelection());
    box.Toggle();
    text.Type("typed");
    list.Select(0);
    EXPECT_TRUE(box.checked);
    EXPECT_EQ(text.text, "typed");
    EXPECT_TRUE(list.HasSelection());
    EXPECT_TRUE(box.changed && text.changed && list.changed);
    box.Toggle();
    EXPECT_FALSE(box.checked);
    EXPECT_TRUE(box.changed) << "back to the old value is a change, too";
}

TEST(ControlsTest, AShownTextHasNoMnemonic)
{
    Label label("lblLabel", "&Year:");
    EXPECT_FALSE(label.isLiteral);
    label.ShowText("R&D");
    EXPECT_EQ(label.caption, "R&D");
    EXPECT_TRUE(label.isLiteral);
}

struct StepCase {
    const char* name;
    const char* text;
    int step;
    const char* expected;
};

class UpDownTest : public testing::TestWithParam<StepCase> {};

TEST_P(UpDownTest, StepsTheTextWithinItsRange)
{
    TextBox text("txtText");
    text.text = GetParam().text;
    UpDown arrows("updText", text, 1, 9999);
    arrows.Step(GetParam().step);
    EXPECT_EQ(text.text, GetParam().expected);
    EXPECT_TRUE(text.changed);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, UpDownTest,
    testing::Values(StepCase{"Up", "2027", 1, "2028"}, StepCase{"Down", "2027", -1, "2026"},
                    StepCase{"StopsAtTheMinimum", "1", -1, "1"},
                    StepCase{"StopsAtTheMaximum", "9999", 1, "9999"},
                    StepCase{"ReturnsFromBelow", "-5", 1, "1"},
                    StepCase{"ReturnsFromAbove", "123456", 1, "9999"},
                    StepCase{"ReturnsFromFarAbove", "1e300", -1, "9999"},
                    StepCase{"RoundsFirst", "7.8", 1, "9"}, StepCase{"BlanksAround", " 7 ", 1, "8"},
                    StepCase{"NoNumber", "abc", 1, "1"}, StepCase{"Empty", "", -1, "1"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(FormTest, OnlyEscapeCloses)
{
    Form form("frmForm", "Form", "page");
    EXPECT_TRUE(form.isOpen);
    form.Form_KeyPress(13);
    EXPECT_TRUE(form.isOpen);
    form.Form_KeyPress(27);
    EXPECT_FALSE(form.isOpen);
}

} // namespace
} // namespace orrery::ui
