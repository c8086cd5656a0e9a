#include "look/layout/pages/header_footer.h"

#include "../fake_sheet.h"

#include <gtest/gtest.h>

namespace orrery::look {
namespace {

PageFields Fields()
{
    return {3, 7, "plan.xlsx", "/home/ann/", "May", "2026-05-01", "12:30"};
}

/// The parts as text: lines end in "/", parts in "|".
std::string Parsed(std::string_view text)
{
    std::string parsed;
    for (const auto& part : ParseHeader(text, book::Font(), Fields()).parts) {
        for (const HeaderLine& line : part) {
            for (const HeaderPiece& piece : line)
                parsed += piece.isPicture ? "[picture]" : piece.text;
            parsed += '/';
        }
        parsed += '|';
    }
    return parsed;
}

struct HeaderCase {
    const char* name;
    std::string text;
    std::string expected;
};

class ParseHeaderTest : public testing::TestWithParam<HeaderCase> {};

TEST_P(ParseHeaderTest, ReadsParts)
{
    EXPECT_EQ(Parsed(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Headers, ParseHeaderTest,
    testing::Values(HeaderCase{"ThreeParts", "&Lone&Ctwo&Rthree", "one/|two/|three/|"},
                    HeaderCase{"MiddleWithoutCode", "two", "|two/||"},
                    HeaderCase{"Pages", "&CPage &P of &N", "|Page 3 of 7/||"},
                    HeaderCase{"AddedPages", "&P+10 &P-1 &P+", "|13 2 3+/||"},
                    HeaderCase{"Names", "&L&Z&F&R&A", "/home/ann/plan.xlsx/||May/|"},
                    HeaderCase{"Times", "&D &T", "|2026-05-01 12:30/||"},
                    HeaderCase{"Ampersand", "A && B", "|A & B/||"},
                    HeaderCase{"Lines", "&Lone\n\nthree", "one//three/|||"},
                    HeaderCase{"Fonts", "&\"Arial,Bold\"&12Big&K00FF00 green", "|Big green/||"},
                    HeaderCase{"Pictures", "&L&G&Cx&Gy", "[picture]/|x[picture]y/||"},
                    HeaderCase{"EndsInACode", "x&", "|x&/||"},
                    HeaderCase{"FontWithoutEnd", "x&\"Arial", "|x/||"},
                    HeaderCase{"Empty", "", "|||"}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(ParseHeader, SetsFonts)
{
    const HeaderText header =
        ParseHeader("&R&\"Arial,Bold Italic\"&24a&Ib&Uc&Xd&K0A0b0Ce", book::Font(), Fields());
    ASSERT_EQ(header.parts[2].size(), 1U);
    const HeaderLine& line = header.parts[2][0];
    ASSERT_EQ(line.size(), 5U);
    EXPECT_EQ(line[0].font.name, "Arial");
    EXPECT_EQ(line[0].font.size, 24);
    EXPECT_TRUE(line[0].font.bold);
    EXPECT_TRUE(line[0].font.italic);
    EXPECT_FALSE(line[1].font.italic);
    EXPECT_EQ(line[2].font.underline, book::Underline::Single);
    EXPECT_EQ(line[3].font.position, book::TextPosition::Superscript);
    EXPECT_EQ(line[4].font.color, (book::Color{10, 11, 12}));
}

TEST(ParseHeader, EachPartBeginsInTheFontOfTheWorkbook)
{
    const HeaderText header = ParseHeader("&L&Ba&Cb", book::Font(), Fields());
    EXPECT_TRUE(header.parts[0][0][0].font.bold);
    EXPECT_FALSE(header.parts[1][0][0].font.bold);
}

TEST(ParseHeader, IsBounded)
{
    PageFields fields = Fields();
    fields.fileName = std::string(1000, 'x');
    std::string text;
    for (int i = 0; i < 100'000; ++i)
        text += "&F\n";
    const HeaderText header = ParseHeader(text, book::Font(), fields);
    EXPECT_LE(header.parts[1].size(), 65U);
}

TEST(PlaceHeader, StandsBetweenTheMargins)
{
    book::Font font;
    font.size = 10; // each character is ten pixels wide, lines are ten pixels high
    PageBox page;
    const std::vector<TextLine>& lines = page.headerAndFooter;
    PlaceHeader(ParseHeader("&Lab&Cab&Rab\ncde", font, Fields()), {100, 300, 40, false, {}},
                FakeMeasure(), page);
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0].x, 100);
    EXPECT_EQ(lines[0].baseline, 48);
    EXPECT_EQ(lines[1].x, 190);
    EXPECT_EQ(lines[2].x, 280);
    EXPECT_EQ(lines[3].x, 270);
    EXPECT_EQ(lines[3].baseline, 58);
}

TEST(PlaceHeader, AFooterEndsAtItsMargin)
{
    book::Font font;
    font.size = 10;
    PageBox page;
    const std::vector<TextLine>& lines = page.headerAndFooter;
    PlaceHeader(ParseHeader("a\nb", font, Fields()), {0, 100, 500, true, {}}, FakeMeasure(), page);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[0].baseline, 488);
    EXPECT_EQ(lines[1].baseline, 498);
}

/// A page with a header or footer at 0 to 200 pixels whose middle has a picture of 40 by 20.
PageBox PageWithPicture(const char* text, double y, bool isFooter)
{
    static const book::HeaderPicture kPicture{{}, 30, 15, {}};
    book::Font font;
    font.size = 10;
    PageBox page;
    PlaceHeader(ParseHeader(text, font, Fields()), {0, 200, y, isFooter, {nullptr, &kPicture}},
                FakeMeasure(), page);
    return page;
}

TEST(PlaceHeader, PicturesStandOnTheLine)
{
    const PageBox page = PageWithPicture("&Cab&Gc", 50, false);
    ASSERT_EQ(page.headerPictures.size(), 1U);
    EXPECT_EQ(page.headerPictures[0].box, (Box{85, 50, 40, 20}));
    ASSERT_EQ(page.headerAndFooter.size(), 1U);
    EXPECT_EQ(page.headerAndFooter[0].x, 65);
    EXPECT_EQ(page.headerAndFooter[0].baseline, 70);
    ASSERT_EQ(page.headerAndFooter[0].pieces.size(), 2U);
    EXPECT_EQ(page.headerAndFooter[0].pieces[1].x, 60);
}

TEST(PlaceHeader, PicturesOfFootersEndAtTheMargin)
{
    const PageBox page = PageWithPicture("&C&G", 500, true);
    ASSERT_EQ(page.headerPictures.size(), 1U);
    EXPECT_EQ(page.headerPictures[0].box, (Box{80, 480, 40, 20}));
    EXPECT_TRUE(page.headerAndFooter.empty());
}

TEST(PlaceHeader, APictureIsShownOnceAndOnlyWhereThereIsOne)
{
    EXPECT_EQ(PageWithPicture("&C&G&G\n&G", 0, false).headerPictures.size(), 1U);
    EXPECT_TRUE(PageWithPicture("&L&G&R&G&Cab", 0, false).headerPictures.empty());
}

} // namespace
} // namespace orrery::look
