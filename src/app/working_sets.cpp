#include "app/working_sets.h"

#include "model/parameter_file.h"
#include "util/file_read.h"
#include "util/paths.h"

#include <utility>

namespace orrery::app {

WorkingSets LoadWorkingSets(Settings& settings, const std::string& templateFile)
{
    const auto file = model::ParameterFilePath(settings.TemplatePath, templateFile);
    WorkingSets working{model::CopyDefaults(settings.defaults)};
    working.readError = util::FindExistingTextReadError(util::ToPath(file));
    working.parameterFileExists = util::FileExists(file);
    if (!working.parameterFileExists) {
        working.monthlyChanged = working.yearlyChanged = true;
        return working;
    }
    auto reading = model::ReadParameterFile(util::ToPath(file), settings.names, working.sets);
    working.monthlyProblems = std::move(reading.monthlyProblems);
    working.yearlyProblems = std::move(reading.yearlyProblems);
    return working;
}

} // namespace orrery::app
