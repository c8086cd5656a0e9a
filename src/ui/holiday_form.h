#pragma once

#include "app/working_sets.h"
#include "holidays/files/holiday_readers.h"
#include "ui/desktop.h"
#include "ui/form.h"

#include <functional>
#include <vector>

namespace orrery::ui {

inline constexpr const char* kTemplateEntry = "(Template)";

/// The dialog that shows a calendar's holidays and can load others (frmHoliday).
class HolidayForm : public Form {
public:
    /// Also does what `Form_Load` should: shows a copy of the edited list. With `templateHasFile`
    /// the template's own holidays can be chosen too. If the user chose an entry, OK copies the
    /// shown list to `edited` and calls `onChanged`.
    HolidayForm(holidays::CalendarKind calendarKind, app::TemplateLocation location,
                bool templateHasFile, holidays::HolidayList& edited,
                std::function<void()> onChanged);

    /// The user chose a file: reads and shows it.
    void cboHolidayFile_Click();
    void cmdOK_Click();
    void cmdCancel_Click() { Close(); }
    /// Shows one line for each rule: date, tab, weekday, tab, name.
    void ShowHolidays();

    Label lblHolidayFile{"lblHolidayFile", "Holiday &File:"};
    ComboBox cboHolidayFile{"cboHolidayFile"};
    Label lblHolidays{"lblHolidays", "Holidays &List:"};
    Label lblHolidayList{"lblHolidayList", " Date        Weekday     Name"};
    ListBox lstHoliday{"lstHoliday"};
    /// Tab stops of `lstHoliday`, in quarters of a character's width.
    const std::vector<int> tabStops;
    Label lblProblems{"lblProblems"}; ///< lines of the chosen file that are not read
    Button cmdOK{"cmdOK", "&OK"};
    Button cmdCancel{"cmdCancel", "&Cancel"};

private:
    void Form_Load();
    bool HasCalendar() const;
    /// Reads the chosen file into the shown list; returns its lines that are not read.
    std::vector<holidays::LineProblem> ReadChosenFile();

    const holidays::CalendarKind calendarKind_;
    const app::TemplateLocation location_;
    const bool templateHasFile_;
    holidays::HolidayList& edited_;
    std::function<void()> onChanged_;
    holidays::HolidayList shown_;
};

} // namespace orrery::ui
