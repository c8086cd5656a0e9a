#include "xls/look/look_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls::test {
namespace {

using book::Color;

/// The style of the first format that the records add.
book::CellStyle StyleOf(const std::string& globals)
{
    return LookOf(BlankOf(0, 0, 16), globals).Style({1, 1});
}

TEST(CellFormatsTest, ReadFonts)
{
    const auto style = StyleOf(FontOf({}) +
                               FontOf({.name = "Cambria",
                                       .twips = 210,
                                       .flags = 0x0A,
                                       .color = 10,
                                       .weight = 700,
                                       .position = 2,
                                       .underline = 0x22}) +
                               FormatOf({.font = 1}));
    const book::Font expected{"Cambria",
                              10.5,
                              true,
                              true,
                              true,
                              book::Underline::DoubleAccounting,
                              book::TextPosition::Subscript,
                              Color{255, 0, 0}};
    EXPECT_EQ(style.font, expected);
}

TEST(CellFormatsTest, NoFontHasIndexFour)
{
    std::string fonts;
    for (const auto* name : {"A", "B", "C", "D", "E"})
        fonts += FontOf({.name = name});
    EXPECT_EQ(StyleOf(fonts + FormatOf({.font = 3})).font.name, "D");
    EXPECT_EQ(StyleOf(fonts + FormatOf({.font = 5})).font.name, "E");
    EXPECT_EQ(StyleOf(fonts + FormatOf({.font = 99})).font.name, "A");
}

TEST(CellFormatsTest, ReadNumberFormats)
{
    EXPECT_EQ(StyleOf(FormatOf({.numberFormat = 2})).numberFormat, "0.00");
    EXPECT_EQ(
        StyleOf(NumberFormatOf(164, "[Red]dd.mm.") + FormatOf({.numberFormat = 164})).numberFormat,
        "[Red]dd.mm.");
    EXPECT_EQ(StyleOf(FormatOf({.numberFormat = 300})).numberFormat, "General");
}

TEST(CellFormatsTest, ReadAlignment)
{
    // right, wrapped, centred vertically, 45 degrees down, indent 3, shrinking, right to left
    const auto at = StyleOf(FormatOf({.alignment = 3 | 8 | 1U << 4 | 135U << 8 | 3U << 16 |
                                                   1U << 20 | 2U << 22}))
                        .alignment;
    EXPECT_EQ(at.horizontal, book::HorizontalAlignment::Right);
    EXPECT_EQ(at.vertical, book::VerticalAlignment::Center);
    EXPECT_TRUE(at.wrap);
    EXPECT_TRUE(at.shrink);
    EXPECT_EQ(at.rotation, -45);
    EXPECT_EQ(at.indent, 3);
    EXPECT_EQ(at.readingOrder, book::ReadingOrder::RightToLeft);
}

TEST(CellFormatsTest, ReadStackedText)
{
    const auto style = StyleOf(FormatOf({.alignment = 255U << 8}));
    EXPECT_EQ(style.alignment.rotation, book::Alignment::kStacked);
}

TEST(CellFormatsTest, ReadBorders)
{
    // left thin red, right double automatic, top medium blue, bottom hair green, diagonals dotted
    const auto border = StyleOf(FormatOf({.lines = 1 | 6U << 4 | 2U << 8 | 7U << 12 | 10U << 16 |
                                                   64U << 23 | 1U << 30 | 1U << 31,
                                          .moreLines = 12 | 11U << 7 | 8U << 14 | 4U << 21}))
                            .border;
    using enum book::LineStyle;
    EXPECT_EQ(border.left, (book::BorderLine{Thin, Color{255, 0, 0}}));
    EXPECT_EQ(border.right, (book::BorderLine{Double, std::nullopt}));
    EXPECT_EQ(border.top, (book::BorderLine{Medium, Color{0, 0, 255}}));
    EXPECT_EQ(border.bottom, (book::BorderLine{Hair, Color{0, 255, 0}}));
    EXPECT_EQ(border.diagonal, (book::BorderLine{Dotted, book::kBlack}));
    EXPECT_TRUE(border.diagonalDown && border.diagonalUp);
}

TEST(CellFormatsTest, ReadFills)
{
    const auto solid = StyleOf(FormatOf({.moreLines = 1U << 26, .fill = 13 | 64 << 7})).fill;
    EXPECT_EQ(solid, (book::Fill{book::FillPattern::Solid, Color{255, 255, 0}, {}, {}}));
    const auto striped = StyleOf(FormatOf({.moreLines = 5U << 26, .fill = 10 | 65 << 7})).fill;
    EXPECT_EQ(striped, (book::Fill{book::FillPattern::DarkHorizontal, Color{255, 0, 0}, {}, {}}));
    EXPECT_EQ(StyleOf(FormatOf({.fill = 10 | 11 << 7})).fill, book::Fill{});
}

TEST(CellFormatsTest, FillInTheColorOfTheWindowIsWhite)
{
    const auto fill = StyleOf(FormatOf({.moreLines = 1U << 26, .fill = 65})).fill;
    EXPECT_EQ(fill.foreground, book::kWhite);
}

TEST(CellFormatsTest, PaletteReplacesColors)
{
    const auto palette =
        RecordOf(RecordType::Palette, Numbers({2}) + LongNumber(0x0000FF) + LongNumber(0x332211));
    const auto style = StyleOf(palette + FormatOf({.moreLines = 1U << 26, .fill = 9}));
    EXPECT_EQ(style.fill.foreground, (Color{0x11, 0x22, 0x33}));
}

TEST(CellFormatsTest, NewerRecordsHaveMoreColors)
{
    const auto style =
        StyleOf(FormatOf({.lines = 1, .moreLines = 1U << 26, .fill = 9}) +
                FormatExtensionOf(16, {ColorProperty(4, 2, 0, 0xFF563412), // RGB
                                       ColorProperty(13, 3, 0, 4),         // theme: accent 1
                                       ColorProperty(9, 3, 16384, 1),      // lighter dark 1
                                       PropertyOf(15, Numbers({20}))}));   // indent
    EXPECT_EQ(style.fill.foreground, (Color{0x12, 0x34, 0x56}));
    EXPECT_EQ(style.font.color, (Color{0x4F, 0x81, 0xBD}));
    EXPECT_EQ(style.border.left.color, (Color{0x80, 0x80, 0x80}));
    EXPECT_EQ(style.alignment.indent, 20);
}

TEST(CellFormatsTest, ExtensionsOfChangedFormatsDoNotCount)
{
    const auto checksum = [](std::uint32_t sum) {
        return RecordOf(RecordType::XfChecksum,
                        Numbers({0x087C, 0, 0, 0, 0, 0, 0, 17}) + LongNumber(sum));
    };
    const auto formats = FormatOf({}) + FormatExtensionOf(16, {PropertyOf(15, Numbers({20}))});
    EXPECT_EQ(StyleOf(formats).alignment.indent, 20);
    EXPECT_EQ(StyleOf(checksum(0x12345678) + formats).alignment.indent, 0);
    // The only byte that is not zero is the 0x20 with 13 behind it: the remainder of its division
    // by the polynomial, bit for bit, with 32 bits behind the data.
    std::uint32_t sum = 0x20;
    for (int bit = 0; bit < 8 * (13 + 4); ++bit)
        sum = (sum & 0x80000000U) != 0 ? sum << 1U ^ 0xAFU : sum << 1U;
    EXPECT_EQ(StyleOf(checksum(sum) + formats).alignment.indent, 20);
}

TEST(CellFormatsTest, ReadGradients)
{
    std::string data = LongNumber(0) + DoubleBytes(90) + std::string(32, '\0') + LongNumber(2);
    for (const auto& [color, position] : {std::pair{0xFF0000FFU, 1.0}, {0xFFFF0000U, 0.0}})
        data += Numbers({2}) + LongNumber(color) + DoubleBytes(position) + DoubleBytes(0);
    const auto fill = StyleOf(FormatOf({.moreLines = 1U << 26, .fill = 9}) +
                              FormatExtensionOf(16, {PropertyOf(6, data)}))
                          .fill;
    ASSERT_TRUE(fill.gradient);
    EXPECT_FALSE(fill.gradient->isPath);
    EXPECT_EQ(fill.gradient->degree, 90);
    const std::vector<book::GradientStop> expected = {{0, {0, 0, 255}}, {1, {255, 0, 0}}};
    EXPECT_EQ(fill.gradient->stops, expected);
}

TEST(CellFormatsTest, DamagedExtensionsEndEarly)
{
    const auto style = StyleOf(FormatOf({.alignment = 0}) +
                               FormatExtensionOf(16, {PropertyOf(15, Numbers({7})),
                                                      Numbers({13, 2})})); // smaller than its head
    EXPECT_EQ(style.alignment.indent, 7);
}

TEST(CellFormatsTest, DamagedRecordsAreLeftOut)
{
    const auto look = LookOf(BlankOf(0, 0, 16), RecordOf(RecordType::Format, Numbers({164, 900})) +
                                                    FormatOf({.numberFormat = 164}));
    EXPECT_EQ(look.Style({1, 1}).numberFormat, "General");
    ASSERT_EQ(look.leftOut.size(), 1U);
    EXPECT_EQ(look.leftOut[0].what, "formats of the workbook");
}

TEST(CellFormatsTest, FormatThatIsCutOffKeepsItsPlace)
{
    const auto globals = FontOf({}) + FontOf({.name = "B"}) +
                         RecordOf(RecordType::Xf, Numbers({1, 2})) + FormatOf({.font = 1});
    const auto look = LookOf(BlankOf(0, 0, 16) + BlankOf(0, 1, 17), globals);
    EXPECT_EQ(look.Style({1, 1}).font.name, "B");
    EXPECT_EQ(look.Style({1, 1}).numberFormat, "0.00");
    EXPECT_EQ(look.Style({1, 2}).font.name, "B");
}

/// A container with one stored part. [APPNOTE] 4.3.7, 4.3.12, 4.3.16
std::string ZipOf(const std::string& name, const std::string& part)
{
    const auto size = static_cast<std::uint32_t>(part.size());
    const auto nameSize = static_cast<std::uint16_t>(name.size());
    const std::string sizes = LongNumber(0) + LongNumber(size) + LongNumber(size);
    const std::string local =
        "PK\3\4" + Numbers({20, 0, 0, 0, 0}) + sizes + Numbers({nameSize, 0}) + name + part;
    const std::string entry = "PK\1\2" + Numbers({20, 20, 0, 0, 0, 0}) + sizes +
                              Numbers({nameSize, 0, 0, 0, 0}) + LongNumber(0) + LongNumber(0) +
                              name;
    return local + entry + "PK\5\6" + Numbers({0, 0, 1, 1}) +
           LongNumber(static_cast<std::uint32_t>(entry.size())) +
           LongNumber(static_cast<std::uint32_t>(local.size())) + Numbers({0});
}

std::string ThemeOf(const std::string& package)
{
    return RecordOf(RecordType::Theme, std::string(16, '\0') + package);
}

const std::string kTheme =
    "<a:theme xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\"><a:themeElements>"
    "<a:clrScheme name=\"x\"><a:accent1><a:srgbClr val=\"102030\"/></a:accent1></a:clrScheme>"
    "</a:themeElements></a:theme>";

TEST(CellFormatsTest, WorkbooksHaveThemes)
{
    const auto format = FormatOf({}) + FormatExtensionOf(16, {ColorProperty(13, 3, 0, 4)});
    const auto zip = ZipOf("theme/theme/theme1.xml", kTheme);
    EXPECT_EQ(StyleOf(ThemeOf(zip) + format).font.color, (Color{0x10, 0x20, 0x30}));
    for (std::size_t size = 0; size + 6 < zip.size();
         size += 7) // a damaged one is the default theme
        EXPECT_EQ(StyleOf(ThemeOf(zip.substr(0, size)) + format).font.color,
                  (Color{0x4F, 0x81, 0xBD}));
}

TEST(CellFormatsTest, NormalFontIsThatOfItsStyle)
{
    const auto style = RecordOf(RecordType::Style, Numbers({0x8010}) + std::string("\0\xFF", 2));
    LookSource source(
        WorkbookStream({{"A", SheetOf("")}},
                       FontOf({}) + FontOf({.name = "Verdana"}) + FormatOf({.font = 1}) + style));
    EXPECT_EQ(source.Look().normalFont.name, "Verdana");
}

} // namespace
} // namespace orrery::xls::test
