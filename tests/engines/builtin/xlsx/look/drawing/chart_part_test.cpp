#include "drawing_book.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orrery::xlsx {
namespace {

using book::ChartKind;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// What is read of a chart part with this content of "c:chartSpace".
book::Chart ReadSpace(const std::string& content)
{
    test::DrawingBook book(
        test::DrawingBook::Anchored(
            "<xdr:graphicFrame><xdr:nvGraphicFramePr><xdr:cNvPr id=\"2\" name=\"Chart 1\"/>"
            "</xdr:nvGraphicFramePr><xdr:xfrm/><a:graphic><a:graphicData "
            "uri=\"http://schemas.openxmlformats.org/drawingml/2006/chart\"><c:chart "
            "r:id=\"rId1\"/>"
            "</a:graphicData></a:graphic></xdr:graphicFrame>"),
        {{"chart", "../charts/chart1.xml"}});
    book.Put("xl/charts/chart1.xml",
             "<c:chartSpace xmlns:c=\"http://schemas.openxmlformats.org/drawingml/2006/chart\" "
             "xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\" "
             "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\">" +
                 content + "</c:chartSpace>");
    const auto drawings = book.Read();
    EXPECT_THAT(book.leftOut, IsEmpty());
    if (drawings.size() != 1 || drawings[0].kind != book::DrawingKind::Chart) {
        ADD_FAILURE() << "no chart";
        return {};
    }
    return *drawings[0].chart;
}

book::Chart ReadPlotArea(const std::string& plotArea, const std::string& before = {},
                         const std::string& after = {})
{
    return ReadSpace("<c:chart>" + before + "<c:plotArea>" + plotArea + "</c:plotArea>" + after +
                     "</c:chart>");
}

std::string Name(const std::string& text)
{
    return "<c:tx><c:strRef><c:f>Data!$B$1</c:f><c:strCache><c:ptCount val=\"1\"/><c:pt idx=\"0\">"
           "<c:v>" +
           text + "</c:v></c:pt></c:strCache></c:strRef></c:tx>";
}

const std::string kValues =
    "<c:val><c:numRef><c:f>Data!$B$2:$B$5</c:f><c:numCache><c:formatCode>0.0</c:formatCode>"
    "<c:ptCount val=\"4\"/><c:pt idx=\"0\"><c:v>1.5</c:v></c:pt><c:pt "
    "idx=\"2\"><c:v>-2E2</c:v></c:pt>"
    "<c:pt idx=\"3\"><c:v>#N/A</c:v></c:pt><c:pt idx=\"9\"><c:v>7</c:v></c:pt></c:numCache>"
    "</c:numRef></c:val>";

std::string Series(int number, const std::string& content = {})
{
    return "<c:ser><c:idx val=\"" + std::to_string(number) + "\"/><c:order val=\"0\"/>" + content +
           "</c:ser>";
}

TEST(ReadChartPart, SeriesWithNameCategoriesAndValues)
{
    const book::Chart chart = ReadPlotArea(
        "<c:barChart><c:barDir val=\"col\"/><c:grouping val=\"clustered\"/>" +
        Series(0, Name("Apples") +
                      "<c:cat><c:strLit><c:ptCount val=\"2\"/><c:pt idx=\"1\"><c:v>Tu</c:v></c:pt>"
                      "</c:strLit></c:cat>" +
                      kValues) +
        "<c:gapWidth val=\"50\"/><c:overlap val=\"-20\"/></c:barChart>");
    ASSERT_THAT(chart.groups, SizeIs(1));
    const book::ChartGroup& group = chart.groups[0];
    EXPECT_EQ(group.kind, ChartKind::Column);
    EXPECT_EQ(group.gapWidth, 50);
    EXPECT_EQ(group.overlap, -20);
    ASSERT_THAT(group.series, SizeIs(1));
    const book::ChartSeries& series = group.series[0];
    EXPECT_EQ(series.name.formula, "Data!$B$1");
    EXPECT_THAT(series.name.cached, ElementsAre(book::CellContent("Apples")));
    EXPECT_THAT(series.categories.cached,
                ElementsAre(book::CellContent(), book::CellContent("Tu")));
    EXPECT_EQ(series.values.formula, "Data!$B$2:$B$5");
    EXPECT_EQ(series.values.numberFormat, "0.0");
    EXPECT_THAT(series.values.cached,
                ElementsAre(book::CellContent(1.5), book::CellContent(), book::CellContent(-200.0),
                            book::CellContent(book::CellError::NotAvailable)));
    EXPECT_FALSE(series.outline.isVisible);
    EXPECT_TRUE(series.hasFill);
}

TEST(ReadChartPart, InnermostLevelOfCategories)
{
    const book::Chart chart = ReadPlotArea(
        "<c:lineChart>" +
        Series(0,
               "<c:cat><c:multiLvlStrRef><c:f>A1:B2</c:f><c:multiLvlStrCache><c:ptCount val=\"2\"/>"
               "<c:lvl><c:pt idx=\"0\"><c:v>Q1</c:v></c:pt><c:pt "
               "idx=\"1\"><c:v>Q2</c:v></c:pt></c:lvl>"
               "<c:lvl><c:pt idx=\"0\"><c:v>2020</c:v></c:pt></c:lvl></c:multiLvlStrCache>"
               "</c:multiLvlStrRef></c:cat>") +
        "</c:lineChart>");
    EXPECT_THAT(chart.groups[0].series[0].categories.cached,
                ElementsAre(book::CellContent("Q1"), book::CellContent("Q2")));
}

struct KindCase {
    const char* element;
    std::string content;
    ChartKind kind;
    bool is3D = false;
};

class ChartKindTest : public testing::TestWithParam<KindCase> {};

TEST_P(ChartKindTest, IsRead)
{
    const std::string name = GetParam().element;
    const book::Chart chart =
        ReadPlotArea("<c:" + name + ">" + GetParam().content + "</c:" + name + ">");
    ASSERT_THAT(chart.groups, SizeIs(1));
    EXPECT_EQ(chart.groups[0].kind, GetParam().kind);
    EXPECT_EQ(chart.is3D, GetParam().is3D);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, ChartKindTest,
    testing::Values(KindCase{"barChart", "<c:barDir val=\"bar\"/>", ChartKind::Bar},
                    KindCase{"bar3DChart", "<c:barDir val=\"col\"/>", ChartKind::Column, true},
                    KindCase{"lineChart", "", ChartKind::Line},
                    KindCase{"pieChart", "", ChartKind::Pie},
                    KindCase{"pie3DChart", "", ChartKind::Pie, true},
                    KindCase{"ofPieChart", "", ChartKind::Pie},
                    KindCase{"doughnutChart", "", ChartKind::Doughnut},
                    KindCase{"areaChart", "", ChartKind::Area},
                    KindCase{"scatterChart", "", ChartKind::Scatter},
                    KindCase{"bubbleChart", "", ChartKind::Bubble},
                    KindCase{"radarChart", "", ChartKind::Radar},
                    KindCase{"stockChart", "", ChartKind::Stock},
                    KindCase{"surface3DChart", "", ChartKind::Surface, true}),
    [](const auto& row) { return std::string(row.param.element); });

TEST(ReadChartPart, ColorsOfSeriesAndPoints)
{
    const book::Chart chart = ReadPlotArea(
        "<c:barChart><c:grouping val=\"percentStacked\"/>" +
        Series(0, "<c:spPr><a:solidFill><a:srgbClr val=\"FF0000\"/></a:solidFill><a:ln w=\"25400\">"
                  "<a:solidFill><a:srgbClr val=\"00FF00\"/></a:solidFill></a:ln></c:spPr>"
                  "<c:dPt><c:idx val=\"3\"/><c:spPr><a:solidFill><a:srgbClr val=\"0000FF\"/>"
                  "</a:solidFill></c:spPr></c:dPt>") +
        Series(7) + Series(2, "<c:spPr><a:noFill/></c:spPr>") + "</c:barChart>");
    EXPECT_EQ(chart.groups[0].grouping, book::Grouping::PercentStacked);
    const auto& series = chart.groups[0].series;
    ASSERT_THAT(series, SizeIs(3));
    EXPECT_EQ(series[0].color, (book::Color{0xFF, 0, 0}));
    EXPECT_TRUE(series[0].outline.isVisible);
    EXPECT_EQ(series[0].outline.width, 2);
    ASSERT_THAT(series[0].points, SizeIs(1));
    EXPECT_EQ(series[0].points[0].index, 3);
    EXPECT_EQ(series[0].points[0].color, (book::Color{0, 0, 0xFF}));
    ASSERT_THAT(chart.accents, SizeIs(6));
    ASSERT_TRUE(series[1].color);
    EXPECT_LT(series[1].color->red + series[1].color->green + series[1].color->blue,
              chart.accents[1].red + chart.accents[1].green + chart.accents[1].blue)
        << "the eighth is the second accent, darker";
    EXPECT_FALSE(series[2].hasFill);
    EXPECT_EQ(series[2].color, chart.accents[2]);
}

TEST(ReadChartPart, LinesMarkersAndLabels)
{
    const book::Chart chart = ReadPlotArea(
        "<c:lineChart>" +
        Series(0, "<c:spPr><a:ln w=\"12700\"><a:solidFill><a:srgbClr val=\"FF0000\"/></a:solidFill>"
                  "</a:ln></c:spPr><c:marker><c:symbol val=\"none\"/></c:marker><c:smooth/>") +
        Series(
            1,
            "<c:spPr><a:ln><a:noFill/></a:ln></c:spPr><c:dLbls><c:showVal val=\"0\"/></c:dLbls>") +
        "<c:dLbls><c:showVal val=\"1\"/></c:dLbls><c:marker val=\"1\"/></c:lineChart>");
    const auto& series = chart.groups[0].series;
    ASSERT_THAT(series, SizeIs(2));
    EXPECT_EQ(series[0].color, (book::Color{0xFF, 0, 0}));
    EXPECT_EQ(series[0].outline.width, 1);
    EXPECT_FALSE(series[0].hasMarkers);
    EXPECT_TRUE(series[0].isSmooth);
    EXPECT_TRUE(series[0].hasLabels);
    EXPECT_FALSE(series[1].outline.isVisible);
    EXPECT_TRUE(series[1].hasMarkers);
    EXPECT_FALSE(series[1].isSmooth);
    EXPECT_FALSE(series[1].hasLabels);
}

TEST(ReadChartPart, PieVariesItsColors)
{
    const book::Chart chart =
        ReadPlotArea("<c:pieChart><c:varyColors val=\"1\"/>" +
                     Series(0, "<c:dLbls><c:showPercent val=\"1\"/></c:dLbls>") +
                     "<c:firstSliceAng val=\"90\"/></c:pieChart>");
    EXPECT_TRUE(chart.groups[0].variesColors);
    EXPECT_EQ(chart.groups[0].firstAngle, 90);
    EXPECT_TRUE(chart.groups[0].series[0].hasPercents);
    EXPECT_FALSE(chart.groups[0].series[0].color);
}

const std::string kAxes =
    "<c:catAx><c:axId val=\"1\"/><c:delete val=\"1\"/><c:axPos val=\"b\"/></c:catAx>"
    "<c:valAx><c:axId val=\"2\"/><c:scaling><c:logBase val=\"10\"/><c:orientation val=\"maxMin\"/>"
    "<c:max val=\"50\"/><c:min val=\"1\"/></c:scaling><c:delete val=\"0\"/><c:axPos val=\"l\"/>"
    "<c:majorGridlines><c:spPr><a:ln><a:solidFill><a:srgbClr val=\"D9D9D9\"/></a:solidFill></a:ln>"
    "</c:spPr></c:majorGridlines><c:title><c:tx><c:rich><a:p><a:r><a:t>EUR</a:t></a:r></a:p></"
    "c:rich>"
    "</c:tx></c:title><c:numFmt formatCode=\"0%\" sourceLinked=\"0\"/><c:majorUnit val=\"10\"/>"
    "<c:spPr><a:ln><a:noFill/></a:ln></c:spPr>"
    "<c:txPr><a:p><a:pPr><a:defRPr sz=\"800\" b=\"1\"/></a:pPr></a:p></c:txPr></c:valAx>"
    "<c:valAx><c:axId val=\"3\"/><c:axPos val=\"r\"/><c:tickLblPos val=\"none\"/>"
    "<c:numFmt formatCode=\"0%\" "
    "sourceLinked=\"1\"/><c:majorGridlines><c:spPr><a:ln><a:noFill/></a:ln>"
    "</c:spPr></c:majorGridlines></c:valAx>"
    "<c:catAx><c:axId val=\"4\"/></c:catAx>";

TEST(ReadChartPart, Axes)
{
    const book::Chart chart =
        ReadPlotArea("<c:barChart><c:axId val=\"1\"/><c:axId val=\"2\"/></c:barChart>"
                     "<c:lineChart><c:axId val=\"4\"/><c:axId val=\"3\"/></c:lineChart>" +
                     kAxes);
    EXPECT_FALSE(chart.categoryAxis.isVisible);
    const book::ChartAxis& axis = chart.valueAxis;
    EXPECT_TRUE(axis.isVisible);
    EXPECT_TRUE(axis.isLogarithmic);
    EXPECT_TRUE(axis.isReversed);
    EXPECT_EQ(axis.minimum, 1);
    EXPECT_EQ(axis.maximum, 50);
    EXPECT_EQ(axis.majorUnit, 10);
    EXPECT_TRUE(axis.hasMajorGridLines);
    EXPECT_EQ(axis.gridColor, (book::Color{0xD9, 0xD9, 0xD9}));
    EXPECT_EQ(axis.numberFormat, "0%");
    EXPECT_FALSE(axis.hasLine);
    ASSERT_TRUE(axis.font && axis.title);
    EXPECT_EQ(axis.font->size, 8);
    EXPECT_TRUE(axis.font->bold);
    EXPECT_EQ(axis.title->text, "EUR");
    ASSERT_TRUE(chart.secondaryAxis);
    EXPECT_FALSE(chart.secondaryAxis->hasLabels);
    EXPECT_FALSE(chart.secondaryAxis->hasMajorGridLines);
    EXPECT_EQ(chart.secondaryAxis->numberFormat, "") << "that of the values";
    EXPECT_FALSE(chart.groups[0].usesSecondaryAxis);
    EXPECT_TRUE(chart.groups[1].usesSecondaryAxis);
}

TEST(ReadChartPart, XOfScatterIsTheAxisBelow)
{
    const book::Chart chart =
        ReadPlotArea("<c:scatterChart><c:axId val=\"5\"/><c:axId val=\"6\"/></c:scatterChart>"
                     "<c:valAx><c:axId val=\"5\"/><c:scaling><c:max "
                     "val=\"5\"/></c:scaling><c:axPos val=\"l\"/></c:valAx>"
                     "<c:valAx><c:axId val=\"6\"/><c:scaling><c:max "
                     "val=\"6\"/></c:scaling><c:axPos val=\"b\"/></c:valAx>");
    EXPECT_EQ(chart.categoryAxis.maximum, 6);
    EXPECT_EQ(chart.valueAxis.maximum, 5);
}

TEST(ReadChartPart, Titles)
{
    const std::string one = "<c:lineChart>" + Series(0, Name("Apples")) + "</c:lineChart>";
    const std::string two = "<c:lineChart>" + Series(0, Name("A")) + Series(1) + "</c:lineChart>";
    const book::Chart automatic = ReadPlotArea(one);
    ASSERT_TRUE(automatic.title);
    EXPECT_EQ(automatic.title->text, "Apples");
    EXPECT_EQ(automatic.title->formula, "Data!$B$1");
    EXPECT_FALSE(ReadPlotArea(one, "<c:autoTitleDeleted val=\"1\"/>").title);
    EXPECT_FALSE(ReadPlotArea(two).title);
    EXPECT_EQ(ReadPlotArea(two, "<c:title/>").title->text, "Chart Title");
    const book::Chart rich = ReadPlotArea(
        two,
        "<c:title><c:tx><c:rich><a:p><a:pPr><a:defRPr sz=\"2000\" b=\"0\"/></a:pPr><a:r><a:rPr "
        "i=\"1\"/><a:t>Two </a:t></a:r><a:r><a:t>runs</a:t></a:r></a:p><a:p><a:r><a:t>and lines"
        "</a:t></a:r></a:p></c:rich></c:tx></c:title>");
    ASSERT_TRUE(rich.title && rich.title->font);
    EXPECT_EQ(rich.title->text, "Two runs\nand lines");
    EXPECT_EQ(rich.title->font->size, 20);
    EXPECT_FALSE(rich.title->font->bold);
    EXPECT_TRUE(rich.title->font->italic);
    const book::Chart linked = ReadPlotArea(two, "<c:title>" + Name("From a cell") + "</c:title>");
    EXPECT_EQ(linked.title->text, "From a cell");
    EXPECT_EQ(linked.title->formula, "Data!$B$1");
}

TEST(ReadChartPart, FrameLegendAndPlace)
{
    const book::Chart plain = ReadPlotArea("<c:pieChart/>");
    EXPECT_EQ(plain.fill, book::kWhite);
    EXPECT_TRUE(plain.outline.isVisible);
    EXPECT_FALSE(plain.plotFill);
    EXPECT_FALSE(plain.legend);
    EXPECT_FALSE(plain.plotPlace);
    EXPECT_EQ(plain.font.size, 10);
    const book::Chart other =
        ReadSpace("<c:chart><c:plotArea><c:layout><c:manualLayout><c:layoutTarget val=\"inner\"/>"
                  "<c:x val=\"0.25\"/><c:y val=\"0.5\"/><c:w val=\"0.5\"/><c:h "
                  "val=\"0.25\"/></c:manualLayout>"
                  "</c:layout><c:pieChart/><c:spPr><a:solidFill><a:srgbClr "
                  "val=\"C0C0C0\"/></a:solidFill></c:spPr>"
                  "</c:plotArea><c:legend><c:legendPos val=\"tr\"/></c:legend></c:chart>"
                  "<c:spPr><a:noFill/><a:ln><a:noFill/></a:ln></c:spPr>"
                  "<c:txPr><a:p><a:pPr><a:defRPr sz=\"900\"/></a:pPr></a:p></c:txPr>");
    EXPECT_FALSE(other.fill);
    EXPECT_FALSE(other.outline.isVisible);
    EXPECT_EQ(other.plotFill, (book::Color{0xC0, 0xC0, 0xC0}));
    EXPECT_EQ(other.legend, book::LegendPlace::TopRight);
    EXPECT_EQ(other.plotPlace, (book::ShareBox{0.25, 0.5, 0.75, 0.75}));
    EXPECT_EQ(other.font.size, 9);
}

TEST(ReadChartPart, StyleOfTheNewerElement)
{
    const std::string plot = "<c:chart><c:plotArea><c:lineChart/></c:plotArea></c:chart>";
    const book::Chart usual = ReadSpace(plot);
    const book::Chart same = ReadSpace(
        "<mc:AlternateContent><mc:Choice Requires=\"c14\" "
        "xmlns:c14=\"http://schemas.microsoft.com/office/drawing/2007/8/2/chart\"><c14:style "
        "val=\"102\"/></mc:Choice><mc:Fallback><c:style val=\"1\"/></mc:Fallback>"
        "</mc:AlternateContent>" +
        plot);
    EXPECT_EQ(same.accents, usual.accents);
    const book::Chart gray = ReadSpace("<c:style val=\"1\"/>" + plot);
    EXPECT_EQ(gray.accents[2].red, gray.accents[2].blue);
}

TEST(ReadChartPart, ManyPointsAreCut)
{
    const book::Chart chart = ReadPlotArea(
        "<c:lineChart>" +
        Series(
            0,
            "<c:val><c:numLit><c:ptCount val=\"4000000000\"/><c:pt idx=\"3999999999\"><c:v>1</c:v>"
            "</c:pt></c:numLit></c:val>") +
        Series(1, kValues) + "</c:lineChart>");
    EXPECT_THAT(chart.groups[0].series[0].values.cached, SizeIs(200000));
    EXPECT_THAT(chart.groups[0].series[1].values.cached, IsEmpty());
}

TEST(ReadChartPart, NewerKindsHaveNameAndTitle)
{
    test::DrawingBook book(
        "<mc:AlternateContent><mc:Choice "
        "xmlns:cx1=\"http://schemas.microsoft.com/office/drawing/2015/9/8/chartex\" "
        "Requires=\"cx1\">" +
            test::DrawingBook::Anchored(
                "<xdr:graphicFrame><xdr:nvGraphicFramePr><xdr:cNvPr id=\"2\" name=\"W\"/>"
                "</xdr:nvGraphicFramePr><a:graphic><a:graphicData "
                "uri=\"http://schemas.microsoft.com/office/drawing/2014/chartex\"><cx:chart "
                "xmlns:cx=\"http://schemas.microsoft.com/office/drawing/2014/chartex\" "
                "r:id=\"rId1\"/>"
                "</a:graphicData></a:graphic></xdr:graphicFrame>") +
            "</mc:Choice><mc:Fallback>" +
            test::DrawingBook::Anchored(test::DrawingBook::Shape("")) +
            "</mc:Fallback></mc:AlternateContent>",
        {{"chartEx", "../charts/chartEx1.xml"}});
    book.Put(
        "xl/charts/chartEx1.xml",
        "<cx:chartSpace xmlns:cx=\"http://schemas.microsoft.com/office/drawing/2014/chartex\">"
        "<cx:chart><cx:title><cx:tx><cx:txData><cx:v>Cash</cx:v></cx:txData></cx:tx></cx:title>"
        "<cx:plotArea><cx:plotAreaRegion><cx:series layoutId=\"waterfall\"/></cx:plotAreaRegion>"
        "</cx:plotArea></cx:chart></cx:chartSpace>");
    const auto drawings = book.Read();
    ASSERT_THAT(drawings, SizeIs(1));
    ASSERT_EQ(drawings[0].kind, book::DrawingKind::Chart);
    const book::Chart& chart = *drawings[0].chart;
    ASSERT_THAT(chart.groups, SizeIs(1));
    EXPECT_EQ(chart.groups[0].kind, ChartKind::Other);
    EXPECT_EQ(chart.kindName, "waterfall");
    ASSERT_TRUE(chart.title);
    EXPECT_EQ(chart.title->text, "Cash");
}

} // namespace
} // namespace orrery::xlsx
