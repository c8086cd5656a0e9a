#include "engines/builtin/xlsx/formula/formula.h"
#include "engines/builtin/xlsx/formula/formula_lexer.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>

namespace orrery::xlsx {
namespace {

/// Makes formulas from a small grammar; the same ones in every run.
class RandomFormula {
public:
    explicit RandomFormula(unsigned seed) : random_(seed) {}

    std::string Expression(int depth = 0)
    {
        switch (depth > 3 ? 0 : Below(7)) {
        case 0:
        case 1:
            return Operand();
        case 2:
            return Function() + "(" + Expression(depth + 1) + "," + Expression(depth + 1) + ")";
        case 3:
            return "(" + Expression(depth + 1) + ")";
        case 4:
            return Expression(depth + 1) + "%";
        default:
            return Expression(depth + 1) + Operator() + Expression(depth + 1);
        }
    }

private:
    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    template <std::size_t N> std::string One(const std::array<const char*, N>& choices)
    {
        return choices[static_cast<std::size_t>(Below(static_cast<int>(N)))];
    }
    std::string Operator() { return One<8>({"+", "-", "*", "/", "^", "&", "<>", " "}); }
    std::string Function()
    {
        return One<6>({"SUM", "LOG10", "DEC2BIN", "_xlfn.XLOOKUP", "ATAN2", "A1"});
    }
    // Far from the edges, so that nothing wraps.
    std::string Cell()
    {
        return One<2>({"", "$"}) + One<4>({"M", "AZ", "KLM", "ZZ"}) + One<2>({"", "$"}) +
               std::to_string(100 + Below(1000000));
    }
    std::string Operand()
    {
        switch (Below(8)) {
        case 0:
            return Prefix() + Cell();
        case 1:
            return Prefix() + Cell() + ":" + Cell();
        case 2:
            return Prefix() + "M:$ZZ";
        case 3:
            return Prefix() + "$100:200";
        case 4:
            return One<4>({R"("a""b!A1")", R"("")", R"("[1]x")", R"("'")"});
        case 5:
            return One<4>({"1", "2.5", "1E+5", "TRUE"});
        case 6:
            return One<5>({"#REF!", "#N/A", "#NAME?", "Sheet1!#REF!", "#DIV/0!"});
        default:
            return One<6>({"Table1[[#This Row],[Col'[x]]", "Total", "my.name", "{1,\"x;y\";2}",
                           "[0]!Total", "'C:\\d\\[b.xlsx]S'!A$1"});
        }
    }
    std::string Prefix()
    {
        return One<9>({"", "", "", "Desk!", "'It''s'!", "Jan:Dec!", "'A b:C d'!", "[1]Desk!",
                       "'[1]My Desk'!"});
    }

    std::mt19937 random_;
};

class FormulaPropertiesTest : public testing::TestWithParam<unsigned> {
protected:
    /// Calls `check` with many formulas.
    template <typename Check> void ForFormulas(Check check)
    {
        RandomFormula formulas(GetParam());
        for (int i = 0; i < 2000; ++i)
            check(formulas.Expression());
    }
};

TEST_P(FormulaPropertiesTest, TokensAreTheWholeText)
{
    ForFormulas([](const std::string& formula) {
        std::string joined;
        FormulaLexer lexer(formula);
        while (const auto token = lexer.Next()) {
            ASSERT_EQ(token->begin, joined.size());
            joined += lexer.TextOf(*token);
        }
        ASSERT_EQ(joined, formula);
    });
}

TEST_P(FormulaPropertiesTest, RenamingToItselfChangesNothing)
{
    const auto same = [](std::string_view name) { return std::optional(std::string(name)); };
    ForFormulas([&](const std::string& formula) {
        ASSERT_FALSE(RenameInFormula(formula, same, TableNames())) << formula;
    });
}

TEST_P(FormulaPropertiesTest, RenamingTwiceRoundTrips)
{
    const auto longer = [](std::string_view name) { return std::string(name) + " it's"; };
    const auto shorter = [](std::string_view name) {
        return std::string(name.substr(0, name.size() - 5));
    };
    ForFormulas([&](const std::string& formula) {
        const auto there = RenameInFormula(formula, longer, {});
        if (there) {
            ASSERT_EQ(RenameInFormula(*there, shorter, {}), formula) << *there;
        }
    });
}

TEST_P(FormulaPropertiesTest, NotMovingChangesNothing)
{
    ForFormulas([](const std::string& formula) { ASSERT_EQ(MoveFormula(formula, 0, 0), formula); });
}

TEST_P(FormulaPropertiesTest, MovingBackRestoresTheFormula)
{
    ForFormulas([](const std::string& formula) {
        const std::string moved = MoveFormula(formula, 99, -12);
        ASSERT_EQ(MoveFormula(moved, -99, 12), formula) << moved;
    });
}

INSTANTIATE_TEST_SUITE_P(Seeds, FormulaPropertiesTest, testing::Values(1U, 2U, 3U));

// Damaged files may contain any text made of these pieces; all of it must be read.
TEST(FormulaRobustnessTest, AnyTextIsReadToItsEnd)
{
    constexpr std::array<const char*, 16> kPieces = {"'", "\"", "[", "]", "!", ":", "#", "$",
                                                     "A", "1",  "(", ".", " ", "é", "0", "#N/"};
    std::mt19937 random(7);
    const auto other = [](std::string_view name) { return std::string(name) + "x"; };
    TableNames tables;
    tables.Set("A", {"Ax", {{0, "y"}}, {{"B", "y"}}, {}});
    for (int i = 0; i < 50000; ++i) {
        std::string text;
        for (auto length = random() % 12; length > 0; --length)
            text += kPieces[random() % kPieces.size()];
        std::size_t size = 0;
        FormulaLexer lexer(text);
        while (const auto token = lexer.Next()) {
            ASSERT_LT(token->begin, token->end) << text;
            size += token->end - token->begin;
        }
        ASSERT_EQ(size, text.size()) << text;
        ASSERT_EQ(MoveFormula(text, 0, 0), text);
        RenameInFormula(text, other, tables);
    }
}

} // namespace
} // namespace orrery::xlsx
