#pragma once

#include "app/import_source.h"
#include "app/own_holidays.h"
#include "holidays/holiday_rule.h"
#include "holidays/language/own_day.h"
#include "ui/controls.h"
#include "ui/desktop.h"
#include "ui/holiday_rules.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orrery::ui {

/// The part of the holiday dialog with which the user adds days of their own and further files to
/// the list that is shown.
class HolidayAdditions {
public:
    struct Dialog {
        holidays::HolidayList& list; ///< what is shown
        HolidayRules& rules;         ///< its rules in words, one of them selected
        std::string holidayFolder;   ///< ends in a separator
        std::optional<int> year;     ///< of the calendar
        Desktop& desktop;
        Label& lblProblems;             ///< lines of the file that was read last that are not read
        std::function<void()> onChange; ///< the list is another one: show it
    };
    explicit HolidayAdditions(Dialog dialog);

    void cmdAddDay_Click();
    /// Changes the selected day, if it is one that could have been added.
    void cmdEditDay_Click();
    void cmdRemove_Click();
    /// Enables what can be done with the selected rule.
    void ShowSelection();

    /// A file that can be added, or that the list has.
    struct File {
        app::AddableFile file; ///< without a path if it is not in the folders any more
        bool isAdded = false;
    };
    std::vector<File> Files() const;
    /// Adds a file to the list, or takes it away.
    void ToggleFile(const File& file);
    /// Makes an own file of a calendar of another program, and adds it to the list. The user sees
    /// before what it has. Throws Error if it cannot be read.
    void Import(const std::string& path);
    /// The same with a text of the clipboard.
    void ImportText(const std::string& text);
    bool HasOwnDays() const;
    /// Copies the own days into a file that other templates can add.
    void CollectOwnDays();
    /// Opens the folder of own files, which is created if it is missing.
    void OpenOwnFolder();

    /// Whether the user changed the list.
    bool HasChanged() const { return hasChanged_; }

    Button cmdFiles{"cmdFiles", "A&dd Files..."};
    Button cmdAddDay{"cmdAddDay", "Add Da&y..."};
    Button cmdEditDay{"cmdEditDay", "&Edit..."};
    Button cmdRemove{"cmdRemove", "Re&move"};

private:
    /// Asks for a day; nothing if the user cancels.
    std::optional<holidays::OwnDay> Ask(const std::optional<holidays::OwnDay>& day);
    /// Shows what was read, and takes it if the user agrees. `name` is that of the file.
    void Import(const app::ImportSource& source, const std::string& name);
    /// Takes a changed list, or says that it has no room.
    void Take(bool hasRoom);

    const Dialog dialog_;
    bool hasChanged_ = false;
};

} // namespace orrery::ui
