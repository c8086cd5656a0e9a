// Any line is a rule or has an error with a sentence; a rule is read again from the line that its
// parts make.

#include "require.h"

#include "holidays/holiday_dates.h"
#include "holidays/holiday_rule.h"
#include "util/error.h"
#include "util/error_text.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace {

using namespace orrery;

constexpr std::string_view kWords[] = {"DAY", "SUN", "MON", "TUE",   "WED",
                                       "THU", "FRI", "SAT", "EASTER"};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view line(reinterpret_cast<const char*>(data), size);
    const auto parsed = holidays::ParseHolidayLine(line);
    const auto* const rule = std::get_if<holidays::HolidayDef>(&parsed);
    if (rule == nullptr) {
        fuzz::Require(!util::ErrorText(std::get<util::Error>(parsed)).empty());
        return 0;
    }
    fuzz::Require(rule->Kind >= holidays::kFixedDay && rule->Kind <= holidays::kEaster);
    fuzz::Require(line.ends_with(rule->Name));
    const std::string again = std::to_string(rule->DateCode) + ',' +
                              std::string(kWords[static_cast<std::size_t>(rule->Kind)]) + ',' +
                              rule->Name;
    fuzz::Require(std::get<holidays::HolidayDef>(holidays::ParseHolidayLine(again)) == *rule);

    holidays::HolidayList rules;
    rules.Append(*rule);
    static holidays::HolidayDateList dates;
    holidays::ComputeHolidayDates(2024, rules, holidays::EasterDate(2024), dates);
    fuzz::Require(dates.Count == 1 && dates.Cursor == 0);
    return 0;
}
