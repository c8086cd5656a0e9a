#include "look/layout/pages/pages.h"

#include "../fake_sheet.h"

#include <gtest/gtest.h>

namespace orrery::look {
namespace {

/// A sheet of ten columns of 100 pixels and a hundred rows of 20 pixels, on a paper of 7 by 7
/// inches, of which 6 by 6 (576 pixels) are printed.
class PagesTest : public testing::Test {
protected:
    PagesTest()
    {
        sheet.Put({100, 10}, "x");
        Printing().paperWidth = Printing().paperHeight = 7;
        Printing().left = Printing().right = Printing().top = Printing().bottom = 0.5;
    }

    book::PageSetup& Printing() { return sheet.sheet.page; }
    std::vector<PageBox> Pages(const PageOptions& options = {})
    {
        return LayOutPages(sheet.sheet, sheet.LayOut(), measure, options);
    }

    FakeSheet sheet;
    FakeMeasure measure;
};

TEST_F(PagesTest, GoDownThenOver)
{
    // 5 columns and 28 rows fit: two pages across, four down.
    const auto pages = Pages();
    ASSERT_EQ(pages.size(), 8U);
    EXPECT_EQ(pages[0].area, (Box{0, 0, 500, 560}));
    EXPECT_EQ(pages[1].area, (Box{0, 560, 500, 560}));
    EXPECT_EQ(pages[3].area, (Box{0, 1680, 500, 320}));
    EXPECT_EQ(pages[4].area, (Box{500, 0, 500, 560}));
    EXPECT_EQ(pages[0].place, (Point{48, 48}));
    EXPECT_EQ(pages[0].paperWidth, 672);
}

TEST_F(PagesTest, MayGoOverThenDown)
{
    Printing().isOverThenDown = true;
    EXPECT_EQ(Pages().at(1).area.x, 500);
}

TEST_F(PagesTest, ScaleChangesWhatFits)
{
    Printing().scale = 50; // 11 columns and 57 rows
    const auto pages = Pages();
    ASSERT_EQ(pages.size(), 2U);
    EXPECT_EQ(pages[0].scale, 0.5);
    EXPECT_EQ(pages[0].area, (Box{0, 0, 1000, 1140}));
}

TEST_F(PagesTest, FitToPagesFindsAWholePercentage)
{
    Printing().fitsPages = true;
    Printing().rowBreaks = {5}; // do not count then
    const auto pages = Pages();
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_EQ(pages[0].scale, 0.28); // 576 of 2000 pixels are 28.8 %
    Printing().pagesHigh = 0;
    EXPECT_EQ(Pages().size(), 2U); // 57 % for 1000 pixels across
    EXPECT_EQ(Pages()[0].scale, 0.57);
}

TEST_F(PagesTest, FitToPagesDoesNotEnlarge)
{
    Printing().fitsPages = true;
    Printing().printAreas = {{{1, 1}, {2, 2}}};
    EXPECT_EQ(Pages().at(0).scale, 1);
}

TEST_F(PagesTest, PrintAreasHaveTheirOwnPages)
{
    Printing().printAreas = {{{2, 2}, {3, 3}}, {{5, 5}, {6, 16'384}}, {{50'000, 1}, {50'001, 1}}};
    const auto pages = Pages();
    ASSERT_EQ(pages.size(), 3U);
    EXPECT_EQ(pages[0].area, (Box{100, 20, 200, 40}));
    EXPECT_EQ(pages[1].area, (Box{400, 80, 500, 40}));
    EXPECT_EQ(pages[2].area, (Box{900, 80, 100, 40}));
}

TEST_F(PagesTest, TitlesAreRepeated)
{
    Printing().titleRows = book::CellRange{{1, 1}, {2, 16'384}};
    Printing().titleColumns = book::CellRange{{1, 1}, {1'048'576, 1}};
    const auto pages = Pages();
    EXPECT_EQ(pages[0].titleRows, Box());
    EXPECT_EQ(pages[1].titleRows, (Box{0, 0, 500, 40}));
    EXPECT_EQ(pages[1].area, (Box{0, 560, 500, 520}));
    EXPECT_EQ(pages[1].place, (Point{48, 88}));
    EXPECT_EQ(pages[4].titleColumns, (Box{0, 0, 100, 560}));
    EXPECT_EQ(pages[4].area.x, 500);
    EXPECT_EQ(pages[4].area.width, 400);
    EXPECT_EQ(pages[4].place, (Point{148, 48}));
}

TEST_F(PagesTest, CentresOnThePaper)
{
    Printing().printAreas = {{{1, 1}, {10, 2}}};
    Printing().centersHorizontally = Printing().centersVertically = true;
    EXPECT_EQ(Pages().at(0).place, (Point{236, 236}));
}

TEST_F(PagesTest, ARightToLeftSheetBeginsAtTheRight)
{
    sheet.sheet.view.isRightToLeft = true;
    const auto pages = Pages();
    EXPECT_EQ(pages.at(0).area, (Box{500, 0, 500, 560}));
    EXPECT_EQ(pages.at(0).place.x, 48 + 76);
}

TEST_F(PagesTest, HeadersCountPages)
{
    Printing().header = "&C&P/&N &A";
    Printing().firstHeader = "first";
    Printing().evenHeader = "even &P";
    Printing().footer = "&Rend";
    Printing().firstPageNumber = 5;
    sheet.sheet.name = "May";
    const auto pages = Pages();
    const auto text = [&](std::size_t page, std::size_t line) {
        return pages.at(page).headerAndFooter.at(line).pieces.at(0).text;
    };
    EXPECT_EQ(text(0, 0), "first");
    EXPECT_EQ(text(1, 0), "even 6");
    EXPECT_EQ(text(2, 0), "7/8 May");
    EXPECT_EQ(text(2, 1), "end");
}

TEST_F(PagesTest, NumbersGoOnFromOtherSheets)
{
    Printing().footer = "&P of &N";
    PageOptions options;
    options.fields.page = 4;
    options.fields.pages = 20;
    const auto text = [&] { return Pages(options).at(1).headerAndFooter.at(0).pieces.at(0).text; };
    EXPECT_EQ(text(), "5 of 20");
    Printing().firstPageNumber = 9;
    EXPECT_EQ(text(), "10 of 20") << "the set-up says where they begin";
}

TEST_F(PagesTest, HeadersAreScaledWithThePage)
{
    Printing().footer = "&12end";
    Printing().scale = 50;
    const auto size = [&] { return Pages().at(0).headerAndFooter.at(0).pieces.at(0).font.size; };
    EXPECT_EQ(size(), 6);
    Printing().scalesHeaders = false;
    EXPECT_EQ(size(), 12);
}

TEST_F(PagesTest, AreBounded)
{
    Printing().scale = 400;
    Printing().left = 1e300;
    PageOptions options;
    options.mostPages = 5;
    EXPECT_EQ(Pages(options).size(), 5U);
}

} // namespace
} // namespace orrery::look
