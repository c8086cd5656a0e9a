#include "xls/look/look_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls::test {
namespace {

using book::Color;
using book::ConditionKind;

const std::string kOne = {"\x1E\x01\0", 3};
const std::string kFive = {"\x1E\x05\0", 3};

/// CONDFMT, or what follows the header of CONDFMT12; ranges of four numbers, rows first.
std::string FormatDataOf(std::uint16_t id, std::uint16_t rules,
                         const std::vector<std::uint16_t>& ranges)
{
    return Numbers({rules, static_cast<std::uint16_t>(id << 1U), 0, 0, 0, 0,
                    static_cast<std::uint16_t>(ranges.size() / 4)}) +
           Numbers(ranges);
}

std::string ConditionsOf(std::uint16_t id, std::uint16_t rules,
                         const std::vector<std::uint16_t>& ranges)
{
    return RecordOf(RecordType::ConditionalFormats, FormatDataOf(id, rules, ranges));
}

/// A format in which nothing is set. [MS-XLS] 2.5.92
const std::string kNothingSet = LongNumber(0x003FFFFF) + Numbers({0});

/// A fill whose background alone is set.
std::string BackgroundOf(std::uint16_t color)
{
    return LongNumber((0x003FFFFF & ~(1U << 18)) | 1U << 29) + Numbers({0, 0}) +
           Numbers({static_cast<std::uint16_t>(color << 7U)});
}

std::string RuleOf(std::uint8_t type, std::uint8_t comparison, std::string_view format,
                   std::string_view first, std::string_view second = {})
{
    std::string data = {static_cast<char>(type), static_cast<char>(comparison)};
    data += Numbers(
        {static_cast<std::uint16_t>(first.size()), static_cast<std::uint16_t>(second.size())});
    return RecordOf(RecordType::ConditionalFormat,
                    data + std::string(format) + std::string(first) + std::string(second));
}

/// CF12; `visual` is what the rule draws.
std::string NewRuleOf(std::uint8_t type, std::uint16_t how, std::string_view parameters,
                      std::string_view visual, std::string_view formula = {})
{
    std::string data = Numbers({0x087A, 0, 0, 0, 0, 0});
    data += {static_cast<char>(type), '\0'};
    data += Numbers({static_cast<std::uint16_t>(formula.size()), 0});
    data += LongNumber(0) + Numbers({0}) + std::string(formula) + Numbers({0});
    data += '\2' + Numbers({7, how}) + '\x10' + std::string(parameters);
    data += std::string(16 - parameters.size(), '\0');
    return RecordOf(RecordType::ConditionalFormat12, data + std::string(visual));
}

std::string NewConditionsOf(const std::vector<std::uint16_t>& ranges)
{
    return RecordOf(RecordType::ConditionalFormats12,
                    Numbers({0x0879, 0, 0, 0, 0, 0}) + FormatDataOf(9, 1, ranges));
}

book::ConditionalRule RuleIn(const book::SheetLook& look)
{
    EXPECT_EQ(look.conditions.size(), 1U);
    if (look.conditions.empty() || look.conditions[0].rules.empty())
        return {};
    return look.conditions[0].rules[0];
}

TEST(ConditionReaderTest, ReadsComparisons)
{
    const auto look = LookOf(ConditionsOf(1, 1, {4, 9, 1, 1, 4, 9, 3, 3}) +
                             RuleOf(1, 2, BackgroundOf(10), kOne, kFive));
    ASSERT_EQ(look.conditions.size(), 1U);
    const std::vector<book::CellRange> ranges = {{{5, 2}, {10, 2}}, {{5, 4}, {10, 4}}};
    EXPECT_EQ(look.conditions[0].ranges, ranges);
    const auto rule = RuleIn(look);
    EXPECT_EQ(rule.kind, ConditionKind::CellIs);
    EXPECT_EQ(rule.comparison, book::ComparisonOperator::NotBetween);
    EXPECT_EQ(rule.formulas, (std::vector<std::string>{"1", "5"}));
    EXPECT_EQ(rule.priority, 1);
    EXPECT_TRUE(rule.stopIfTrue); // old versions use the first rule that holds
    ASSERT_TRUE(rule.style.fill);
    EXPECT_EQ(rule.style.fill->pattern, book::FillPattern::Solid);
    EXPECT_EQ(rule.style.fill->foreground, (Color{255, 0, 0}));
}

TEST(ConditionReaderTest, FormulasAreRelativeToTheFirstCell)
{
    // The cell itself, relative in both directions
    const auto look = LookOf(ConditionsOf(1, 1, {4, 9, 1, 1}) +
                             RuleOf(2, 0, kNothingSet, '\x4C' + Numbers({0, 0xC000})));
    const auto rule = RuleIn(look);
    EXPECT_EQ(rule.kind, ConditionKind::Expression);
    EXPECT_EQ(rule.formulas, (std::vector<std::string>{"B5"}));
    EXPECT_EQ(rule.style, book::PartialStyle{});
}

TEST(ConditionReaderTest, FormulasAreRelativeToTheCornerOfAllRanges)
{
    // D10:D13, then B5:B10
    const auto look = LookOf(ConditionsOf(1, 1, {9, 12, 3, 3, 4, 9, 1, 1}) +
                             RuleOf(2, 0, kNothingSet, '\x4C' + Numbers({0, 0xC000})));
    EXPECT_EQ(RuleIn(look).formulas, (std::vector<std::string>{"B5"}));
}

TEST(ConditionReaderTest, ReadsFontsAndBorders)
{
    // Font: bold, not italic, double underline, blue; line below thin and red
    std::string font(64, '\0');
    font += LongNumber(0xFFFFFFFF) + LongNumber(0) + Numbers({700, 0}) + "\x02" +
            std::string(3, '\0') + LongNumber(12) + LongNumber(0) + LongNumber(0x80) +
            LongNumber(1) + LongNumber(0) + LongNumber(0) + std::string(14, '\0');
    ASSERT_EQ(font.size(), 118U);
    const std::string flags =
        LongNumber((0x003FFFFF & ~(1U << 13)) | 1U << 26 | 1U << 28) + Numbers({0});
    const std::string border = LongNumber(1U << 12) + LongNumber(10U << 7);
    const auto style =
        RuleIn(LookOf(ConditionsOf(1, 1, {0, 0, 0, 0}) + RuleOf(2, 0, flags + font + border, kOne)))
            .style;
    EXPECT_EQ(style.bold, true);
    EXPECT_EQ(style.italic, false);
    EXPECT_FALSE(style.strike);
    EXPECT_EQ(style.underline, book::Underline::Double);
    EXPECT_EQ(style.fontColor, (Color{0, 0, 255}));
    EXPECT_EQ(style.bottom, (book::BorderLine{book::LineStyle::Thin, Color{255, 0, 0}}));
    EXPECT_FALSE(style.top);
    EXPECT_FALSE(style.fill);
}

TEST(ConditionReaderTest, NormalWeightCountsWithTheSlantOnly)
{
    const auto styleOf = [](std::uint16_t weight, std::uint32_t notLooks, std::uint32_t notWeight) {
        const std::string font =
            std::string(64, '\0') + LongNumber(0xFFFFFFFF) + LongNumber(0) + Numbers({weight, 0}) +
            std::string(4, '\0') + LongNumber(0xFFFFFFFF) + LongNumber(0) + LongNumber(notLooks) +
            LongNumber(1) + LongNumber(1) + LongNumber(notWeight) + std::string(14, '\0');
        const std::string flags = LongNumber(0x003FFFFF | 1U << 26) + Numbers({0});
        return RuleIn(LookOf(ConditionsOf(1, 1, {0, 0, 0, 0}) + RuleOf(2, 0, flags + font, kOne)))
            .style;
    };
    EXPECT_EQ(styleOf(400, 0x9A, 0), book::PartialStyle{}); // as LibreOffice marks neither
    EXPECT_EQ(styleOf(400, 0x98, 0).bold, false);
    EXPECT_EQ(styleOf(700, 0x9A, 0).bold, true);
    EXPECT_FALSE(styleOf(700, 0x98, 1).bold);
    EXPECT_FALSE(styleOf(0xFFFF, 0x98, 0).bold);
}

TEST(ConditionReaderTest, ReadsNumberFormats)
{
    const std::string byNumber =
        LongNumber((0x003FFFFF & ~(1U << 19)) | 1U << 25) + Numbers({0}) + std::string("\0\x0A", 2);
    EXPECT_EQ(RuleIn(LookOf(ConditionsOf(1, 1, {0, 0, 0, 0}) + RuleOf(2, 0, byNumber, kOne)))
                  .style.numberFormat,
              "0.00%");
    std::string code;
    AppendUnicodeString(code, "dd/mm");
    const std::string byCode = LongNumber((0x003FFFFF & ~(1U << 19)) | 1U << 25) +
                               Numbers({1, static_cast<std::uint16_t>(code.size() + 2)}) + code;
    EXPECT_EQ(RuleIn(LookOf(ConditionsOf(1, 1, {0, 0, 0, 0}) + RuleOf(2, 0, byCode, kOne)))
                  .style.numberFormat,
              "dd/mm");
}

TEST(ConditionReaderTest, NewerRecordsExtendRules)
{
    // Priority 5, does not stop; a format with a fill in a colour of its own
    const std::string fill =
        BackgroundOf(42) + Numbers({0, 0xFFFF, 0, 1}) + ColorProperty(5, 2, 0, 0xFFCEEFC6);
    std::string data = Numbers({0x087B, 0, 0, 0, 0, 0}) + LongNumber(0) + Numbers({3, 1}) +
                       std::string("\3\0", 2) + Numbers({5}) + "\1\1" +
                       LongNumber(static_cast<std::uint32_t>(fill.size())) + fill + '\x10' +
                       std::string(16, '\0');
    const auto look = LookOf(ConditionsOf(3, 2, {0, 0, 0, 0}) + RuleOf(1, 3, kNothingSet, kOne) +
                             RuleOf(1, 3, BackgroundOf(10), kFive) +
                             RecordOf(RecordType::ConditionalFormatEx, data));
    ASSERT_EQ(look.conditions[0].rules.size(), 2U);
    const auto& rule = look.conditions[0].rules[1];
    EXPECT_EQ(rule.priority, 5);
    EXPECT_FALSE(rule.stopIfTrue);
    ASSERT_TRUE(rule.style.fill);
    EXPECT_EQ(rule.style.fill->foreground, (Color{0xC6, 0xEF, 0xCE}));
    EXPECT_TRUE(look.conditions[0].rules[0].stopIfTrue);
}

TEST(ConditionReaderTest, RuleThatCannotBeReadKeepsThePlacesOfOthers)
{
    std::string data = Numbers({0x087B, 0, 0, 0, 0, 0}) + LongNumber(0) + Numbers({3, 1}) +
                       std::string("\3\0", 2) + Numbers({9}) + std::string("\1\0", 2) + '\x10' +
                       std::string(16, '\0');
    const auto look =
        LookOf(ConditionsOf(3, 2, {0, 0, 0, 0}) + RuleOf(1, 3, kNothingSet, "\x7F") +
               RuleOf(1, 3, kNothingSet, kFive) + RecordOf(RecordType::ConditionalFormatEx, data));
    ASSERT_EQ(look.conditions[0].rules.size(), 1U);
    EXPECT_EQ(look.conditions[0].rules[0].priority, 9);
    ASSERT_EQ(look.leftOut.size(), 1U);
    EXPECT_EQ(look.leftOut[0].what, "conditional format");
}

std::string PointOf(std::uint8_t kind, std::optional<double> value)
{
    std::string data(1, static_cast<char>(kind));
    data += Numbers({0});
    return value ? data + DoubleBytes(*value) : data;
}

std::string ColorOf(std::uint32_t color)
{
    return LongNumber(2) + LongNumber(color) + DoubleBytes(0);
}

TEST(ConditionReaderTest, ReadsColorScales)
{
    const std::string scale = Numbers({0}) + std::string("\0\2\2\3", 4) + PointOf(2, std::nullopt) +
                              DoubleBytes(0) + PointOf(5, 90) + DoubleBytes(1) + DoubleBytes(0) +
                              ColorOf(0xFF6B69F8) + DoubleBytes(1) + ColorOf(0xFF7BBE63);
    const auto rule = RuleIn(LookOf(NewConditionsOf({1, 9, 0, 0}) + NewRuleOf(3, 2, "", scale)));
    EXPECT_EQ(rule.kind, ConditionKind::ColorScale);
    EXPECT_EQ(rule.priority, 7);
    ASSERT_EQ(rule.scale.size(), 2U);
    EXPECT_EQ(rule.scale[0].kind, book::ScalePoint::Kind::Minimum);
    EXPECT_EQ(rule.scale[0].color, (Color{0xF8, 0x69, 0x6B}));
    EXPECT_EQ(rule.scale[1].kind, book::ScalePoint::Kind::Percentile);
    EXPECT_EQ(rule.scale[1].value, "90");
    EXPECT_EQ(rule.scale[1].color, (Color{0x63, 0xBE, 0x7B}));
}

TEST(ConditionReaderTest, ReadsDataBars)
{
    const std::string bar = Numbers({0}) + std::string("\0\1\5\x50", 4) + ColorOf(0xFF84C363) +
                            PointOf(1, 2.5) + PointOf(3, std::nullopt);
    const auto rule = RuleIn(LookOf(NewConditionsOf({1, 9, 0, 0}) + NewRuleOf(4, 3, "", bar)));
    EXPECT_EQ(rule.kind, ConditionKind::DataBar);
    ASSERT_TRUE(rule.bar);
    EXPECT_TRUE(rule.bar->isRightToLeft);
    EXPECT_EQ(rule.bar->minimumLength, 5);
    EXPECT_EQ(rule.bar->maximumLength, 80);
    EXPECT_EQ(rule.bar->color, (Color{0x63, 0xC3, 0x84}));
    EXPECT_EQ(rule.bar->minimum.value, "2.5");
    EXPECT_EQ(rule.bar->maximum.kind, book::ScalePoint::Kind::Maximum);
}

TEST(ConditionReaderTest, ReadsIconSets)
{
    std::string icons = Numbers({0}) + std::string("\0\3\5\4", 4);
    for (const double bound : {0.0, 33.0, 67.0})
        icons +=
            PointOf(4, bound) + (bound > 50 ? std::string(5, '\0') : std::string("\1\0\0\0\0", 5));
    const auto rule = RuleIn(LookOf(NewConditionsOf({1, 9, 0, 0}) + NewRuleOf(6, 4, "", icons)));
    ASSERT_TRUE(rule.icons);
    EXPECT_EQ(rule.icons->name, "3Signs");
    EXPECT_TRUE(rule.icons->isReversed);
    EXPECT_TRUE(rule.icons->showsValue);
    ASSERT_EQ(rule.icons->points.size(), 3U);
    EXPECT_EQ(rule.icons->points[1].value, "33");
    EXPECT_TRUE(rule.icons->points[1].isGreaterOrEqual);
    EXPECT_FALSE(rule.icons->points[2].isGreaterOrEqual);
}

book::ConditionalRule RuleMadeAs(std::uint16_t how, std::string_view parameters,
                                 std::string_view formula = kOne)
{
    return RuleIn(
        LookOf(NewConditionsOf({1, 9, 0, 0}) + NewRuleOf(2, how, parameters, "", formula)));
}

TEST(ConditionReaderTest, ReadsHowRulesWereMade)
{
    EXPECT_EQ(RuleMadeAs(7, "").kind, ConditionKind::UniqueValues);
    EXPECT_EQ(RuleMadeAs(27, "").kind, ConditionKind::DuplicateValues);
    EXPECT_EQ(RuleMadeAs(9, "").kind, ConditionKind::ContainsBlanks);
    EXPECT_EQ(RuleMadeAs(12, "").kind, ConditionKind::NotContainsErrors);
    EXPECT_EQ(RuleMadeAs(17, "").period, book::TimePeriod::Yesterday);
    EXPECT_EQ(RuleMadeAs(24, "").period, book::TimePeriod::ThisMonth);
    const auto average = RuleMadeAs(30, std::string("\1\0", 2));
    EXPECT_EQ(average.kind, ConditionKind::AboveAverage);
    EXPECT_TRUE(average.isBelow && average.includesEqual);
    EXPECT_EQ(average.deviations, 1);
    const auto last = RuleMadeAs(5, std::string("\2\3\0", 3));
    EXPECT_EQ(last.kind, ConditionKind::Top10);
    EXPECT_TRUE(last.isBottom && last.isPercent);
    EXPECT_EQ(last.rank, 3);
}

TEST(ConditionReaderTest, TextOfARuleIsInItsFormula)
{
    const auto begins = RuleMadeAs(8, std::string("\2\0", 2), std::string("\x17\3\0a\"b", 6));
    EXPECT_EQ(begins.kind, ConditionKind::BeginsWith);
    EXPECT_EQ(begins.text, "a\"b");
    EXPECT_EQ(RuleMadeAs(8, std::string("\2\0", 2)).kind, ConditionKind::Expression);
}

TEST(ConditionReaderTest, DamagedRulesAreLeftOut)
{
    for (const auto& rule : {NewRuleOf(9, 0, "", ""), NewRuleOf(3, 2, "", "abc"),
                             RuleOf(1, 9, kNothingSet, kOne), RuleOf(1, 1, "", kOne)}) {
        const auto look = LookOf(NewConditionsOf({1, 9, 0, 0}) + rule + RkOf(0, 0, 15, 1));
        EXPECT_TRUE(look.conditions.empty());
        EXPECT_EQ(look.leftOut.size(), 1U);
        EXPECT_EQ(look.cells.size(), 1U);
    }
}

TEST(ConditionReaderTest, RulesWithoutRangesAreIgnored)
{
    EXPECT_TRUE(LookOf(RuleOf(1, 3, kNothingSet, kOne)).conditions.empty());
    EXPECT_TRUE(
        LookOf(ConditionsOf(1, 1, {}) + RuleOf(1, 3, kNothingSet, kOne)).conditions.empty());
}

TEST(ConditionReaderTest, RulesHaveALimit)
{
    std::string records = ConditionsOf(1, 1, {0, 0, 0, 0});
    const auto rule = RuleOf(1, 3, kNothingSet, kOne);
    for (int i = 0; i < 10'050; ++i)
        records += rule;
    const auto look = LookOf(records);
    EXPECT_EQ(look.conditions[0].rules.size(), 10'000U);
    EXPECT_EQ(look.leftOut.size(), 1U);
}

} // namespace
} // namespace orrery::xls::test
