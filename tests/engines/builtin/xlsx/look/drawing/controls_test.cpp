#include "drawing_book.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orrery::xlsx {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

/// A workbook whose sheet has a part of VML with these shapes.
test::DrawingBook BookWith(const std::string& shapes)
{
    test::DrawingBook book("");
    book.Put("xl/worksheets/_rels/sheet1.xml.rels",
             orrery::test::BuiltBook::Links({{"vmlDrawing", "../drawings/vmlDrawing1.vml"}}));
    book.Put("xl/drawings/_rels/vmlDrawing1.vml.rels",
             orrery::test::BuiltBook::Links({{"image", "../media/image1.emf"}}));
    book.Put("xl/drawings/vmlDrawing1.vml",
             "<xml xmlns:v=\"urn:schemas-microsoft-com:vml\" "
             "xmlns:o=\"urn:schemas-microsoft-com:office:office\" "
             "xmlns:x=\"urn:schemas-microsoft-com:office:excel\"><v:shapetype id=\"t\"/>" +
                 shapes + "</xml>");
    return book;
}

std::string Shape(const std::string& type, const std::string& content,
                  const std::string& anchor = "2, 10, 1, 0,\r\n 3, 0, 2, 5",
                  const std::string& style = "position:absolute")
{
    return "<v:shape id=\"Control 1\" style='" + style + "'>" + content +
           "<x:ClientData ObjectType=\"" + type + "\"><x:Anchor>\n " + anchor +
           "</x:Anchor></x:ClientData></v:shape>";
}

TEST(ReadControls, ButtonWithText)
{
    const auto drawings =
        BookWith(Shape("Button", "<v:textbox><div><font face=\"Arial\" size=\"200\">Press\n   "
                                 "me</font></div></v:textbox>"))
            .Read();
    ASSERT_THAT(drawings, SizeIs(1));
    EXPECT_EQ(drawings[0].kind, book::DrawingKind::Control);
    EXPECT_EQ(drawings[0].description, "button");
    EXPECT_EQ(drawings[0].anchor.from.cell, (book::CellAddress{2, 3}));
    EXPECT_EQ(drawings[0].anchor.from.emuX, 95250) << "ten pixels";
    ASSERT_TRUE(drawings[0].anchor.to);
    EXPECT_EQ(drawings[0].anchor.to->cell, (book::CellAddress{3, 4}));
    ASSERT_TRUE(drawings[0].text);
    EXPECT_EQ(drawings[0].text->paragraphs[0].runs[0].text, "Press me");
    EXPECT_EQ(drawings[0].text->paragraphs[0].runs[0].font.name, "Arial");
    EXPECT_EQ(drawings[0].text->paragraphs[0].runs[0].font.size, 10);
}

TEST(ReadControls, ObjectIsItsPicture)
{
    std::string emf("\x01\0\0\0", 4);
    emf.resize(40);
    emf += " EMF";
    auto book = BookWith(Shape("Pict", "<v:imagedata o:relid=\"rId1\"/>"));
    const auto drawings = book.Put("xl/media/image1.emf", emf).Read();
    ASSERT_THAT(drawings, SizeIs(1));
    EXPECT_EQ(drawings[0].kind, book::DrawingKind::Picture);
    EXPECT_EQ(drawings[0].pictureType, "emf");
}

TEST(ReadControls, NotesAndHiddenOnesAreNotListed)
{
    auto book = BookWith(Shape("Note", "") +
                         Shape("Button", "", "0,0,0,0,1,0,1,0", "width:1pt; visibility: hidden") +
                         Shape("Button", "", "1, 2, 3") + Shape("Button", "", "-1,0,0,0,1,0,1,0"));
    EXPECT_THAT(book.Read(), IsEmpty());
    EXPECT_THAT(book.leftOut, IsEmpty());
}

std::string HeaderShape(const std::string& name, const std::string& style)
{
    return "<v:shape id=\"" + name + "\" style='" + style +
           "'><v:imagedata o:relid=\"rId1\" croptop=\"16384f\" cropright=\".5\"/></v:shape>";
}

TEST(ReadControls, PicturesOfHeadersHaveTheirPlaces)
{
    auto book = BookWith(HeaderShape("CFFIRST", "position:absolute;\n width:15pt; height:1in"));
    book.Put("xl/media/image1.emf", "GIF89a");
    EXPECT_THAT(book.Read(), IsEmpty());
    EXPECT_THAT(book.leftOut, IsEmpty());
    ASSERT_THAT(book.headerPictures, SizeIs(1));
    const book::HeaderPicture& picture = book.headerPictures[0];
    EXPECT_EQ(picture.slot,
              (book::HeaderSlot{book::HeaderPages::First, book::HeaderPart::Middle, true}));
    EXPECT_EQ(picture.width, 15);
    EXPECT_EQ(picture.height, 72);
    EXPECT_EQ(picture.drawing.kind, book::DrawingKind::Picture);
    EXPECT_EQ(picture.drawing.pictureType, "gif");
    EXPECT_EQ(picture.drawing.crop, (book::ShareBox{0, 0.25, 0.5, 1}));
}

TEST(ReadControls, PicturesOfHeadersThatCannotBeShownAreLeftOut)
{
    auto book = BookWith(HeaderShape("LH", "width:1pt;height:1pt"));
    book.Put("xl/media/image1.emf", "no picture");
    book.Read();
    EXPECT_THAT(book.headerPictures, IsEmpty());
    ASSERT_THAT(book.leftOut, SizeIs(1));
    EXPECT_EQ(book.leftOut[0].what, "picture");
}

TEST(ReadControls, PicturesOfHeadersNeedANameAndASize)
{
    auto book =
        BookWith(HeaderShape("LH", "width:0pt;height:1pt") + HeaderShape("LH", "width:1pt") +
                 HeaderShape("Logo", "width:1pt;height:1pt"));
    book.Put("xl/media/image1.emf", "GIF89a");
    EXPECT_THAT(book.Read(), IsEmpty());
    EXPECT_THAT(book.headerPictures, IsEmpty());
}

TEST(ReadControls, TextThatIsNoXmlIsLeftOut)
{
    auto book = BookWith("<v:shape><br></v:shape>");
    EXPECT_THAT(book.Read(), IsEmpty());
    ASSERT_THAT(book.leftOut, SizeIs(1));
    EXPECT_EQ(book.leftOut[0].what, "control");
}

} // namespace
} // namespace orrery::xlsx
