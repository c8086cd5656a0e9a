#pragma once

#include "model/parameters.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <type_traits>

/// The one table of a template's parameters: their keys, kinds, ranges, defaults and order. All
/// code that reads, writes or shows the parameters uses `VisitParameters`.
namespace orrery::model {

/// One value per calendar.
template <typename Value> struct ByCalendar {
    Value monthly;
    Value yearly;
    template <typename Set> constexpr Value Of() const
    {
        return std::is_base_of_v<YearlyParameters, Set> ? yearly : monthly;
    }
};

// The kinds of parameters. A key is written as spelled here and read in any case. `initial` is the
// default if the settings file does not have the key.

struct FlagParameter {
    std::string_view key;
    ByCalendar<bool> initial = {false, false};
};

struct SheetNameParameter {
    std::string_view key;
    ByCalendar<std::string_view> initial;
};

/// 0 Sunday, 1 Monday.
struct FirstDayParameter {
    std::string_view key;
};

/// A whole number [low:high]. The range is checked before rounding.
struct NumberParameter {
    std::string_view key;
    std::int32_t low;
    std::int32_t high;
    ByCalendar<std::int32_t> initial;
    /// The dialog accepts [low:dialogHigh], for some parameters less than a file may contain.
    std::int32_t dialogHigh = high;
};

struct CellParameter {
    std::string_view key;
    ByCalendar<std::string_view> initial;
    /// Computes the cell from the first day's if neither the key nor `initial` gives one.
    CellPosition (*fallback)(CellPosition firstDay);
};

/// The index of a list in the table of weekday names.
struct WeekdayNamesParameter {
    std::string_view key;
};

/// The index of a list in the table of month names.
struct MonthNamesParameter {
    std::string_view key;
};

inline constexpr CellPosition kDefaultFirstDay{5, 2}; // B5

inline constexpr NumberParameter kColIntervalOfDay{"ColIntervalOfDay", 1, 36, {1, 1}};
inline constexpr NumberParameter kRowIntervalOfDay{"RowIntervalOfDay", 1, 10000, {5, 1}};
inline constexpr NumberParameter kColIntervalOfMonth{"ColIntervalOfMonth", 1, 256, {8, 8}, 36};
inline constexpr NumberParameter kRowIntervalOfMonth{"RowIntervalOfMonth", 1, 10000, {9, 9}, 36};

/// The parameters that only the yearly calendar has.
template <typename Set, typename Visit> void VisitYearlyParameters(Set& set, Visit& visit)
{
    visit(NumberParameter{"MonthLayout", 1, 12, {3, 3}}, set.MonthLayout);
    visit(kColIntervalOfMonth, set.ColIntervalOfMonth);
    visit(kRowIntervalOfMonth, set.RowIntervalOfMonth);
}

/// Calls visit(kind, field) for each parameter of a set, constant or not, in the order of a
/// parameter file. Holidays come after the parameters and are not visited.
template <typename Set, typename Visit> void VisitParameters(Set& set, Visit&& visit)
{
    using Cell = CellPosition;
    visit(FlagParameter{"Output", {true, false}}, set.Output);
    visit(SheetNameParameter{"SheetName", {"Sheet2", "Sheet1"}}, set.SheetName);
    visit(FirstDayParameter{"FirstDayOfWeek"}, set.FirstDayOfWeek);
    if constexpr (std::is_base_of_v<YearlyParameters, Set>)
        VisitYearlyParameters(set, visit);
    visit(CellParameter{"FirstCellOfDay", {"B5", "B5"}, [](Cell) { return kDefaultFirstDay; }},
          set.FirstCellOfDay);
    visit(kColIntervalOfDay, set.ColIntervalOfDay);
    visit(kRowIntervalOfDay, set.RowIntervalOfDay);
    visit(FlagParameter{"OutWeekday"}, set.OutWeekday);
    visit(CellParameter{"FirstCellOfWeekday",
                        {"", "B4"},
                        [](Cell day) {
                            return Cell{std::max(day.row - 1, 1), day.column};
                        }},
          set.FirstCellOfWeekday);
    visit(WeekdayNamesParameter{"WeekdayName"}, set.WeekdayName);
    visit(FlagParameter{"OutMonth"}, set.OutMonth);
    visit(CellParameter{"FirstCellOfMonth",
                        {"", ""},
                        [](Cell day) {
                            return Cell{std::max(day.row - 2, 1), day.column};
                        }},
          set.FirstCellOfMonth);
    visit(MonthNamesParameter{"MonthName"}, set.MonthName);
    visit(FlagParameter{"OutYear"}, set.OutYear);
    visit(CellParameter{"FirstCellOfYear",
                        {"", "B1"},
                        [](Cell day) {
                            return Cell{1, day.column};
                        }},
          set.FirstCellOfYear);
    visit(FlagParameter{"OutHoliday"}, set.OutHoliday);
    visit(CellParameter{"FirstCellOfHoliday",
                        {"", "B6"},
                        [](Cell day) {
                            return Cell{day.row + 1, day.column};
                        }},
          set.FirstCellOfHoliday);
    visit(NumberParameter{"MultiHolidays", 0, 2, {0, 0}}, set.MultiHolidays);
}

} // namespace orrery::model
