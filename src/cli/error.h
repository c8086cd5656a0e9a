#pragma once

#include "util/error.h"

#include <string>

namespace orrery::cli {

enum class ErrorKind {
    WrongUsage,        ///< an invalid command line; the cause says why
    NoSuchSheet,       ///< the subject is a sheet's name, the cause the names that there are
    NoSuchPage,        ///< the template makes no page for a month or the year, which is the subject
    ParametersExist,   ///< a parameter file, which is the subject, is there already
    NothingToWrite,    ///< no calendar was found in the workbook, which is the subject
    NoSuchRegion,      ///< of the holidays; the cause names the regions that there are
    AmbiguousDates,    ///< of a table, which is the subject; the cause names the possible orders
    OutputExists,      ///< a holiday file, which is the subject, is there already
    NothingToImport,   ///< a calendar, which is the subject, has no events that can be holidays
    WouldReplaceInput, ///< a workbook or a parameter file, which is the subject, by a picture
    WouldReplaceHolidays, ///< a holiday file, which is the subject, by a calendar
};

std::string Sentence(ErrorKind kind, const util::ErrorDetails& details);

} // namespace orrery::cli
