#include "engines/builtin/xls/formula_text/formula_parts.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

/// The operands "a", "b", "c".
FormulaParts Operands()
{
    FormulaParts parts;
    for (const char* name : {"a", "b", "c"})
        parts.Add(name);
    return parts;
}

TEST(FormulaPartsTest, AddsParenthesesWhereTheOrderNeedsThem)
{
    auto parts = Operands();
    parts.Join("-", Binding::Sum);
    parts.Join("-", Binding::Sum);
    EXPECT_EQ(parts.Take(), "a-(b-c)");

    parts = Operands();
    parts.Join("+", Binding::Sum);
    parts.Join("*", Binding::Product);
    EXPECT_EQ(parts.Take(), "a*(b+c)");

    parts = Operands();
    parts.Join("*", Binding::Product);
    parts.Join("+", Binding::Sum);
    EXPECT_EQ(parts.Take(), "a+b*c");
}

TEST(FormulaPartsTest, PutsSignsBeforePowers)
{
    FormulaParts parts;
    parts.Add("a");
    parts.PutBefore("-", Binding::Sign);
    parts.Add("b");
    parts.PutBefore("-", Binding::Sign);
    parts.Join("^", Binding::Power); // (-a)^(-b) as Excel reads it
    EXPECT_EQ(parts.Take(), "-a^-b");
    parts.PutBefore("-", Binding::Sign);
    EXPECT_EQ(parts.Take(), "-(-a^-b)");
    parts.PutAfter("%", Binding::Percent);
    EXPECT_EQ(parts.Take(), "-(-a^-b)%");
}

TEST(FormulaPartsTest, KeepsUnionsApartFromArguments)
{
    auto parts = Operands();
    parts.Join(",", Binding::Union);
    parts.Call("SUM", 2);
    EXPECT_EQ(parts.Take(), "SUM(a,(b,c))");
}

TEST(FormulaPartsTest, CallsByNameOrByTheFirstOperand)
{
    auto parts = Operands();
    EXPECT_TRUE(parts.Call({}, 3));
    EXPECT_EQ(parts.Take(), "a(b,c)");
    EXPECT_TRUE(parts.Call("NOW", 0));
    EXPECT_EQ(parts.Take(), std::nullopt); // two operands
    EXPECT_TRUE(parts.Join("=", Binding::Comparison));
    EXPECT_EQ(parts.Take(), "a(b,c)=NOW()");
}

TEST(FormulaPartsTest, RefusesWhatLacksOperands)
{
    FormulaParts parts;
    EXPECT_FALSE(parts.PutBefore("-", Binding::Sign));
    EXPECT_FALSE(parts.PutAfter("%", Binding::Percent));
    EXPECT_FALSE(parts.Enclose());
    EXPECT_FALSE(parts.Call({}, 0));
    EXPECT_FALSE(parts.Call("SUM", 1));
    parts.Add("a");
    EXPECT_FALSE(parts.Join("+", Binding::Sum));
    EXPECT_EQ(parts.Take(), "a");
}

TEST(FormulaPartsTest, StopsAtTheLongestText)
{
    FormulaParts parts;
    EXPECT_TRUE(parts.Add(std::string(FormulaParts::kLongest - 1, 'a')));
    EXPECT_TRUE(parts.PutAfter("%", Binding::Percent));
    EXPECT_FALSE(parts.PutAfter("%", Binding::Percent));
}

TEST(FormulaPartsTest, JoinsDeeplyNestedOperandsInOrder)
{
    constexpr int kDepth = 8000;
    FormulaParts parts;
    for (int i = 0; i <= kDepth; ++i)
        parts.Add("a");
    for (int i = 0; i < kDepth; ++i)
        ASSERT_TRUE(parts.Join("^", Binding::Range)) << i;
    const auto text = parts.Take();
    ASSERT_TRUE(text);
    EXPECT_EQ(text->substr(0, 9), "a^(a^(a^(");
    EXPECT_TRUE(text->ends_with("a^a" + std::string(kDepth - 1, ')')));
}

} // namespace
} // namespace orrery::xls
