#include "xlsx/look/sheet/read_sheet.h"

#include <gtest/gtest.h>

namespace orrery::xlsx {
namespace {

TEST(Sparklines, ReadsGroups)
{
    const auto look = ReadSheet(
        "<extLst><ext><x14:sparklineGroups><x14:sparklineGroup type=\"column\" lineWeight=\"2.25\" "
        "displayXAxis=\"1\" high=\"1\" negative=\"1\" minAxisType=\"custom\" manualMin=\"-3\" "
        "manualMax=\"9\"><x14:colorSeries rgb=\"FF010203\"/><x14:colorNegative rgb=\"FF040506\"/>"
        "<x14:colorHigh theme=\"5\"/><x14:colorLow rgb=\"FF000000\"/><x14:sparklines>"
        "<x14:sparkline><xm:f>Sheet1!A2:F2</xm:f><xm:sqref>G2</xm:sqref></x14:sparkline>"
        "<x14:sparkline><xm:f>Sheet1!A3:F3</xm:f><xm:sqref>nowhere</xm:sqref></x14:sparkline>"
        "</x14:sparklines></x14:sparklineGroup><x14:sparklineGroup/></x14:sparklineGroups></ext>"
        "</extLst>");
    ASSERT_EQ(look.sparklines.size(), 1U);
    const auto& group = look.sparklines[0];
    EXPECT_EQ(group.kind, book::SparklineKind::Column);
    EXPECT_EQ(group.color, (book::Color{1, 2, 3}));
    EXPECT_EQ(group.negative, (book::Color{4, 5, 6}));
    EXPECT_EQ(group.high, (book::Color{0xC0, 0x50, 0x4D}));
    EXPECT_EQ(group.low, std::nullopt); // not marked
    EXPECT_EQ(group.lineWidth, 2.25);
    EXPECT_TRUE(group.showsAxis);
    EXPECT_EQ(group.minimum, -3);
    EXPECT_EQ(group.maximum, std::nullopt);
    ASSERT_EQ(group.sparklines.size(), 1U);
    EXPECT_EQ(group.sparklines[0].formula, "Sheet1!A2:F2");
    EXPECT_EQ(group.sparklines[0].cell, (book::CellAddress{2, 7}));
}

} // namespace
} // namespace orrery::xlsx
