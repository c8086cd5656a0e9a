#include "engines/builtin/xls/formula_text/formula_text.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/formula_text/formula_parts.h"

#include "xls/stream_builder.h"

#include <chrono>
#include <gtest/gtest.h>
#include <random>

namespace orrery::xls {
namespace {

using namespace std::string_literals;
using namespace test;

class FormulaTextTest : public testing::Test {
protected:
    std::optional<std::string> TextOf(std::string_view tokens, std::string_view extra = {},
                                      book::CellAddress cell = {1, 1}) const
    {
        return FormulaText(tokens, extra, {names_, cell});
    }

private:
    std::string stream_ = BofOf(5) + BoundSheetOf("Plan", 500) + BoundSheetOf("My plan", 600) +
                          OwnBookOf(2) + RecordOf(RecordType::SupBook, Numbers({1, 0x3A01})) +
                          RecordOf(RecordType::ExternName, Numbers({0, 0, 0}) + "\x05\0EDATE"s) +
                          ExternSheetOf({0, 1, 1, 1, 0xFFFE, 0xFFFE, 0, 0xFFFF, 0xFFFF}) +
                          NameOf("Rate", 0, "") + EofRecord();
    Globals globals_{stream_};
    FormulaNames names_{globals_};
};

const std::string kOne = "\x1E\x01\0"s;
const std::string kTwo = "\x1E\x02\0"s;
const std::string kThree = "\x1E\x03\0"s;
const std::string kA1 = "\x44\0\0\0\xC0"s;
const std::string kB2 = "\x44\x01\0\x01\0"s;

struct FormulaCase {
    const char* name;
    std::string tokens;
    const char* text;
};
class FormulaTokensTest : public FormulaTextTest,
                          public testing::WithParamInterface<FormulaCase> {};

TEST_P(FormulaTokensTest, ReadAsInExcel)
{
    EXPECT_EQ(TextOf(GetParam().tokens), GetParam().text);
}

TEST_P(FormulaTokensTest, TellNothingIfCut)
{
    const std::string& tokens = GetParam().tokens;
    for (std::size_t size = 0; size < tokens.size(); ++size)
        EXPECT_NE(TextOf(tokens.substr(0, size)), GetParam().text) << size;
}

INSTANTIATE_TEST_SUITE_P(
    Values, FormulaTokensTest,
    testing::Values(FormulaCase{"WholeNumber", kThree, "3"},
                    FormulaCase{"Number", "\x1F\0\0\0\0\0\0\xF8\x3F"s, "1.5"},
                    FormulaCase{"Text", "\x17\x03\0a\"b"s, "\"a\"\"b\""},
                    FormulaCase{"WideText", "\x17\x01\x01\xE5\x65"s, "\"\xE6\x97\xA5\""},
                    FormulaCase{"True", "\x1D\x01"s, "TRUE"},
                    FormulaCase{"Error", "\x1C\x07"s, "#DIV/0!"}, FormulaCase{"Cell", kA1, "A1"},
                    FormulaCase{"Area", "\x25\0\0\x09\0\0\0\0\0"s, "$A$1:$A$10"},
                    FormulaCase{"DeletedCell", "\x4A\0\0\0\0"s, "#REF!"},
                    FormulaCase{"SheetCell", "\x5A\0\0\x02\0\0\xC0"s, "'My plan'!A3"},
                    FormulaCase{"SheetArea", "\x3B\0\0\0\0\x02\0\0\xC0\x01\xC0"s,
                                "'My plan'!A1:B3"},
                    FormulaCase{"CellOfADeletedSheet", "\x3A\x02\0\0\0\0\xC0"s, "#REF!A1"},
                    FormulaCase{"DeletedCellOfASheet", "\x3C\0\0\0\0\0\0"s, "'My plan'!#REF!"},
                    FormulaCase{"DeletedCellOfADeletedSheet", "\x3C\x02\0\0\0\0\0"s, "#REF!"},
                    FormulaCase{"Name", "\x23\x01\0\0\0"s, "Rate"}),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Operators, FormulaTokensTest,
    testing::Values(FormulaCase{"Arithmetic", kOne + kTwo + "\x03" + kThree + "\x04", "1+2-3"},
                    FormulaCase{"Products", kOne + kTwo + "\x05" + kThree + "\x06", "1*2/3"},
                    FormulaCase{"Power", kTwo + "\x13" + kTwo + "\x07", "-2^2"},
                    FormulaCase{"Percent", kTwo + "\x14", "2%"},
                    FormulaCase{"Plus", kTwo + "\x12", "+2"},
                    FormulaCase{"Text", kOne + kTwo + "\x08", "1&2"},
                    FormulaCase{"Less", kOne + kTwo + "\x09", "1<2"},
                    FormulaCase{"AtMost", kOne + kTwo + "\x0A", "1<=2"},
                    FormulaCase{"Equal", kOne + kTwo + "\x0B", "1=2"},
                    FormulaCase{"AtLeast", kOne + kTwo + "\x0C", "1>=2"},
                    FormulaCase{"Greater", kOne + kTwo + "\x0D", "1>2"},
                    FormulaCase{"NotEqual", kOne + kTwo + "\x0E", "1<>2"},
                    FormulaCase{"Intersection", kA1 + kB2 + "\x0F", "A1 $B$2"},
                    FormulaCase{"Union", kA1 + kB2 + "\x10", "A1,$B$2"},
                    FormulaCase{"Range", kA1 + kB2 + "\x11", "A1:$B$2"},
                    FormulaCase{"Parentheses", kOne + kTwo + "\x03\x15" + kThree + "\x05",
                                "(1+2)*3"},
                    FormulaCase{"NeedlessParentheses", kOne + "\x15\x15", "((1))"},
                    FormulaCase{"MemoryFunction", "\x29\x0B\0"s + kA1 + kB2 + "\x11", "A1:$B$2"}),
    [](const auto& row) { return std::string(row.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Functions, FormulaTokensTest,
    testing::Values(
        FormulaCase{"Fixed", kOne + "\x41\x20\0"s, "LEN(1)"},
        FormulaCase{"None", "\x21\xDD\0"s, "TODAY()"},
        FormulaCase{"Variable", kOne + kTwo + "\x42\x02\x04\0"s, "SUM(1,2)"},
        FormulaCase{"SumOfOne", kA1 + "\x19\x10\0\0"s, "SUM(A1)"},
        FormulaCase{"MissingArgument", kA1 + "\x16" + kTwo + "\x42\x03\x01\0"s, "IF(A1,,2)"},
        FormulaCase{"If",
                    kA1 + "\x19\x02\x08\0"s + kOne + "\x19\x08\x03\0"s + kTwo + "\x42\x03\x01\0"s,
                    "IF(A1,1,2)"},
        FormulaCase{"Volatile", "\x19\x01\0\0\x21\x4A\0"s, "NOW()"},
        FormulaCase{"Blanks", "\x19\x40\0\x02"s + kOne, "1"},
        FormulaCase{"AddIn",
                    "\x39\x01\0\x01\0\0\0\0\0"s.substr(0, 7) + kA1 + kOne + "\x42\x03\xFF\0"s,
                    "EDATE(A1,1)"},
        FormulaCase{"UserDefined", "\x23\x01\0\0\0"s + "\x42\x01\xFF\0"s, "Rate()"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(FormulaTextTest, CountsSharedReferencesFromTheCell)
{
    const auto tokens = "\x4C\xFF\xFF\0\xC0"s; // the cell above
    EXPECT_EQ(TextOf(tokens, {}, {7, 3}), "C6");
    EXPECT_EQ(TextOf("\x2D\0\0\x01\0\xFF\xC0\0\xC0"s, {}, {7, 3}), "B7:C8");
    EXPECT_EQ(TextOf(kA1, {}, {7, 3}), "A1");
}

TEST_F(FormulaTextTest, TakesArraysFromTheDataBehindTheTokens)
{
    const auto array = "\x60\0\0\0\0\0\0\0"s;
    const auto one = "\0\0\0\x01\0\0\0\0\0\0\xF0\x3F"s;
    const auto text = "\0\0\0\x02\x01\0\0z"s;
    EXPECT_EQ(TextOf(array + array + "\x42\x02\x04\0"s, one + text), "SUM({1},{\"z\"})");
    EXPECT_EQ(TextOf(array, {}), std::nullopt);
    // What a range remembered comes before it.
    EXPECT_EQ(
        TextOf("\x26\0\0\0\0\x05\0"s + kA1 + array + "\x42\x02\x04\0"s, "\x01\0........"s + one),
        "SUM(A1,{1})");
}

TEST_F(FormulaTextTest, TellsNothingOfWhatItCannotRead)
{
    EXPECT_EQ(TextOf(""), std::nullopt);
    EXPECT_EQ(TextOf(kOne + kTwo), std::nullopt) << "two operands";
    EXPECT_EQ(TextOf("\x03"), std::nullopt) << "no operands";
    EXPECT_EQ(TextOf("\x01\0\0\0\0"s), std::nullopt) << "a shared formula";
    EXPECT_EQ(TextOf("\x02\0\0\0\0"s), std::nullopt) << "a data table";
    EXPECT_EQ(TextOf("\x18\x01...."s), std::nullopt) << "a label";
    EXPECT_EQ(TextOf("\x21\xDE\xAD"), std::nullopt) << "no such function";
    EXPECT_EQ(TextOf("\x22\0\x05\x80"s), std::nullopt) << "a command of macros";
    EXPECT_EQ(TextOf("\x1C\x05"), std::nullopt) << "no such error";
    EXPECT_EQ(TextOf("\x23\x02\0\0\0"s), std::nullopt) << "no such name";
    EXPECT_EQ(TextOf("\x3A\x09\0\0\0\0\0"s), std::nullopt) << "no such link";
    EXPECT_EQ(TextOf("\x7F"), std::nullopt);
}

TEST_F(FormulaTextTest, IsFastForDeepNesting)
{
    constexpr std::size_t kMost = 8000;
    std::string nested;
    for (std::size_t i = 0; i < kMost; ++i)
        nested += kOne;
    nested += std::string(kMost - 1, '\x04');
    const auto text = TextOf(nested);
    ASSERT_TRUE(text);
    EXPECT_EQ(text->substr(0, 9), "1-(1-(1-(");
    EXPECT_EQ(TextOf(kOne + std::string(65535, '\x15')), std::nullopt) << "too long";
}

TEST_F(FormulaTextTest, NeverThrowsForRandomBytes)
{
    std::mt19937 random(17); // NOLINT: the same bytes each time
    for (int i = 0; i < 20000; ++i) {
        std::string bytes(random() % 40, '\0');
        for (char& c : bytes)
            c = static_cast<char>(random() % 3 == 0 ? random() % 256 : random() % 0x40);
        const auto text = TextOf(bytes, bytes);
        EXPECT_TRUE(!text || text->size() <= FormulaParts::kLongest);
    }
}

} // namespace
} // namespace orrery::xls
