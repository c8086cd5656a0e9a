#include "model/parameter_extras.h"

#include "holidays/holiday_rule.h"
#include "holidays/key_line.h"
#include "util/error.h"
#include "util/text.h"

#include <cstddef>
#include <optional>

namespace orrery::model {
namespace {

bool IsUnderstood(std::string_view rule)
{
    try {
        return holidays::ParseHolidayLine(rule).has_value();
    }
    catch (const util::Error&) {
        return true; // keeping it would end the next reading of the file
    }
}

} // namespace

ParameterExtras FindExtras(std::string_view text)
{
    ParameterExtras extras;
    std::vector<std::string>* rules = nullptr; // of the current section
    bool isOther = false;
    const auto lines = util::SplitLines(text);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string_view line = util::Trim(lines[i]);
        if (line.starts_with('[')) {
            rules = line == holidays::kMonthlySection  ? &extras.monthlyRules
                    : line == holidays::kYearlySection ? &extras.yearlyRules
                                                       : nullptr;
            isOther = rules == nullptr;
        }
        if (isOther) {
            const char* const end =
                i + 1 < lines.size() ? lines[i + 1].data() : text.data() + text.size();
            extras.sections.append(lines[i].data(), end);
        }
        const auto entry = rules != nullptr ? holidays::ReadKeyLine(line) : std::nullopt;
        if (entry && holidays::IsHolidayKey(entry->key) && !IsUnderstood(entry->value))
            rules->emplace_back(lines[i]);
    }
    return extras;
}

} // namespace orrery::model
