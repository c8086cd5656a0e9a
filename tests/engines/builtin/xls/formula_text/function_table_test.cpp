#include "engines/builtin/xls/formula_text/function_table.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

namespace orrery::xls {
namespace {

TEST(FunctionTableTest, HasRisingNumbersAndDifferentNames)
{
    std::set<std::string_view> names;
    unsigned count = 0;
    for (unsigned number = 0; number <= 0xFFFF; ++number) {
        const auto* function = FindFunction(static_cast<std::uint16_t>(number));
        if (function == nullptr)
            continue;
        ++count;
        EXPECT_EQ(function->number, number);
        const std::string_view name = function->name;
        EXPECT_TRUE(names.insert(name).second) << name;
        EXPECT_LE(function->fewest, function->most) << name;
        EXPECT_LE(function->most, 30) << name;
    }
    EXPECT_GT(count, 360U);
}

struct FunctionCase {
    std::uint16_t number;
    const char* name;
    unsigned fewest;
    unsigned most;
};
class FunctionTest : public testing::TestWithParam<FunctionCase> {};

// From [MS-XLS] 2.5.198.17 and Excel's own help.
TEST_P(FunctionTest, IsTheOneOfTheFormat)
{
    const auto* function = FindFunction(GetParam().number);
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(std::string_view(function->name), GetParam().name);
    EXPECT_EQ(function->fewest, GetParam().fewest);
    EXPECT_EQ(function->most, GetParam().most);
}

INSTANTIATE_TEST_SUITE_P(
    Functions, FunctionTest,
    testing::Values(FunctionCase{0, "COUNT", 0, 30}, FunctionCase{1, "IF", 2, 3},
                    FunctionCase{0x20, "LEN", 1, 1}, FunctionCase{0x41, "DATE", 3, 3},
                    FunctionCase{0x46, "WEEKDAY", 1, 2}, FunctionCase{0x4A, "NOW", 0, 0},
                    FunctionCase{0x5C, "SERIES", 4, 5}, FunctionCase{0x94, "INDIRECT", 1, 2},
                    FunctionCase{0xB9, "GET.CELL", 1, 2}, FunctionCase{0xDD, "TODAY", 0, 0},
                    FunctionCase{0xE4, "SUMPRODUCT", 1, 30}, FunctionCase{0x101, "EVALUATE", 1, 1},
                    FunctionCase{0x15A, "COUNTIF", 2, 2}, FunctionCase{0x15F, "DATEDIF", 3, 3},
                    FunctionCase{0x167, "HYPERLINK", 1, 2}, FunctionCase{0x17B, "RTD", 3, 30}),
    [](const auto& row) { return "Number" + std::to_string(row.param.number); });

} // namespace
} // namespace orrery::xls
