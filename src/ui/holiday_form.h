#pragma once

#include "app/working_sets.h"
#include "holidays/holiday_readers.h"
#include "ui/desktop.h"
#include "ui/form.h"

#include <functional>
#include <vector>

namespace orrery::ui {

inline constexpr const char* kTemplateEntry = "(Template)";

/// The dialog that shows the holidays of a calendar and loads others (frmHoliday).
class HolidayForm : public Form {
public:
    /// Does what `Form_Load` does: shows a copy of the edited list. With `templateHasFile` the
    /// template's own holidays can be chosen, too. OK puts the list on show into `edited` and calls
    /// `onChanged`, but only when the user chose an entry.
    HolidayForm(holidays::CalendarKind calendarKind, app::TemplatePlace place, bool templateHasFile,
                holidays::HolidayList& edited, std::function<void()> onChanged);

    /// The user chose a file: it is read and shown.
    void cboHolidayFile_Click();
    void cmdOK_Click();
    void cmdCancel_Click() { Close(); }
    /// Makes a line of every definition: date, tab, weekday, tab, name.
    void ShowHolidays();

    Label lblHolidayFile{"lblHolidayFile", "Holiday &File:"};
    ComboBox cboHolidayFile{"cboHolidayFile"};
    Label lblHolidays{"lblHolidays", "Holidays &List:"};
    Label lblHolidayList{"lblHolidayList", " Date        Weekday     Name"};
    ListBox lstHoliday{"lstHoliday"};
    /// Where the columns of `lstHoliday` begin, in quarters of a character's width.
    const std::vector<int> tabStops;
    Button cmdOK{"cmdOK", "&OK"};
    Button cmdCancel{"cmdCancel", "&Cancel"};

private:
    void Form_Load();
    bool HasCalendar() const;

    const holidays::CalendarKind calendarKind_;
    const app::TemplatePlace place_;
    const bool templateHasFile_;
    holidays::HolidayList& edited_;
    std::function<void()> onChanged_;
    holidays::HolidayList shown_;
};

} // namespace orrery::ui
