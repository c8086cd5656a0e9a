#include "ui/parameter_checks.h"

#include "model/parameter_table.h"
#include "util/checked.h"
#include "util/numbers.h"
#include "util/text.h"

#include <cmath>
#include <vector>

namespace orrery::ui {
namespace {

// A check is a function that returns nothing if it passes. It reads the texts only when it is
// called, so that it may rely on the checks before it.

template <typename... Checks> std::optional<Problem> FirstProblem(const Checks&... checks)
{
    std::optional<Problem> problem;
    static_cast<void>(((problem = checks()).has_value() || ...));
    return problem;
}

template <typename Check> auto When(bool applies, const Check& check)
{
    return [applies, check] { return applies ? check() : std::nullopt; };
}

template <typename Passes>
auto Require(const Passes& passes, const std::string& message, const Control& focus)
{
    return [passes, message, &focus]() -> std::optional<Problem> {
        if (passes())
            return std::nullopt;
        return Problem{message, &focus};
    };
}

/// A name of blanks counts as a name.
auto HasSheetName(const TextBox& box)
{
    return Require([&box] { return !box.text.empty(); }, "Please input sheet name.", box);
}

auto HasSelection(const ComboBox& list, const std::string& what)
{
    return Require([&list] { return list.HasSelection(); }, "Please select the " + what + ".",
                   list);
}

/// The number is in the parameter's range for the dialog after rounding halves to even. `name` is
/// "col interval of day" or the like.
auto HasInterval(const TextBox& box, const std::string& name,
                 const model::NumberParameter& parameter, std::int32_t maxInMessage)
{
    const auto passes = [&box, parameter] {
        const double number = std::nearbyint(util::ReadNumber(box.text).value_or(0));
        return number >= parameter.low && number <= parameter.dialogHigh;
    };
    return Require(passes, "The " + name + " should be 1 to " + std::to_string(maxInMessage) + ".",
                   box);
}

auto HasInterval(const TextBox& box, const std::string& name,
                 const model::NumberParameter& parameter)
{
    return HasInterval(box, name, parameter, parameter.dialogHigh);
}

/// Something that is written starting at its first cell.
struct Element {
    std::string name; ///< such as "day"
    const TextBox& firstCell;
};

std::optional<model::CellPosition> FirstCellOf(const Element& element)
{
    return model::ReadCell(util::Trim(element.firstCell.text));
}

auto HasCell(const Element& element)
{
    return Require([element] { return FirstCellOf(element).has_value(); },
                   "The first cell of " + element.name + " is not valid.", element.firstCell);
}

/// A distance from an element's first cell to its last: an interval, multiplied.
struct Distance {
    std::string interval; ///< such as "col interval of day"
    std::int32_t times;
    const TextBox* box; ///< null if the interval is not read
};

std::int32_t CellCount(const Distance& distance)
{
    return distance.box == nullptr ? 0
                                   : util::Multiply32(distance.times, IntervalOf(*distance.box));
}

// A month has 7 weekdays side by side and 6 weeks below each other.

Distance AcrossWeek(const ParameterTab& tab)
{
    return {"col interval of day", 6, &tab.txtColInterval};
}

Distance DownWeeks(const ParameterTab& tab)
{
    return {"row interval of day", 5, &tab.txtRowInterval};
}

Distance AcrossMonths(const YearlyTab& tab)
{
    return {"col interval of month", tab.MonthsAcross().value_or(1) - 1,
            &tab.txtColIntervalofMonth};
}

Distance DownMonths(const YearlyTab& tab)
{
    constexpr int monthsOfYear = 12;
    return {"row interval of month", monthsOfYear / tab.MonthsAcross().value_or(monthsOfYear) - 1,
            tab.HasSeveralRows() ? &tab.txtRowIntervalofMonth : nullptr};
}

/// "first cell of day, col interval of day or col interval of month"
std::string Remedies(const Element& element, const std::vector<Distance>& distances)
{
    std::string text = "first cell of " + element.name;
    for (const Distance& distance : distances)
        text += (&distance == &distances.back() ? " or " : ", ") + distance.interval;
    return text;
}

/// The columns or the rows of a sheet.
struct Axis {
    const char* name;
    std::int32_t limit;
    std::int32_t model::CellPosition::*position;
};

constexpr Axis kColumns{"col", model::kMaxColumn, &model::CellPosition::column};
constexpr Axis kRows{"row", model::kMaxRow, &model::CellPosition::row};

/// The last column or row of the element must be inside the sheet. The element's cell and the
/// intervals must have passed their checks before.
auto Fits(const Axis& axis, const Element& element, const std::vector<Distance>& distances,
          const Control& focus)
{
    const auto fits = [&axis, element, distances] {
        std::int32_t last = FirstCellOf(element).value().*axis.position;
        for (const Distance& distance : distances)
            last = util::Add32(last, CellCount(distance));
        return last <= axis.limit;
    };
    return Require(fits,
                   std::string("The max ") + axis.name + " of " + element.name +
                       " is greater than " + std::to_string(axis.limit) +
                       ",\r\nplease change the " + Remedies(element, distances) + ".",
                   focus);
}

auto Fits(const Axis& axis, const Element& element, const std::vector<Distance>& distances)
{
    return Fits(axis, element, distances, element.firstCell);
}

} // namespace

std::optional<Problem> CheckMonthly(const ParameterTab& tab)
{
    const Element day{"day", tab.txtFirstCellofDay};
    const Element weekday{"weekday", tab.txtFirstCellofWeekday};
    const Element holiday{"holiday", tab.txtFirstCellofHoliday};
    const bool weekdays = tab.chkOutWeekday.checked;
    const bool months = tab.chkOutMonth.checked;
    const bool holidays = tab.chkOutHoliday.checked;
    return FirstProblem(
        HasSheetName(tab.txtSheetName), HasCell(day),
        HasInterval(tab.txtColInterval, "col interval of day", model::kColIntervalOfDay),
        HasInterval(tab.txtRowInterval, "row interval of day", model::kRowIntervalOfDay),
        Fits(kColumns, day, {AcrossWeek(tab)}), Fits(kRows, day, {DownWeeks(tab)}),
        When(weekdays, HasCell(weekday)),
        When(weekdays, HasSelection(tab.cboWeekdayName, "name of weekdays")),
        When(weekdays, Fits(kColumns, weekday, {AcrossWeek(tab)})),
        When(months, HasCell({"month", tab.txtFirstCellofMonth})),
        When(months, HasSelection(tab.cboMonthName, "name of months")),
        When(tab.chkOutYear.checked, HasCell({"year", tab.txtFirstCellofYear})),
        When(holidays, HasCell(holiday)),
        // Kept on purpose: only here does a holiday that does not fit move the focus to the first
        // day.
        When(holidays, Fits(kColumns, holiday, {AcrossWeek(tab)}, tab.txtFirstCellofDay)),
        When(holidays, Fits(kRows, holiday, {DownWeeks(tab)}, tab.txtFirstCellofDay)));
}

std::optional<Problem> CheckYearly(const YearlyTab& tab)
{
    const Element day{"day", tab.txtFirstCellofDay};
    const Element weekday{"weekday", tab.txtFirstCellofWeekday};
    const Element month{"month", tab.txtFirstCellofMonth};
    const Element holiday{"holiday", tab.txtFirstCellofHoliday};
    const bool weekdays = tab.chkOutWeekday.checked;
    const bool months = tab.chkOutMonth.checked;
    const bool holidays = tab.chkOutHoliday.checked;
    return FirstProblem(
        HasSheetName(tab.txtSheetName), HasCell(day),
        HasSelection(tab.cboLayoutofMonths, "layout of months"),
        When(tab.HasSeveralColumns(),
             HasInterval(tab.txtColIntervalofMonth, "col interval of month",
                         model::kColIntervalOfMonth)),
        // Kept on purpose: the allowed range is smaller than the message says.
        When(tab.HasSeveralRows(),
             HasInterval(tab.txtRowIntervalofMonth, "row interval of month",
                         model::kRowIntervalOfMonth, model::kRowIntervalOfMonth.high)),
        HasInterval(tab.txtColInterval, "col interval of day", model::kColIntervalOfDay),
        HasInterval(tab.txtRowInterval, "row interval of day", model::kRowIntervalOfDay),
        Fits(kColumns, day, {AcrossWeek(tab), AcrossMonths(tab)}),
        Fits(kRows, day, {DownWeeks(tab), DownMonths(tab)}), When(weekdays, HasCell(weekday)),
        When(weekdays, HasSelection(tab.cboWeekdayName, "name of weekdays")),
        When(weekdays, Fits(kColumns, weekday, {AcrossWeek(tab), AcrossMonths(tab)})),
        When(weekdays, Fits(kRows, weekday, {DownMonths(tab)})), When(months, HasCell(month)),
        When(months, HasSelection(tab.cboMonthName, "name of months")),
        When(months, Fits(kColumns, month, {AcrossMonths(tab)})),
        When(months, Fits(kRows, month, {DownMonths(tab)})),
        When(tab.chkOutYear.checked, HasCell({"year", tab.txtFirstCellofYear})),
        When(holidays, HasCell(holiday)),
        When(holidays, Fits(kColumns, holiday, {AcrossWeek(tab), AcrossMonths(tab)})),
        When(holidays, Fits(kRows, holiday, {DownWeeks(tab), DownMonths(tab)})));
}

} // namespace orrery::ui
