#include "holidays/language/rule_set.h"

#include "holidays/error.h"
#include "holidays/files/rule_reader.h"
#include "rules_test.h"
#include "util/error_text.h"

#include <gmock/gmock.h>

namespace orrery::holidays {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The sentences about the lines that are not read.
std::vector<std::string> ProblemsOf(std::string_view text, HolidayList& list)
{
    RuleReader reader(list);
    std::size_t number = 0;
    for (const std::string_view line : util::SplitLines(text))
        reader.Read(++number, line);
    std::vector<std::string> problems;
    for (const LineProblem& problem : reader.TakeProblems())
        problems.push_back(DescribeProblem(problem));
    return problems;
}

TEST(IsExtraLine, LeavesComments)
{
    for (const char* const line :
         {"> years 2006-", ">> if Sun also next day", ">", "# Weekend: Fri Sat", "#weekend:Fri",
          "1123,WED BEFORE,x", "1 Nisan,HEBREW,x", "1101,SAT ON AFTER,x", "x,ISLAMIC,y"})
        EXPECT_TRUE(IsExtraLine(line)) << line;
    for (const char* const line :
         {"# United States: federal holidays", "# Source: a, b, c", "Hello, world, again",
          "0704,OFF,x", "1123,WED BEFORE", "", "2, HOLIDAY, x", "# 1123,WED BEFORE,x"})
        EXPECT_FALSE(IsExtraLine(line)) << line;
}

TEST(RuleSetBuilder, RefinementsBelongToTheRuleAbove)
{
    const RuleSet set = testing_support::SetOf(">> kind bank\n"
                                               "0101,DAY,a\n"
                                               "a comment\n"
                                               "> days 2\n"
                                               "> born 1984\n"
                                               "0102,FIXED,b\n"
                                               ">>\n"
                                               "0103,DAY,c\n");
    ASSERT_EQ(set.rules.size(), 3U);
    EXPECT_EQ(set.rules[0].refinements.days, 2);
    EXPECT_EQ(set.rules[0].refinements.born, 1984);
    EXPECT_EQ(set.rules[0].refinements.category, Category::Bank);
    EXPECT_EQ(set.rules[1].refinements.days, 1);
    EXPECT_EQ(set.rules[1].refinements.category, Category::Bank);
    EXPECT_EQ(set.rules[2].refinements, Refinements());
}

TEST(RuleSetBuilder, ALineThatIsNotUnderstoodAddsNothing)
{
    HolidayList list;
    EXPECT_THAT(ProblemsOf("> years 2006-\n"
                           "0101,DAY,a\n"
                           "> days 2; days many\n"
                           "1101,SAT ON AFTER,b\n"
                           "# Weekend: Freitag\n"
                           "> days 3\n",
                           list),
                ElementsAre("Line 1: \"years 2006-\" has no holiday above it that it could refine.",
                            "Line 3: \"days many\" is not understood. Write it like: days 3.",
                            "Line 4: The kind \"SAT ON AFTER\" is not known. Did you mean "
                            "\"SAT ON OR AFTER\"?",
                            "Line 5: \"# Weekend: Freitag\" is not understood. Write weekdays "
                            "behind it, such as Fri Sat."));
    ASSERT_EQ(list.Extras().size(), 1U);
    EXPECT_EQ(list.Extras()[0], (ExtraLine{1, "> days 3"}));
    const RuleSet set = RulesOf(list);
    ASSERT_EQ(set.rules.size(), 1U);
    EXPECT_EQ(set.rules[0].refinements.days, 3);
}

TEST(RulesOf, KeepsTheOrderOfLines)
{
    HolidayList list;
    EXPECT_THAT(ProblemsOf("# Observed: {name}*\n0101,DAY,a\n0105,FIXED,b\n> days 2\n0102,DAY,c\n"
                           "0229,LEAP DAY, d",
                           list),
                IsEmpty());
    const RuleSet set = RulesOf(list);
    std::vector<std::string> names;
    for (const Rule& rule : set.rules)
        names.push_back(rule.name);
    EXPECT_THAT(names, ElementsAre("a", "b", "c", " d"));
    EXPECT_EQ(set.rules[1].refinements.days, 2);
    EXPECT_EQ(set.observed, "{name}*");
}

TEST(RuleReader, ExtraLinesHaveALimit)
{
    HolidayList list;
    std::string text = "0101,DAY,a\n";
    for (std::size_t i = 0; i < HolidayList::kExtraCapacity + 2; ++i)
        text += "> kind bank\n";
    EXPECT_THAT(ProblemsOf(text, list),
                ElementsAre("Line 8202: There are more than 8,200 lines that refine holidays. "
                            "Those from this line on are not read."));
    EXPECT_EQ(list.Extras().size(), HolidayList::kExtraCapacity);
}

} // namespace
} // namespace orrery::holidays
