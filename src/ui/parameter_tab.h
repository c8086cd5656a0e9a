#pragma once

#include "model/name_lists.h"
#include "model/parameters.h"
#include "ui/controls.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orrery::ui {

/// A tab of the parameter dialog: the controls of one calendar. Both calendars have the same
/// controls; their names have the letter "M" or "Y" after the prefix (txtMSheetName). The name
/// tables must outlive the tab.
class ParameterTab {
public:
    ParameterTab(char letter, std::string tabKey, std::string outputCaption,
                 const model::NameTables& names);
    virtual ~ParameterTab() = default;
    ParameterTab(const ParameterTab&) = delete;
    ParameterTab& operator=(const ParameterTab&) = delete;

    // An output check box was clicked: enable or disable the controls that depend on it.
    virtual void chkOutCalendar_Click();
    void chkOutWeekday_Click();
    void chkOutMonth_Click();
    void chkOutYear_Click();
    void chkOutHoliday_Click();

    /// Shows the first holiday of the working list.
    void ShowHolidaySample();
    /// Fills the controls from a set and clears all `changed` marks.
    void Show(const model::CalendarParameters& parameters);
    /// Fills the controls like a user: those that then differ count as changed. The holidays stay.
    void Enter(const model::CalendarParameters& parameters);
    /// Stores the controls in the set; if the calendar is off, only `Output`. An invalid cell
    /// becomes -1 in row and column. Throws like `IntervalOf`.
    void Save(model::CalendarParameters& parameters) const;
    /// Whether the user changed a control or the holidays.
    bool Changed() const;
    void ClearChanged();

    const std::string key; ///< "MCalendar" or "YCalendar"

    CheckBox chkOutCalendar;
    Label lblSheetName;
    TextBox txtSheetName;
    Button cmdSheets; ///< lists the template's sheets
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
    Label lblHolidayProblems; ///< the rules of the parameter file that are not read

    holidays::HolidayList holidays;        ///< the edited list, which the holiday dialog replaces
    holidays::HolidayChoice holidayChoice; ///< which of them are shown; edited there, too
    bool holidaysChanged = false;

protected:
    /// Runs `show`, which shows a set, with the marks and the holidays that `Enter` promises.
    void EnterBy(const std::function<void()>& show);

    // The controls whose changes count.
    std::vector<TextBox*> texts_;
    std::vector<ComboBox*> lists_;
    std::vector<CheckBox*> checks_;

private:
    /// These controls with their values as text.
    std::vector<std::pair<Control*, std::string>> Values() const;
    bool IsOn(const CheckBox& inner) const;

    const model::NameTables& names_;
};

/// The yearly tab also has the grid of months.
class YearlyTab : public ParameterTab {
public:
    explicit YearlyTab(const model::NameTables& names);

    void chkOutCalendar_Click() override;
    /// A layout was chosen: a single column or row of months needs no interval.
    void cboLayoutofMonths_Click();
    void Show(const model::YearlyParameters& parameters);
    void Enter(const model::YearlyParameters& parameters);
    void Save(model::YearlyParameters& parameters) const;

    /// Months side by side in the chosen layout: 1, 2, 3, 4, 6 or 12; nothing if none is chosen.
    std::optional<std::int16_t> MonthsAcross() const;
    /// False only for the layout with one column of months.
    bool HasSeveralColumns() const { return MonthsAcross() != 1; }
    /// False only for the layout with one row of months.
    bool HasSeveralRows() const { return MonthsAcross() != 12; }

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

/// Reads an interval, rounded to a whole number with halves to even. Throws Error(NotNumeric) with
/// the text, or OverflowError beyond 32 bits.
std::int32_t IntervalOf(const TextBox& box);

} // namespace orrery::ui
