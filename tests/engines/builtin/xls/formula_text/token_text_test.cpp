#include "engines/builtin/xls/formula_text/token_text.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "util/error.h"

#include "xls/stream_builder.h"

#include <bit>
#include <gtest/gtest.h>
#include <limits>

namespace orrery::xls {
namespace {

using namespace std::string_literals;
using test::Numbers;

struct NumberCase {
    double number;
    const char* text;
};
class NumberTextTest : public testing::TestWithParam<NumberCase> {};

TEST_P(NumberTextTest, IsTheShortestThatReadsBack)
{
    EXPECT_EQ(NumberText(GetParam().number), GetParam().text);
    EXPECT_EQ(std::stod(GetParam().text), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(Numbers, NumberTextTest,
                         testing::Values(NumberCase{0, "0"}, NumberCase{0.1, "0.1"},
                                         NumberCase{-2.5, "-2.5"}, NumberCase{100000, "100000"},
                                         NumberCase{0.00001, "0.00001"},
                                         NumberCase{0.000001, "1E-6"}, NumberCase{1e20, "1E+20"},
                                         NumberCase{1e100, "1E+100"},
                                         NumberCase{1.0 / 3, "0.3333333333333333"},
                                         NumberCase{6.02214179e23, "6.02214179E+23"}));

TEST(NumberTextTest, HasNoneForInfinity)
{
    EXPECT_EQ(NumberText(std::numeric_limits<double>::infinity()), std::nullopt);
    EXPECT_EQ(NumberText(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
}

TEST(ErrorTextTest, KnowsTheErrorsOfTheFormat)
{
    EXPECT_EQ(ErrorText(0x07), "#DIV/0!");
    EXPECT_EQ(ErrorText(0x2A), "#N/A");
    EXPECT_EQ(ErrorText(0x01), std::nullopt);
}

TEST(QuotedTextTest, DoublesQuotes)
{
    EXPECT_EQ(QuotedText("a \"b\""), "\"a \"\"b\"\"\"");
}

constexpr book::CellAddress kB3{3, 2};

TEST(CellTextTest, MarksAbsoluteParts)
{
    EXPECT_EQ(CellText(Numbers({4, 0x0001}), 0, ReferenceForm::Cell, kB3), "$B$5");
    EXPECT_EQ(CellText(Numbers({4, 0x4001}), 0, ReferenceForm::Cell, kB3), "B$5");
    EXPECT_EQ(CellText(Numbers({4, 0x8001}), 0, ReferenceForm::Cell, kB3), "$B5");
    EXPECT_EQ(CellText(Numbers({0xFFFF, 0xC0FF}), 0, ReferenceForm::Cell, kB3), "IV65536");
}

TEST(CellTextTest, CountsOffsetsFromTheCellAndWrapsAtTheEdges)
{
    const auto text = [](std::uint16_t row, std::uint16_t column) {
        return CellText(Numbers({row, column}), 0, ReferenceForm::Offset, kB3);
    };
    EXPECT_EQ(text(0, 0xC000), "B3");
    EXPECT_EQ(text(1, 0xC001), "C4");
    EXPECT_EQ(text(0xFFFF, 0xC0FF), "A2");
    EXPECT_EQ(text(0xFFFD, 0xC0FE), "IV65536");
    EXPECT_EQ(text(7, 0x0005), "$F$8") << "absolute parts are no offsets";
}

TEST(AreaTextTest, ShortensWholeRowsAndColumns)
{
    const auto text = [](std::vector<std::uint16_t> numbers) {
        return AreaText(Numbers(numbers), 0, ReferenceForm::Cell, kB3);
    };
    EXPECT_EQ(text({1, 2, 0xC000, 0xC001}), "A2:B3");
    EXPECT_EQ(text({1, 2, 0x0000, 0x8001}), "$A$2:$B3");
    EXPECT_EQ(text({0, 0xFFFF, 0xC000, 0x4002}), "A:C");
    EXPECT_EQ(text({0, 0xFFFF, 0x0000, 0x0000}), "$A:$A");
    EXPECT_EQ(text({1, 3, 0x0000, 0x00FF}), "$2:$4");
}

TEST(AreaTextTest, SortsTheCornersOfAnAreaThatWraps)
{
    // From one row above B3's sheet top: rows -1 and +1 of row 1.
    EXPECT_EQ(AreaText(Numbers({0xFFFF, 1, 0xC000, 0xC000}), 0, ReferenceForm::Offset, {1, 1}),
              "A2:A65536");
}

std::string NumberValue(double number)
{
    std::string bytes = "\x01";
    AppendU64(bytes, std::bit_cast<std::uint64_t>(number));
    return bytes;
}

TEST(ArrayTextTest, WritesRowsOfValues)
{
    const std::string extra = "\x02\x01\0"s + NumberValue(1.5) + "\x02\x01\0\0\""s +
                              "\x04\x01\0\0\0\0\0\0\0"s + "\x10\x2A\0\0\0\0\0\0\0"s +
                              "\0........"s + NumberValue(-1) + "rest";
    std::size_t at = 0;
    EXPECT_EQ(ArrayText(extra, at, 100), "{1.5,\"\"\"\",TRUE;#N/A,,-1}");
    EXPECT_EQ(extra.substr(at), "rest");
}

TEST(ArrayTextTest, RefusesUnknownAndMissingValues)
{
    std::size_t at = 0;
    EXPECT_EQ(ArrayText("\0\0\0\x03........"s, at, 100), std::nullopt);
    at = 0;
    EXPECT_THROW(ArrayText("\xFF\xFF\xFF"s + NumberValue(1), at, 100), util::Error);
    at = 0;
    EXPECT_EQ(ArrayText("\0\0\0"s + NumberValue(12345), at, 5), std::nullopt) << "too long";
}

} // namespace
} // namespace orrery::xls
