#include "engines/builtin/xls/formula/formula_map.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/records.h"

#include <gtest/gtest.h>
#include <string>

namespace orrery::xls {
namespace {

using namespace std::string_literals;

std::string Sized(const std::string& rgce)
{
    std::string bytes;
    AppendU16(bytes, static_cast<std::uint16_t>(rgce.size()));
    return bytes + rgce;
}

std::string Cell(const std::string& rgce)
{
    std::string records;
    AppendRecord(records, RecordType::Formula, std::string(20, '\0') + Sized(rgce));
    return records;
}

std::string Chart(const std::string& rgce)
{
    std::string records;
    AppendRecord(records, RecordType::ChartLink, std::string(6, '\0') + Sized(rgce));
    return records;
}

/// Sheet 5 becomes 9, name 7 becomes 300, name 7 of sheet 5 becomes 12.
FormulaMap OtherNumbers()
{
    return {[](std::uint16_t sheet) { return static_cast<std::uint16_t>(sheet == 5 ? 9 : sheet); },
            [](std::uint32_t name) { return name == 7 ? 300U : name; },
            [](std::uint16_t sheet, std::uint32_t name) {
                return sheet == 5 && name == 7 ? 12U : name;
            }};
}

struct RemapCase {
    const char* name;
    std::string rgce;
    std::string expected;
};
class RemapTest : public testing::TestWithParam<RemapCase> {};
TEST_P(RemapTest, PutsTheNewNumbersInPlace)
{
    const auto& [name, rgce, expected] = GetParam();
    std::string records = Cell("\x15") + Cell(rgce) + Chart(rgce);
    RemapFormulas(records, OtherNumbers());
    EXPECT_EQ(records, Cell("\x15") + Cell(expected) + Chart(expected));
}
INSTANTIATE_TEST_SUITE_P(
    Formulas, RemapTest,
    testing::Values(
        RemapCase{"Cell", "\x3A\5\0rrcc"s, "\x3A\x09\0rrcc"s},
        RemapCase{"OtherSheet", "\x3A\6\0rrcc"s, "\x3A\6\0rrcc"s},
        RemapCase{"TwoAreas", "\x3B\5\0rrrrcccc\x3B\5\0rrrrcccc\x10"s,
                  "\x3B\x09\0rrrrcccc\x3B\x09\0rrrrcccc\x10"s},
        RemapCase{"Name", "\x43\7\0\0\0\x23\x08\0\0\0"s, "\x43\x2C\1\0\0\x23\x08\0\0\0"s},
        RemapCase{"ExternName", "\x39\5\0\7\0\0\0"s, "\x39\x09\0\x0C\0\0\0"s},
        RemapCase{"ExternNameOfOtherSheet", "\x39\6\0\7\0\0\0"s, "\x39\6\0\7\0\0\0"s},
        RemapCase{"TextThatLooksLikeAToken", "\x17\5\0\x3A\5\0.."s, "\x17\5\0\x3A\5\0.."s},
        RemapCase{"BeforeAnUnknownToken", "\x3A\5\0rrcc\xFF\x3A\5\0rrcc"s,
                  "\x3A\x09\0rrcc\xFF\x3A\5\0rrcc"s}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(FormulaFactsTest, CollectsWhatCellsReferTo)
{
    const auto facts = ReadFacts(Cell("\x3A\5\0rrcc\x3B\6\0rrrrcccc\x03"s) + Cell("\x3A\5\0rrcc"s) +
                                 Cell("\x43\7\0\0\0"s) + Cell("\x39\2\0\1\0\0\0"s));
    EXPECT_EQ(facts.sheets, (std::set<std::uint16_t>{5, 6}));
    EXPECT_EQ(facts.names, (std::set<std::uint32_t>{7}));
    EXPECT_EQ(facts.externNames, (std::set<std::uint16_t>{2}));
    EXPECT_FALSE(facts.readsElsewhere);
    EXPECT_TRUE(facts.hasFormulas);
}

TEST(FormulaFactsTest, AnUnknownTokenMayReadAnything)
{
    EXPECT_FALSE(ReadFacts(Cell("\x15")).readsElsewhere);
    EXPECT_TRUE(ReadFacts(Cell("\x15\xFF")).readsElsewhere);
    EXPECT_TRUE(ReadFacts(Cell("\x41\xDD\0"s)).readsElsewhere);
    std::string torn;
    AppendRecord(torn, RecordType::Formula, std::string(20, '\0') + "\xFF\0"s);
    EXPECT_TRUE(ReadFacts(torn).readsElsewhere);
}

TEST(FormulaFactsTest, ChartsHaveNoStaleResults)
{
    const auto facts = ReadFacts(Chart("\x3A\5\0rrcc\x41\xDD\0"s));
    EXPECT_TRUE(facts.sheets.empty());
    EXPECT_FALSE(facts.readsElsewhere);
    EXPECT_FALSE(facts.hasFormulas);
}

TEST(FormulaFactsTest, NamesAreReadToo)
{
    std::string name;
    AppendRecord(name, RecordType::Name, "\0\0\0\1\7\0\0\0\0\0\0\0\0\0\0a"s + "\x3A\5\0rrcc"s);
    const auto facts = ReadFacts(name);
    EXPECT_EQ(facts.sheets, (std::set<std::uint16_t>{5}));
    EXPECT_FALSE(facts.hasFormulas);
}

} // namespace
} // namespace orrery::xls
