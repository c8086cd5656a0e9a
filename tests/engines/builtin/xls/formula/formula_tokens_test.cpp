#include "engines/builtin/xls/formula/formula_tokens.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orrery::xls {
namespace {

using namespace std::string_literals;

/// The ids of the tokens; -1 at the end if the expression cannot be read to its end.
std::vector<int> Ids(std::string_view rgce)
{
    std::vector<int> ids;
    FormulaTokenReader reader(rgce);
    std::size_t end = 0;
    while (const auto token = reader.Next()) {
        EXPECT_EQ(token->begin, end);
        end = token->End();
        ids.push_back(token->id);
    }
    if (!reader.Complete())
        ids.push_back(-1);
    else
        EXPECT_EQ(end, rgce.size());
    return ids;
}

struct WalkCase {
    const char* name;
    std::string rgce;
    std::vector<int> ids;
};
class FormulaWalkTest : public testing::TestWithParam<WalkCase> {};

TEST_P(FormulaWalkTest, ReadsTokenAfterToken)
{
    EXPECT_EQ(Ids(GetParam().rgce), GetParam().ids);
}

TEST_P(FormulaWalkTest, StopsAtATruncatedToken)
{
    const auto& rgce = GetParam().rgce;
    for (std::size_t size = 1; size < rgce.size(); ++size) {
        const auto ids = Ids(rgce.substr(0, size)); // whole tokens of it, or -1 at the end
        for (std::size_t i = 0; i + 1 < ids.size(); ++i)
            EXPECT_EQ(ids[i], GetParam().ids[i]);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Formulas, FormulaWalkTest,
    testing::Values(
        WalkCase{"Nothing", "", {}}, WalkCase{"SharedCell", "\x01\0\0\0\0"s, {0x01}},
        WalkCase{"DataTable", "\x02\0\0\0\0"s, {2}},
        WalkCase{
            "Operators",
            "\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F\x10\x11\x12\x13\x14\x15\x16"s,
            {3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22}},
        WalkCase{"TextOfOneByte", "\x17\x03\0abc\x15"s, {0x17, 0x15}},
        WalkCase{"TextOfTwoBytes",
                 "\x17\x02\x01"
                 "a\0b\0\x15"s,
                 {0x17, 0x15}},
        WalkCase{"EmptyText", "\x17\0\0\x15"s, {0x17, 0x15}},
        WalkCase{"Labels",
                 "\x18\x01....\x18\x0A....\x18\x10....\x18\x1D...."s,
                 {0x18, 0x18, 0x18, 0x18}},
        WalkCase{
            "Attributes",
            "\x19\x01..\x19\x02..\x19\x08..\x19\x10..\x19\x20..\x19\x21..\x19\x40..\x19\x41.."s,
            {0x19, 0x19, 0x19, 0x19, 0x19, 0x19, 0x19, 0x19}},
        WalkCase{"JumpsOfChoose", "\x19\x04\x02\0aabbcc\x16"s, {0x19, 0x16}},
        WalkCase{"Constants", "\x1C\x07\x1D\x01\x1E..\x1F........"s, {0x1C, 0x1D, 0x1E, 0x1F}},
        WalkCase{"ArrayOfEachClass", "\x20.......\x40.......\x60......."s, {0x20, 0x20, 0x20}},
        WalkCase{"Functions",
                 "\x21..\x41..\x61..\x22...\x42...\x62..."s,
                 {0x21, 0x21, 0x21, 0x22, 0x22, 0x22}},
        WalkCase{"NameOfEachClass", "\x23....\x43....\x63...."s, {0x23, 0x23, 0x23}},
        WalkCase{
            "CellsAndAreas", "\x24....\x45........\x6A....\x2B........"s, {0x24, 0x25, 0x2A, 0x2B}},
        WalkCase{"KeptAreas",
                 "\x26......\x47......\x68......\x29..\x15"s,
                 {0x26, 0x27, 0x28, 0x29, 0x15}},
        WalkCase{"RelativeCellsAndAreas", "\x2C....\x4D........"s, {0x2C, 0x2D}},
        WalkCase{"OtherSheets",
                 "\x3A......\x5B..........\x7C......\x3D.........."s,
                 {0x3A, 0x3B, 0x3C, 0x3D}},
        WalkCase{"ExternName", "\x39......\x59......\x79......"s, {0x39, 0x39, 0x39}}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(FormulaWalkTest, StopsAtAnUnknownToken)
{
    for (const auto& unknown :
         {"\0"s, "\x1A......."s, "\x1B......."s, "\x18\x04...."s, "\x18\x19...."s, "\x19\0.."s,
          "\x19\x03.."s, "\x2E.."s, "\x30...."s, "\x38...."s, "\x3E.."s, "\x3F.."s, "\x5E.."s,
          "\x80"s, "\xC4...."s, "\xFF"s})
        EXPECT_EQ(Ids("\x15"s + unknown + "\x15"), (std::vector{0x15, -1}));
}

TEST(FormulaWalkTest, AJumpTableMustFit)
{
    EXPECT_EQ(Ids("\x19\x04\xFF\xFF..."s), std::vector{-1});
    EXPECT_EQ(Ids("\x17\xFF\x01..."s), std::vector{-1});
}

FormulaToken First(std::string_view rgce)
{
    return FormulaTokenReader(rgce).Next().value();
}

struct UseCase {
    const char* name;
    std::string rgce; ///< the token is its second one
    FormulaUse::Kind kind;
    std::size_t sheetAt;
    std::size_t nameAt;
};
class FormulaUseTest : public testing::TestWithParam<UseCase> {};
TEST_P(FormulaUseTest, FindsTheIndexes)
{
    FormulaTokenReader reader(GetParam().rgce);
    EXPECT_FALSE(UseOf(*reader.Next()));
    const auto use = UseOf(*reader.Next());
    ASSERT_TRUE(use);
    EXPECT_EQ(use->kind, GetParam().kind);
    EXPECT_EQ(use->sheetAt, GetParam().sheetAt);
    EXPECT_EQ(use->nameAt, GetParam().nameAt);
}
INSTANTIATE_TEST_SUITE_P(
    Tokens, FormulaUseTest,
    testing::Values(
        UseCase{"Cell", "\x1E\1\0\x3A\5\0...."s, FormulaUse::Kind::Sheet, 4, 0},
        UseCase{"Area", "\x1E\1\0\x7B\5\0........"s, FormulaUse::Kind::Sheet, 4, 0},
        UseCase{"DeletedCell", "\x1E\1\0\x5C\5\0...."s, FormulaUse::Kind::Sheet, 4, 0},
        UseCase{"DeletedArea", "\x1E\1\0\x3D\5\0........"s, FormulaUse::Kind::Sheet, 4, 0},
        UseCase{"Name", "\x1E\1\0\x43\7\0\0\0"s, FormulaUse::Kind::Name, 0, 4},
        UseCase{"ExternName", "\x1E\1\0\x39\5\0\7\0\0\0"s, FormulaUse::Kind::ExternName, 4, 6}),
    [](const auto& test) { return std::string(test.param.name); });

struct VolatileCase {
    const char* name;
    std::string rgce;
    bool restless;
};
class VolatileTest : public testing::TestWithParam<VolatileCase> {};
TEST_P(VolatileTest, KnowsFunctionsThatReadAnything)
{
    EXPECT_EQ(IsVolatile(GetParam().rgce, First(GetParam().rgce)), GetParam().restless);
}
INSTANTIATE_TEST_SUITE_P(Tokens, VolatileTest,
                         testing::Values(VolatileCase{"Rand", "\x41\x3F\0"s, true},
                                         VolatileCase{"Now", "\x41\x4A\0"s, true},
                                         VolatileCase{"Offset", "\x22\x03\x4E\0"s, true},
                                         VolatileCase{"Cell", "\x42\x02\x7D\0"s, true},
                                         VolatileCase{"Indirect", "\x22\x01\x94\0"s, true},
                                         VolatileCase{"Today", "\x41\xDD\0"s, true},
                                         VolatileCase{"Info", "\x41\xF4\0"s, true},
                                         VolatileCase{"GetPivotData", "\x42\x02\x66\x01"s, true},
                                         VolatileCase{"Sum", "\x42\x3F\x04\0"s, false},
                                         VolatileCase{"Date", "\x41\x41\0"s, false},
                                         VolatileCase{"UserDefined", "\x42\x02\xFF\0"s, false},
                                         VolatileCase{"VolatileMark", "\x19\x01\0\0"s, true},
                                         VolatileCase{"VolatileBlanks", "\x19\x41\0\1"s, true},
                                         VolatileCase{"Blanks", "\x19\x40\0\1"s, false},
                                         VolatileCase{"Number", "\x1E\x3F\0"s, false}),
                         [](const auto& test) { return std::string(test.param.name); });

} // namespace
} // namespace orrery::xls
