#pragma once

#include "holidays/language/evaluation.h"
#include "util/text.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::holidays::testing_support {

/// The rules of a file's lines; one that is not understood is a failure.
inline RuleSet SetOf(std::string_view text)
{
    RuleSetBuilder builder;
    for (const std::string_view line : util::SplitLines(text)) {
        const auto plain = ParseHolidayLine(line);
        if (const auto* const rule = std::get_if<HolidayDef>(&plain))
            builder.Add(*rule);
        else if (IsExtraLine(line) && builder.AddExtra(line))
            ADD_FAILURE() << line;
    }
    return builder.Take();
}

inline std::string Text(Date date)
{
    const std::chrono::year_month_day day(date);
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(day.year()),
                  static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()));
    return text;
}

/// "2027-05-03 May Day" for each holiday of a year.
inline std::vector<std::string> DaysOf(std::string_view rules, int year,
                                       const HolidayChoice& choice = {})
{
    std::vector<std::string> days;
    for (const Holiday& day : HolidaysOf(SetOf(rules), year, choice))
        days.push_back(Text(day.date) + ' ' + day.name);
    return days;
}

} // namespace orrery::holidays::testing_support
