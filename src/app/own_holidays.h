#pragma once

#include "holidays/holiday_rule.h"

#include <string>
#include <vector>

/// The user's own holiday files. They lie in a folder inside the holiday folder, so that every
/// template can add them.
namespace orrery::app {

/// A holiday file that a calendar can have beside another.
struct AddableFile {
    std::string name; ///< without its extension; what the calendar's list calls it
    std::string path;
    bool isOwn = false;
};

/// The folder for own files in a holiday folder; both texts end in a separator. It need not exist.
std::string OwnHolidayFolder(const std::string& holidayFolder);

/// The own files, then those of the holiday folder itself.
std::vector<AddableFile> FindAddableFiles(const std::string& holidayFolder);

/// The file that collects days from the calendars' lists.
std::string CollectedDaysFile(const std::string& holidayFolder);

/// Appends the rules that the file of collected days lacks, with their refinements, and creates it
/// if it is missing. What it contains stays as it is. Throws Error if it cannot be read or written.
void CollectDays(const std::string& holidayFolder, const holidays::HolidayList& days);

} // namespace orrery::app
