#include "look/display/style_layers.h"

#include <gtest/gtest.h>

namespace orrery::look {
namespace {

using book::BorderLine;
using book::Color;
using book::FillPattern;
using book::LineStyle;
using book::PartialStyle;
using book::TablePart;

constexpr Color kRed{255, 0, 0};
constexpr Color kBlue{0, 0, 255};
constexpr Color kGray{200, 200, 200};

book::Fill Solid(Color color)
{
    book::Fill fill;
    fill.pattern = FillPattern::Solid;
    fill.foreground = color;
    return fill;
}

BorderLine Thin(Color color)
{
    return {LineStyle::Thin, color};
}

/// B2:D7 with a header row and a total row: a red header, gray first stripes, thin lines around.
book::SheetLook WithTable()
{
    book::SheetLook look;
    book::Table table;
    table.range = {{2, 2}, {7, 4}};
    table.totalRows = 1;
    table.showsRowStripes = true;
    PartialStyle& whole = table.style.parts[TablePart::WholeTable];
    whole.top = whole.bottom = whole.left = whole.right = Thin(kBlue);
    whole.innerVertical = Thin(kGray);
    table.style.parts[TablePart::HeaderRow].fill = Solid(kRed);
    table.style.parts[TablePart::HeaderRow].bold = true;
    table.style.parts[TablePart::FirstRowStripe].fill = Solid(kGray);
    table.style.parts[TablePart::TotalRow].top = {LineStyle::Double, kBlue};
    look.tables.push_back(table);
    return look;
}

TEST(TableStyleAt, TellsNothingBesideTables)
{
    const auto look = WithTable();
    EXPECT_FALSE(TableStyleAt(look, {1, 2}));
    EXPECT_FALSE(TableStyleAt(look, {8, 4}));
    EXPECT_FALSE(TableStyleAt(look, {4, 5}));
}

TEST(TableStyleAt, TheHeaderHasItsStyle)
{
    const auto style = TableStyleAt(WithTable(), {2, 3});
    ASSERT_TRUE(style);
    EXPECT_EQ(style->fill, Solid(kRed));
    EXPECT_EQ(style->bold, true);
}

TEST(TableStyleAt, StripesBeginBelowTheHeader)
{
    const auto look = WithTable();
    EXPECT_EQ(TableStyleAt(look, {3, 2})->fill, Solid(kGray));
    EXPECT_EQ(TableStyleAt(look, {4, 2})->fill, std::nullopt);
    EXPECT_EQ(TableStyleAt(look, {5, 2})->fill, Solid(kGray));
    EXPECT_EQ(TableStyleAt(look, {7, 2})->fill, std::nullopt) << "the totals have none";
}

TEST(TableStyleAt, LinesOfTheWholeTableAreAtItsEdges)
{
    const auto look = WithTable();
    EXPECT_EQ(TableStyleAt(look, {2, 2})->left, Thin(kBlue));
    EXPECT_EQ(TableStyleAt(look, {2, 2})->top, Thin(kBlue));
    EXPECT_EQ(TableStyleAt(look, {4, 3})->left, Thin(kGray));
    EXPECT_EQ(TableStyleAt(look, {4, 4})->right, Thin(kBlue));
    EXPECT_EQ(TableStyleAt(look, {4, 3})->top, std::nullopt);
    EXPECT_EQ(TableStyleAt(look, {7, 3})->bottom, Thin(kBlue));
    EXPECT_EQ(TableStyleAt(look, {7, 3})->top, (BorderLine{LineStyle::Double, kBlue}));
}

TEST(TableStyleAt, StripesOfSeveralRowsHaveTheirOwnEdges)
{
    auto look = WithTable();
    book::Table& table = look.tables[0];
    table.totalRows = 0;
    table.style.rowStripe[0] = 2;
    PartialStyle& stripe = table.style.parts[TablePart::FirstRowStripe];
    stripe.bottom = Thin(kRed);
    EXPECT_EQ(TableStyleAt(look, {3, 3})->bottom, std::nullopt);
    EXPECT_EQ(TableStyleAt(look, {4, 3})->bottom, Thin(kRed))
        << "rows 3 and 4, then one row, then 6 and 7";
    EXPECT_EQ(TableStyleAt(look, {5, 3})->fill, std::nullopt);
    EXPECT_EQ(TableStyleAt(look, {6, 3})->fill, Solid(kGray));
}

TEST(TableStyleAt, FirstAndLastColumnsLieUnderTheHeader)
{
    auto look = WithTable();
    book::Table& table = look.tables[0];
    table.showsFirstColumn = table.showsLastColumn = true;
    table.style.parts[TablePart::FirstColumn].fill = Solid(kBlue);
    table.style.parts[TablePart::LastColumn].italic = true;
    table.style.parts[TablePart::LastHeaderCell].strike = true;
    EXPECT_EQ(TableStyleAt(look, {3, 2})->fill, Solid(kBlue)) << "over the stripes";
    EXPECT_EQ(TableStyleAt(look, {2, 2})->fill, Solid(kRed));
    EXPECT_EQ(TableStyleAt(look, {3, 4})->italic, true);
    EXPECT_EQ(TableStyleAt(look, {2, 4})->strike, true);
    EXPECT_EQ(TableStyleAt(look, {2, 2})->strike, std::nullopt);
}

TEST(LayUnder, KeepsWhatTheCellSetsItself)
{
    book::CellStyle style;
    style.fill = Solid(kBlue);
    style.border.left = Thin(kRed);
    style.font.color = kRed;
    PartialStyle under;
    under.fill = Solid(kGray);
    under.fontColor = kBlue;
    under.left = under.right = Thin(kGray);
    under.bold = true;
    LayUnder(style, under);
    EXPECT_EQ(style.fill, Solid(kBlue));
    EXPECT_EQ(style.font.color, kRed);
    EXPECT_EQ(style.border.left, Thin(kRed));
    EXPECT_EQ(style.border.right, Thin(kGray));
    EXPECT_TRUE(style.font.bold);
}

TEST(LayOver, ReplacesWhatIsSetAndNothingElse)
{
    book::CellStyle style;
    style.font.bold = true;
    style.fill = Solid(kBlue);
    PartialStyle over;
    over.bold = false;
    over.fontColor = kRed;
    over.top = Thin(kRed);
    LayOver(style, over);
    EXPECT_FALSE(style.font.bold);
    EXPECT_EQ(style.fill, Solid(kBlue));
    EXPECT_EQ(style.font.color, kRed);
    EXPECT_EQ(style.border.top, Thin(kRed));
    EXPECT_EQ(style.border.bottom, BorderLine{});
}

TEST(MeanColor, IsThatOfTheFillFromAfar)
{
    EXPECT_EQ(MeanColor({}), std::nullopt);
    EXPECT_EQ(MeanColor(Solid(kRed)), kRed);
    book::Fill half;
    half.pattern = FillPattern::MediumGray;
    EXPECT_EQ(MeanColor(half), (Color{128, 128, 128}));
    half.foreground = kRed;
    half.background = kBlue;
    EXPECT_EQ(MeanColor(half), (Color{128, 0, 128}));
}

} // namespace
} // namespace orrery::look
