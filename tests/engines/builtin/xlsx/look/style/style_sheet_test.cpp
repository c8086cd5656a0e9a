#include "engines/builtin/xlsx/look/style/style_sheet.h"

#include <gtest/gtest.h>
#include <string>

namespace orrery::xlsx {
namespace {

using book::CellStyle;
using book::Color;
using book::FillPattern;
using book::HorizontalAlignment;
using book::LineStyle;
using book::TablePart;
using book::Underline;

/// A styles part. Format 0 is plain.
StyleSheet Read(const std::string& lists)
{
    return StyleSheet(builtin::ThemeColors(),
                      "<styleSheet xmlns=\"urn:main\">" + lists + "</styleSheet>");
}

/// The style of a format that uses the second item of each list.
CellStyle ReadFormat(const std::string& lists, const std::string& xf)
{
    return Read(lists + "<cellXfs><xf/>" + xf + "</cellXfs>").Format(1);
}

CellStyle ReadFont(const std::string& properties)
{
    return ReadFormat("<fonts><font/><font>" + properties + "</font></fonts>",
                      "<xf fontId=\"1\"/>");
}

CellStyle ReadFill(const std::string& fill)
{
    return ReadFormat("<fills><fill/><fill>" + fill + "</fill></fills>", "<xf fillId=\"1\"/>");
}

book::PartialStyle ReadDxf(const std::string& dxf)
{
    const StyleSheet sheet = Read("<dxfs><dxf>" + dxf + "</dxf></dxfs>");
    return *sheet.Differential(0);
}

TEST(StyleSheet, HasOneFormatWithoutAPart)
{
    const StyleSheet sheet{builtin::ThemeColors()};
    EXPECT_EQ(sheet.CountFormats(), 1U);
    EXPECT_EQ(sheet.Format(0).font.name, "Calibri");
    EXPECT_EQ(sheet.Format(7), sheet.Format(0));
}

TEST(StyleSheet, ReadsFonts)
{
    const auto font = ReadFont("<b/><i val=\"1\"/><strike val=\"0\"/><u val=\"double\"/>"
                               "<vertAlign val=\"subscript\"/><sz val=\"9.5\"/>"
                               "<color rgb=\"FF102030\"/><name val=\"A &amp; B\"/>")
                          .font;
    EXPECT_TRUE(font.bold);
    EXPECT_TRUE(font.italic);
    EXPECT_FALSE(font.strike);
    EXPECT_EQ(font.underline, Underline::Double);
    EXPECT_EQ(font.position, book::TextPosition::Subscript);
    EXPECT_EQ(font.size, 9.5);
    EXPECT_EQ(font.color, (Color{0x10, 0x20, 0x30}));
    EXPECT_EQ(font.name, "A & B");
}

TEST(StyleSheet, KeepsTheDefaultsOfDamagedFonts)
{
    const auto font = ReadFont("<sz val=\"9e999\"/><color rgb=\"red\"/><name val=\"\"/>").font;
    EXPECT_EQ(font, book::Font());
    EXPECT_EQ(ReadFont("<sz val=\"-3\"/>").font.size, 11);
}

TEST(StyleSheet, UnderlinesOnceIfNoKindIsTold)
{
    EXPECT_EQ(ReadFont("<u/>").font.underline, Underline::Single);
    EXPECT_EQ(ReadFont("<u val=\"none\"/>").font.underline, Underline::None);
}

TEST(StyleSheet, TakesTheFontOfTheTheme)
{
    EXPECT_EQ(ReadFont("<name val=\"Arial\"/><scheme val=\"major\"/>").font.name, "Cambria");
    EXPECT_EQ(ReadFont("<name val=\"Arial\"/><scheme val=\"none\"/>").font.name, "Arial");
}

TEST(StyleSheet, KeepsTheThemesFontOfAnotherScript)
{
    builtin::ThemeColors theme;
    theme.scriptFonts.insert("MS PGothic");
    const StyleSheet sheet(theme, "<styleSheet><fonts><font><name val=\"MS PGothic\"/>"
                                  "<scheme val=\"minor\"/></font></fonts></styleSheet>");
    EXPECT_EQ(sheet.Format(0).font.name, "MS PGothic");
}

TEST(StyleSheet, ResolvesColors)
{
    EXPECT_EQ(ReadFont("<color theme=\"4\"/>").font.color, (Color{0x4F, 0x81, 0xBD}));
    EXPECT_EQ(ReadFont("<color theme=\"0\" tint=\"-0.5\"/>").font.color, (Color{128, 128, 128}));
    EXPECT_EQ(ReadFont("<color indexed=\"10\"/>").font.color, (Color{255, 0, 0}));
    EXPECT_EQ(ReadFont("<color indexed=\"64\"/>").font.color, std::nullopt);
    EXPECT_EQ(ReadFont("<color auto=\"1\"/>").font.color, std::nullopt);
    EXPECT_EQ(ReadFont("<color theme=\"99\"/>").font.color, std::nullopt);
}

TEST(StyleSheet, UsesItsOwnPaletteEverywhere)
{
    const StyleSheet sheet = Read("<fonts><font><color indexed=\"1\"/></font></fonts><colors>"
                                  "<indexedColors><rgbColor rgb=\"00010101\"/>"
                                  "<rgbColor rgb=\"00020304\"/></indexedColors></colors>");
    EXPECT_EQ(sheet.Format(0).font.color, (Color{2, 3, 4}));
}

TEST(StyleSheet, ReadsFills)
{
    const auto solid = ReadFill("<patternFill patternType=\"solid\"><fgColor rgb=\"FFAABBCC\"/>"
                                "<bgColor indexed=\"64\"/></patternFill>")
                           .fill;
    EXPECT_EQ(solid.pattern, FillPattern::Solid);
    EXPECT_EQ(solid.foreground, (Color{0xAA, 0xBB, 0xCC}));
    EXPECT_EQ(solid.background, std::nullopt);
    const auto dots = ReadFill("<patternFill patternType=\"gray0625\"><fgColor indexed=\"10\"/>"
                               "<bgColor indexed=\"9\"/></patternFill>")
                          .fill;
    EXPECT_EQ(dots.pattern, FillPattern::Gray0625);
    EXPECT_EQ(dots.foreground, (Color{255, 0, 0}));
    EXPECT_EQ(dots.background, book::kWhite);
    EXPECT_EQ(
        ReadFill("<patternFill patternType=\"dots\"><fgColor indexed=\"10\"/></patternFill>").fill,
        book::Fill());
}

TEST(StyleSheet, FillsWithBlackInTheColorOfTexts)
{
    const auto fill = ReadFill("<patternFill patternType=\"solid\"><fgColor indexed=\"64\"/>"
                               "</patternFill>")
                          .fill;
    EXPECT_EQ(fill.foreground, book::kBlack);
}

TEST(StyleSheet, ReadsGradientsInRisingOrder)
{
    const auto fill =
        ReadFill("<gradientFill degree=\"90\"><stop position=\"1\"><color rgb=\"FF000001\"/></stop>"
                 "<stop position=\"0\"><color rgb=\"FF000002\"/></stop></gradientFill>")
            .fill;
    ASSERT_TRUE(fill.gradient.has_value());
    EXPECT_FALSE(fill.gradient->isPath);
    EXPECT_EQ(fill.gradient->degree, 90);
    ASSERT_EQ(fill.gradient->stops.size(), 2U);
    EXPECT_EQ(fill.gradient->stops[0].color, (Color{0, 0, 2}));
    EXPECT_EQ(fill.gradient->stops[1].position, 1);
    const auto path = ReadFill("<gradientFill type=\"path\" left=\"0.5\" top=\"7\"><stop "
                               "position=\"0\"/></gradientFill>")
                          .fill;
    ASSERT_TRUE(path.gradient.has_value());
    EXPECT_TRUE(path.gradient->isPath);
    EXPECT_EQ(path.gradient->left, 0.5);
    EXPECT_EQ(path.gradient->top, 1);
}

TEST(StyleSheet, ReadsBorders)
{
    const auto border =
        ReadFormat("<borders><border/><border diagonalDown=\"1\">"
                   "<start style=\"thin\"><color indexed=\"12\"/></start>"
                   "<right style=\"slantDashDot\"/><top style=\"wavy\"><color indexed=\"12\"/>"
                   "</top><bottom/><diagonal style=\"hair\"/></border></borders>",
                   "<xf borderId=\"1\"/>")
            .border;
    EXPECT_EQ(border.left, (book::BorderLine{LineStyle::Thin, Color{0, 0, 255}}));
    EXPECT_EQ(border.right, (book::BorderLine{LineStyle::SlantDashDot, {}}));
    EXPECT_EQ(border.top, book::BorderLine());
    EXPECT_EQ(border.diagonal.style, LineStyle::Hair);
    EXPECT_TRUE(border.diagonalDown);
    EXPECT_FALSE(border.diagonalUp);
}

TEST(StyleSheet, ReadsAlignments)
{
    const auto read = [](const std::string& attributes) {
        return ReadFormat("", "<xf><alignment " + attributes + "/></xf>").alignment;
    };
    const auto alignment = read("horizontal=\"centerContinuous\" vertical=\"top\" wrapText=\"1\" "
                                "shrinkToFit=\"true\" indent=\"3\" readingOrder=\"2\"");
    EXPECT_EQ(alignment.horizontal, HorizontalAlignment::CenterContinuous);
    EXPECT_EQ(alignment.vertical, book::VerticalAlignment::Top);
    EXPECT_TRUE(alignment.wrap);
    EXPECT_TRUE(alignment.shrink);
    EXPECT_EQ(alignment.indent, 3);
    EXPECT_EQ(alignment.readingOrder, book::ReadingOrder::RightToLeft);
    EXPECT_EQ(read("textRotation=\"90\"").rotation, 90);
    EXPECT_EQ(read("textRotation=\"135\"").rotation, -45);
    EXPECT_EQ(read("textRotation=\"180\"").rotation, -90);
    EXPECT_EQ(read("textRotation=\"255\"").rotation, book::Alignment::kStacked);
    EXPECT_EQ(read("textRotation=\"200\" indent=\"-1\" horizontal=\"middle\""), book::Alignment());
}

TEST(StyleSheet, PrefersItsOwnNumberFormats)
{
    const std::string lists = "<numFmts><numFmt numFmtId=\"164\" formatCode=\"0.0&quot;x&quot;\"/>"
                              "<numFmt numFmtId=\"14\" formatCode=\"yyyy\"/>"
                              "<numFmt numFmtId=\"165\" formatCode=\"" +
                              std::string(65536, '0') + "\"/></numFmts>";
    EXPECT_EQ(ReadFormat(lists, "<xf numFmtId=\"164\"/>").numberFormat, "0.0\"x\"");
    EXPECT_EQ(ReadFormat(lists, "<xf numFmtId=\"14\"/>").numberFormat, "yyyy");
    EXPECT_EQ(ReadFormat(lists, "<xf numFmtId=\"9\"/>").numberFormat, "0%");
    EXPECT_EQ(ReadFormat(lists, "<xf numFmtId=\"165\"/>").numberFormat, "General");
    EXPECT_EQ(ReadFormat(lists, "<xf numFmtId=\"999\"/>").numberFormat, "General");
}

TEST(StyleSheet, TakesWhatAFormatLeavesOpenFromItsNamedStyle)
{
    const auto style =
        ReadFormat("<fonts><font/><font><b/></font></fonts>"
                   "<cellStyleXfs><xf/><xf fontId=\"1\" numFmtId=\"9\"/></cellStyleXfs>",
                   "<xf xfId=\"1\" numFmtId=\"10\" applyNumberFormat=\"0\"/>");
    EXPECT_TRUE(style.font.bold);
    EXPECT_EQ(style.numberFormat, "0.00%");
}

TEST(StyleSheet, FindsTheFontOfNormal)
{
    const StyleSheet sheet =
        Read("<fonts><font><sz val=\"8\"/></font><font><sz val=\"12\"/></font></fonts>"
             "<cellStyleXfs><xf fontId=\"0\"/><xf fontId=\"1\"/></cellStyleXfs>"
             "<cellStyles><cellStyle name=\"Big\" xfId=\"0\" builtinId=\"3\"/>"
             "<cellStyle name=\"Standard\" xfId=\"1\" builtinId=\"0\"/></cellStyles>");
    EXPECT_EQ(sheet.NormalFont().size, 12);
    EXPECT_EQ(Read("").NormalFont(), book::Font());
}

TEST(StyleSheet, ReadsDifferentialFonts)
{
    const auto style = ReadDxf("<font><b val=\"0\"/><u/><color indexed=\"10\"/></font>");
    EXPECT_EQ(style.bold, false);
    EXPECT_EQ(style.italic, std::nullopt);
    EXPECT_EQ(style.underline, Underline::Single);
    EXPECT_EQ(style.fontColor, (Color{255, 0, 0}));
}

TEST(StyleSheet, TakesTheBackgroundOfDifferentialFills)
{
    const auto style =
        ReadDxf("<fill><patternFill><bgColor rgb=\"FF0A0B0C\"/></patternFill></fill>");
    ASSERT_TRUE(style.fill.has_value());
    EXPECT_EQ(style.fill->pattern, FillPattern::Solid);
    EXPECT_EQ(style.fill->foreground, (Color{0x0A, 0x0B, 0x0C}));
    EXPECT_EQ(ReadDxf("<fill><patternFill/></fill>").fill, std::nullopt);
    EXPECT_EQ(ReadDxf("<fill><patternFill patternType=\"none\"/></fill>").fill, book::Fill());
    EXPECT_EQ(ReadDxf("<fill><patternFill patternType=\"solid\"><fgColor indexed=\"10\"/>"
                      "</patternFill></fill>")
                  .fill->foreground,
              (Color{255, 0, 0}));
}

TEST(StyleSheet, ReadsDifferentialBordersAndNumberFormats)
{
    const auto style = ReadDxf("<numFmt numFmtId=\"170\" formatCode=\"0.0\"/>"
                               "<border><left style=\"thin\"/><horizontal style=\"double\"/>"
                               "<bottom/></border>");
    EXPECT_EQ(style.numberFormat, "0.0");
    EXPECT_EQ(style.left, (book::BorderLine{LineStyle::Thin, {}}));
    EXPECT_EQ(style.innerHorizontal, (book::BorderLine{LineStyle::Double, {}}));
    EXPECT_EQ(style.bottom, book::BorderLine());
    EXPECT_EQ(style.right, std::nullopt);
}

TEST(StyleSheet, FindsItsOwnTableStyles)
{
    const StyleSheet sheet =
        Read("<dxfs><dxf><font><b/></font></dxf><dxf><font><i/></font></dxf></dxfs>"
             "<tableStyles><tableStyle name=\"Mine\">"
             "<tableStyleElement type=\"headerRow\" dxfId=\"0\"/>"
             "<tableStyleElement type=\"firstRowStripe\" size=\"2\" dxfId=\"1\"/>"
             "<tableStyleElement type=\"pageFieldLabels\" dxfId=\"1\"/>"
             "<tableStyleElement type=\"totalRow\" dxfId=\"9\"/></tableStyle></tableStyles>");
    const auto style = sheet.FindTableStyle("Mine");
    ASSERT_TRUE(style.has_value());
    EXPECT_EQ(style->parts.size(), 2U);
    EXPECT_EQ(style->parts.at(TablePart::HeaderRow).bold, true);
    EXPECT_EQ(style->rowStripe[0], 2);
    EXPECT_EQ(style->rowStripe[1], 1);
    EXPECT_FALSE(sheet.FindTableStyle("Yours").has_value());
    EXPECT_TRUE(sheet.FindTableStyle("TableStyleMedium2").has_value());
}

} // namespace
} // namespace orrery::xlsx
