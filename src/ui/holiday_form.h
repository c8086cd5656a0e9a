#pragma once

#include "app/countries.h"
#include "app/working_sets.h"
#include "holidays/files/holiday_readers.h"
#include "ui/desktop.h"
#include "ui/form.h"
#include "ui/holiday_additions.h"
#include "ui/holiday_rules.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

namespace orrery::ui {

inline constexpr const char* kTemplateEntry = "(Template)";

/// The holidays of a calendar that is being edited. Both must outlive the form.
struct EditedHolidays {
    holidays::HolidayList& list;
    holidays::HolidayChoice& choice; ///< which of them are shown
};

/// The dialog that shows a calendar's holidays and can load others (frmHoliday).
class HolidayForm : public Form {
public:
    /// Also does what `Form_Load` should: shows a copy of the edited list. With `templateHasFile`
    /// the template's own holidays can be chosen too. If the user chose an entry, OK copies the
    /// shown list to `edited`, and with it or a chosen region, kind or language the choice; then it
    /// calls `onChanged`. With a year, rules have their next day from then on.
    HolidayForm(holidays::CalendarKind calendarKind, app::TemplateLocation location,
                bool templateHasFile, EditedHolidays edited, std::optional<int> year,
                Desktop& desktop, std::function<void()> onChanged);

    /// The user chose a file: reads and shows it.
    void cboHolidayFile_Click();
    /// Lets the user find a country or region, then chooses its file as `cboHolidayFile_Click`. A
    /// shipped file that the holiday folder lacks is copied there.
    void cmdCountry_Click();
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
    Label lblProblems{"lblProblems"}; ///< lines of the file that was read last that are not read
    Button cmdCountry{"cmdCountry", "Co&untry..."}; ///< visible where countries are known
    Button cmdOK{"cmdOK", "&OK"};
    Button cmdCancel{"cmdCancel", "&Cancel"};
    HolidayRules rules;
    HolidayAdditions additions;

private:
    void Form_Load();
    bool HasCalendar() const;
    bool IsTemplateChosen() const;
    const std::string& ChosenFile() const;       ///< its name
    std::filesystem::path TemplatesFile() const; ///< its parameters
    /// The region, kinds and language that are saved for the calendar.
    holidays::HolidayChoice ReadTemplateChoice() const;
    void ShowOwnChange();
    /// Reads the chosen file into the shown list, whose further files stay if it is no template's.
    /// False, without a change, if the list has no room for it.
    bool ReadChosenFile();
    /// Those whose file is in the holiday folder or can be copied there.
    std::vector<app::Country> Countries() const;
    /// The system's country, then what the user chose last.
    std::vector<app::CountryPlace> FirstPlaces(const std::vector<app::Country>& countries) const;
    /// The entry of a file, which is added if it is missing.
    int EntryOf(const std::string& file);

    const holidays::CalendarKind calendarKind_;
    const app::TemplateLocation location_;
    const bool templateHasFile_;
    EditedHolidays edited_;
    Desktop& desktop_;
    std::function<void()> onChanged_;
    holidays::HolidayList shown_;
    int shownEntry_ = -1; ///< of `cboHolidayFile`
};

} // namespace orrery::ui
