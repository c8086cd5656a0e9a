#pragma once

#include "model/parameters.h"
#include "ui/parameter_tab.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace orrery::ui {

/// The fields of a tab that the model sheet shows: first cells, then intervals.
enum class Field : std::uint8_t {
    Day,
    Weekday,
    Month,
    Year,
    Holiday,
    ColInterval,
    RowInterval,
    ColIntervalOfMonth,
    RowIntervalOfMonth
};

inline constexpr std::array kAllFields{Field::Day,
                                       Field::Weekday,
                                       Field::Month,
                                       Field::Year,
                                       Field::Holiday,
                                       Field::ColInterval,
                                       Field::RowInterval,
                                       Field::ColIntervalOfMonth,
                                       Field::RowIntervalOfMonth};
inline constexpr std::array kCellFields{Field::Day, Field::Weekday, Field::Month, Field::Year,
                                        Field::Holiday};

/// What belongs to a field that holds a first cell.
struct CellField {
    const char* noun; ///< what its cells show: "day"
    TextBox ParameterTab::*box;
    Label ParameterTab::*label;
    model::CellPosition model::CalendarParameters::*cell;
};
const CellField& PartsOf(Field cellField);

/// Whether the field holds a first cell; else it holds an interval.
bool IsCellField(Field field);
/// "first cell of day", "col interval of month".
std::string NameOf(Field field);
/// The field's text box, or nullptr if the tab has none.
TextBox* BoxOf(ParameterTab& tab, Field field);
const TextBox* BoxOf(const ParameterTab& tab, Field field);
/// The field whose text box has that name.
std::optional<Field> FieldNamed(const ParameterTab& tab, const std::string& controlName);

/// What the fields of a tab say, as far as they can be read.
struct TabValues {
    /// A cell that cannot be read is absent, an interval or a layout 0. Holidays and the sheet's
    /// name are left out.
    model::YearlyParameters set;
    bool isYearly = false;
    friend bool operator==(const TabValues&, const TabValues&) = default;
};

TabValues ReadTab(const ParameterTab& tab);

/// The largest number that the dialog accepts for an interval; the smallest is 1.
std::int32_t LargestInterval(Field intervalField);

} // namespace orrery::ui
