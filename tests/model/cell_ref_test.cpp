#include "model/cell_ref.h"
#include "util/error.h"

#include <gtest/gtest.h>

namespace orrery::model {

void PrintTo(const CellPosition& cell, std::ostream* out)
{
    *out << "row " << cell.row << ", column " << cell.column;
}

namespace {

struct CellRefCase {
    const char* name;
    std::string_view text;
    bool result;
    CellPosition expected;
};
constexpr CellPosition kRejected{-1, -1};

class ParseCellRefTest : public testing::TestWithParam<CellRefCase> {};
TEST_P(ParseCellRefTest, ReadsShape)
{
    CellPosition cell{5, 5};
    EXPECT_EQ(ParseCellRef(GetParam().text, cell), GetParam().result);
    EXPECT_EQ(cell, GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Shapes, ParseCellRefTest,
    testing::Values(CellRefCase{"UpperCase", "B6", true, {6, 2}},
                    CellRefCase{"LowerCase", "b6", true, {6, 2}},
                    CellRefCase{"TwoLetters", "aA12", true, {12, 27}},
                    CellRefCase{"Empty", "", true, {0, 0}},
                    CellRefCase{"LetterOnly", "B", true, {0, 2}},
                    CellRefCase{"DigitsOnly", "12", true, {12, 0}},
                    CellRefCase{"LeadingZeros", "A007", true, {7, 1}},
                    CellRefCase{"ManyLeadingZeros", "A00000000000000007", true, {7, 1}},
                    CellRefCase{"RowZero", "A0", true, {0, 1}},
                    CellRefCase{"DollarSign", "$B$6", false, kRejected},
                    CellRefCase{"LeadingBlank", " B6", false, kRejected},
                    CellRefCase{"TrailingBlank", "B6 ", false, kRejected},
                    CellRefCase{"Sign", "B-6", false, kRejected},
                    CellRefCase{"Range", "B6:C7", false, kRejected},
                    CellRefCase{"ThreeLetters", "ABC1", false, kRejected},
                    CellRefCase{"LetterAfterDigits", "6B", false, kRejected},
                    CellRefCase{"LettersAroundDigits", "B6C", false, kRejected},
                    CellRefCase{"OtherLetter",
                                "\xC3\x84"
                                "6",
                                false, kRejected},
                    CellRefCase{"AtSign", "@6", false, kRejected},
                    CellRefCase{"Bracket", "[6", false, kRejected},
                    CellRefCase{"Backtick", "`6", false, kRejected},
                    CellRefCase{"Brace", "{6", false, kRejected},
                    CellRefCase{"RejectedBeforeItOverflows", "A99999999999 ", false, kRejected}),
    [](const auto& row) { return std::string(row.param.name); });
INSTANTIATE_TEST_SUITE_P(Ranges, ParseCellRefTest,
                         testing::Values(CellRefCase{"LastCell", "IV65536", true, {65536, 256}},
                                         CellRefCase{"ColumnBeyond", "IW1", true, {1, -1}},
                                         CellRefCase{"LastTwoLetters", "ZZ1", true, {1, -1}},
                                         CellRefCase{"RowBeyond", "A65537", true, {-1, 1}},
                                         CellRefCase{"BothBeyond", "ZZ70000", true, {-1, -1}},
                                         CellRefCase{"LargestNumber", "A2147483647", true, {-1, 1}},
                                         CellRefCase{"LastSingleLetter", "Z1", true, {1, 26}},
                                         CellRefCase{"LastOfA", "AZ1", true, {1, 52}},
                                         CellRefCase{"FirstOfB", "BA1", true, {1, 53}}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ParseCellRef, OverflowsBeyond32Bits)
{
    CellPosition cell{5, 5};
    EXPECT_THROW(ParseCellRef("A2147483648", cell), util::OverflowError);
    EXPECT_EQ(cell, kRejected);
    EXPECT_THROW(ParseCellRef("99999999999999999999999999", cell), util::OverflowError);
}

struct FormatCase {
    CellPosition cell;
    std::string_view expected;
};
class FormatCellRefTest : public testing::TestWithParam<FormatCase> {};
TEST_P(FormatCellRefTest, WritesLettersThenDigits)
{
    EXPECT_EQ(FormatCellRef(GetParam().cell), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Cells, FormatCellRefTest,
    testing::Values(FormatCase{{6, 2}, "B6"}, FormatCase{{0, 2}, "B"}, FormatCase{{6, 0}, "6"},
                    FormatCase{{0, 0}, ""}, FormatCase{{1, 26}, "Z1"}, FormatCase{{1, 27}, "AA1"},
                    FormatCase{{1, 52}, "AZ1"}, FormatCase{{1, 53}, "BA1"},
                    FormatCase{{1, 256}, "IV1"}, FormatCase{{65536, 256}, "IV65536"},
                    FormatCase{{65537, 1}, ""}, FormatCase{{1, 257}, ""}, FormatCase{{1, -1}, ""},
                    FormatCase{{-1, 1}, ""}, FormatCase{{-1, 0}, ""}, FormatCase{{0, -1}, ""},
                    FormatCase{{-2147483647 - 1, 2147483647}, ""}));

bool RoundTrips(CellPosition cell)
{
    CellPosition again;
    return ParseCellRef(FormatCellRef(cell), again) && again == cell;
}

TEST(FormatCellRef, RoundTripsEveryRowAndColumn)
{
    // Letters and digits are independent, so each is swept with only a few values of the other.
    for (std::int32_t row = 1; row <= kMaxRow; ++row) {
        for (const std::int32_t column : {1, 26, 27, row % kMaxColumn + 1, kMaxColumn})
            ASSERT_TRUE(RoundTrips({row, column})) << row << ", " << column;
    }
    for (const std::int32_t row : {1, 9, 10, 99, 100, 999, 1000, 9999, 10000, kMaxRow}) {
        for (std::int32_t column = 1; column <= kMaxColumn; ++column)
            ASSERT_TRUE(RoundTrips({row, column})) << row << ", " << column;
    }
}

TEST(ReadCell, RequiresBothNumbers)
{
    EXPECT_EQ(ReadCell("b6"), (CellPosition{6, 2}));
    EXPECT_EQ(ReadCell("IV65536"), (CellPosition{65536, 256}));
    for (const char* text : {"", "B", "6", "A0", "IW1", "A65537", "$B$6", " B6", "A99999999999"})
        EXPECT_EQ(ReadCell(text), std::nullopt) << text;
}

} // namespace
} // namespace orrery::model
