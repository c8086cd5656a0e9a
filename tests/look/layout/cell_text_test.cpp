#include "look/layout/cell_text.h"

#include "fake_sheet.h"

#include <gtest/gtest.h>

namespace orrery::look {
namespace {

using book::HorizontalAlignment;
using book::VerticalAlignment;

constexpr double kMargin = 20.0 / 15;

/// A cell of 100 by 40 pixels at 1000, 500 with a text of size 10.
class CellTextTest : public testing::Test {
protected:
    CellTextTest()
    {
        cell.range = {{1, 1}, {1, 1}};
        cell.box = {1000, 500, 100, 40};
        cell.display.style.Edit().font.size = 10;
    }

    CellBox& Place(std::string text)
    {
        cell.display.text = std::move(text);
        PlaceCellText(cell, {1000, 1100, 30, &measure});
        return cell;
    }

    double LineX() const { return cell.lines.at(0).x; }
    std::string Line(std::size_t index) const
    {
        std::string text;
        for (const TextPiece& piece : cell.lines.at(index).pieces)
            text += piece.text;
        return text;
    }
    book::Alignment& Alignment() { return cell.display.style.Edit().alignment; }

    FakeMeasure measure;
    CellBox cell;
};

TEST_F(CellTextTest, HorizontalAlignment)
{
    Place("ab");
    EXPECT_NEAR(LineX(), 1000 + kMargin, 1e-9);
    cell.lines.clear();
    cell.display.horizontal = HorizontalAlignment::Right;
    Place("ab");
    EXPECT_NEAR(LineX(), 1080 - kMargin, 1e-9);
    cell.lines.clear();
    cell.display.horizontal = HorizontalAlignment::Center;
    Place("ab");
    EXPECT_NEAR(LineX(), 1040, 1e-9);
}

TEST_F(CellTextTest, VerticalAlignment)
{
    Place("ab"); // at the bottom, 2 pixels below the baseline
    EXPECT_NEAR(cell.lines[0].baseline, 540 - kMargin - 2, 1e-9);
    cell.lines.clear();
    Alignment().vertical = VerticalAlignment::Top;
    Place("ab");
    EXPECT_NEAR(cell.lines[0].baseline, 500 + kMargin + 8, 1e-9);
    cell.lines.clear();
    Alignment().vertical = VerticalAlignment::Center;
    Place("ab");
    EXPECT_NEAR(cell.lines[0].baseline, 523, 1e-9);
}

TEST_F(CellTextTest, IndentMovesFromTheAlignedSide)
{
    Alignment().indent = 1;
    Place("ab");
    EXPECT_NEAR(LineX(), 1030 + kMargin, 1e-9);
    cell.lines.clear();
    cell.display.horizontal = HorizontalAlignment::Right;
    Place("ab");
    EXPECT_NEAR(LineX(), 1050 - kMargin, 1e-9);
}

TEST_F(CellTextTest, WrapBreaksIntoLines)
{
    Alignment().wrap = true;
    Alignment().vertical = VerticalAlignment::Top;
    Place("one two three\nfour");
    ASSERT_EQ(cell.lines.size(), 3U);
    EXPECT_EQ(Line(0), "one two");
    EXPECT_EQ(Line(1), "three");
    EXPECT_EQ(Line(2), "four");
    EXPECT_NEAR(cell.lines[1].baseline - cell.lines[0].baseline, 10, 1e-9);
    EXPECT_EQ(cell.clip, cell.box);
}

TEST_F(CellTextTest, WithoutWrapLineEndsAreNotSeen)
{
    Place("a\nb");
    ASSERT_EQ(cell.lines.size(), 1U);
    EXPECT_EQ(Line(0), "ab");
}

TEST_F(CellTextTest, ShrinkMakesTheFontSmaller)
{
    Alignment().shrink = true;
    Place("twenty letters in it"); // 200 pixels into 97.33
    EXPECT_NEAR(cell.lines[0].pieces[0].font.size, 10 * (100 - 2 * kMargin) / 200, 1e-9);
    EXPECT_NEAR(cell.lines[0].width, 100 - 2 * kMargin, 1e-9);
    cell.lines.clear();
    Place("short");
    EXPECT_EQ(cell.lines[0].pieces[0].font.size, 10);
}

TEST_F(CellTextTest, FillRepeatsTheText)
{
    cell.display.horizontal = HorizontalAlignment::Fill;
    Place("ab");
    EXPECT_EQ(Line(0), "abababab");
}

TEST_F(CellTextTest, AFilledFormatSpreadsItsParts)
{
    cell.display.isNumber = true;
    cell.display.fillAt = 1;
    cell.display.fillCharacter = " ";
    Place("$12");
    ASSERT_EQ(cell.lines[0].pieces.size(), 2U);
    EXPECT_NEAR(LineX(), 1000 + kMargin, 1e-9);
    EXPECT_EQ(cell.lines[0].pieces[1].text, "12");
    EXPECT_NEAR(LineX() + cell.lines[0].pieces[1].x, 1080 - kMargin, 1e-9);
}

TEST_F(CellTextTest, JustifiedLinesReachBothSides)
{
    cell.display.horizontal = HorizontalAlignment::Justify;
    Place("one two three");
    ASSERT_EQ(cell.lines.size(), 2U);
    ASSERT_EQ(cell.lines[0].pieces.size(), 2U);
    EXPECT_NEAR(cell.lines[0].pieces[1].x, 100 - 2 * kMargin - 30, 1e-9);
    EXPECT_EQ(cell.lines[1].pieces.size(), 1U); // the last one stays as it is
}

TEST_F(CellTextTest, DistributedLinesFillTheHeight)
{
    Alignment().vertical = VerticalAlignment::Distributed;
    Place("one two three");
    ASSERT_EQ(cell.lines.size(), 2U);
    EXPECT_NEAR(cell.lines[0].baseline, 500 + kMargin + 8, 1e-9);
    EXPECT_NEAR(cell.lines[1].baseline, 540 - kMargin - 2, 1e-9);
}

TEST_F(CellTextTest, RunsHaveTheirFonts)
{
    book::Font large;
    large.size = 20;
    cell.display.runs = {{1, large}, {99, large}, {0, cell.display.style->font}};
    Place("abc");
    ASSERT_EQ(cell.lines[0].pieces.size(), 2U);
    EXPECT_EQ(cell.lines[0].pieces[0].text, "a");
    EXPECT_EQ(cell.lines[0].pieces[1].text, "bc");
    EXPECT_EQ(cell.lines[0].pieces[1].x, 10);
    EXPECT_EQ(cell.lines[0].width, 50);
    EXPECT_NEAR(cell.lines[0].baseline, 540 - kMargin - 4, 1e-9); // of the larger font
}

TEST_F(CellTextTest, UprightTextTurnsAroundItsMiddle)
{
    Alignment().rotation = 90;
    cell.display.horizontal = HorizontalAlignment::Center;
    Alignment().vertical = VerticalAlignment::Center;
    Place("abc");
    EXPECT_EQ(cell.rotation, 90);
    EXPECT_NEAR(cell.pivot.x, 1050, 1e-9);
    EXPECT_NEAR(cell.pivot.y, 520, 1e-9);
    EXPECT_NEAR(LineX(), 1035, 1e-9);
    EXPECT_NEAR(cell.lines[0].baseline, 523, 1e-9);
}

TEST_F(CellTextTest, UprightTextStandsAtTheBottom)
{
    Alignment().rotation = 90;
    Place("abc"); // 30 pixels high when it is turned, 10 wide
    EXPECT_NEAR(cell.pivot.y, 540 - kMargin - 15, 1e-9);
    EXPECT_NEAR(cell.pivot.x, 1000 + kMargin + 5, 1e-9);
}

TEST_F(CellTextTest, StackedTextHasACharacterPerLine)
{
    Alignment().rotation = book::Alignment::kStacked;
    Place("ae\u0301");
    ASSERT_EQ(cell.lines.size(), 2U);
    EXPECT_EQ(Line(1), "e\u0301");
    EXPECT_EQ(cell.rotation, 0);
}

TEST_F(CellTextTest, RightToLeftTextIsAtTheRight)
{
    Place("\u05D0\u05D1");
    EXPECT_NEAR(LineX(), 1080 - kMargin, 1e-9);
    EXPECT_TRUE(cell.lines[0].isRightToLeft);
    cell.lines.clear();
    cell.display.horizontal = HorizontalAlignment::Left;
    Place("\u05D0\u05D1");
    EXPECT_NEAR(LineX(), 1000 + kMargin, 1e-9);
    cell.lines.clear();
    Alignment().readingOrder = book::ReadingOrder::LeftToRight;
    Place("\u05D0\u05D1");
    EXPECT_FALSE(cell.lines[0].isRightToLeft);
}

TEST_F(CellTextTest, AnIconStandsBeforeTheText)
{
    cell.display.icon = IconDisplay{"3Arrows", 1};
    Place("ab");
    ASSERT_TRUE(cell.iconBox);
    EXPECT_GE(LineX(), cell.iconBox->Right());
    EXPECT_LE(cell.iconBox->Bottom(), cell.box.Bottom());
    cell.lines.clear();
    cell.display.showsValue = false;
    Place("ab");
    EXPECT_TRUE(cell.lines.empty());
}

TEST_F(CellTextTest, ACellWithoutRoomIsBorne)
{
    cell.box = {0, 0, 0.5, 0.5};
    Alignment().wrap = true;
    Place(std::string(100'000, 'x'));
    EXPECT_LE(cell.lines.size(), 2000U);
    cell.lines.clear();
    Alignment().wrap = false;
    cell.display.isNumber = true;
    Place("123");
    EXPECT_EQ(Line(0), "#");
}

TEST_F(CellTextTest, ATextThatIsTooWideForItsFillIsCut)
{
    cell.display.fillAt = 15;
    cell.display.fillCharacter = ".";
    Place("fifteen letters");
    EXPECT_EQ(Line(0), "fifteen letters");
    EXPECT_EQ(cell.clip, cell.box);
}

TEST_F(CellTextTest, ADateOutsideOfTheCalendarFillsTheCell)
{
    cell.display.isNumber = cell.display.isTooWide = true;
    Place("########");
    EXPECT_EQ(Line(0), "#########"); // of ten pixels in 97
    cell.lines.clear();
    cell.box.width = 200;
    Place("########");
    EXPECT_EQ(Line(0).size(), 19U);
}

} // namespace
} // namespace orrery::look
