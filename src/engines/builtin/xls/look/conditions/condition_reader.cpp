#include "engines/builtin/xls/look/conditions/condition_reader.h"

#include "book/look/range_bounds.h"
#include "engines/builtin/xls/look/conditions/condition_rules.h"
#include "engines/builtin/xls/look/records/left_out.h"
#include "engines/builtin/xls/look/records/ranges.h"

#include <algorithm>
#include <utility>

namespace orrery::xls {
namespace {

constexpr std::size_t kFutureHeader = 12; // of records of newer versions
constexpr std::size_t kMostRules = 10'000;

} // namespace

bool ConditionReader::Read(const LookRecord& record)
{
    std::string joined;
    switch (record.type) {
    case RecordType::ConditionalFormats:
        ReadFormat(record.data, false);
        return true;
    case RecordType::ConditionalFormats12:
        ReadFormat(Slice(record.data, kFutureHeader, record.data.size() - kFutureHeader), true);
        return true;
    case RecordType::ConditionalFormat:
        AddRule(record, false);
        return true;
    case RecordType::ConditionalFormat12:
        AddRule(record, true);
        return true;
    case RecordType::ConditionalFormatEx:
        ReadExtension(record.Whole(joined));
        return true;
    default:
        return false;
    }
}

/// [MS-XLS] 2.4.56, 2.4.57
void ConditionReader::ReadFormat(std::string_view data, bool isNew)
{
    constexpr std::size_t kBound = 8;
    extended_.reset();
    Format format;
    format.isNew = isNew;
    formatsRead_.push_back(format); // rules that follow are its own even if it is damaged
    ByteCursor cursor(data);
    cursor.Skip(2);
    format.id = static_cast<std::uint16_t>(cursor.U16() >> 1U);
    cursor.Skip(kBound);
    for (std::size_t count = cursor.U16(); count > 0; --count) {
        if (const auto range = ReadRange8(cursor))
            format.ranges.push_back(*range);
    }
    formatsRead_.back() = std::move(format);
}

ConditionContext ConditionReader::ContextOf(const Format& format) const
{
    return {{names_, book::BoundsOf(format.ranges).first}, formats_.Colors()};
}

ConditionReader::Format* ConditionReader::Find(std::uint16_t id)
{
    const auto place = std::find_if(formatsRead_.begin(), formatsRead_.end(),
                                    [&](const auto& f) { return !f.isNew && f.id == id; });
    return place == formatsRead_.end() ? nullptr : &*place;
}

void ConditionReader::AddRule(const LookRecord& record, bool isNew)
{
    const auto extended = std::exchange(extended_, std::nullopt);
    if (formatsRead_.empty())
        return;
    auto& format = extended ? formatsRead_[*extended] : formatsRead_.back();
    if (format.ranges.empty())
        return;
    if (++rules_ > kMostRules)
        return LeaveOut(look_, "conditional format", {}, "the sheet has more than 10,000 rules");
    auto& added = format.rules.emplace_back();
    std::string joined;
    const auto data = record.Whole(joined);
    added.rule = isNew ? ReadRule12(data, ContextOf(format), formats_)
                       : ReadRule(data, ContextOf(format), formats_);
    if (!isNew)
        added.rule.priority = static_cast<std::int32_t>(rules_);
    added.isReadable = true;
}

/// [MS-XLS] 2.4.44
void ConditionReader::ReadExtension(std::string_view data)
{
    ByteCursor cursor(data, kFutureHeader);
    const bool hasRule = cursor.U32() != 0; // in the record that follows
    auto* format = Find(cursor.U16());
    extended_.reset();
    if (format == nullptr)
        return;
    if (hasRule) {
        extended_ = static_cast<std::size_t>(format - formatsRead_.data());
        return;
    }
    const std::size_t index = cursor.U16();
    if (index < format->rules.size() && format->rules[index].isReadable)
        ExtendRule(format->rules[index].rule, cursor, formats_);
}

void ConditionReader::Finish()
{
    for (auto& format : formatsRead_) {
        book::ConditionalFormat finished;
        for (auto& rule : format.rules) {
            if (rule.isReadable)
                finished.rules.push_back(std::move(rule.rule));
        }
        if (finished.rules.empty())
            continue;
        finished.ranges = std::move(format.ranges);
        look_.conditions.push_back(std::move(finished));
    }
}

} // namespace orrery::xls
