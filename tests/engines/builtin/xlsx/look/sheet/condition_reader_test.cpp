#include "xlsx/look/sheet/read_sheet.h"

#include <gtest/gtest.h>
#include <string>

namespace orrery::xlsx {
namespace {

using book::ConditionKind;
using PointKind = book::ScalePoint::Kind;

/// The rule of a sheet that has only one.
book::ConditionalRule ReadRule(const std::string& rule, const std::string& styles = {})
{
    const auto look = ReadSheet(
        "<conditionalFormatting sqref=\"A1:B2 D4\">" + rule + "</conditionalFormatting>", styles);
    return look.conditions.at(0).rules.at(0);
}

/// An extension list with conditional formats.
std::string Extension(const std::string& formats)
{
    return "<extLst><ext uri=\"{78C0D931-6437-407d-A8EE-F0AAD7539E65}\">"
           "<x14:conditionalFormattings>" +
           formats + "</x14:conditionalFormattings></ext></extLst>";
}

TEST(Conditions, ReadsExpressions)
{
    const auto look =
        ReadSheet("<conditionalFormatting sqref=\"A1:B2 D4\"><cfRule type=\"expression\" "
                  "priority=\"3\" stopIfTrue=\"1\" dxfId=\"0\"><formula>LEN(A1)&gt;0</formula>"
                  "</cfRule></conditionalFormatting>",
                  "<dxfs><dxf><font><b/></font></dxf></dxfs>");
    ASSERT_EQ(look.conditions.size(), 1U);
    EXPECT_EQ(look.conditions[0].ranges,
              (std::vector<book::CellRange>{{{1, 1}, {2, 2}}, {{4, 4}, {4, 4}}}));
    const auto& rule = look.conditions[0].rules.at(0);
    EXPECT_EQ(rule.kind, ConditionKind::Expression);
    EXPECT_EQ(rule.priority, 3);
    EXPECT_TRUE(rule.stopIfTrue);
    EXPECT_EQ(rule.formulas, std::vector<std::string>{"LEN(A1)>0"});
    EXPECT_EQ(rule.style.bold, true);
}

TEST(Conditions, ReadsTheirDetails)
{
    const auto between = ReadRule("<cfRule type=\"cellIs\" operator=\"notBetween\"><formula>1"
                                  "</formula><formula>2</formula></cfRule>");
    EXPECT_EQ(between.comparison, book::ComparisonOperator::NotBetween);
    EXPECT_EQ(between.formulas.size(), 2U);
    const auto text = ReadRule("<cfRule type=\"beginsWith\" text=\"a&amp;b\"><formula>x</formula>"
                               "</cfRule>");
    EXPECT_EQ(text.text, "a&b");
    const auto period = ReadRule("<cfRule type=\"timePeriod\" timePeriod=\"lastWeek\"/>");
    EXPECT_EQ(period.period, book::TimePeriod::LastWeek);
    const auto top = ReadRule("<cfRule type=\"top10\" rank=\"5\" percent=\"1\" bottom=\"1\"/>");
    EXPECT_EQ(top.rank, 5);
    EXPECT_TRUE(top.isPercent);
    EXPECT_TRUE(top.isBottom);
    const auto average = ReadRule(
        "<cfRule type=\"aboveAverage\" aboveAverage=\"0\" equalAverage=\"1\" stdDev=\"2\"/>");
    EXPECT_TRUE(average.isBelow);
    EXPECT_TRUE(average.includesEqual);
    EXPECT_EQ(average.deviations, 2);
}

TEST(Conditions, ReadsColorScales)
{
    const auto rule = ReadRule("<cfRule type=\"colorScale\"><colorScale><cfvo type=\"min\"/>"
                               "<cfvo type=\"percentile\" val=\"50\"/><cfvo type=\"num\" "
                               "val=\"$A$1\"/><color rgb=\"FF010203\"/><color theme=\"0\"/>"
                               "<color indexed=\"10\"/></colorScale></cfRule>");
    ASSERT_EQ(rule.scale.size(), 3U);
    EXPECT_EQ(rule.scale[0].color, (book::Color{1, 2, 3}));
    EXPECT_EQ(rule.scale[1].kind, PointKind::Percentile);
    EXPECT_EQ(rule.scale[1].value, "50");
    EXPECT_EQ(rule.scale[2].kind, PointKind::Formula);
    EXPECT_EQ(rule.scale[2].color, (book::Color{255, 0, 0}));
}

TEST(Conditions, ReadsBarsOfTheFirstForm)
{
    const auto rule = ReadRule("<cfRule type=\"dataBar\"><dataBar showValue=\"0\" maxLength=\"80\">"
                               "<cfvo type=\"min\"/><cfvo type=\"num\" val=\"9\"/>"
                               "<color rgb=\"FF638EC6\"/></dataBar></cfRule>");
    ASSERT_TRUE(rule.bar.has_value());
    EXPECT_EQ(rule.bar->color, (book::Color{0x63, 0x8E, 0xC6}));
    EXPECT_FALSE(rule.bar->showsValue);
    EXPECT_EQ(rule.bar->maximumLength, 80);
    EXPECT_EQ(rule.bar->axis, book::DataBar::Axis::None);
    EXPECT_EQ(rule.bar->maximum.value, "9");
}

TEST(Conditions, CompletesBarsFromTheExtensionList)
{
    const auto look = ReadSheet(
        "<conditionalFormatting sqref=\"A1:A9\"><cfRule type=\"dataBar\" priority=\"1\"><dataBar>"
        "<cfvo type=\"min\"/><cfvo type=\"max\"/><color rgb=\"FF112233\"/></dataBar><extLst><ext>"
        "<x14:id>{A}</x14:id></ext></extLst></cfRule></conditionalFormatting>" +
        Extension("<x14:conditionalFormatting><x14:cfRule type=\"dataBar\" id=\"{A}\"><x14:dataBar "
                  "minLength=\"0\" maxLength=\"100\" gradient=\"0\" border=\"1\" "
                  "direction=\"rightToLeft\"><x14:cfvo type=\"autoMin\"/><x14:cfvo type=\"num\">"
                  "<xm:f>7</xm:f></x14:cfvo><x14:borderColor rgb=\"FF000001\"/>"
                  "<x14:negativeFillColor rgb=\"FFFF0000\"/><x14:axisColor rgb=\"FF000002\"/>"
                  "</x14:dataBar></x14:cfRule><xm:sqref>A1:A9</xm:sqref>"
                  "</x14:conditionalFormatting>"));
    ASSERT_EQ(look.conditions.size(), 1U);
    const auto& bar = *look.conditions[0].rules.at(0).bar;
    EXPECT_EQ(bar.color, (book::Color{0x11, 0x22, 0x33}));
    EXPECT_FALSE(bar.isGradient);
    EXPECT_TRUE(bar.isRightToLeft);
    EXPECT_EQ(bar.minimumLength, 0);
    EXPECT_EQ(bar.minimum.kind, PointKind::AutomaticMinimum);
    EXPECT_EQ(bar.maximum.value, "7");
    EXPECT_EQ(bar.borderColor, (book::Color{0, 0, 1}));
    EXPECT_EQ(bar.negativeColor, (book::Color{255, 0, 0}));
    EXPECT_EQ(bar.axisColor, (book::Color{0, 0, 2}));
    EXPECT_EQ(bar.axis, book::DataBar::Axis::Automatic);
}

TEST(Conditions, ReadsRulesThatAreInTheExtensionListAlone)
{
    const auto look = ReadSheet(Extension(
        "<x14:conditionalFormatting><x14:cfRule type=\"expression\" priority=\"4\" id=\"{B}\">"
        "<xm:f>Sheet2!A1=1</xm:f><x14:dxf><fill><patternFill><bgColor rgb=\"FF00FF00\"/>"
        "</patternFill></fill></x14:dxf></x14:cfRule><xm:sqref>B2:C3 E5</xm:sqref>"
        "</x14:conditionalFormatting>"));
    ASSERT_EQ(look.conditions.size(), 1U);
    EXPECT_EQ(look.conditions[0].ranges.size(), 2U);
    const auto& rule = look.conditions[0].rules.at(0);
    EXPECT_EQ(rule.formulas.at(0), "Sheet2!A1=1");
    EXPECT_EQ(rule.style.fill->foreground, (book::Color{0, 255, 0}));
}

TEST(Conditions, ReadsIconsOfTheirOwn)
{
    const auto look = ReadSheet(Extension(
        "<x14:conditionalFormatting><x14:cfRule type=\"iconSet\" priority=\"4\"><x14:iconSet "
        "iconSet=\"3Stars\" custom=\"1\" showValue=\"0\" reverse=\"1\"><x14:cfvo type=\"percent\">"
        "<xm:f>0</xm:f></x14:cfvo><x14:cfvo type=\"num\" gte=\"0\"><xm:f>5</xm:f></x14:cfvo>"
        "<x14:cfIcon iconSet=\"3Flags\" iconId=\"2\"/><x14:cfIcon iconSet=\"NoIcons\"/>"
        "</x14:iconSet></x14:cfRule><xm:sqref>B2</xm:sqref></x14:conditionalFormatting>"));
    const auto& icons = look.conditions.at(0).rules.at(0).icons;
    ASSERT_TRUE(icons.has_value());
    EXPECT_EQ(icons->name, "3Stars");
    EXPECT_TRUE(icons->isReversed);
    EXPECT_FALSE(icons->showsValue);
    ASSERT_EQ(icons->icons.size(), 2U);
    EXPECT_EQ(icons->icons[0].set, "3Flags");
    EXPECT_EQ(icons->icons[0].position, 2);
    EXPECT_EQ(icons->icons[1].set, "NoIcons");
    EXPECT_FALSE(icons->points[1].isGreaterOrEqual);
}

TEST(Conditions, LeavesDamagedOnesOut)
{
    const auto look = ReadSheet(
        "<conditionalFormatting sqref=\"A1\"><cfRule type=\"magic\"/><cfRule type=\"expression\"/>"
        "</conditionalFormatting><conditionalFormatting sqref=\"XFE1 B2\"><cfRule type=\"top10\"/>"
        "</conditionalFormatting><conditionalFormatting><cfRule type=\"top10\"/>"
        "</conditionalFormatting>");
    ASSERT_EQ(look.conditions.size(), 1U);
    EXPECT_EQ(look.conditions[0].ranges.at(0), (book::CellRange{{2, 2}, {2, 2}}));
    ASSERT_EQ(look.leftOut.size(), 2U);
    EXPECT_EQ(look.leftOut[0],
              (book::LeftOut{"conditional format", "A1", "its kind is not known"}));
    EXPECT_EQ(look.leftOut[1].where, "XFE1");
}

} // namespace
} // namespace orrery::xlsx
