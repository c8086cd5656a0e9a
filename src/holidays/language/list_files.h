#pragma once

#include "holidays/holiday_rule.h"

#include <string>
#include <string_view>
#include <vector>

/// The files that a calendar's list was put together from: a country's and further ones.
namespace orrery::holidays {

/// The name of the part with the days that the user added to this calendar alone.
inline constexpr std::string_view kOwnDays = "Own days";

/// The names of the further files, in their order.
std::vector<std::string> FurtherFilesOf(const HolidayList& list);

/// What the list has of a further file, without the line above it; empty if it has none of that
/// name.
HolidayList FurtherFile(const HolidayList& list, std::string_view name);

/// Puts a file in the place of the further file of that name, or behind all others. An empty file
/// only takes the other one away. False, without a change, if the list has no room for it.
bool PutFurtherFile(HolidayList& list, std::string_view name, const HolidayList& file);

/// Replaces the first file; the further ones stay. False, without a change, if the list has no room
/// for it.
bool PutFirstFile(HolidayList& list, const HolidayList& file);

/// Puts entries in the place of a rule, counted from 1, and of the lines that refine it alone. A
/// further file goes with its last rule. False, without a change, if the list has no room for them.
bool ReplaceRule(HolidayList& list, std::size_t place, const std::vector<ListEntry>& entries);

} // namespace orrery::holidays
