// Any line is a rule, is not a rule, or is one of the two errors that end a file; a rule is read
// again from the line that its parts make.

#include "require.h"

#include "holidays/holiday_dates.h"
#include "holidays/holiday_rule.h"
#include "util/error.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace {

using namespace orrery;

constexpr std::string_view kWords[] = {"DAY", "SUN", "MON", "TUE",   "WED",
                                       "THU", "FRI", "SAT", "EASTER"};

std::optional<holidays::HolidayDef> Parse(std::string_view line)
{
    try {
        return holidays::ParseHolidayLine(line);
    }
    catch (const util::OverflowError&) {
    }
    catch (const util::OutOfRangeError&) {
    }
    return std::nullopt;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view line(reinterpret_cast<const char*>(data), size);
    const auto rule = Parse(line);
    if (!rule)
        return 0;
    fuzz::Require(rule->Kind >= holidays::kFixedDay && rule->Kind <= holidays::kEaster);
    fuzz::Require(line.ends_with(rule->Name));
    const std::string again = std::to_string(rule->DateCode) + ',' +
                              std::string(kWords[static_cast<std::size_t>(rule->Kind)]) + ',' +
                              rule->Name;
    fuzz::Require(holidays::ParseHolidayLine(again) == *rule);

    holidays::HolidayList rules;
    rules.Append(*rule);
    static holidays::HolidayDateList dates;
    holidays::ComputeHolidayDates(2024, rules, holidays::EasterDate(2024), dates);
    fuzz::Require(dates.Count == 1 && dates.Cursor == 0);
    return 0;
}
