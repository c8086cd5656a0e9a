#include "xlsx/look/sheet/read_sheet.h"

#include <gtest/gtest.h>
#include <string>

namespace orrery::xlsx {
namespace {

TEST(SheetViews, ReadsTheFirstView)
{
    const auto view = ReadSheet("<sheetViews><sheetView rightToLeft=\"1\" showGridLines=\"0\" "
                                "showZeros=\"0\" showFormulas=\"1\" topLeftCell=\"C4\" "
                                "defaultGridColor=\"0\" colorId=\"10\">"
                                "<pane xSplit=\"2\" ySplit=\"3\" state=\"frozen\"/></sheetView>"
                                "<sheetView showGridLines=\"1\"/></sheetViews>")
                          .view;
    EXPECT_TRUE(view.isRightToLeft);
    EXPECT_FALSE(view.showsGridLines);
    EXPECT_FALSE(view.showsZeros);
    EXPECT_TRUE(view.showsFormulas);
    EXPECT_EQ(view.topLeft, (book::CellAddress{4, 3}));
    EXPECT_EQ(view.gridColor, (book::Color{255, 0, 0}));
    EXPECT_EQ(view.frozenColumns, 2);
    EXPECT_EQ(view.frozenRows, 3);
}

TEST(SheetViews, DoesNotFreezeASplitWindow)
{
    const auto view = ReadSheet("<sheetViews><sheetView topLeftCell=\"nowhere\"><pane "
                                "xSplit=\"2000\" ySplit=\"900\"/></sheetView></sheetViews>")
                          .view;
    EXPECT_EQ(view.frozenColumns, 0);
    EXPECT_EQ(view.frozenRows, 0);
    EXPECT_EQ(view.topLeft, (book::CellAddress{1, 1}));
}

TEST(SheetFormat, ReadsDefaults)
{
    const auto look = ReadSheet("<sheetFormatPr defaultColWidth=\"12.5\" baseColWidth=\"10\" "
                                "defaultRowHeight=\"13.5\" zeroHeight=\"1\"/>"
                                "<sheetData><row r=\"3\"/></sheetData>");
    EXPECT_EQ(look.standardWidth, 12.5);
    EXPECT_EQ(look.baseWidth, 10);
    EXPECT_EQ(look.defaultRowHeight, 13.5);
    EXPECT_TRUE(look.areRowsHidden);
    ASSERT_NE(look.FindRow(3), nullptr); // so that it shows
    EXPECT_FALSE(look.FindRow(3)->isHidden);
}

TEST(Columns, ReadsThem)
{
    const auto look = ReadSheet("<cols><col min=\"2\" max=\"4\" width=\"9.140625\" style=\"1\"/>"
                                "<col min=\"6\" max=\"99999\" hidden=\"1\"/></cols>",
                                "<cellXfs><xf/><xf numFmtId=\"9\"/></cellXfs>");
    ASSERT_EQ(look.columns.size(), 2U);
    EXPECT_EQ(look.FindColumn(3)->width, 9.140625);
    EXPECT_EQ(look.Style({5, 4}).numberFormat, "0%");
    EXPECT_EQ(look.FindColumn(5), nullptr);
    EXPECT_TRUE(look.FindColumn(16384)->isHidden);
    EXPECT_EQ(look.columns[1].last, 16384);
}

TEST(Columns, RepairsOverlapsAndOrder)
{
    const auto look = ReadSheet("<cols><col min=\"3\" max=\"5\" width=\"1\"/>"
                                "<col min=\"1\" max=\"8\" width=\"2\"/>"
                                "<col min=\"4\" max=\"4\" width=\"3\"/>"
                                "<col min=\"0\" max=\"4\" width=\"4\"/>"
                                "<col min=\"7\" max=\"6\" width=\"5\"/></cols>");
    ASSERT_EQ(look.columns.size(), 3U);
    EXPECT_EQ(look.columns[0].last, 2);
    EXPECT_EQ(look.columns[1].first, 3);
    EXPECT_EQ(look.columns[1].last, 5);
    EXPECT_EQ(look.columns[2].first, 6);
    EXPECT_EQ(look.columns[2].last, 8);
    EXPECT_EQ(look.FindColumn(4)->width, 1);
    EXPECT_EQ(look.leftOut.size(), 2U);
}

} // namespace
} // namespace orrery::xlsx
