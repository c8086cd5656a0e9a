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

/// Shows the text "ab" whose second letter is red and slanted, under a condition that holds.
CellDisplay ShowRichText(const book::PartialStyle& conditional)
{
    FakeWorkbook workbook;
    book::SheetLook& look = workbook.Look();
    look.styles.front().numberFormat = "[Blue]@";
    book::Font slanted;
    slanted.italic = true;
    slanted.color = book::Color{255, 0, 0};
    look.richTexts = {{{1, slanted}}};
    workbook.Set({1, 1}, std::string("ab"));
    look.cells.back().richText = 0;
    book::ConditionalRule rule;
    rule.kind = book::ConditionKind::Expression;
    rule.formulas = {"TRUE"};
    rule.style = conditional;
    look.conditions = {{{{{1, 1}, {1, 1}}}, {rule}}};
    Evaluator evaluator(workbook, 46388);
    return SheetDisplay(workbook, 0, evaluator).Display({1, 1});
}

TEST(SheetDisplayTest, ConditionsWinOverTheFontsWithinAText)
{
    const book::Color green{0, 128, 0};
    book::PartialStyle conditional;
    conditional.bold = true;
    conditional.italic = false;
    conditional.fontColor = green;
    const CellDisplay display = ShowRichText(conditional);
    ASSERT_EQ(display.runs.size(), 1U);
    EXPECT_EQ(display.runs[0].begin, 1U);
    EXPECT_TRUE(display.runs[0].font.bold);
    EXPECT_FALSE(display.runs[0].font.italic);
    EXPECT_EQ(display.runs[0].font.color, green);
    EXPECT_EQ(display.color, green);
}

TEST(SheetDisplayTest, ConditionsLeaveOtherCellsOfTheStyle)
{
    FakeWorkbook workbook;
    book::ConditionalRule rule;
    rule.kind = book::ConditionKind::Expression;
    rule.formulas = {"TRUE"};
    rule.style.bold = true;
    workbook.Look().conditions = {{{{{2, 1}, {2, 1}}}, {rule}}};
    Evaluator evaluator(workbook, 46388);
    SheetDisplay display(workbook, 0, evaluator);
    const CellDisplay above = display.Display({1, 1});
    EXPECT_TRUE(display.Display({2, 1}).style->font.bold);
    EXPECT_FALSE(above.style->font.bold);
    EXPECT_EQ(&*display.Display({3, 1}).style, &*above.style);
}

TEST(SheetDisplayTest, WhatConditionsDoNotSetStays)
{
    book::PartialStyle conditional;
    conditional.bold = true;
    const CellDisplay display = ShowRichText(conditional);
    ASSERT_EQ(display.runs.size(), 1U);
    EXPECT_TRUE(display.runs[0].font.italic);
    EXPECT_EQ(display.runs[0].font.color, (book::Color{255, 0, 0}));
    EXPECT_EQ(display.color, (book::Color{0, 0, 255}));
}

} // namespace
} // namespace orrery::look
