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

TEST(ReadControls, PicturesOfHeadersAreLeftOut)
{
    auto book = BookWith("<v:shape id=\"LH\"><v:imagedata o:relid=\"rId1\"/></v:shape>");
    EXPECT_THAT(book.Read(), IsEmpty());
    ASSERT_THAT(book.leftOut, SizeIs(1));
    EXPECT_EQ(book.leftOut[0].what, "picture");
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
