#pragma once

#include "app/settings.h"
#include "holidays/error.h"
#include "model/parameters.h"
#include "util/error.h"

#include <optional>
#include <string>
#include <vector>

namespace orrery::app {

/// The parameters of the chosen template and their state.
struct WorkingSets {
    model::ParameterSets sets;
    bool parameterFileExists = false; ///< the template has its own parameter file
    bool monthlyChanged = false;      ///< the set differs from the file
    bool yearlyChanged = false;
    /// Why the parameter file could not be read although it exists.
    std::optional<util::Error> readError = {};
    /// Lines of the parameter file that are not read.
    std::vector<holidays::LineProblem> monthlyProblems = {};
    std::vector<holidays::LineProblem> yearlyProblems = {};

    bool Changed() const { return monthlyChanged || yearlyChanged; }
    void ClearChanged() { monthlyChanged = yearlyChanged = false; }
};

/// Loads the sets of a template in the template folder: the defaults, changed by its parameter
/// file. Name lists that only the file has are added to the settings' tables. Without a parameter
/// file both sets count as changed, so that the defaults can be saved.
WorkingSets LoadWorkingSets(Settings& settings, const std::string& templateFile);

/// Finds which lines of the template's parameter file are not read, as the file is now.
void FindLineProblems(const Settings& settings, const std::string& templateFile,
                      WorkingSets& working);

/// Where the files of the chosen template are, and those that its dialogs need.
struct TemplateLocation {
    std::string templateFolder; ///< ends in a separator, like the next
    std::string holidayFolder;
    std::string templateFile;      ///< file name only
    std::string installed = {};    ///< the shipped data, as in `SystemFolders`
    std::string settingsFile = {}; ///< where choices are remembered
};

} // namespace orrery::app
