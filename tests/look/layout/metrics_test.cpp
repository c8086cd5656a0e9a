#include "look/layout/metrics.h"

#include "look/text/font_tables.h"

#include <gtest/gtest.h>

namespace orrery::look {
namespace {

book::Font FontOf(std::string name, double size)
{
    book::Font font;
    font.name = std::move(name);
    font.size = size;
    return font;
}

TEST(DigitPixels, AreKnownForCommonFonts)
{
    EXPECT_EQ(KnownDigitPixels(FontOf("Calibri", 11)), 7);
    EXPECT_EQ(KnownDigitPixels(FontOf("Arial", 10)), 7);
    EXPECT_EQ(KnownDigitPixels(FontOf("Calibri", 12)), 8);
    EXPECT_EQ(KnownDigitPixels(FontOf("Calibri", 13)), std::nullopt);
}

struct ColumnCase {
    const char* name;
    double width;
    std::int32_t digit;
    std::int32_t expected;
};

class ColumnPixelsTest : public testing::TestWithParam<ColumnCase> {};

TEST_P(ColumnPixelsTest, FollowsExcel)
{
    EXPECT_EQ(ColumnPixels(GetParam().width, GetParam().digit), GetParam().expected);
}

// ECMA-376 18.3.1.13: with Calibri 11, eight digits are 8.7109375 and 61 pixels; Excel's own
// default of 64 pixels is stored as 9.140625.
INSTANTIATE_TEST_SUITE_P(Widths, ColumnPixelsTest,
                         testing::Values(ColumnCase{"EightDigits", 8.7109375, 7, 61},
                                         ColumnCase{"Default", 9.140625, 7, 64},
                                         ColumnCase{"Hidden", 0, 7, 0},
                                         ColumnCase{"Widest", 255.7109375, 7, 1785},
                                         ColumnCase{"Calibri12", 10.83203125, 6, 65},
                                         ColumnCase{"Negative", -3, 7, 0},
                                         ColumnCase{"TooWide", 1e300, 7, 1785}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(PaddingPixels, GrowsWithTheDigit)
{
    EXPECT_EQ(PaddingPixels(7), 5);
    EXPECT_EQ(PaddingPixels(8), 5);
    EXPECT_EQ(PaddingPixels(9), 7);
}

TEST(DefaultColumnPixels, AreAMultipleOfEight)
{
    EXPECT_EQ(DefaultColumnPixels(8, 7), 64);
    EXPECT_EQ(DefaultColumnPixels(10, 7), 80);
    EXPECT_EQ(DefaultColumnPixels(8, 8), 72);
}

TEST(RevealedDigitPixels, IsWhatExplainsTheWidths)
{
    const auto columns = [](std::initializer_list<double> widths) {
        std::vector<book::ColumnLook> looks;
        for (const double width : widths)
            looks.push_back({1, 1, width, false, 0});
        return looks;
    };
    EXPECT_EQ(RevealedDigitPixels(columns({9.140625, 20.7109375, 3.42578125})), 7);
    EXPECT_EQ(RevealedDigitPixels(columns({10, 12})), std::nullopt);
    EXPECT_EQ(RevealedDigitPixels(columns({9.123})), std::nullopt);
    EXPECT_EQ(RevealedDigitPixels({}), std::nullopt);
}

struct DigitCase {
    const char* name;
    std::string font;
    double size;
    double expected; ///< twips
};

class DigitWidthTest : public testing::TestWithParam<DigitCase> {};

// As LibreOffice 7.4 counts them: the width of a column of 100 digits, by UNO.
TEST_P(DigitWidthTest, IsThatOfLibreOffice)
{
    const DigitCase& row = GetParam();
    EXPECT_NEAR(DigitWidth(FontOf(row.font, row.size), FontTables()) * 15, row.expected, 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Fonts, DigitWidthTest,
                         testing::Values(DigitCase{"Calibri11", "Calibri", 11, 111},
                                         DigitCase{"Calibri12", "Calibri", 12, 122},
                                         DigitCase{"Arial10", "Arial", 10, 111},
                                         DigitCase{"Arial11", "Arial", 11, 122},
                                         DigitCase{"Arial12", "Arial", 12, 133},
                                         DigitCase{"Verdana10", "Verdana", 10, 127},
                                         DigitCase{"Tahoma8", "Tahoma", 8, 102},
                                         DigitCase{"MsPGothic11", "ＭＳ Ｐゴシック", 11, 140},
                                         DigitCase{"Unknown12", "no such font", 12, 153}),
                         [](const auto& each) { return std::string(each.param.name); });

struct RowHeightCase {
    const char* name;
    double points;
    double expected; ///< pixels
};

class StoredRowHeightTest : public testing::TestWithParam<RowHeightCase> {};

TEST_P(StoredRowHeightTest, EndsAtAWholePixel)
{
    EXPECT_EQ(RowHeight(GetParam().points, true), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, StoredRowHeightTest,
    testing::Values(RowHeightCase{"Calibri11", 15, 20}, RowHeightCase{"Arial10", 12.75, 17},
                    RowHeightCase{"OnAnotherScreen", 14.4, 19}, RowHeightCase{"Macintosh", 16, 21},
                    RowHeightCase{"Half", 15.5, 20}, RowHeightCase{"Zero", 0, 0},
                    RowHeightCase{"Negative", -1, 0}, RowHeightCase{"TooHigh", 1e9, 546}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(RowHeight, MayBeExact)
{
    EXPECT_NEAR(RowHeight(12.8, false), 256 / 15.0, 1e-9);
    EXPECT_EQ(RowHeight(-1, false), 0);
}

TEST(Defaults, ComeFromTheSheetElseFromTheFont)
{
    book::SheetLook sheet;
    const FontTables tables;
    const book::Font calibri = FontOf("Calibri", 11);
    EXPECT_EQ(DefaultRowHeight(sheet, calibri, tables), 20);
    EXPECT_NEAR(DefaultColumnWidth(sheet, 7.4), 8 * 7.4 + 5, 1e-9);
    sheet.basePadding = 1.5;
    EXPECT_NEAR(DefaultColumnWidth(sheet, 7.4), 9.5 * 7.4, 1e-9);
    sheet.defaultRowHeight = 12.75;
    sheet.standardWidth = 10;
    EXPECT_EQ(DefaultRowHeight(sheet, calibri, tables), 17);
    EXPECT_NEAR(DefaultColumnWidth(sheet, 7.4), 74, 1e-9);
}

} // namespace
} // namespace orrery::look
