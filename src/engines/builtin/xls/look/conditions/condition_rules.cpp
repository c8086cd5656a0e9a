#include "engines/builtin/xls/look/conditions/condition_rules.h"

#include "engines/builtin/xls/formula/formula_tokens.h"
#include "engines/builtin/xls/look/styles/differential_format.h"
#include "engines/builtin/xls/records/unicode_string.h"

#include <array>
#include <string>
#include <utility>

namespace orrery::xls {
namespace {

using book::ConditionalRule;
using book::ConditionKind;

/// Of a rule. [MS-XLS] 2.4.43 (ct)
enum class RuleType : std::uint8_t { Comparison = 1, Formula, Scale, Bar, Filter, Icons };

// How a rule was made, its "template". [MS-XLS] 2.4.43 (icfTemplate)
constexpr int kFilter = 5;
constexpr int kUnique = 7;
constexpr int kText = 8;
constexpr int kBlanks = 9;
constexpr int kNoBlanks = 10;
constexpr int kErrors = 11;
constexpr int kNoErrors = 12;
constexpr int kFirstDate = 15;
constexpr int kLastDate = 24;
constexpr int kAbove = 25;
constexpr int kBelow = 26;
constexpr int kDuplicates = 27;
constexpr int kAboveOrEqual = 29;
constexpr int kBelowOrEqual = 30;

book::ComparisonOperator OperatorOf(std::uint8_t value)
{
    constexpr auto kLast = static_cast<std::uint8_t>(book::ComparisonOperator::LessOrEqual) + 1;
    if (value == 0 || value > kLast)
        ThrowDamaged("a rule compares in an unknown way");
    return static_cast<book::ComparisonOperator>(value - 1);
}

void AddFormula(ConditionalRule& rule, std::string_view tokens, const ConditionContext& context)
{
    if (tokens.empty())
        return;
    auto text = FormulaText(tokens, {}, context.formulas);
    if (!text)
        ThrowDamaged("a formula of a rule cannot be read");
    rule.formulas.push_back(std::move(*text));
}

/// In the order of the templates from 15 on.
constexpr std::array kPeriods = {book::TimePeriod::Today,     book::TimePeriod::Tomorrow,
                                 book::TimePeriod::Yesterday, book::TimePeriod::Last7Days,
                                 book::TimePeriod::LastMonth, book::TimePeriod::NextMonth,
                                 book::TimePeriod::ThisWeek,  book::TimePeriod::NextWeek,
                                 book::TimePeriod::LastWeek,  book::TimePeriod::ThisMonth};
static_assert(kPeriods.size() == kLastDate - kFirstDate + 1);

/// The text that a rule looks for is the first one in its formula: 'LEFT(A1,LEN("x"))="x"'.
std::string TextIn(std::string_view formula)
{
    const std::size_t begin = formula.find('"');
    if (begin == formula.npos)
        return {};
    std::string text;
    for (std::size_t at = begin + 1; at < formula.size(); ++at) {
        if (formula[at] != '"')
            text += formula[at];
        else if (at + 1 < formula.size() && formula[at + 1] == '"')
            text += formula[++at];
        else
            return text;
    }
    return {};
}

/// A rule for a text that is not written in its formula stays one with a formula.
void MakeTextRule(ConditionalRule& rule, std::uint16_t how)
{
    constexpr std::array kKinds = {ConditionKind::ContainsText, ConditionKind::NotContainsText,
                                   ConditionKind::BeginsWith, ConditionKind::EndsWith};
    auto text = rule.formulas.empty() ? std::string() : TextIn(rule.formulas[0]);
    if (how >= kKinds.size() || text.empty())
        return;
    rule.kind = kKinds[how];
    rule.text = std::move(text);
}

void MakeAverageRule(ConditionalRule& rule, int how, std::uint16_t deviations)
{
    rule.kind = ConditionKind::AboveAverage;
    rule.isBelow = how == kBelow || how == kBelowOrEqual;
    rule.includesEqual = how == kAboveOrEqual || how == kBelowOrEqual;
    rule.deviations = deviations;
}

void MakeFilterRule(ConditionalRule& rule, std::uint8_t flags, std::uint16_t rank)
{
    rule.kind = ConditionKind::Top10;
    rule.isBottom = (flags & 1U) == 0;
    rule.isPercent = (flags & 2U) != 0;
    rule.rank = rank;
}

/// Makes a rule with a formula the kind that it was made as.
void ApplyTemplate(ConditionalRule& rule, int how, std::string_view parameters)
{
    ByteCursor cursor(parameters);
    switch (how) {
    case kFilter: {
        const auto flags = cursor.U8();
        return MakeFilterRule(rule, flags, cursor.U16());
    }
    case kUnique:
        rule.kind = ConditionKind::UniqueValues;
        return;
    case kDuplicates:
        rule.kind = ConditionKind::DuplicateValues;
        return;
    case kText:
        return MakeTextRule(rule, cursor.U16());
    case kBlanks:
        rule.kind = ConditionKind::ContainsBlanks;
        return;
    case kNoBlanks:
        rule.kind = ConditionKind::NotContainsBlanks;
        return;
    case kErrors:
        rule.kind = ConditionKind::ContainsErrors;
        return;
    case kNoErrors:
        rule.kind = ConditionKind::NotContainsErrors;
        return;
    case kAbove:
    case kBelow:
    case kAboveOrEqual:
    case kBelowOrEqual:
        return MakeAverageRule(rule, how, cursor.U16());
    default:
        if (how >= kFirstDate && how <= kLastDate) {
            rule.kind = ConditionKind::TimePeriod;
            rule.period = kPeriods[static_cast<std::size_t>(how - kFirstDate)];
        }
    }
}

void ReadTemplate(ConditionalRule& rule, int how, ByteCursor& cursor)
{
    const auto parameters = cursor.Take(cursor.U8());
    if (rule.kind == ConditionKind::Expression)
        ApplyTemplate(rule, how, parameters);
}

void SetType(ConditionalRule& rule, std::uint8_t type, std::uint8_t comparison)
{
    rule.kind = ConditionKind::Expression;
    if (static_cast<RuleType>(type) == RuleType::Comparison) {
        rule.kind = ConditionKind::CellIs;
        rule.comparison = OperatorOf(comparison);
    }
}

/// What a rule draws besides its format.
void ReadVisual(ConditionalRule& rule, std::uint8_t type, ByteCursor cursor,
                const ConditionContext& context)
{
    switch (static_cast<RuleType>(type)) {
    case RuleType::Comparison:
    case RuleType::Formula:
        return;
    case RuleType::Scale:
        rule.kind = ConditionKind::ColorScale;
        rule.scale = ReadColorScale(cursor, context);
        return;
    case RuleType::Bar:
        rule.kind = ConditionKind::DataBar;
        rule.bar = ReadDataBar(cursor, context);
        return;
    case RuleType::Filter: {
        cursor.Skip(3);
        const auto flags = cursor.U8();
        return MakeFilterRule(rule, flags, cursor.U16());
    }
    case RuleType::Icons:
        rule.kind = ConditionKind::IconSet;
        rule.icons = ReadIconSet(cursor, context);
        return;
    }
    ThrowDamaged("the kind of a rule is unknown");
}

} // namespace

ConditionalRule ReadRule(std::string_view data, const ConditionContext& context,
                         const CellFormats& formats)
{
    ConditionalRule rule;
    rule.stopIfTrue = true;
    ByteCursor cursor(data);
    const auto type = cursor.U8();
    SetType(rule, type, cursor.U8());
    const std::size_t first = cursor.U16();
    const std::size_t second = cursor.U16();
    // Behind the format, whose size is not stored, the formulas are the end of the record.
    if (cursor.Left() < first + second)
        ThrowTooShort();
    const auto tokens = data.substr(data.size() - first - second);
    AddFormula(rule, tokens.substr(0, first), context);
    AddFormula(rule, tokens.substr(first), context);
    rule.style = ReadDifferentialFormat(cursor, formats);
    return rule;
}

ConditionalRule ReadRule12(std::string_view data, const ConditionContext& context,
                           const CellFormats& formats)
{
    constexpr std::size_t kHeader = 12;
    constexpr std::uint8_t kStops = 0x02;
    ConditionalRule rule;
    ByteCursor cursor(data, kHeader);
    const auto type = cursor.U8();
    SetType(rule, type, cursor.U8());
    const std::size_t first = cursor.U16();
    const std::size_t second = cursor.U16();
    rule.style = ReadDifferentialFormat12(cursor, formats);
    AddFormula(rule, cursor.Take(first), context);
    AddFormula(rule, cursor.Take(second), context);
    cursor.Skip(cursor.U16()); // a formula that says whether the rule is used
    rule.stopIfTrue = (cursor.U8() & kStops) != 0;
    rule.priority = cursor.U16();
    const int how = cursor.U16();
    ReadTemplate(rule, how, cursor);
    ReadVisual(rule, type, cursor, context);
    return rule;
}

void ExtendRule(ConditionalRule& rule, ByteCursor cursor, const CellFormats& formats)
{
    constexpr std::uint8_t kStops = 0x02;
    cursor.Skip(1); // how it compares, which the rule says, too
    const int how = cursor.U8();
    rule.priority = cursor.U16();
    rule.stopIfTrue = (cursor.U8() & kStops) != 0;
    if (cursor.U8() != 0)
        rule.style = ReadDifferentialFormat12(cursor, formats);
    ReadTemplate(rule, how, cursor);
}

} // namespace orrery::xls
