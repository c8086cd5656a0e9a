#include "holidays/rule_reader.h"

#include <variant>

namespace orrery::holidays {
namespace {

/// Whether the rule has the kind that users write to switch it off.
bool IsSwitchedOff(const util::Error& error)
{
    return error.Kind() == ErrorKind::UnknownRuleKind && error.Subject() == "OFF";
}

} // namespace

bool RuleReader::Read(std::size_t line, std::string_view rule)
{
    if (list_.IsFull()) {
        if (!isBeyondCapacity_)
            problems_.push_back({line, util::Error(ErrorKind::TooManyRules)});
        isBeyondCapacity_ = true;
        return false;
    }
    auto parsed = ParseHolidayLine(rule);
    if (auto* const definition = std::get_if<HolidayDef>(&parsed)) {
        list_.Append(std::move(*definition));
        return true;
    }
    auto& error = std::get<util::Error>(parsed);
    hasEnded_ = EndsReading(error);
    if (!IsSwitchedOff(error))
        problems_.push_back({line, std::move(error)});
    return false;
}

} // namespace orrery::holidays
