#include "look/conditions/sheet_conditions.h"

#include "book/look/range_bounds.h"
#include "look/conditions/rule_tests.h"
#include "look/conditions/scales.h"

#include <algorithm>

namespace orrery::look {
namespace {

using book::ConditionKind;

template <class Property>
void SetIfAbsent(std::optional<Property>& property, const std::optional<Property>& more)
{
    if (!property)
        property = more;
}

void Merge(book::PartialStyle& style, const book::PartialStyle& more)
{
    SetIfAbsent(style.bold, more.bold);
    SetIfAbsent(style.italic, more.italic);
    SetIfAbsent(style.strike, more.strike);
    SetIfAbsent(style.underline, more.underline);
    SetIfAbsent(style.fontColor, more.fontColor);
    SetIfAbsent(style.fill, more.fill);
    SetIfAbsent(style.left, more.left);
    SetIfAbsent(style.right, more.right);
    SetIfAbsent(style.top, more.top);
    SetIfAbsent(style.bottom, more.bottom);
    SetIfAbsent(style.numberFormat, more.numberFormat);
}

bool IsVisual(ConditionKind kind)
{
    return kind == ConditionKind::ColorScale || kind == ConditionKind::DataBar ||
           kind == ConditionKind::IconSet;
}

} // namespace

SheetConditions::SheetConditions(Evaluator& evaluator, const book::SheetLook& look,
                                 std::size_t sheet)
    : evaluator_(evaluator), sheet_(sheet)
{
    for (const auto& format : look.conditions) {
        if (format.ranges.empty())
            continue;
        for (const auto& rule : format.rules)
            rules_.push_back({&rule, formats_.size()});
        formats_.push_back({&format, book::BoundsOf(format.ranges),
                            RangeStatistics(evaluator, sheet, format.ranges)});
    }
    std::stable_sort(rules_.begin(), rules_.end(), [](const Rule& left, const Rule& right) {
        return left.rule->priority < right.rule->priority;
    });
}

/// Cells are asked for row by row: the rules of a row are looked for once.
const std::vector<SheetConditions::Rule>& SheetConditions::RulesOfRow(std::int32_t row)
{
    if (row_ == row)
        return rulesOfRow_;
    constexpr std::size_t kChecksOfStep = 16; // of rows, of ranges
    row_ = row;
    rulesOfRow_.clear();
    std::size_t checks = 0;
    for (const Rule& rule : rules_) {
        const book::CellRange& bounds = formats_[rule.format].bounds;
        if (row >= bounds.first.row && row <= bounds.last.row)
            rulesOfRow_.push_back(rule);
    }
    for (const Rule& rule : rulesOfRow_)
        checks += formats_[rule.format].format->ranges.size();
    stepsOfCell_ = checks / kChecksOfStep;
    evaluator_.Spend(rules_.size() / kChecksOfStep);
    return rulesOfRow_;
}

ConditionDisplay SheetConditions::Display(book::CellAddress cell)
{
    ConditionDisplay display;
    std::optional<Value> value;
    const std::vector<Rule>& rules = RulesOfRow(cell.row);
    if (!evaluator_.Spend(stepsOfCell_))
        return display;
    for (const Rule& rule : rules) {
        const auto& ranges = formats_[rule.format].format->ranges;
        if (std::none_of(ranges.begin(), ranges.end(),
                         [cell](const book::CellRange& range) { return range.Contains(cell); }))
            continue;
        if (!evaluator_.Spend(1))
            break;
        if (!value)
            value = evaluator_.ValueOf(sheet_, cell).value;
        if (IsVisual(rule.rule->kind)) {
            Apply(rule, cell, *value, display);
            continue;
        }
        Format& format = formats_[rule.format];
        const RuleSubject subject{sheet_, cell, format.bounds.first, *value};
        if (!Holds(*rule.rule, subject, evaluator_, format.statistics))
            continue;
        Merge(display.style, rule.rule->style);
        if (display.scaleColor)
            display.style.fill.reset();
        if (rule.rule->stopIfTrue)
            break;
    }
    return display;
}

/// Scales, bars and icons are of numbers only.
void SheetConditions::Apply(const Rule& rule, book::CellAddress cell, const Value& value,
                            ConditionDisplay& display)
{
    const auto* number = std::get_if<double>(&value);
    if (number == nullptr)
        return;
    Format& format = formats_[rule.format];
    const RuleSubject subject{sheet_, cell, format.bounds.first, value};
    const book::ConditionalRule& source = *rule.rule;
    if (source.kind == ConditionKind::ColorScale) {
        if (!display.style.fill && !display.scaleColor)
            display.scaleColor =
                ColorOnScale(source.scale, *number, subject, evaluator_, format.statistics);
    }
    else if (source.kind == ConditionKind::DataBar && source.bar && !display.bar) {
        display.bar = BarOf(*source.bar, *number, subject, evaluator_, format.statistics);
        display.showsValue = display.showsValue && (!display.bar || source.bar->showsValue);
    }
    else if (source.kind == ConditionKind::IconSet && source.icons && !display.icon) {
        display.icon = IconOf(*source.icons, *number, subject, evaluator_, format.statistics);
        display.showsValue = display.showsValue && (!display.icon || source.icons->showsValue);
    }
}

} // namespace orrery::look
