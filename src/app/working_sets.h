#pragma once

#include "app/settings.h"
#include "model/parameters.h"
#include "util/error.h"

#include <optional>
#include <string>

namespace orrery::app {

/// The parameters of the chosen template and what is known of them.
struct WorkingSets {
    model::ParameterSets sets;
    bool parameterFileExists = false; ///< the template has a parameter file of its own
    bool monthlyChanged = false;      ///< the set differs from the file
    bool yearlyChanged = false;
    /// Why the parameter file could not be read, although it is there.
    std::optional<util::Error> obstacle = {};

    bool Changed() const { return monthlyChanged || yearlyChanged; }
    void ClearChanged() { monthlyChanged = yearlyChanged = false; }
};

/// The sets of a template in the settings' template folder: the defaults and what its parameter
/// file changes; name lists that only the file knows are added to the settings' tables. Without a
/// parameter file both sets count as changed, so that the defaults can be saved.
WorkingSets LoadWorkingSets(Settings& settings, const std::string& templateFile);

/// Where a dialog finds the files of the chosen template.
struct TemplatePlace {
    std::string templateFolder; ///< ends in a separator, as does the next
    std::string holidayFolder;
    std::string templateFile; ///< its name alone
};

} // namespace orrery::app
