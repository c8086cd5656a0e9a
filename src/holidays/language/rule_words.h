#pragma once

#include "holidays/language/rule.h"
#include "holidays/language/rule_set.h"

#include <string>
#include <string_view>
#include <vector>

/// Rules as people say them, in English.
namespace orrery::holidays {

/// "November"; the month [1:12].
std::string_view MonthInWords(int month);

/// "25 November 2027", with a weekday "Thu 25 November 2027".
std::string DateInWords(Date date, bool hasWeekday = false);

/// What is said of long lists of dates or regions.
enum class Lists {
    Brief, ///< the first ones and how many more there are
    Whole,
};

/// Where in a year a day is: "4 July", "fourth Thursday of November", "Easter Sunday - 2",
/// "13 Nisan", "Wednesday before 23 November". A date code that is no date stays a number.
std::string DayInWords(const RuleDay& day, Lists lists = Lists::Brief);

/// Everything else that a rule says but its names and its category: "until 2019", "not on Sunday",
/// "3 days". Regions have their names.
std::vector<std::string> RefinementsInWords(const Refinements& refinements,
                                            const std::vector<Region>& regions,
                                            Lists lists = Lists::Brief);

/// The day, the exact one where the rule has it, and the refinements: "4 July; from 2021".
std::string RuleInWords(const Rule& rule, const std::vector<Region>& regions,
                        Lists lists = Lists::Brief);

/// "Public", "Bank" ...; "Birthday" for the day of somebody's birth.
std::string KindInWords(const Rule& rule);

} // namespace orrery::holidays
