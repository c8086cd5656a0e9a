#include "holidays/files/rule_reader.h"

#include <optional>
#include <utility>
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
    auto parsed = ParseHolidayLine(rule);
    auto* const error = std::get_if<util::Error>(&parsed);
    if (error != nullptr && !EndsReading(*error) && IsExtraLine(rule))
        return ReadExtra(line, rule);
    if (list_.IsFull()) {
        if (!isBeyondCapacity_)
            problems_.push_back({line, util::Error(ErrorKind::TooManyRules)});
        isBeyondCapacity_ = true;
        return false;
    }
    if (error == nullptr) {
        builder_.Add(std::get<HolidayDef>(parsed), line);
        list_.Append(std::get<HolidayDef>(std::move(parsed)));
        return true;
    }
    hasEnded_ = EndsReading(*error);
    if (!IsSwitchedOff(*error))
        problems_.push_back({line, std::move(*error)});
    return false;
}

bool RuleReader::ReadExtra(std::size_t line, std::string_view text)
{
    auto error = list_.HasRoomForExtra() ? builder_.AddExtra(text, line)
                                         : std::optional(util::Error(ErrorKind::TooManyExtraLines));
    if (error) {
        if (error->Kind() != ErrorKind::TooManyExtraLines || !std::exchange(hasManyExtras_, true))
            problems_.push_back({line, *std::move(error)});
        return false;
    }
    list_.AppendExtra(std::string(text));
    return true;
}

} // namespace orrery::holidays
