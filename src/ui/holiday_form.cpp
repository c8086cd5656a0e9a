#include "ui/holiday_form.h"

#include "app/system_country.h"
#include "app/template_folder.h"
#include "holidays/language/list_files.h"
#include "model/parameter_file.h"
#include "ui/country_form.h"
#include "ui/line_problems.h"
#include "util/file_read.h"
#include "util/paths.h"

#include <algorithm>
#include <utility>

namespace orrery::ui {
namespace {

using holidays::CalendarKind;

/// Tab stops after columns of these widths in characters.
std::vector<int> TabStops(const std::vector<int>& columnWidths)
{
    constexpr int unitsPerCharacter = 4;
    std::vector<int> stops;
    stops.reserve(columnWidths.size());
    int stop = 0;
    for (const int width : columnWidths)
        stops.push_back(stop += width * unitsPerCharacter);
    return stops;
}

/// Unknown kinds have no word.
std::string_view WeekdayColumn(std::int16_t kind)
{
    const auto word = static_cast<std::size_t>(kind);
    return word < holidays::kKindWords.size() ? holidays::kKindWords[word] : std::string_view();
}

} // namespace

HolidayForm::HolidayForm(CalendarKind calendarKind, app::TemplateLocation location,
                         bool templateHasFile, EditedHolidays edited, std::optional<int> year,
                         Desktop& desktop, std::function<void()> onChanged)
    : Form("frmHoliday", "Holiday", "holidays"), tabStops(TabStops({8, 10})),
      rules(edited.choice, year), additions({shown_, rules, location.holidayFolder, year, desktop,
                                             lblProblems, [this] { ShowOwnChange(); }}),
      calendarKind_(calendarKind), location_(std::move(location)),
      templateHasFile_(templateHasFile), edited_(edited), desktop_(desktop),
      onChanged_(std::move(onChanged))
{
    Form_Load();
}

void HolidayForm::Form_Load()
{
    if (templateHasFile_)
        cboHolidayFile.entries.emplace_back(kTemplateEntry);
    for (std::string& file : util::ListFiles(location_.holidayFolder))
        cboHolidayFile.entries.push_back(std::move(file));
    if (HasCalendar())
        shown_ = edited_.list;
    ShowHolidays();
    rules.Show(holidays::RulesOf(shown_));
    additions.ShowSelection();
    cboHolidayFile.selected = -1;
    cboHolidayFile.changed = false;
    cmdCountry.visible = !Countries().empty();
}

bool HolidayForm::HasCalendar() const
{
    return calendarKind_ == CalendarKind::Monthly || calendarKind_ == CalendarKind::Yearly;
}

void HolidayForm::ShowHolidays()
{
    lstHoliday.lines.clear();
    for (const holidays::HolidayDef& rule : shown_) {
        std::string line = holidays::FormatDateCode(rule);
        ((line += '\t') += WeekdayColumn(rule.Kind)) += '\t';
        lstHoliday.lines.push_back(line + rule.Name);
    }
}

void HolidayForm::cboHolidayFile_Click()
{
    if (!cboHolidayFile.HasSelection() || !cboHolidayFile.changed)
        return;
    if (!ReadChosenFile()) {
        desktop_.ShowMessage("The list has no room for " + ChosenFile() +
                             " beside the days and files that were added. Remove some first.");
        cboHolidayFile.selected = shownEntry_;
        cboHolidayFile.changed = shownEntry_ >= 0;
        return;
    }
    shownEntry_ = cboHolidayFile.selected;
    ShowHolidays();
    if (IsTemplateChosen() && HasCalendar())
        rules.Show(holidays::RulesOf(shown_), ReadTemplateChoice());
    else
        rules.ShowOther(holidays::RulesOf(shown_));
    additions.ShowSelection();
}

std::vector<app::Country> HolidayForm::Countries() const
{
    auto countries = app::ReadCountries(location_.installed);
    std::erase_if(countries, [&](const app::Country& country) {
        return !util::FileExists(location_.holidayFolder + country.file) &&
               !util::FileExists(app::ShippedHolidayFile(location_.installed, country.file));
    });
    return countries;
}

std::vector<app::CountryPlace>
HolidayForm::FirstPlaces(const std::vector<app::Country>& countries) const
{
    std::vector<app::CountryPlace> first;
    const std::string code = app::SystemCountry();
    for (const app::Country& country : countries) {
        if (country.code == code)
            first.push_back({country.file, ""});
    }
    for (app::CountryPlace& place : app::LastPlaces(location_.settingsFile))
        first.push_back(std::move(place));
    return first;
}

int HolidayForm::EntryOf(const std::string& file)
{
    auto& entries = cboHolidayFile.entries;
    const auto files = entries.begin() + (templateHasFile_ ? 1 : 0);
    auto found = std::find(files, entries.end(), file);
    if (found == entries.end()) {
        app::CopyFileInto(location_.holidayFolder,
                          app::ShippedHolidayFile(location_.installed, file));
        found = entries.insert(entries.end(), file);
    }
    return static_cast<int>(found - entries.begin());
}

void HolidayForm::cmdCountry_Click()
{
    const auto countries = Countries();
    CountryForm form(countries, FirstPlaces(countries));
    desktop_.ShowModal(form);
    const auto place = form.Chosen();
    if (!form.isAccepted || !place)
        return;
    const int entry = EntryOf(place->file);
    cboHolidayFile.Select(entry);
    cboHolidayFile_Click();
    if (cboHolidayFile.selected != entry)
        return; // there was no room for it
    rules.ChooseRegion(place->region);
    app::RememberPlace(location_.settingsFile, *place);
}

bool HolidayForm::IsTemplateChosen() const
{
    return templateHasFile_ && cboHolidayFile.selected == 0;
}

const std::string& HolidayForm::ChosenFile() const
{
    return cboHolidayFile.entries[static_cast<std::size_t>(cboHolidayFile.selected)];
}

std::filesystem::path HolidayForm::TemplatesFile() const
{
    return util::ToPath(model::ParameterFilePath(location_.templateFolder, location_.templateFile));
}

holidays::HolidayChoice HolidayForm::ReadTemplateChoice() const
{
    model::NameTables names;
    model::ParameterSets saved;
    model::ReadParameterFile(TemplatesFile(), names, saved);
    return calendarKind_ == CalendarKind::Monthly ? saved.Monthly.ShownHolidays
                                                  : saved.Yearly.ShownHolidays;
}

bool HolidayForm::ReadChosenFile()
{
    if (IsTemplateChosen()) {
        lblProblems.ShowText(HasCalendar() ? SummarizeProblems(holidays::ReadTemplateHolidays(
                                                 calendarKind_, TemplatesFile(), shown_))
                                           : "");
        return true;
    }
    holidays::HolidayList chosen;
    const auto problems =
        holidays::ReadHolidayFile(util::ToPath(location_.holidayFolder + ChosenFile()), chosen);
    if (!holidays::PutFirstFile(shown_, chosen))
        return false;
    lblProblems.ShowText(SummarizeProblems(problems));
    return true;
}

void HolidayForm::ShowOwnChange()
{
    ShowHolidays();
    rules.Update(holidays::RulesOf(shown_));
}

void HolidayForm::cmdOK_Click()
{
    Accept();
    const bool isListChanged = cboHolidayFile.changed || additions.HasChanged();
    if (!HasCalendar() || !(isListChanged || rules.HasChanged()))
        return;
    if (isListChanged)
        edited_.list = shown_;
    edited_.choice = rules.Choice();
    onChanged_();
}

} // namespace orrery::ui
