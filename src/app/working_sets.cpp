#include "app/working_sets.h"

#include "model/parameter_file.h"
#include "util/file_read.h"
#include "util/paths.h"

#include <utility>

namespace orrery::app {
namespace {

void TakeProblems(model::ParameterReading reading, WorkingSets& working)
{
    working.monthlyProblems = std::move(reading.monthlyProblems);
    working.yearlyProblems = std::move(reading.yearlyProblems);
}

} // namespace

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
    TakeProblems(model::ReadParameterFile(util::ToPath(file), settings.names, working.sets),
                 working);
    return working;
}

void FindLineProblems(const Settings& settings, const std::string& templateFile,
                      WorkingSets& working)
{
    const auto file = model::ParameterFilePath(settings.TemplatePath, templateFile);
    model::NameTables names = settings.names;
    model::ParameterSets sets;
    TakeProblems(model::ReadParameterFile(util::ToPath(file), names, sets), working);
}

} // namespace orrery::app
