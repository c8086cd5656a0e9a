#include "ui/pointing/tab_fields.h"

#include "model/parameter_table.h"
#include "util/numbers.h"
#include "util/text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace orrery::ui {
namespace {

model::CellPosition ReadCellBox(const TextBox& box)
{
    return model::ReadCell(util::Trim(box.text)).value_or(model::CellPosition());
}

std::int32_t ReadInterval(const TextBox& box, const model::NumberParameter& parameter)
{
    const double number = std::nearbyint(util::ReadNumber(box.text).value_or(0));
    if (number < parameter.low || number > parameter.high)
        return 0;
    return static_cast<std::int32_t>(number);
}

constexpr std::array kCells{
    CellField{"day", &ParameterTab::txtFirstCellofDay, &ParameterTab::lblFirstCellofDay,
              &model::CalendarParameters::FirstCellOfDay},
    CellField{"weekday", &ParameterTab::txtFirstCellofWeekday, &ParameterTab::lblFirstCellofWeekday,
              &model::CalendarParameters::FirstCellOfWeekday},
    CellField{"month", &ParameterTab::txtFirstCellofMonth, &ParameterTab::lblFirstCellofMonth,
              &model::CalendarParameters::FirstCellOfMonth},
    CellField{"year", &ParameterTab::txtFirstCellofYear, &ParameterTab::lblFirstCellofYear,
              &model::CalendarParameters::FirstCellOfYear},
    CellField{"holiday", &ParameterTab::txtFirstCellofHoliday, &ParameterTab::lblFirstCellofHoliday,
              &model::CalendarParameters::FirstCellOfHoliday},
};
static_assert(kCells.size() == kCellFields.size());

const model::NumberParameter& ParameterOf(Field intervalField)
{
    switch (intervalField) {
    case Field::ColInterval:
        return model::kColIntervalOfDay;
    case Field::RowInterval:
        return model::kRowIntervalOfDay;
    case Field::ColIntervalOfMonth:
        return model::kColIntervalOfMonth;
    default:
        return model::kRowIntervalOfMonth;
    }
}

} // namespace

const CellField& PartsOf(Field cellField)
{
    return kCells.at(static_cast<std::size_t>(cellField));
}

bool IsCellField(Field field)
{
    return field <= Field::Holiday;
}

std::string NameOf(Field field)
{
    if (IsCellField(field))
        return std::string("first cell of ") + PartsOf(field).noun;
    switch (field) {
    case Field::ColInterval:
        return "col interval of day";
    case Field::RowInterval:
        return "row interval of day";
    case Field::ColIntervalOfMonth:
        return "col interval of month";
    default:
        return "row interval of month";
    }
}

TextBox* BoxOf(ParameterTab& tab, Field field)
{
    if (IsCellField(field))
        return &(tab.*PartsOf(field).box);
    auto* const grid = dynamic_cast<YearlyTab*>(&tab);
    switch (field) {
    case Field::ColInterval:
        return &tab.txtColInterval;
    case Field::RowInterval:
        return &tab.txtRowInterval;
    case Field::ColIntervalOfMonth:
        return grid == nullptr ? nullptr : &grid->txtColIntervalofMonth;
    default:
        return grid == nullptr ? nullptr : &grid->txtRowIntervalofMonth;
    }
}

const TextBox* BoxOf(const ParameterTab& tab, Field field)
{
    return BoxOf(const_cast<ParameterTab&>(tab), field); // NOLINT(*-const-cast): only looked at
}

std::optional<Field> FieldNamed(const ParameterTab& tab, const std::string& controlName)
{
    const auto* const found = std::find_if(kAllFields.begin(), kAllFields.end(), [&](Field field) {
        const TextBox* const box = BoxOf(tab, field);
        return box != nullptr && box->name == controlName;
    });
    return found == kAllFields.end() ? std::nullopt : std::optional(*found);
}

TabValues ReadTab(const ParameterTab& tab)
{
    TabValues values;
    model::YearlyParameters& set = values.set;
    set.Output = tab.chkOutCalendar.checked;
    set.FirstDayOfWeek = static_cast<std::int16_t>(tab.cboFirstDayofWeek.selected == 1 ? 1 : 0);
    set.FirstCellOfDay = ReadCellBox(tab.txtFirstCellofDay);
    set.ColIntervalOfDay = ReadInterval(tab.txtColInterval, model::kColIntervalOfDay);
    set.RowIntervalOfDay = ReadInterval(tab.txtRowInterval, model::kRowIntervalOfDay);
    set.OutWeekday = tab.chkOutWeekday.checked;
    set.FirstCellOfWeekday = ReadCellBox(tab.txtFirstCellofWeekday);
    set.WeekdayName = static_cast<std::int16_t>(tab.cboWeekdayName.selected);
    set.OutMonth = tab.chkOutMonth.checked;
    set.FirstCellOfMonth = ReadCellBox(tab.txtFirstCellofMonth);
    set.MonthName = static_cast<std::int16_t>(tab.cboMonthName.selected);
    set.OutYear = tab.chkOutYear.checked;
    set.FirstCellOfYear = ReadCellBox(tab.txtFirstCellofYear);
    set.OutHoliday = tab.chkOutHoliday.checked;
    set.FirstCellOfHoliday = ReadCellBox(tab.txtFirstCellofHoliday);
    set.MonthLayout = 1;
    set.ColIntervalOfMonth = set.RowIntervalOfMonth = 0;
    if (const auto* const grid = dynamic_cast<const YearlyTab*>(&tab)) {
        values.isYearly = true;
        set.MonthLayout = grid->MonthsAcross().value_or(0);
        set.ColIntervalOfMonth =
            ReadInterval(grid->txtColIntervalofMonth, model::kColIntervalOfMonth);
        set.RowIntervalOfMonth =
            ReadInterval(grid->txtRowIntervalofMonth, model::kRowIntervalOfMonth);
    }
    return values;
}

std::int32_t LargestInterval(Field intervalField)
{
    return ParameterOf(intervalField).dialogHigh;
}

} // namespace orrery::ui
