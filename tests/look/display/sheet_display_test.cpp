#include "look/display/sheet_display.h"

#include "look/evaluate/fake_workbook.h"

#include <gtest/gtest.h>

namespace orrery::look {
namespace {

using book::HorizontalAlignment;

struct AlignmentCase {
    const char* name;
    book::CellContent content;
    const char* format;
    HorizontalAlignment own;
    HorizontalAlignment expected;
};

class SheetDisplayAlignmentTest : public testing::TestWithParam<AlignmentCase> {};

TEST_P(SheetDisplayAlignmentTest, GivesThatOfTheCellOrOfItsValue)
{
    FakeWorkbook workbook;
    book::CellStyle& style = workbook.Look().styles.front();
    style.numberFormat = GetParam().format;
    style.alignment.horizontal = GetParam().own;
    workbook.Set({1, 1}, GetParam().content);
    Evaluator evaluator(workbook, 46388);
    SheetDisplay display(workbook, 0, evaluator);
    EXPECT_EQ(display.Display({1, 1}).horizontal, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Values, SheetDisplayAlignmentTest,
    testing::Values(AlignmentCase{"Number", 1.5, "General", HorizontalAlignment::General,
                                  HorizontalAlignment::Right},
                    AlignmentCase{"NumberAsText", 1.5, "@", HorizontalAlignment::General,
                                  HorizontalAlignment::General},
                    AlignmentCase{"Text", std::string("a"), "General", HorizontalAlignment::General,
                                  HorizontalAlignment::General},
                    AlignmentCase{"Logical", true, "@", HorizontalAlignment::General,
                                  HorizontalAlignment::Center},
                    AlignmentCase{"CenteredNumber", 1.5, "@", HorizontalAlignment::Center,
                                  HorizontalAlignment::Center}),
    [](const auto& each) { return std::string(each.param.name); });

} // namespace
} // namespace orrery::look
