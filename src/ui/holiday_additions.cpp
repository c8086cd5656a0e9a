#include "ui/holiday_additions.h"

#include "app/today.h"
#include "holidays/files/holiday_readers.h"
#include "holidays/language/list_files.h"
#include "ui/import_form.h"
#include "ui/line_problems.h"
#include "ui/own_day_form.h"
#include "util/paths.h"

#include <algorithm>
#include <ctime>
#include <utility>

namespace orrery::ui {
namespace {

using holidays::OwnDay;

std::optional<OwnDay> OwnDayOf(const holidays::Rule* rule)
{
    return rule == nullptr ? std::nullopt : holidays::OwnDayOf(*rule);
}

/// The index among all rules of the last own day, of which there is one.
std::size_t LastOwnDay(const holidays::HolidayList& list)
{
    const holidays::RuleSet rules = holidays::RulesOf(list);
    std::size_t index = 0;
    for (const holidays::RuleSet* const file : holidays::FilesOf(rules)) {
        index += file->rules.size();
        if (file->name == holidays::kOwnDays)
            break;
    }
    return index - 1;
}

} // namespace

HolidayAdditions::HolidayAdditions(Dialog dialog) : dialog_(std::move(dialog)) {}

void HolidayAdditions::ShowSelection()
{
    const holidays::Rule* const rule = dialog_.rules.SelectedRule();
    cmdEditDay.enabled = OwnDayOf(rule).has_value();
    cmdRemove.enabled = rule != nullptr;
}

std::optional<OwnDay> HolidayAdditions::Ask(const std::optional<OwnDay>& day)
{
    OwnDayForm form(day, dialog_.year);
    dialog_.desktop.ShowModal(form);
    return form.isAccepted ? std::optional(form.Day()) : std::nullopt;
}

void HolidayAdditions::Take(bool hasRoom)
{
    if (!hasRoom)
        return dialog_.desktop.ShowMessage("The list is full: it has room for " +
                                           std::to_string(holidays::HolidayList::kCapacity) +
                                           " holidays. Remove some first.");
    hasChanged_ = true;
    dialog_.onChange();
    ShowSelection();
}

void HolidayAdditions::cmdAddDay_Click()
{
    const auto day = Ask(std::nullopt);
    if (!day)
        return;
    holidays::HolidayList days = FurtherFile(dialog_.list, holidays::kOwnDays);
    const bool wasFull = days.IsFull();
    AppendEntries(EntriesOf(*day), days);
    const bool hasRoom = !wasFull && PutFurtherFile(dialog_.list, holidays::kOwnDays, days);
    Take(hasRoom);
    if (hasRoom)
        dialog_.rules.Select(LastOwnDay(dialog_.list));
    ShowSelection();
}

void HolidayAdditions::cmdEditDay_Click()
{
    const holidays::Rule* const rule = dialog_.rules.SelectedRule();
    const auto old = OwnDayOf(rule);
    if (!old)
        return;
    if (const auto day = Ask(old))
        Take(ReplaceRule(dialog_.list, rule->line, EntriesOf(*day)));
}

void HolidayAdditions::cmdRemove_Click()
{
    if (const holidays::Rule* const rule = dialog_.rules.SelectedRule())
        Take(ReplaceRule(dialog_.list, rule->line, {}));
}

std::vector<HolidayAdditions::File> HolidayAdditions::Files() const
{
    std::vector<std::string> added = FurtherFilesOf(dialog_.list);
    std::erase(added, holidays::kOwnDays);
    std::vector<File> files;
    for (app::AddableFile& file : app::FindAddableFiles(dialog_.holidayFolder)) {
        if (file.name == holidays::kOwnDays)
            file.name += " (file)"; // it must not take the place of the calendar's own days
        const bool isAdded = std::erase(added, file.name) > 0;
        files.push_back({std::move(file), isAdded});
    }
    for (std::string& name : added)
        files.insert(files.begin(), {{std::move(name), "", true}, true});
    return files;
}

void HolidayAdditions::ToggleFile(const File& file)
{
    holidays::HolidayList rules;
    std::string unread;
    if (!file.isAdded) {
        unread = SummarizeProblems(holidays::ReadHolidayFile(util::ToPath(file.file.path), rules));
        if (holidays::RulesOf(rules).rules.empty())
            return dialog_.desktop.ShowMessage(file.file.path +
                                               " has no holidays, or cannot be read.");
    }
    dialog_.lblProblems.ShowText(unread.empty() ? "" : file.file.name + ": " + unread);
    Take(PutFurtherFile(dialog_.list, file.file.name, rules));
}

void HolidayAdditions::Import(const std::string& path)
{
    dialog_.desktop.SetHourglass(true);
    std::optional<app::ImportSource> source;
    try {
        source.emplace(util::ToPath(path));
    }
    catch (...) {
        dialog_.desktop.SetHourglass(false);
        throw;
    }
    dialog_.desktop.SetHourglass(false);
    Import(*source, util::FileName(path));
}

void HolidayAdditions::ImportText(const std::string& text)
{
    Import(app::ImportSource(text), "");
}

void HolidayAdditions::Import(const app::ImportSource& source, const std::string& name)
{
    const std::string folder = app::OwnHolidayFolder(dialog_.holidayFolder);
    const int year = dialog_.year.value_or(app::LocalMonth(std::time(nullptr)).year);
    ImportForm form({source, name, folder, year});
    dialog_.desktop.ShowModal(form);
    if (!form.isAccepted)
        return;
    util::EnsureFolder(folder);
    app::WriteImportedFile(form.TargetFile(), form.Rules(), name.empty() ? "the clipboard" : name);
    for (File& file : Files()) {
        if (file.file.path != form.TargetFile())
            continue;
        file.isAdded = false; // an older one of that name is replaced
        return ToggleFile(file);
    }
}

bool HolidayAdditions::HasOwnDays() const
{
    return FurtherFile(dialog_.list, holidays::kOwnDays) != holidays::HolidayList();
}

void HolidayAdditions::CollectOwnDays()
{
    app::CollectDays(dialog_.holidayFolder, FurtherFile(dialog_.list, holidays::kOwnDays));
    dialog_.desktop.ShowMessage("The own days are in " +
                                app::CollectedDaysFile(dialog_.holidayFolder) +
                                " now. Other templates can add that file.");
}

void HolidayAdditions::OpenOwnFolder()
{
    const std::string folder = app::OwnHolidayFolder(dialog_.holidayFolder);
    util::EnsureFolder(folder);
    dialog_.desktop.Open(folder);
}

} // namespace orrery::ui
