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

/// What the settings file gives at start-up.
struct Settings {
    std::string TemplatePath; ///< these three end in a separator
    std::string OutputPath;
    std::string HolidayFilePath;
    bool ShowTips = true;
    bool Pdf = false;   ///< the window also makes a PDF of a calendar
    std::string Engine; ///< the name of a spreadsheet application, "auto" unless set
    model::NameTables names;
    model::DefaultParameters defaults;
    /// Why holiday files of the default sets could not be read, although they are there.
    std::vector<util::Error> holidayObstacles;
};

/// Folders that stand in for those of the settings file.
struct FolderOverrides {
    std::optional<std::string> templateFolder;
    std::optional<std::string> outputFolder;
    std::optional<std::string> holidayFolder;
};

/// The start-up: reads the folders, makes the template and the holiday folder of the settings
/// where they are missing, then reads the name lists and the default sets. A missing settings file
/// is ordinary: every key has a default.
Settings LoadSettings(const Locations& locations, const FolderOverrides& overrides = {});

/// Keeps whether the window also makes a PDF. False when the settings file cannot be written.
bool KeepPdf(const Locations& locations, bool on);

/// Fills both tables from the counted lists of a settings file; the English names where it has
/// none. A list that is too short leaves its place empty and is not counted.
void LoadNameTables(const util::Profile& profile, model::NameTables& names);

/// The default sets of a settings file, with the holidays of their holiday files. A name list that
/// is not in the tables counts as list 0.
model::DefaultParameters LoadDefaults(const util::Profile& profile, const model::NameTables& names,
                                      const std::string& holidayFolder);

/// Why the holiday files of the default sets cannot be read; those that are missing are left out.
std::vector<util::Error> HolidayObstacles(const util::Profile& profile,
                                          const std::string& holidayFolder);

/// The year that the year box begins with: next year once June is over. `month` is [1:12].
std::int16_t InitialYear(std::int16_t year, std::int16_t month);

} // namespace orrery::app
