#include "look/conditions/sheet_conditions.h"

#include "look/evaluate/fake_workbook.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace orrery::look {
namespace {

using book::Color;
using book::ConditionKind;
using PointKind = book::ScalePoint::Kind;

constexpr Color kRed{255, 0, 0};
constexpr Color kGreen{0, 255, 0};
constexpr double kNow = 46349.5; // Monday, 2026-11-23

book::ConditionalRule RuleOf(ConditionKind kind, std::vector<std::string> formulas = {})
{
    book::ConditionalRule rule;
    rule.kind = kind;
    rule.formulas = std::move(formulas);
    rule.style.bold = true;
    return rule;
}

/// A sheet whose cells A1, A2 ... hold the values.
class SheetConditionsTest : public testing::Test {
protected:
    void SetColumn(const std::vector<book::CellContent>& values)
    {
        std::int32_t row = 0;
        for (const auto& value : values)
            workbook_.Set({++row, 1}, value);
        rows_ = row;
    }
    void Add(book::ConditionalRule rule, std::vector<book::CellRange> ranges = {{{1, 1}, {99, 1}}})
    {
        workbook_.Look().conditions.push_back({std::move(ranges), {std::move(rule)}});
    }
    ConditionDisplay Show(book::CellAddress cell)
    {
        Evaluator evaluator(workbook_, kNow);
        return SheetConditions(evaluator, workbook_.Sheet(0), 0).Display(cell);
    }
    /// One letter for each cell of column A: x where the rule holds.
    std::string Pattern()
    {
        Evaluator evaluator(workbook_, kNow);
        SheetConditions conditions(evaluator, workbook_.Sheet(0), 0);
        std::string pattern;
        for (std::int32_t row = 1; row <= rows_; ++row)
            pattern += conditions.Display({row, 1}).style.bold ? 'x' : '.';
        return pattern;
    }
    std::string PatternOf(book::ConditionalRule rule)
    {
        workbook_.Look().conditions.clear();
        Add(std::move(rule));
        return Pattern();
    }

    FakeWorkbook workbook_;
    std::int32_t rows_ = 0;
};

TEST_F(SheetConditionsTest, ExpressionsMoveWithTheCell)
{
    SetColumn({1.0, 5.0, std::string("x"), true});
    EXPECT_EQ(PatternOf(RuleOf(ConditionKind::Expression, {"A1>3"})), ".xxx");
    EXPECT_EQ(PatternOf(RuleOf(ConditionKind::Expression, {"$A$2>3"})), "xxxx");
    EXPECT_EQ(PatternOf(RuleOf(ConditionKind::Expression, {"A1"})), "xx.x");
    EXPECT_EQ(PatternOf(RuleOf(ConditionKind::Expression, {"UNKNOWN(A1)"})), "....");
    EXPECT_EQ(PatternOf(RuleOf(ConditionKind::Expression, {"1+"})), "....");
}

TEST_F(SheetConditionsTest, ExpressionsAreWrittenForTheCornerOfAllRanges)
{
    SetColumn({0.0, 0.0, 1.0});
    workbook_.Set({1, 3}, 1.0);
    // The corner of both ranges is A1, although no range has it.
    Add(RuleOf(ConditionKind::Expression, {"A1=1"}), {{{1, 3}, {1, 3}}, {{2, 1}, {3, 1}}});
    EXPECT_TRUE(Show({1, 3}).style.bold.has_value());
    EXPECT_FALSE(Show({2, 1}).style.bold.has_value());
    EXPECT_TRUE(Show({3, 1}).style.bold.has_value());
    EXPECT_FALSE(Show({1, 1}).style.bold.has_value());
}

TEST_F(SheetConditionsTest, ComparesValues)
{
    using Operator = book::ComparisonOperator;
    SetColumn({1.0, 2.0, 3.0, std::string("b"), book::CellError::Value, std::monostate()});
    const auto pattern = [this](Operator comparison, std::vector<std::string> formulas) {
        auto rule = RuleOf(ConditionKind::CellIs, std::move(formulas));
        rule.comparison = comparison;
        return PatternOf(std::move(rule));
    };
    EXPECT_EQ(pattern(Operator::Equal, {"2"}), ".x....");
    EXPECT_EQ(pattern(Operator::NotEqual, {"2"}), "x.xx.x");
    EXPECT_EQ(pattern(Operator::GreaterThan, {"2"}), "..xx..");
    EXPECT_EQ(pattern(Operator::LessThan, {"2"}), "x....x");
    EXPECT_EQ(pattern(Operator::LessOrEqual, {"2"}), "xx...x");
    EXPECT_EQ(pattern(Operator::GreaterOrEqual, {"2"}), ".xxx..");
    EXPECT_EQ(pattern(Operator::Between, {"3", "2"}), ".xx...");
    EXPECT_EQ(pattern(Operator::NotBetween, {"2", "3"}), "x..x.x");
    EXPECT_EQ(pattern(Operator::Equal, {"\"B\""}), "...x..");
    EXPECT_EQ(pattern(Operator::Between, {"2"}), "......");
}

TEST_F(SheetConditionsTest, LooksForTextsBlanksAndErrors)
{
    SetColumn({std::string("Calendar"), std::string("  "), book::CellError::Number,
               std::monostate(), 12.0});
    const auto text = [this](ConditionKind kind, const char* wanted) {
        auto rule = RuleOf(kind);
        rule.text = wanted;
        return PatternOf(std::move(rule));
    };
    EXPECT_EQ(text(ConditionKind::ContainsText, "END"), "x....");
    EXPECT_EQ(text(ConditionKind::NotContainsText, "end"), ".xxxx");
    EXPECT_EQ(text(ConditionKind::BeginsWith, "1"), "....x");
    EXPECT_EQ(text(ConditionKind::EndsWith, "AR"), "x....");
    EXPECT_EQ(PatternOf(RuleOf(ConditionKind::ContainsBlanks)), ".x.x.");
    EXPECT_EQ(PatternOf(RuleOf(ConditionKind::NotContainsBlanks)), "x.x.x");
    EXPECT_EQ(PatternOf(RuleOf(ConditionKind::ContainsErrors)), "..x..");
    EXPECT_EQ(PatternOf(RuleOf(ConditionKind::NotContainsErrors)), "xx.xx");
    EXPECT_EQ(PatternOf(RuleOf(ConditionKind::ContainsText, {"NOT(ISERROR(SEARCH(\"lend\",A1)))"})),
              "x....");
}

TEST_F(SheetConditionsTest, CountsValues)
{
    SetColumn({1.0, 2.0, 1.0, std::string("a"), std::string("A"), std::monostate(), true});
    EXPECT_EQ(PatternOf(RuleOf(ConditionKind::DuplicateValues)), "x.xxx..");
    EXPECT_EQ(PatternOf(RuleOf(ConditionKind::UniqueValues)), ".x....x");
}

TEST_F(SheetConditionsTest, FindsFirstAndLast)
{
    SetColumn({1.0, 2.0, 3.0, 4.0, 4.0, std::string("x")});
    auto rule = RuleOf(ConditionKind::Top10);
    rule.rank = 1;
    EXPECT_EQ(PatternOf(rule), "...xx.");
    rule.isBottom = true;
    rule.rank = 2;
    EXPECT_EQ(PatternOf(rule), "xx....");
    rule.isPercent = true; // a fifth and a half of five is one
    rule.rank = 30;
    EXPECT_EQ(PatternOf(rule), "x.....");
    rule.rank = 1'000'000;
    EXPECT_EQ(PatternOf(rule), "xxxxx.");
}

TEST_F(SheetConditionsTest, ComparesWithTheAverage)
{
    SetColumn({2.0, 4.0, 4.0, 4.0, 5.0, 5.0, 7.0, 9.0}); // mean 5, deviation 2
    auto rule = RuleOf(ConditionKind::AboveAverage);
    EXPECT_EQ(PatternOf(rule), "......xx");
    rule.includesEqual = true;
    EXPECT_EQ(PatternOf(rule), "....xxxx");
    rule.isBelow = true;
    EXPECT_EQ(PatternOf(rule), "xxxxxx..");
    rule.includesEqual = false;
    rule.isBelow = false;
    rule.deviations = 1;
    EXPECT_EQ(PatternOf(rule), ".......x");
}

TEST_F(SheetConditionsTest, EqualNumbersAreNotAboveTheirAverage)
{
    SetColumn(std::vector<book::CellContent>(10, 1.0)); // 1/10 is no binary fraction
    auto rule = RuleOf(ConditionKind::AboveAverage);
    EXPECT_EQ(PatternOf(rule), "..........");
    rule.isBelow = rule.includesEqual = true;
    EXPECT_EQ(PatternOf(rule), "xxxxxxxxxx");
}

TEST_F(SheetConditionsTest, ReadingTheCellsOfManyRulesEnds)
{
    SetColumn(std::vector<book::CellContent>(99, 1.0));
    for (int i = 0; i < 50; ++i)
        Add(RuleOf(ConditionKind::DuplicateValues));
    EvaluationLimits limits;
    limits.steps = 10'000;
    Evaluator evaluator(workbook_, kNow, limits);
    SheetConditions(evaluator, workbook_.Sheet(0), 0).Display({1, 1});
    EXPECT_TRUE(evaluator.HasReachedLimit());
}

TEST_F(SheetConditionsTest, RulesWithoutFormulasCountAsSteps)
{
    SetColumn({1.0});
    for (int i = 0; i < 3'000; ++i)
        Add(RuleOf(ConditionKind::ContainsErrors));
    EvaluationLimits limits;
    limits.steps = 2'000;
    Evaluator evaluator(workbook_, kNow, limits);
    SheetConditions(evaluator, workbook_.Sheet(0), 0).Display({1, 1});
    EXPECT_TRUE(evaluator.HasReachedLimit());
}

TEST_F(SheetConditionsTest, FindsPeriods)
{
    using Period = book::TimePeriod;
    // Yesterday is a Sunday, which begins this week.
    SetColumn({46349.0, 46348.9, 46350.0, 46347.0, 46342.0, 46356.0, 46326.0, 46357.0});
    const auto pattern = [this](Period period) {
        auto rule = RuleOf(ConditionKind::TimePeriod);
        rule.period = period;
        return PatternOf(std::move(rule));
    };
    EXPECT_EQ(pattern(Period::Today), "x.......");
    EXPECT_EQ(pattern(Period::Yesterday), ".x......");
    EXPECT_EQ(pattern(Period::Tomorrow), "..x.....");
    EXPECT_EQ(pattern(Period::Last7Days), "xx.x....");
    EXPECT_EQ(pattern(Period::ThisWeek), "xxx.....");
    EXPECT_EQ(pattern(Period::LastWeek), "...xx...");
    EXPECT_EQ(pattern(Period::NextWeek), ".....x.x");
    EXPECT_EQ(pattern(Period::ThisMonth), "xxxxxx..");
    EXPECT_EQ(pattern(Period::LastMonth), "......x.");
    EXPECT_EQ(pattern(Period::NextMonth), ".......x");
}

TEST_F(SheetConditionsTest, TheFirstRuleThatSetsSomethingWins)
{
    SetColumn({1.0});
    auto later = RuleOf(ConditionKind::Expression, {"TRUE"});
    later.priority = 2;
    later.style.fontColor = kRed;
    later.style.italic = true;
    auto first = RuleOf(ConditionKind::Expression, {"TRUE"});
    first.priority = 1;
    first.style.bold = false;
    first.style.fontColor = kGreen;
    Add(later);
    Add(first);
    const ConditionDisplay display = Show({1, 1});
    EXPECT_EQ(display.style.bold, false);
    EXPECT_EQ(display.style.fontColor, kGreen);
    EXPECT_EQ(display.style.italic, true);
}

TEST_F(SheetConditionsTest, ARuleMayStopTheOthers)
{
    SetColumn({1.0, 2.0});
    auto first = RuleOf(ConditionKind::Expression, {"A1=1"});
    first.priority = 1;
    first.stopIfTrue = true;
    auto second = RuleOf(ConditionKind::Expression, {"TRUE"});
    second.priority = 2;
    second.style.italic = true;
    Add(first);
    Add(second);
    EXPECT_EQ(Show({1, 1}).style.italic, std::nullopt);
    EXPECT_EQ(Show({2, 1}).style.italic, true);
}

TEST_F(SheetConditionsTest, ScalesMixColors)
{
    SetColumn({0.0, 5.0, 10.0, std::string("x")});
    auto rule = RuleOf(ConditionKind::ColorScale);
    rule.scale = {{PointKind::Minimum, "", true, {0, 0, 0}},
                  {PointKind::Percentile, "50", true, {100, 0, 0}},
                  {PointKind::Number, "20", true, {100, 200, 0}}};
    Add(rule);
    EXPECT_EQ(Show({1, 1}).scaleColor, (Color{0, 0, 0}));
    EXPECT_EQ(Show({2, 1}).scaleColor, (Color{100, 0, 0}));
    EXPECT_EQ(Show({3, 1}).scaleColor, (Color{100, 67, 0})); // a third of the way
    EXPECT_EQ(Show({4, 1}).scaleColor, std::nullopt);
    EXPECT_EQ(Show({9, 1}).scaleColor, std::nullopt);
}

TEST_F(SheetConditionsTest, AFillThatComesFirstHidesTheScale)
{
    SetColumn({0.0, 5.0});
    auto fill = RuleOf(ConditionKind::Expression, {"A1=5"});
    fill.style.fill.emplace();
    auto scale = RuleOf(ConditionKind::ColorScale);
    scale.priority = 1;
    scale.scale = {{PointKind::Minimum, "", true, kRed}, {PointKind::Maximum, "", true, kGreen}};
    Add(fill);
    Add(scale);
    EXPECT_EQ(Show({1, 1}).scaleColor, kRed);
    EXPECT_EQ(Show({2, 1}).scaleColor, std::nullopt);
    EXPECT_TRUE(Show({2, 1}).style.fill.has_value());
}

TEST_F(SheetConditionsTest, BarsOfBothForms)
{
    SetColumn({-5.0, 0.0, 15.0});
    auto rule = RuleOf(ConditionKind::DataBar);
    rule.bar.emplace();
    rule.bar->minimum.kind = PointKind::Minimum;
    rule.bar->maximum.kind = PointKind::Maximum;
    rule.bar->showsValue = false;
    Add(rule);
    EXPECT_DOUBLE_EQ(Show({1, 1}).bar->end, 0.1); // the first form: from 10 to 90 percent
    EXPECT_DOUBLE_EQ(Show({3, 1}).bar->end, 0.9);
    EXPECT_FALSE(Show({3, 1}).showsValue);

    workbook_.Look().conditions.clear();
    rule.bar->minimum.kind = PointKind::AutomaticMinimum;
    rule.bar->maximum.kind = PointKind::AutomaticMaximum;
    rule.bar->axis = book::DataBar::Axis::Automatic;
    rule.bar->minimumLength = 0;
    rule.bar->maximumLength = 100;
    rule.bar->negativeColor = kRed;
    Add(rule);
    const auto negative = Show({1, 1}).bar;
    ASSERT_TRUE(negative);
    EXPECT_DOUBLE_EQ(*negative->axis, 0.25);
    EXPECT_DOUBLE_EQ(negative->begin, 0);
    EXPECT_DOUBLE_EQ(negative->end, 0.25);
    EXPECT_TRUE(negative->growsLeft);
    EXPECT_EQ(negative->color, kRed);
    const auto positive = Show({3, 1}).bar;
    EXPECT_DOUBLE_EQ(positive->begin, 0.25);
    EXPECT_DOUBLE_EQ(positive->end, 1);
}

TEST_F(SheetConditionsTest, IconsByTheirBounds)
{
    SetColumn({0.0, 33.0, 67.0, 100.0});
    auto rule = RuleOf(ConditionKind::IconSet);
    rule.icons.emplace();
    rule.icons->points = {{PointKind::Percent, "0", true, {}},
                          {PointKind::Percent, "33", true, {}},
                          {PointKind::Percent, "67", false, {}}};
    Add(rule);
    EXPECT_EQ(Show({1, 1}).icon, (IconDisplay{"3TrafficLights1", 0}));
    EXPECT_EQ(Show({2, 1}).icon, (IconDisplay{"3TrafficLights1", 1}));
    EXPECT_EQ(Show({3, 1}).icon, (IconDisplay{"3TrafficLights1", 1})); // not above the bound
    EXPECT_EQ(Show({4, 1}).icon, (IconDisplay{"3TrafficLights1", 2}));
    auto& icons = *workbook_.Look().conditions[0].rules[0].icons;
    icons.isReversed = true;
    EXPECT_EQ(Show({4, 1}).icon, (IconDisplay{"3TrafficLights1", 0}));
    icons.icons = {{"NoIcons", 0}, {"5Rating", 3}, {"3Signs", 1}};
    EXPECT_EQ(Show({4, 1}).icon, std::nullopt);
    EXPECT_EQ(Show({2, 1}).icon, (IconDisplay{"5Rating", 3}));
}

TEST_F(SheetConditionsTest, AScaleOverManyCellsReadsThemOnce)
{
    constexpr std::int32_t kCells = 100'000;
    for (std::int32_t row = 1; row <= kCells; ++row)
        workbook_.Set({row, 1}, static_cast<double>(row));
    auto rule = RuleOf(ConditionKind::ColorScale);
    rule.scale = {{PointKind::Minimum, "", true, {0, 0, 0}},
                  {PointKind::Percentile, "90", true, kGreen}};
    Add(rule, {{{1, 1}, {kCells, 1}}});
    EvaluationLimits limits;
    limits.steps = 10 * kCells;
    Evaluator evaluator(workbook_, kNow, limits);
    SheetConditions conditions(evaluator, workbook_.Sheet(0), 0);
    for (std::int32_t row = 1; row <= kCells; ++row)
        ASSERT_TRUE(conditions.Display({row, 1}).scaleColor.has_value()) << row;
}

} // namespace
} // namespace orrery::look
