#include "look/pdf/plugin/cairo_document.h"
#include "places/places.h"
#include "util/file_read.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace orrery::look {
namespace {

std::string Picture(const char* name)
{
    return util::ReadFile(places::SourceFolder() / "tests/look/pdf/data" / name).value();
}

std::size_t Count(std::string_view text, std::string_view part)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

TextStyle Style(const std::string& font)
{
    TextStyle style;
    style.font.name = font;
    style.font.size = 11;
    return style;
}

class CairoDocumentTest : public testing::Test {
protected:
    Canvas& Page() { return document_.BeginPage(800, 600); }
    std::string Bytes() { return std::string(document_.Finish()); }
    bool Draws(Canvas& canvas, const char* name, const char* type)
    {
        const std::string bytes = Picture(name);
        return canvas.DrawPicture({10, 10, 50, 50}, {bytes, type, {0, 0, 1, 1}});
    }

    CairoDocument document_{"My calendar"};
};

TEST_F(CairoDocumentTest, HasPagesOfTheirSizesAndATitle)
{
    Page();
    document_.BeginPage(1056, 816);
    const std::string bytes = Bytes();
    EXPECT_TRUE(bytes.starts_with("%PDF-1."));
    EXPECT_NE(bytes.find("(My calendar)"), bytes.npos);
    EXPECT_NE(bytes.find("/MediaBox [ 0 0 600 450 ]"), bytes.npos);
    EXPECT_NE(bytes.find("/MediaBox [ 0 0 792 612 ]"), bytes.npos);
    EXPECT_NE(bytes.find("/Count 2"), bytes.npos);
}

TEST_F(CairoDocumentTest, EmbedsTheFontsOfTexts)
{
    Canvas& canvas = Page();
    canvas.DrawText({10, 50}, "Wednesday", Style("Calibri"), 70);
    canvas.DrawText({10, 80}, "\xE2\x98\x90 \xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D", Style("Arial"), 40);
    const std::string bytes = Bytes();
    EXPECT_GE(Count(bytes, "/FontFile"), 1U);
    EXPECT_GE(Count(bytes, "/ToUnicode"), 1U);
}

TEST_F(CairoDocumentTest, SaysTheSameOfTheSamePages)
{
    CairoDocument other("My calendar");
    for (CairoDocument* const document : {&document_, &other})
        document->BeginPage(100, 100).DrawText({10, 50}, "May", Style("Calibri"), 30);
    EXPECT_EQ(Bytes(), other.Finish());
}

TEST_F(CairoDocumentTest, KeepsAJpegAndHasItOnce)
{
    EXPECT_TRUE(Draws(Page(), "red.jpg", "jpeg"));
    EXPECT_TRUE(Draws(Page(), "red.jpg", "jpeg"));
    const std::string bytes = Bytes();
    EXPECT_EQ(Count(bytes, "/DCTDecode"), 1U);
    EXPECT_NE(bytes.find(Picture("red.jpg")), bytes.npos);
}

TEST_F(CairoDocumentTest, HasThePixelsOfOtherPictures)
{
    Canvas& canvas = Page();
    EXPECT_TRUE(Draws(canvas, "clear.png", "png"));
    EXPECT_TRUE(Draws(canvas, "green.gif", "gif"));
    EXPECT_TRUE(Draws(canvas, "green.bmp", "bmp"));
    EXPECT_TRUE(Draws(canvas, "cmyk.jpg", "jpeg"));
    const std::string bytes = Bytes();
    EXPECT_EQ(Count(bytes, "/DCTDecode"), 0U) << "not every reader knows CMYK";
    EXPECT_GE(Count(bytes, "/Subtype /Image"), 4U);
    EXPECT_EQ(Count(bytes, "/SMask "), 1U) << "of the one with transparent pixels";
}

TEST_F(CairoDocumentTest, TellsWhichPicturesItDoesNotDraw)
{
    Canvas& canvas = Page();
    EXPECT_FALSE(canvas.DrawPicture({0, 0, 9, 9}, {"no picture", "emf", {0, 0, 1, 1}}));
    const std::string cut = Picture("red.jpg").substr(0, 200);
    canvas.DrawPicture({0, 0, 9, 9},
                       {cut, "jpeg", {0, 0, 1, 1}}); // whatever the system makes of it
    EXPECT_FALSE(Bytes().empty());
}

TEST_F(CairoDocumentTest, DamagedNumbersDoNoHarm)
{
    Canvas& canvas = Page();
    const double none = std::numeric_limits<double>::quiet_NaN();
    const double endless = std::numeric_limits<double>::infinity();
    canvas.Clip({none, 0, endless, 10});
    canvas.Place({endless, 0}, none);
    canvas.Rotate({0, none}, endless);
    canvas.Flip({none, 0, 1, 1}, true, false);
    canvas.DrawLine({0, none}, {10, 10}, {});
    canvas.DrawPath({{PathStep::Kind::Line, {1e300, -1e300}, {}, {}},
                     {PathStep::Kind::Curve, {none, 1}, {endless, 0}, {0, -endless}},
                     {PathStep::Kind::Close, {}, {}, {}}},
                    SolidBrush(book::kBlack), Pen{book::kBlack, 1, {none, -1}, 1});
    canvas.DrawText({none, 0}, "x", Style("Arial"), none);
    canvas.DrawText({0, 0}, "\xFF\x01\xC3", Style(""), endless);
    canvas.FillBox({0, 0, endless, 1}, SolidBrush(book::kWhite));
    for (int i = 0; i < 4; ++i)
        canvas.Restore();
    EXPECT_FALSE(Bytes().empty());
}

TEST_F(CairoDocumentTest, WithoutAPageIsNotEmpty)
{
    EXPECT_FALSE(Bytes().empty());
}

} // namespace
} // namespace orrery::look
