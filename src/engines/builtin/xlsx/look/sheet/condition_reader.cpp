#include "engines/builtin/xlsx/look/sheet/condition_reader.h"

#include "engines/builtin/xlsx/formula/cell_address.h"
#include "engines/builtin/xlsx/look/cells/element_text.h"
#include "engines/builtin/xlsx/look/cells/limits.h"
#include "engines/builtin/xlsx/look/sheet/scale_reader.h"
#include "engines/builtin/xlsx/look/style/attributes.h"
#include "engines/builtin/xlsx/look/style/differential_style.h"
#include "engines/builtin/xml/reading.h"

#include <algorithm>
#include <limits>

namespace orrery::xlsx {
namespace {

using book::ComparisonOperator;
using book::ConditionalRule;
using book::ConditionKind;
using book::TimePeriod;

/// ECMA-376 18.18.12
constexpr Words<ConditionKind, 18> kConditions = {{
    {"expression", ConditionKind::Expression},
    {"cellIs", ConditionKind::CellIs},
    {"containsText", ConditionKind::ContainsText},
    {"notContainsText", ConditionKind::NotContainsText},
    {"beginsWith", ConditionKind::BeginsWith},
    {"endsWith", ConditionKind::EndsWith},
    {"containsBlanks", ConditionKind::ContainsBlanks},
    {"notContainsBlanks", ConditionKind::NotContainsBlanks},
    {"containsErrors", ConditionKind::ContainsErrors},
    {"notContainsErrors", ConditionKind::NotContainsErrors},
    {"duplicateValues", ConditionKind::DuplicateValues},
    {"uniqueValues", ConditionKind::UniqueValues},
    {"top10", ConditionKind::Top10},
    {"aboveAverage", ConditionKind::AboveAverage},
    {"timePeriod", ConditionKind::TimePeriod},
    {"colorScale", ConditionKind::ColorScale},
    {"dataBar", ConditionKind::DataBar},
    {"iconSet", ConditionKind::IconSet},
}};

constexpr Words<ComparisonOperator, 8> kOperators = {{
    {"between", ComparisonOperator::Between},
    {"notBetween", ComparisonOperator::NotBetween},
    {"equal", ComparisonOperator::Equal},
    {"notEqual", ComparisonOperator::NotEqual},
    {"greaterThan", ComparisonOperator::GreaterThan},
    {"lessThan", ComparisonOperator::LessThan},
    {"greaterThanOrEqual", ComparisonOperator::GreaterOrEqual},
    {"lessThanOrEqual", ComparisonOperator::LessOrEqual},
}};

constexpr Words<TimePeriod, 10> kPeriods = {{
    {"today", TimePeriod::Today},
    {"yesterday", TimePeriod::Yesterday},
    {"tomorrow", TimePeriod::Tomorrow},
    {"last7Days", TimePeriod::Last7Days},
    {"thisMonth", TimePeriod::ThisMonth},
    {"lastMonth", TimePeriod::LastMonth},
    {"nextMonth", TimePeriod::NextMonth},
    {"thisWeek", TimePeriod::ThisWeek},
    {"lastWeek", TimePeriod::LastWeek},
    {"nextWeek", TimePeriod::NextWeek},
}};

/// Whether a rule of this kind has what it needs.
bool IsWhole(const ConditionalRule& rule)
{
    switch (rule.kind) {
    case ConditionKind::Expression:
    case ConditionKind::CellIs:
        return !rule.formulas.empty();
    case ConditionKind::ColorScale:
        return rule.scale.size() >= 2;
    case ConditionKind::DataBar:
        return rule.bar.has_value();
    case ConditionKind::IconSet:
        return rule.icons && !rule.icons->points.empty();
    default:
        return true;
    }
}

/// The id of <x14:id> in the extension list of a rule.
void ReadRuleId(xml::Scanner& scanner, std::string& id)
{
    xml::ForEachChild(scanner, [&] {
        xml::ForEachChild(scanner, [&] {
            if (scanner.LocalName() == "id")
                id = scanner.ElementText();
            else
                scanner.SkipElement();
        });
    });
}

} // namespace

void ConditionReader::Read(xml::Scanner& scanner)
{
    ReadFormat(scanner, false);
}

void ConditionReader::ReadExtensions(xml::Scanner& scanner)
{
    xml::ForEachChild(scanner, [&] { ReadFormat(scanner, true); });
}

void ConditionReader::ReadFormat(xml::Scanner& scanner, bool isExtension)
{
    book::ConditionalFormat format;
    if (const auto ranges = scanner.Attribute("sqref"))
        format.ranges = ParseRanges(ranges->raw);
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "cfRule")
            return ReadRule(scanner, isExtension, format);
        if (scanner.LocalName() == "sqref") {
            std::string buffer;
            format.ranges = ParseRanges(ReadElementText(scanner, buffer));
            return;
        }
        scanner.SkipElement();
    });
    if (!format.ranges.empty() && !format.rules.empty())
        context_.look.conditions.push_back(std::move(format));
}

void ConditionReader::ReadRule(xml::Scanner& scanner, bool isExtension,
                               book::ConditionalFormat& format)
{
    ConditionalRule rule;
    if (rules_ >= kMaxRules || !ReadRuleAttributes(scanner, rule)) {
        context_.leftOut.Add("conditional format",
                             format.ranges.empty() ? "" : FormatCellRange(format.ranges.front()),
                             rules_ >= kMaxRules ? "there are more than 20,000"
                                                 : "its kind is not known");
        return scanner.SkipElement();
    }
    std::string id = isExtension ? scanner.AttributeText("id").value_or("") : std::string();
    xml::ForEachChild(scanner, [&] { ReadRuleElement(scanner, isExtension, rule, id); });
    if ((isExtension && Complete(id, rule)) || !IsWhole(rule))
        return;
    if (!isExtension && !id.empty() && !format.ranges.empty())
        byId_.emplace(id, Place{context_.look.conditions.size(), format.rules.size()});
    ++rules_;
    format.rules.push_back(std::move(rule));
}

/// False if the kind is not known.
bool ConditionReader::ReadRuleAttributes(const xml::Scanner& scanner, ConditionalRule& rule) const
{
    constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();
    const auto kind = WordAttribute(scanner, "type", kConditions);
    if (!kind)
        return false;
    rule.kind = *kind;
    rule.priority = IntegerAttribute(scanner, "priority", -kMax, kMax).value_or(kMax);
    rule.stopIfTrue = FlagAttribute(scanner, "stopIfTrue", false);
    rule.comparison =
        WordAttribute(scanner, "operator", kOperators).value_or(ComparisonOperator::Equal);
    rule.text = scanner.AttributeText("text").value_or("");
    rule.period = WordAttribute(scanner, "timePeriod", kPeriods).value_or(TimePeriod::Today);
    rule.rank = IntegerAttribute(scanner, "rank", 0, 1000).value_or(10);
    rule.isPercent = FlagAttribute(scanner, "percent", false);
    rule.isBottom = FlagAttribute(scanner, "bottom", false);
    rule.isBelow = !FlagAttribute(scanner, "aboveAverage", true);
    rule.includesEqual = FlagAttribute(scanner, "equalAverage", false);
    rule.deviations = IntegerAttribute(scanner, "stdDev", 0, 100).value_or(0);
    if (const auto index = IndexAttribute(scanner, "dxfId")) {
        if (const book::PartialStyle* style = context_.styleSheet.Differential(*index))
            rule.style = *style;
    }
    return true;
}

void ConditionReader::ReadRuleElement(xml::Scanner& scanner, bool isExtension,
                                      ConditionalRule& rule, std::string& id)
{
    constexpr std::size_t kMaxFormulas = 3;
    const std::string_view name = scanner.LocalName();
    if ((name == "formula" || name == "f") && rule.formulas.size() < kMaxFormulas)
        rule.formulas.push_back(ReadFormulaText(scanner));
    else if (name == "colorScale")
        rule.scale = ReadColorScale(scanner, context_.Colors());
    else if (name == "dataBar")
        rule.bar = ReadDataBar(scanner, context_.Colors(), isExtension);
    else if (name == "iconSet")
        rule.icons = ReadIconSet(scanner);
    else if (name == "dxf")
        rule.style = ReadDifferentialStyle(scanner, context_.Colors());
    else if (name == "extLst" && !isExtension)
        ReadRuleId(scanner, id);
    else
        scanner.SkipElement();
}

/// Whether the rule only tells more of one that is there already.
bool ConditionReader::Complete(const std::string& id, ConditionalRule& rule)
{
    const auto place = byId_.find(id);
    if (place == byId_.end() || place->second.first >= context_.look.conditions.size())
        return false;
    auto& rules = context_.look.conditions[place->second.first].rules;
    if (place->second.second >= rules.size())
        return false;
    ConditionalRule& first = rules[place->second.second];
    if (rule.bar && first.bar) {
        rule.bar->color = first.bar->color;
        first.bar = rule.bar;
    }
    return true;
}

std::vector<book::CellRange> ConditionReader::ParseRanges(std::string_view text)
{
    std::vector<book::CellRange> ranges;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(" \n\t"), text.size());
        const auto range = ParseCellRange(text.substr(0, end));
        if (range && ranges_ < kMaxRanges) {
            ranges.push_back(*range);
            ++ranges_;
        }
        else if (end != 0) {
            context_.leftOut.Add("conditional format", text.substr(0, end),
                                 range ? "there are too many ranges" : "it is not in the sheet");
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return ranges;
}

} // namespace orrery::xlsx
