// Every attribute of a drawing and of a chart in turn gets values that no program writes.

#include "drawing_book.h"

#include <array>
#include <gtest/gtest.h>

namespace orrery::xlsx {
namespace {

const std::string kDrawing =
    "<xdr:oneCellAnchor><xdr:from><xdr:col>1</xdr:col><xdr:row>2</xdr:row></xdr:from>"
    "<xdr:ext cx=\"914400\" cy=\"914400\"/><xdr:grpSp><xdr:nvGrpSpPr><xdr:cNvPr id=\"4\" "
    "name=\"G\"/>"
    "</xdr:nvGrpSpPr><xdr:grpSpPr><a:xfrm rot=\"60000\" flipH=\"1\"><a:off x=\"1\" y=\"1\"/>"
    "<a:ext cx=\"7\" cy=\"7\"/><a:chOff x=\"1\" y=\"1\"/><a:chExt cx=\"1000\" "
    "cy=\"2000\"/></a:xfrm>"
    "</xdr:grpSpPr><xdr:sp><xdr:nvSpPr><xdr:cNvPr id=\"2\" name=\"Box\" hidden=\"0\"/></xdr:nvSpPr>"
    "<xdr:spPr><a:xfrm><a:off x=\"5\" y=\"0\"/><a:ext cx=\"5\" cy=\"10\"/></a:xfrm>"
    "<a:prstGeom prst=\"roundRect\"><a:avLst><a:gd name=\"adj2\" fmla=\"val 16667\"/></a:avLst>"
    "</a:prstGeom><a:gradFill><a:gsLst><a:gs pos=\"100000\"><a:hslClr hue=\"7200000\" "
    "sat=\"100000\" "
    "lum=\"50000\"><a:lumMod val=\"50000\"/><a:alpha val=\"50000\"/></a:hslClr></a:gs></a:gsLst>"
    "<a:path path=\"circle\"><a:fillToRect l=\"50000\" r=\"50000\"/></a:path></a:gradFill>"
    "<a:ln w=\"9525\"><a:solidFill><a:srgbClr val=\"00FF00\"><a:tint val=\"5\"/></a:srgbClr>"
    "</a:solidFill></a:ln></xdr:spPr><xdr:style><a:lnRef idx=\"1\"><a:prstClr "
    "val=\"red\"/></a:lnRef>"
    "<a:fillRef idx=\"1001\"/></xdr:style><xdr:txBody><a:bodyPr lIns=\"1\" anchor=\"b\"/><a:p>"
    "<a:pPr lvl=\"1\"/><a:r><a:rPr sz=\"1000\" "
    "baseline=\"1\"/><a:t>x</a:t></a:r></a:p></xdr:txBody>"
    "</xdr:sp></xdr:grpSp></xdr:oneCellAnchor>" +
    test::DrawingBook::Anchored(
        "<xdr:graphicFrame><xdr:nvGraphicFramePr/><a:graphic><a:graphicData "
        "uri=\"http://schemas.openxmlformats.org/drawingml/2006/chart\"><c:chart r:id=\"rId1\"/>"
        "</a:graphicData></a:graphic></xdr:graphicFrame>");

const std::string kChart =
    "<c:chartSpace xmlns:c=\"c\" xmlns:a=\"a\"><c:style val=\"3\"/><c:chart><c:autoTitleDeleted "
    "val=\"0\"/><c:plotArea><c:layout><c:manualLayout><c:layoutTarget val=\"inner\"/><c:x "
    "val=\"0\"/>"
    "<c:y val=\"0\"/><c:w val=\"1\"/><c:h val=\"1\"/></c:manualLayout></c:layout><c:barChart>"
    "<c:barDir val=\"col\"/><c:ser><c:idx val=\"8\"/><c:val><c:numLit><c:ptCount val=\"3\"/>"
    "<c:pt idx=\"1\"><c:v>1e999</c:v></c:pt></c:numLit></c:val><c:dPt><c:idx val=\"1\"/><c:spPr>"
    "<a:solidFill><a:srgbClr val=\"00FF00\"/></a:solidFill></c:spPr></c:dPt></c:ser>"
    "<c:gapWidth val=\"1\"/><c:overlap val=\"1\"/><c:axId val=\"1\"/><c:axId "
    "val=\"2\"/></c:barChart>"
    "<c:catAx><c:axId val=\"1\"/></c:catAx><c:valAx><c:axId val=\"2\"/><c:scaling><c:max "
    "val=\"5\"/>"
    "<c:min val=\"1\"/></c:scaling><c:majorUnit val=\"1\"/></c:valAx></c:plotArea><c:legend>"
    "<c:legendPos val=\"r\"/></c:legend></c:chart></c:chartSpace>";

constexpr std::array kBadValues{"",     "-1",  "0",    "99999999999999999999999", "1e308",
                                "-1e9", "NaN", "100%", "-9223372036854775808",    "x in"};

/// Calls `visit` with the text in which one attribute after the other has each of the bad values.
template <typename Visit> void ForEachBadText(const std::string& text, Visit visit)
{
    for (auto at = text.find("=\""); at != text.npos; at = text.find("=\"", at)) {
        at += 2;
        const std::size_t end = text.find('"', at);
        for (const char* bad : kBadValues)
            visit(text.substr(0, at) + bad + text.substr(end));
        at = end;
    }
}

TEST(HostileValues, OfDrawingsLeaveTheOthers)
{
    std::size_t tried = 0;
    ForEachBadText(kDrawing, [&](const std::string& text) {
        test::DrawingBook book(text, {{"chart", "../charts/chart1.xml"}});
        EXPECT_LE(book.Put("xl/charts/chart1.xml", kChart).Read().size(), 2U);
        ++tried;
    });
    EXPECT_GT(tried, 400U);
}

TEST(HostileValues, OfChartsLeaveTheDrawing)
{
    std::size_t tried = 0;
    ForEachBadText(kChart, [&](const std::string& text) {
        test::DrawingBook book(kDrawing, {{"chart", "../charts/chart1.xml"}});
        EXPECT_EQ(book.Put("xl/charts/chart1.xml", text).Read().size(), 2U);
        ++tried;
    });
    EXPECT_GT(tried, 200U);
}

} // namespace
} // namespace orrery::xlsx
