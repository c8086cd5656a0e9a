#pragma once

#include "model/name_lists.h"
#include "model/parameters.h"
#include "ui/controls.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrery::ui {

// The greatest intervals that fields and checks let pass; the least is 1.
inline constexpr int kMaxColInterval = 36; ///< of days and of months
inline constexpr int kMaxRowIntervalOfDay = 10000;
inline constexpr int kMaxRowIntervalOfMonth = 36;

/// What one tab of the parameter dialog shows: the controls of one calendar. Both calendars have
/// the same ones; their names carry a letter, "M" or "Y", behind the prefix (txtMSheetName). The
/// table of names outlives the tab.
class ParameterTab {
public:
    ParameterTab(char letter, std::string tabKey, std::string outputCaption,
                 const model::NameTables& names);
    virtual ~ParameterTab() = default;
    ParameterTab(const ParameterTab&) = delete;
    ParameterTab& operator=(const ParameterTab&) = delete;

    // An output check box was clicked: the controls that depend on it follow.
    virtual void chkOutCalendar_Click();
    void chkOutWeekday_Click();
    void chkOutMonth_Click();
    void chkOutYear_Click();
    void chkOutHoliday_Click();

    /// Shows the first holiday of the working list.
    void ShowHolidaySample();
    /// Fills the controls from a record, without marks of change.
    void Show(const model::CalendarParameters& parameters);
    /// Writes the controls into the record; without output only `Output`. A text that is no cell
    /// becomes -1 in row and column. Throws as `IntervalOf` does.
    void Save(model::CalendarParameters& parameters) const;
    /// Whether the user changed a control or the holidays.
    bool Changed() const;
    void ClearChanged();

    const std::string key; ///< "MCalendar" or "YCalendar"

    CheckBox chkOutCalendar;
    Label lblSheetName;
    TextBox txtSheetName;
    Label lblFirstDayofWeek;
    ComboBox cboFirstDayofWeek;
    Label lblFirstCellofDay;
    TextBox txtFirstCellofDay;
    Label lblColInterval;
    TextBox txtColInterval;
    UpDown updColInterval;
    Label lblRowInterval;
    TextBox txtRowInterval;
    UpDown updRowInterval;
    CheckBox chkOutWeekday;
    Label lblFirstCellofWeekday;
    TextBox txtFirstCellofWeekday;
    Label lblWeekdayName;
    ComboBox cboWeekdayName;
    CheckBox chkOutMonth;
    Label lblFirstCellofMonth;
    TextBox txtFirstCellofMonth;
    Label lblMonthName;
    ComboBox cboMonthName;
    CheckBox chkOutYear;
    Label lblFirstCellofYear;
    TextBox txtFirstCellofYear;
    CheckBox chkOutHoliday;
    Label lblFirstCellofHoliday;
    TextBox txtFirstCellofHoliday;
    Label lblMultiHolidays;
    ComboBox cboMultiHolidays;
    Label lblHolidaySLabel;
    Label lblHolidaySample;
    Button cmdChangeHoliday;

    holidays::HolidayList holidays; ///< the working list, which the holiday viewer replaces
    bool holidaysChanged = false;

protected:
    std::vector<Control*> fields_; ///< whose changes count

private:
    bool IsOn(const CheckBox& inner) const;

    const model::NameTables& names_;
};

/// The yearly tab has the grid of months as well.
class YearlyTab : public ParameterTab {
public:
    explicit YearlyTab(const model::NameTables& names);

    void chkOutCalendar_Click() override;
    /// A layout was chosen: one column or one row of months has no interval between them.
    void cboLayoutofMonths_Click();
    void Show(const model::YearlyParameters& parameters);
    void Save(model::YearlyParameters& parameters) const;

    /// Months side by side in the chosen layout: 1, 2, 3, 4, 6 or 12; nothing where none is chosen.
    std::optional<std::int16_t> MonthsAcross() const;
    /// False only for the layout that has one month side by side.
    bool HasMonthsBeside() const { return MonthsAcross() != 1; }
    /// False only for the layout that has one row of months.
    bool HasMonthsBelow() const { return MonthsAcross() != 12; }

    Label lblLayoutofMonths;
    ComboBox cboLayoutofMonths;
    Label lblColIntervalofMonth;
    TextBox txtColIntervalofMonth;
    UpDown updColIntervalofMonth;
    Label lblRowIntervalofMonth;
    TextBox txtRowIntervalofMonth;
    UpDown updRowIntervalofMonth;

private:
    void EnableColInterval(bool enabled);
    void EnableRowInterval(bool enabled);
};

/// The whole number of an interval's text, rounded with halves to even. Throws Error(NotNumeric)
/// with the text, or OverflowError beyond 32 bits.
std::int32_t IntervalOf(const TextBox& box);

} // namespace orrery::ui
