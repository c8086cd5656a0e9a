#include "engines/builtin/common/range_index.h"
#include "engines/builtin/xlsx/formula/cell_address.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace orrery::xlsx {

using builtin::RangeIndex;

namespace {

struct AddressCase {
    const char* name;
    std::string_view text;
    std::optional<CellAddress> expected;
};
class ParseCellAddressTest : public testing::TestWithParam<AddressCase> {};
TEST_P(ParseCellAddressTest, ReadsShape)
{
    EXPECT_EQ(ParseCellAddress(GetParam().text), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Shapes, ParseCellAddressTest,
    testing::Values(AddressCase{"First", "A1", CellAddress{1, 1}},
                    AddressCase{"LowerCase", "b6", CellAddress{6, 2}},
                    AddressCase{"TwoLetters", "AA12", CellAddress{12, 27}},
                    AddressCase{"Last", "XFD1048576", CellAddress{kSheetRows, kSheetColumns}},
                    AddressCase{"ColumnBeyond", "XFE1", std::nullopt},
                    AddressCase{"RowBeyond", "A1048577", std::nullopt},
                    AddressCase{"RowZero", "A0", std::nullopt},
                    AddressCase{"HugeRow", "A99999999999999999999", std::nullopt},
                    AddressCase{"ManyLetters", "AAAAAAAAAAAAAAAAAA1", std::nullopt},
                    AddressCase{"NoRow", "B", std::nullopt},
                    AddressCase{"NoColumn", "6", std::nullopt},
                    AddressCase{"Empty", "", std::nullopt},
                    AddressCase{"DollarSigns", "$B$6", std::nullopt},
                    AddressCase{"Trailing", "B6 ", std::nullopt}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CellAddress, EveryColumnRoundTrips)
{
    for (std::int32_t column = 1; column <= kSheetColumns; ++column) {
        const CellAddress cell{column, column};
        ASSERT_EQ(ParseCellAddress(FormatCellAddress(cell)), cell);
    }
}

struct RangeCase {
    const char* name;
    std::string_view text;
    std::string_view expected; // as formatted; empty: no range
};
class ParseCellRangeTest : public testing::TestWithParam<RangeCase> {};
TEST_P(ParseCellRangeTest, ReadsCorners)
{
    const auto range = ParseCellRange(GetParam().text);
    EXPECT_EQ(range ? FormatCellRange(*range) : "", GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(Ranges, ParseCellRangeTest,
                         testing::Values(RangeCase{"TwoCorners", "B2:C9", "B2:C9"},
                                         RangeCase{"OneCell", "B2", "B2"},
                                         RangeCase{"OneCellTwice", "B2:B2", "B2"},
                                         RangeCase{"OtherCorners", "C2:B9", "B2:C9"},
                                         RangeCase{"WholeColumns", "A:B", ""},
                                         RangeCase{"ThreeParts", "A1:B2:C3", ""}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(RangeIndex, FindsWhatASearchThroughAllFinds)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<std::int32_t> place(1, 40);
    std::uniform_int_distribution<std::int32_t> length(0, 6);
    for (int round = 0; round < 200; ++round) {
        std::vector<CellRange> ranges(static_cast<std::size_t>(round % 12));
        for (CellRange& range : ranges) {
            range.first = {place(random), place(random)};
            range.last = {range.first.row + length(random), range.first.column + length(random)};
        }
        const RangeIndex index(ranges);
        for (std::int32_t row = 1; row <= 46; ++row)
            for (std::int32_t column = 1; column <= 46; ++column) {
                const CellAddress cell{row, column};
                const bool expected =
                    std::any_of(ranges.begin(), ranges.end(),
                                [&](const CellRange& range) { return range.Contains(cell); });
                const CellRange* found = index.Find(cell);
                ASSERT_EQ(found != nullptr, expected);
                ASSERT_TRUE(found == nullptr || found->Contains(cell));
            }
    }
}

} // namespace
} // namespace orrery::xlsx
