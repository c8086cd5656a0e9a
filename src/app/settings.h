#pragma once

#include "app/folders.h"
#include "model/name_lists.h"
#include "model/parameters.h"
#include "util/error.h"
#include "util/profile.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrery::app {

/// The settings, as read at start-up.
struct Settings {
    std::string TemplatePath; ///< this and the next two end in a separator
    std::string OutputPath;
    std::string HolidayFilePath;
    bool ShowTips = true;
    bool Pdf = false;   ///< the window also prints the calendar to a PDF
    std::string Engine; ///< the name of a spreadsheet application; "auto" by default
    model::NameTables names;
    model::DefaultParameters defaults;
    /// Why holiday files of the default sets could not be read although they exist.
    std::vector<util::Error> holidayFileErrors;
};

/// Folders that replace those of the settings file.
struct FolderOverrides {
    std::optional<std::string> templateFolder;
    std::optional<std::string> outputFolder;
    std::optional<std::string> holidayFolder;
};

/// Reads the folders, creates missing template and holiday folders of the settings, then reads the
/// name lists and the default sets. The settings file may be missing: every key has a default.
Settings LoadSettings(const Locations& locations, const FolderOverrides& overrides = {});

/// Whether the tip of the day is shown at start-up.
bool ShowsTips(const util::Profile& profile);

/// Saves whether the window also makes a PDF. False if the settings file cannot be written.
bool SavePdfSetting(const Locations& locations, bool on);

/// Fills both tables from the numbered lists of a settings file, or with the English names if it
/// has none. A list that is too short is skipped and not counted.
void LoadNameTables(const util::Profile& profile, model::NameTables& names);

/// Reads the default sets of a settings file, with the holidays of their holiday files. A name list
/// that is not in the tables becomes list 0.
model::DefaultParameters LoadDefaults(const util::Profile& profile, const model::NameTables& names,
                                      const std::string& holidayFolder);

/// Why holiday files of the default sets cannot be read; missing files do not count.
std::vector<util::Error> FindHolidayFileErrors(const util::Profile& profile,
                                               const std::string& holidayFolder);

/// The initial content of the year box: next year from July on. `month` is [1:12].
std::int16_t InitialYear(std::int16_t year, std::int16_t month);

} // namespace orrery::app
