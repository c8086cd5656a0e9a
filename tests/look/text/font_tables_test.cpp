#include "look/text/font_tables.h"

#include <gtest/gtest.h>

#include <string>

namespace orrery::look {
namespace {

book::Font FontOf(std::string name, double size, bool bold = false, bool italic = false)
{
    book::Font font;
    font.name = std::move(name);
    font.size = size;
    font.bold = bold;
    font.italic = italic;
    return font;
}

struct WidthCase {
    const char* name;
    std::string font;
    double size;
    bool bold;
    bool italic;
    std::string text;
    double expected; ///< pixels
};

class WidthTest : public testing::TestWithParam<WidthCase> {};

// The expected widths are sums of the fonts' advances, as fontTools reads them.
TEST_P(WidthTest, IsTheSumOfTheAdvances)
{
    const WidthCase& row = GetParam();
    EXPECT_NEAR(FontTables().Width(row.text, FontOf(row.font, row.size, row.bold, row.italic)),
                row.expected, 1e-4);
}

INSTANTIATE_TEST_SUITE_P(
    Fonts, WidthTest,
    testing::Values(WidthCase{"Calibri", "Calibri", 11, false, false, "Wednesday 31", 88.3438},
                    WidthCase{"CalibriBold", "Calibri", 11, true, false, "Wednesday 31", 89.8906},
                    WidthCase{"CambriaItalic", "Cambria", 12, false, true, "Größe", 37.92},
                    WidthCase{"ArialDigits", "Arial", 10, false, false, "0123456789", 74.1536},
                    WidthCase{"Cyrillic", "Arial", 20, true, true, "Понедельник", 176.0547},
                    WidthCase{"Greek", "Times New Roman", 12, false, false, "Δευτέρα", 54.4453},
                    WidthCase{"Courier", "Courier New", 10, false, false, "iiiWWW", 48.0078},
                    WidthCase{"Verdana", "Verdana", 10, false, false, "Verdana →", 71.4714},
                    WidthCase{"TahomaBold", "Tahoma", 8, true, false, "Tahoma", 47.7083},
                    WidthCase{"HebrewOfAnotherFont", "Arial", 10, false, false, "שלום", 29.5052}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(FontTables, EastAsianCharactersAreSquare)
{
    const FontTables tables;
    EXPECT_DOUBLE_EQ(tables.Width("日本", FontOf("Calibri", 9)), 24);
    EXPECT_DOUBLE_EQ(tables.Width("ﾆﾎﾝ", FontOf("MS PGothic", 9)), 18);
}

TEST(FontTables, EmojiOfSeveralPartsIsOne)
{
    const FontTables tables;
    EXPECT_DOUBLE_EQ(tables.Width("\U0001F468\u200D\U0001F469\u200D\U0001F467", FontOf("", 9)), 12);
    EXPECT_DOUBLE_EQ(tables.Width("\U0001F44D\U0001F3FD", FontOf("", 9)), 12);
    EXPECT_DOUBLE_EQ(tables.Width("\U0001F1EF\U0001F1F5", FontOf("", 9)), 12);
}

TEST(FontTables, MarksAddNothing)
{
    const FontTables tables;
    const book::Font font = FontOf("Arial", 10);
    EXPECT_DOUBLE_EQ(tables.Width("e\u0301", font), tables.Width("e", font));
    EXPECT_DOUBLE_EQ(tables.Width("\n", font), 0);
}

TEST(FontTables, ArabicIsNarrowerWithinWords)
{
    const FontTables tables;
    const book::Font font = FontOf("Arial", 10);
    const double beh = tables.Width("\u0628", font); // alone it would be 0.9414 em wide
    EXPECT_LT(beh, 0.8 * 40 / 3);
    EXPECT_GT(beh, 0.3 * 40 / 3);
}

// By the fonts' table hhea: 1536 and 512 of 2048 for Carlito, 1854 and 434 for Liberation Sans.
TEST(FontTables, LinesAreAsHighAsTheFontSays)
{
    const LineMetrics calibri = FontTables().Metrics(FontOf("Calibri", 12));
    EXPECT_DOUBLE_EQ(calibri.ascent, 12);
    EXPECT_DOUBLE_EQ(calibri.descent, 4);
    EXPECT_DOUBLE_EQ(calibri.height, 16);
    const LineMetrics arial = FontTables().Metrics(FontOf("Arial", 12));
    EXPECT_DOUBLE_EQ(arial.ascent, 1854 * 16 / 2048.0);
    EXPECT_DOUBLE_EQ(arial.descent, 434 * 16 / 2048.0);
}

struct RowCase {
    const char* name;
    std::string font;
    double size;
    double expected; ///< points
};

class RowHeightTest : public testing::TestWithParam<RowCase> {};

// The heights that Excel gives the rows of new workbooks with these fonts.
TEST_P(RowHeightTest, IsExcels)
{
    const RowCase& row = GetParam();
    EXPECT_EQ(FontTables().Metrics(FontOf(row.font, row.size)).rowHeight * 0.75, row.expected);
}

INSTANTIATE_TEST_SUITE_P(Fonts, RowHeightTest,
                         testing::Values(RowCase{"Calibri11", "Calibri", 11, 15},
                                         RowCase{"Calibri12", "Calibri", 12, 15.75},
                                         RowCase{"Arial10", "Arial", 10, 12.75},
                                         RowCase{"Verdana10", "Verdana", 10, 12.75},
                                         RowCase{"MsPGothic11", "MS PGothic", 11, 13.5},
                                         RowCase{"SimSun12", "SimSun", 12, 14.25}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(FontTables, ScriptsAreSmaller)
{
    const FontTables tables;
    book::Font font = FontOf("Arial", 10);
    const double width = tables.Width("2", font);
    font.position = book::TextPosition::Superscript;
    EXPECT_DOUBLE_EQ(tables.Width("2", font), width * kScriptSize);
}

TEST(FontTables, BearsAnySize)
{
    const FontTables tables;
    EXPECT_EQ(tables.Width("a", FontOf("Arial", -5)), 0);
    EXPECT_LT(tables.Width("a", FontOf("Arial", 1e300)), 2000);
    EXPECT_EQ(tables.Metrics(FontOf("Arial", 0)).height, 0);
}

} // namespace
} // namespace orrery::look
