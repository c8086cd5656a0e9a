#include "drawing_book.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orrery::xlsx {
namespace {

using book::DrawingKind;
using test::DrawingBook;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

const std::string kPng = "\x89PNG\r\n\x1A\n and more";

book::Drawing ReadShape(const std::string& properties, const std::string& rest = {})
{
    auto drawings = DrawingBook(DrawingBook::Anchored(DrawingBook::Shape(properties, rest))).Read();
    EXPECT_THAT(drawings, SizeIs(1));
    return drawings.empty() ? book::Drawing() : drawings.front();
}

std::string Picture(const std::string& fill)
{
    return "<xdr:pic><xdr:nvPicPr><xdr:cNvPr id=\"3\" name=\"Logo\"/><xdr:cNvPicPr/></xdr:nvPicPr>"
           "<xdr:blipFill>" +
           fill + "</xdr:blipFill><xdr:spPr/></xdr:pic>";
}

TEST(ReadDrawings, AnchorBetweenTwoCells)
{
    const book::Drawing drawing = ReadShape("");
    EXPECT_EQ(drawing.kind, DrawingKind::Shape);
    EXPECT_EQ(drawing.name, "Box");
    EXPECT_EQ(drawing.anchor.from.cell, (book::CellAddress{3, 2}));
    EXPECT_EQ(drawing.anchor.from.emuX, 9525);
    ASSERT_TRUE(drawing.anchor.to);
    EXPECT_EQ(drawing.anchor.to->cell, (book::CellAddress{5, 4}));
    EXPECT_EQ(drawing.anchor.to->emuY, 19050);
    EXPECT_FALSE(drawing.fill);
    EXPECT_FALSE(drawing.outline.isVisible);
}

TEST(ReadDrawings, AnchorWithSize)
{
    const auto drawings =
        DrawingBook(
            "<xdr:oneCellAnchor><xdr:from><xdr:col>0</xdr:col><xdr:colOff>0</xdr:colOff>"
            "<xdr:row>9</xdr:row><xdr:rowOff>0</xdr:rowOff></xdr:from>"
            "<xdr:ext cx=\"914400\" cy=\"1in\"/>" +
            DrawingBook::Shape("") + "</xdr:oneCellAnchor>" +
            "<xdr:absoluteAnchor><xdr:pos x=\"100\" y=\"200\"/><xdr:ext cx=\"5\" cy=\"-6\"/>" +
            DrawingBook::Shape("") + "</xdr:absoluteAnchor>")
            .Read();
    ASSERT_THAT(drawings, SizeIs(2));
    EXPECT_EQ(drawings[0].anchor.from.cell, (book::CellAddress{10, 1}));
    EXPECT_FALSE(drawings[0].anchor.to);
    EXPECT_EQ(drawings[0].anchor.width, 914400);
    EXPECT_EQ(drawings[0].anchor.height, 914400);
    EXPECT_EQ(drawings[1].anchor.from.emuX, 100);
    EXPECT_EQ(drawings[1].anchor.from.emuY, 200);
    EXPECT_EQ(drawings[1].anchor.height, 0) << "a negative size is none";
}

TEST(ReadDrawings, CellsBeyondTheSheetAreItsLast)
{
    const auto drawings =
        DrawingBook("<xdr:oneCellAnchor><xdr:from><xdr:col>99999999</xdr:col><xdr:row>-4</xdr:row>"
                    "</xdr:from><xdr:ext cx=\"1\" cy=\"1\"/>" +
                    DrawingBook::Shape("") + "</xdr:oneCellAnchor>")
            .Read();
    ASSERT_THAT(drawings, SizeIs(1));
    EXPECT_EQ(drawings[0].anchor.from.cell, (book::CellAddress{1, 16384}));
}

TEST(ReadDrawings, ShapeWithGeometryFillAndLine)
{
    const book::Drawing drawing = ReadShape(
        "<a:xfrm rot=\"5400000\" flipH=\"1\"><a:off x=\"0\" y=\"0\"/><a:ext cx=\"9\" "
        "cy=\"9\"/></a:xfrm>"
        "<a:prstGeom prst=\"roundRect\"><a:avLst><a:gd name=\"adj\" fmla=\"val 16667\"/></a:avLst>"
        "</a:prstGeom><a:solidFill><a:srgbClr val=\"FF8000\"><a:alpha val=\"50000\"/></a:srgbClr>"
        "</a:solidFill><a:ln w=\"25400\"><a:solidFill><a:srgbClr val=\"0000FF\"/></a:solidFill>"
        "<a:prstDash val=\"dash\"/><a:tailEnd type=\"triangle\"/></a:ln>");
    EXPECT_EQ(drawing.geometry, "roundRect");
    EXPECT_THAT(drawing.adjustments, ElementsAre(16667));
    EXPECT_EQ(drawing.rotation, 90);
    EXPECT_TRUE(drawing.isAnchorTurned);
    EXPECT_TRUE(drawing.flipsHorizontally);
    EXPECT_FALSE(drawing.flipsVertically);
    ASSERT_TRUE(drawing.fill);
    EXPECT_EQ(drawing.fill->pattern, book::FillPattern::Solid);
    EXPECT_EQ(drawing.fill->foreground, (book::Color{0xFF, 0x80, 0}));
    EXPECT_EQ(drawing.fillOpacity, 0.5);
    EXPECT_TRUE(drawing.outline.isVisible);
    EXPECT_EQ(drawing.outline.width, 2);
    EXPECT_EQ(drawing.outline.color, (book::Color{0, 0, 0xFF}));
    EXPECT_EQ(drawing.outline.style, book::LineStyle::Dashed);
    EXPECT_FALSE(drawing.hasArrowAtStart);
    EXPECT_TRUE(drawing.hasArrowAtEnd);
}

TEST(ReadDrawings, SecondAdjustmentAloneKeepsItsPlace)
{
    const book::Drawing drawing =
        ReadShape("<a:prstGeom prst=\"rightArrow\"><a:avLst><a:gd name=\"adj2\" fmla=\"val 7\"/>"
                  "</a:avLst></a:prstGeom>");
    ASSERT_THAT(drawing.adjustments, SizeIs(2));
    EXPECT_NE(drawing.adjustments[0], drawing.adjustments[0])
        << "not a number: as the geometry has it";
    EXPECT_EQ(drawing.adjustments[1], 7);
}

TEST(ReadDrawings, Gradients)
{
    const book::Drawing linear = ReadShape(
        "<a:gradFill><a:gsLst><a:gs pos=\"100000\"><a:srgbClr val=\"FFFFFF\"/></a:gs>"
        "<a:gs pos=\"0\"><a:srgbClr val=\"000000\"/></a:gs></a:gsLst><a:lin ang=\"5400000\"/>"
        "</a:gradFill>");
    ASSERT_TRUE(linear.fill && linear.fill->gradient);
    EXPECT_EQ(linear.fill->gradient->degree, 90);
    EXPECT_EQ(linear.fill->gradient->stops.front(), (book::GradientStop{0, book::kBlack}));
    EXPECT_EQ(linear.fill->gradient->stops.back(), (book::GradientStop{1, book::kWhite}));
    const book::Drawing path = ReadShape(
        "<a:gradFill><a:gsLst><a:gs pos=\"0\"><a:srgbClr val=\"FFFFFF\"/></a:gs></a:gsLst>"
        "<a:path path=\"circle\"><a:fillToRect l=\"25000\" t=\"50000\" r=\"50000\" b=\"50000\"/>"
        "</a:path></a:gradFill>");
    ASSERT_TRUE(path.fill && path.fill->gradient);
    EXPECT_TRUE(path.fill->gradient->isPath);
    EXPECT_EQ(path.fill->gradient->left, 0.25);
    EXPECT_EQ(path.fill->gradient->right, 0.5);
}

TEST(ReadDrawings, Pattern)
{
    const book::Drawing drawing =
        ReadShape("<a:pattFill prst=\"ltUpDiag\"><a:fgClr><a:srgbClr val=\"112233\"/></a:fgClr>"
                  "<a:bgClr><a:srgbClr val=\"FFFFFF\"/></a:bgClr></a:pattFill>");
    ASSERT_TRUE(drawing.fill);
    EXPECT_EQ(drawing.fill->pattern, book::FillPattern::LightUp);
    EXPECT_EQ(drawing.fill->foreground, (book::Color{0x11, 0x22, 0x33}));
    EXPECT_EQ(drawing.fill->background, book::kWhite);
}

TEST(ReadDrawings, StyleGivesWhatPropertiesLeaveOpen)
{
    const std::string style =
        "<xdr:style><a:lnRef idx=\"2\"><a:srgbClr val=\"00FF00\"/></a:lnRef>"
        "<a:fillRef idx=\"1\"><a:srgbClr val=\"0000FF\"/></a:fillRef><a:effectRef idx=\"0\"/>"
        "<a:fontRef idx=\"minor\"><a:srgbClr val=\"FFFFFF\"/></a:fontRef></xdr:style>";
    const std::string text =
        "<xdr:txBody><a:bodyPr/><a:p><a:r><a:t>on it</a:t></a:r></a:p></xdr:txBody>";
    const book::Drawing drawing = ReadShape("<a:ln w=\"12700\"/>", style + text);
    ASSERT_TRUE(drawing.fill);
    EXPECT_EQ(drawing.fill->foreground, (book::Color{0, 0, 0xFF}));
    EXPECT_TRUE(drawing.outline.isVisible);
    EXPECT_EQ(drawing.outline.color, (book::Color{0, 0xFF, 0}));
    EXPECT_EQ(drawing.outline.width, 1);
    ASSERT_TRUE(drawing.text);
    EXPECT_EQ(drawing.text->paragraphs[0].runs[0].font.color, book::kWhite);
    const book::Drawing plain = ReadShape("<a:noFill/><a:ln><a:noFill/></a:ln>", style);
    EXPECT_FALSE(plain.fill);
    EXPECT_FALSE(plain.outline.isVisible);
}

TEST(ReadDrawings, StyleRefersToTheThemesFormats)
{
    DrawingBook book(DrawingBook::Anchored(DrawingBook::Shape(
        "", "<xdr:style><a:lnRef idx=\"1\"><a:srgbClr val=\"00FF00\"/></a:lnRef>"
            "<a:fillRef idx=\"2\"><a:schemeClr val=\"accent2\"/></a:fillRef></xdr:style>")));
    book.Put("xl/_rels/workbook.xml.rels",
             orrery::test::BuiltBook::Links(
                 {{"worksheet", "worksheets/sheet1.xml"}, {"theme", "theme/theme1.xml"}}));
    book.Put(
        "xl/theme/theme1.xml",
        "<a:theme xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" name=\"t\">"
        "<a:themeElements><a:clrScheme name=\"c\"><a:accent2><a:srgbClr val=\"804020\"/>"
        "</a:accent2></a:clrScheme><a:fmtScheme name=\"f\"><a:fillStyleLst>"
        "<a:solidFill><a:schemeClr val=\"phClr\"/></a:solidFill><a:gradFill><a:gsLst>"
        "<a:gs pos=\"0\"><a:schemeClr val=\"phClr\"><a:lumMod val=\"50000\"/></a:schemeClr></a:gs>"
        "<a:gs pos=\"100000\"><a:schemeClr val=\"phClr\"/></a:gs></a:gsLst></a:gradFill>"
        "</a:fillStyleLst><a:lnStyleLst><a:ln w=\"38100\"><a:solidFill>"
        "<a:schemeClr val=\"phClr\"/></a:solidFill></a:ln></a:lnStyleLst></a:fmtScheme>"
        "</a:themeElements></a:theme>");
    const auto drawings = book.Read();
    ASSERT_THAT(drawings, SizeIs(1));
    ASSERT_TRUE(drawings[0].fill && drawings[0].fill->gradient);
    EXPECT_EQ(drawings[0].fill->gradient->stops[0].color, (book::Color{0x40, 0x20, 0x10}));
    EXPECT_EQ(drawings[0].fill->gradient->stops[1].color, (book::Color{0x80, 0x40, 0x20}));
    EXPECT_EQ(drawings[0].outline.width, 3);
    EXPECT_EQ(drawings[0].outline.color, (book::Color{0, 0xFF, 0}));
}

TEST(ReadDrawings, TextOfAShape)
{
    const book::Drawing drawing = ReadShape(
        "",
        "<xdr:txBody><a:bodyPr wrap=\"none\" anchor=\"ctr\" lIns=\"0\" vert=\"vert270\"/>"
        "<a:lstStyle><a:lvl1pPr algn=\"r\"><a:defRPr sz=\"1400\"/></a:lvl1pPr></a:lstStyle>"
        "<a:p><a:pPr algn=\"ctr\"/><a:r><a:rPr b=\"1\" u=\"sng\" baseline=\"30000\">"
        "<a:solidFill><a:srgbClr val=\"FF0000\"/></a:solidFill><a:latin "
        "typeface=\"Arial\"/></a:rPr>"
        "<a:t>one &amp; </a:t></a:r><a:br/><a:r><a:rPr sz=\"900\" i=\"1\" strike=\"sngStrike\"/>"
        "<a:t>two</a:t></a:r></a:p><a:p><a:endParaRPr sz=\"700\"/></a:p></xdr:txBody>");
    ASSERT_TRUE(drawing.text);
    EXPECT_FALSE(drawing.text->wraps);
    EXPECT_EQ(drawing.text->vertical, book::VerticalAlignment::Center);
    EXPECT_EQ(drawing.text->rotation, 270);
    EXPECT_EQ(drawing.text->left, 0);
    EXPECT_NEAR(drawing.text->right, 7.2, 1e-9);
    ASSERT_THAT(drawing.text->paragraphs, SizeIs(2));
    const book::Paragraph& first = drawing.text->paragraphs[0];
    EXPECT_EQ(first.alignment, book::HorizontalAlignment::Center);
    EXPECT_EQ(drawing.text->paragraphs[1].alignment, book::HorizontalAlignment::Right);
    EXPECT_EQ(drawing.text->paragraphs[1].runs[0].font.size, 7);
    ASSERT_THAT(first.runs, SizeIs(3));
    EXPECT_EQ(first.runs[0].text, "one & ");
    EXPECT_EQ(first.runs[0].font.name, "Arial");
    EXPECT_EQ(first.runs[0].font.size, 14);
    EXPECT_TRUE(first.runs[0].font.bold);
    EXPECT_EQ(first.runs[0].font.underline, book::Underline::Single);
    EXPECT_EQ(first.runs[0].font.position, book::TextPosition::Superscript);
    EXPECT_EQ(first.runs[0].font.color, (book::Color{0xFF, 0, 0}));
    EXPECT_EQ(first.runs[1].text, "\n");
    EXPECT_EQ(first.runs[2].font.size, 9);
    EXPECT_TRUE(first.runs[2].font.italic);
    EXPECT_TRUE(first.runs[2].font.strike);
}

TEST(ReadDrawings, PictureWithCrop)
{
    DrawingBook book(
        DrawingBook::Anchored(Picture("<a:blip r:embed=\"rId1\"><a:extLst><a:ext>"
                                      "<asvg:svgBlip xmlns:asvg=\"x\" r:embed=\"rId9\"/>"
                                      "</a:ext></a:extLst></a:blip>"
                                      "<a:srcRect l=\"10000\" b=\"25000\"/>")),
        {{"image", "../media/image1.png"}});
    const auto drawings = book.Put("xl/media/image1.png", kPng).Read();
    ASSERT_THAT(drawings, SizeIs(1));
    EXPECT_EQ(drawings[0].kind, DrawingKind::Picture);
    EXPECT_EQ(drawings[0].pictureType, "png");
    ASSERT_TRUE(drawings[0].picture);
    EXPECT_EQ(*drawings[0].picture, kPng);
    EXPECT_EQ(drawings[0].crop, (book::ShareBox{0.1, 0, 1, 0.75}));
    EXPECT_THAT(book.leftOut, IsEmpty());
}

TEST(ReadDrawings, PicturesThatCannotBeShownAreCountedOnce)
{
    DrawingBook book(DrawingBook::Anchored(Picture("<a:blip r:embed=\"rId1\"/>")) +
                         DrawingBook::Anchored(Picture("<a:blip r:embed=\"rId1\"/>")) +
                         DrawingBook::Anchored(Picture("<a:blip r:embed=\"rId8\"/>")),
                     {{"image", "../media/image1.png"}});
    const auto drawings = book.Put("xl/media/image1.png", "no picture").Read();
    ASSERT_THAT(drawings, SizeIs(3));
    EXPECT_EQ(drawings[0].kind, DrawingKind::Placeholder);
    EXPECT_EQ(drawings[0].description, "picture");
    ASSERT_THAT(book.leftOut, SizeIs(1));
    EXPECT_THAT(book.leftOut[0].reason, HasSubstr("3: "));
}

TEST(ReadDrawings, GroupsHoldSharesOfTheirBox)
{
    const auto box = [](int x, int y, int width, int height) {
        return "<a:xfrm><a:off x=\"" + std::to_string(x) + "\" y=\"" + std::to_string(y) +
               "\"/><a:ext cx=\"" + std::to_string(width) + "\" cy=\"" + std::to_string(height) +
               "\"/>";
    };
    const std::string inner =
        "<xdr:grpSp><xdr:nvGrpSpPr><xdr:cNvPr id=\"5\" "
        "name=\"Inner\"/></xdr:nvGrpSpPr><xdr:grpSpPr>" +
        box(1500, 1000, 500, 1000) +
        "<a:chOff x=\"0\" y=\"0\"/><a:chExt cx=\"10\" cy=\"10\"/></a:xfrm></xdr:grpSpPr>" +
        DrawingBook::Shape(box(5, 0, 5, 10) + "</a:xfrm><a:grpFill/>") + "</xdr:grpSp>";
    const auto drawings =
        DrawingBook(
            DrawingBook::Anchored(
                "<xdr:grpSp><xdr:nvGrpSpPr><xdr:cNvPr id=\"4\" name=\"Outer\"/></xdr:nvGrpSpPr>"
                "<xdr:grpSpPr>" +
                box(0, 0, 7, 7) +
                "<a:chOff x=\"1000\" y=\"1000\"/><a:chExt cx=\"1000\" cy=\"2000\"/></a:xfrm>"
                "</xdr:grpSpPr>" +
                inner + "</xdr:grpSp>"))
            .Read();
    ASSERT_THAT(drawings, SizeIs(1));
    EXPECT_EQ(drawings[0].kind, DrawingKind::Group);
    ASSERT_THAT(drawings[0].children, SizeIs(1));
    EXPECT_EQ(drawings[0].children[0].place, (book::ShareBox{0.5, 0, 1, 0.5}));
    ASSERT_THAT(drawings[0].children[0].children, SizeIs(1));
    EXPECT_EQ(drawings[0].children[0].children[0].place, (book::ShareBox{0.5, 0, 1, 1}));
}

TEST(ReadDrawings, ConnectorIsALine)
{
    const auto drawings =
        DrawingBook(
            DrawingBook::Anchored(
                "<xdr:cxnSp><xdr:nvCxnSpPr><xdr:cNvPr id=\"4\" name=\"Arrow\"/></xdr:nvCxnSpPr>"
                "<xdr:spPr><a:xfrm flipV=\"1\"/><a:prstGeom prst=\"straightConnector1\"/>"
                "<a:ln><a:solidFill><a:prstClr val=\"dkRed\"/></a:solidFill>"
                "<a:headEnd type=\"oval\"/></a:ln></xdr:spPr></xdr:cxnSp>"))
            .Read();
    ASSERT_THAT(drawings, SizeIs(1));
    EXPECT_EQ(drawings[0].kind, DrawingKind::Line);
    EXPECT_TRUE(drawings[0].flipsVertically);
    EXPECT_TRUE(drawings[0].hasArrowAtStart);
    EXPECT_FALSE(drawings[0].hasArrowAtEnd);
    EXPECT_EQ(drawings[0].outline.color, (book::Color{139, 0, 0}));
}

TEST(ReadDrawings, HiddenOnesAreNotListed)
{
    DrawingBook book(
        DrawingBook::Anchored(DrawingBook::Shape("", "", "id=\"2\" name=\"Box\" hidden=\"1\"")));
    EXPECT_THAT(book.Read(), IsEmpty());
    EXPECT_THAT(book.leftOut, IsEmpty());
}

TEST(ReadDrawings, AlternateContentGivesWhatIsUnderstood)
{
    const auto choice = [](const std::string& uri, const std::string& name) {
        return "<mc:Choice xmlns:p=\"" + uri + "\" Requires=\"p\">" +
               DrawingBook::Anchored(DrawingBook::Shape("", "", "id=\"2\" name=\"" + name + "\"")) +
               "</mc:Choice>";
    };
    const std::string fallback =
        "<mc:Fallback>" +
        DrawingBook::Anchored(DrawingBook::Shape("", "", "id=\"2\" name=\"Fallback\"")) +
        "</mc:Fallback>";
    const std::string slicers = "http://schemas.microsoft.com/office/drawing/2010/slicer";
    const auto drawings =
        DrawingBook("<mc:AlternateContent>" + choice("urn:other", "Other") +
                    choice(slicers, "Slicers") + choice(slicers, "Second") + fallback +
                    "</mc:AlternateContent><mc:AlternateContent>" + choice("urn:other", "Other") +
                    fallback + "</mc:AlternateContent>")
            .Read();
    ASSERT_THAT(drawings, SizeIs(2));
    EXPECT_EQ(drawings[0].name, "Slicers");
    EXPECT_EQ(drawings[1].name, "Fallback");
}

TEST(ReadDrawings, FramesOfOtherKindsArePlaceholders)
{
    const auto frame = [](const std::string& uri) {
        return DrawingBook::Anchored(
            "<xdr:graphicFrame><xdr:nvGraphicFramePr><xdr:cNvPr id=\"2\" name=\"F\"/>"
            "</xdr:nvGraphicFramePr><a:graphic><a:graphicData uri=\"" +
            uri + "\"/></a:graphic></xdr:graphicFrame>");
    };
    DrawingBook book(frame("http://schemas.microsoft.com/office/drawing/2010/slicer") +
                     frame("http://schemas.microsoft.com/office/drawing/2012/timeslicer") +
                     frame("http://schemas.openxmlformats.org/drawingml/2006/chart"));
    const auto drawings = book.Read();
    ASSERT_THAT(drawings, SizeIs(3));
    EXPECT_EQ(drawings[0].kind, DrawingKind::Placeholder);
    EXPECT_EQ(drawings[0].description, "slicer");
    EXPECT_EQ(drawings[1].description, "timeline");
    EXPECT_EQ(drawings[2].description, "chart") << "its part is missing";
    ASSERT_THAT(book.leftOut, SizeIs(1));
    EXPECT_EQ(book.leftOut[0].what, "chart or diagram");
}

TEST(ReadDrawings, TooManyShapesAreCounted)
{
    std::string anchors;
    for (int i = 0; i < 10025; ++i)
        anchors += "<xdr:absoluteAnchor><xdr:sp/></xdr:absoluteAnchor>";
    DrawingBook book(anchors);
    EXPECT_THAT(book.Read(), SizeIs(10000));
    ASSERT_THAT(book.leftOut, SizeIs(1));
    EXPECT_THAT(book.leftOut[0].reason, HasSubstr("25: "));
}

TEST(ReadDrawings, NestingEndsAt32)
{
    std::string shape = DrawingBook::Shape("");
    for (int i = 0; i < 40; ++i)
        shape = "<xdr:grpSp><xdr:nvGrpSpPr/><xdr:grpSpPr/>" + shape + "</xdr:grpSp>";
    DrawingBook book(DrawingBook::Anchored(shape));
    const auto drawings = book.Read();
    const std::vector<book::Drawing>* level = &drawings;
    int depth = 0;
    for (; !level->empty(); ++depth)
        level = &level->front().children;
    EXPECT_EQ(depth, 33);
    ASSERT_THAT(book.leftOut, SizeIs(1));
}

TEST(ReadDrawings, DamagedPartLeavesTheOthers)
{
    DrawingBook book("");
    book.Put("xl/drawings/drawing1.xml", "<xdr:wsDr");
    EXPECT_THAT(book.Read(), IsEmpty());
    ASSERT_THAT(book.leftOut, SizeIs(1));
    EXPECT_EQ(book.leftOut[0].where, "/xl/drawings/drawing1.xml");
}

} // namespace
} // namespace orrery::xlsx
