#include "cli/commands.h"

#include "app/template_folder.h"
#include "app/working_sets.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/file_read.h"
#include "util/paths.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <exception>
#include <iterator>
#include <ostream>
#include <utility>

namespace orrery::cli {
namespace {

std::optional<std::string> Absolute(const std::optional<std::string>& path)
{
    return path ? std::optional(util::AbsolutePath(*path)) : std::nullopt;
}

void RunTemplatesCommand(Session& session)
{
    const app::Settings settings = LoadSettings(session, session.line.templateFolder);
    if (const auto error = util::FindListError(util::ToPath(settings.TemplatePath)))
        throw Error(*error);
    const auto templates = app::ListTemplates(settings.TemplatePath);
    if (session.line.json) {
        JsonWriter json;
        json.BeginObject().Key("folder").Text(settings.TemplatePath);
        json.Key("templates").Texts(templates).EndObject();
        PrintJson(session, json);
        return;
    }
    for (const std::string& file : templates)
        session.console.out << file << '\n';
}

/// Prints the JSON object of a command that failed.
void PrintOnlyReports(Session& session)
{
    JsonWriter json;
    json.BeginObject().Key("reports").Texts(session.reporter.Reports()).EndObject();
    PrintJson(session, json);
}

/// False if the command found something wrong without reporting it.
bool Run(Session& session)
{
    switch (session.line.command) {
    case Command::Generate:
        RunGenerateCommand(session);
        return true;
    case Command::Templates:
        RunTemplatesCommand(session);
        return true;
    case Command::Parameters:
        RunParametersCommand(session);
        return true;
    case Command::Check:
        return RunCheckCommand(session);
    case Command::Look:
        RunLookCommand(session);
        return true;
    case Command::Propose:
        RunProposeCommand(session);
        return true;
    case Command::Holidays:
        RunHolidaysCommand(session);
        return true;
    case Command::Import:
        RunImportCommand(session);
        return true;
    case Command::Easter:
        RunEasterCommand(session);
        return true;
    }
    return true;
}

} // namespace

bool IsPath(const std::string& file)
{
    return file.find_first_of("\\/") != std::string::npos;
}

void ReportYearOverflow(Session& session, const std::string& year)
{
    session.reporter.Report(util::ErrorText(Error(util::ErrorKind::Overflow, year)));
}

int RunCommand(const CommandLine& line, const app::SystemFolders& system, book::Engines& engines,
               Console& console)
{
    Session session{line, system, engines, console};
    bool succeeded = false;
    try {
        succeeded = Run(session);
    }
    catch (const std::exception& error) {
        session.reporter.Report(util::ErrorText(error));
    }
    if (line.json && !session.jsonPrinted)
        PrintOnlyReports(session);
    return FinishOutput(console, succeeded ? session.reporter.ExitCode() : kExitReported);
}

app::Settings LoadSettings(Session& session, const std::optional<std::string>& templateFolder)
{
    const CommandLine& line = session.line;
    app::FolderOverrides overrides;
    overrides.templateFolder = Absolute(templateFolder);
    overrides.outputFolder = Absolute(line.outputFolder);
    overrides.holidayFolder = Absolute(line.holidayFolder);
    const bool isNamed = !line.settingsFile.empty();
    const app::Locations locations =
        isNamed ? app::LocationsBeside(line.settingsFile) : app::LocationsFor(session.system);
    if (!isNamed)
        app::CopyInstalledFiles(locations, session.system.installed);
    // If existing settings were ignored, the command would work in the wrong folders.
    if (const auto error = util::FindExistingTextReadError(util::ToPath(locations.settingsFile)))
        throw Error(*error);
    return app::LoadSettings(locations, overrides);
}

ChosenTemplate ChooseTemplate(Session& session)
{
    const std::string& name = session.line.templateName;
    const std::string path = util::AbsolutePath(name); // with the system's separators
    const std::string inCurrentFolder = util::ParentFolder(path);
    ChosenTemplate chosen;
    chosen.file = util::FileName(path);
    if (IsPath(name)) {
        chosen.settings = LoadSettings(session, inCurrentFolder);
    }
    else {
        chosen.settings = LoadSettings(session, session.line.templateFolder);
        if (util::IsMissing(util::ToPath(chosen.settings.TemplatePath + name)) &&
            util::FileExists(name))
            chosen.settings.TemplatePath = util::WithTrailingSeparator(inCurrentFolder);
    }
    const std::string& folder = chosen.settings.TemplatePath;
    if (const auto error = util::FindReadError(util::ToPath(folder + chosen.file)))
        throw Error(*error);
    auto working = app::LoadWorkingSets(chosen.settings, chosen.file);
    if (working.readError) // the defaults would differ from the user's parameters
        throw Error(*working.readError);
    chosen.sets = std::move(working.sets);
    chosen.hasParameterFile = working.parameterFileExists;
    chosen.problems = std::move(working.monthlyProblems);
    std::ranges::move(working.yearlyProblems, std::back_inserter(chosen.problems));
    return chosen;
}

std::string ChooseEngine(Session& session, const app::Settings& settings)
{
    return session.engines.Resolve(session.line.engine.empty() ? settings.Engine
                                                               : session.line.engine);
}

std::optional<std::int16_t> ReadYearArgument(Session& session, const std::string& text)
{
    try {
        const auto year = generate::ReadYear(text);
        if (!year)
            session.reporter.Report(generate::kNoYearMessage);
        return year;
    }
    catch (const util::OverflowError&) {
        ReportYearOverflow(session, text);
        return std::nullopt;
    }
}

void PrintJson(Session& session, const JsonWriter& json)
{
    session.console.out << json.Result() << '\n';
    session.jsonPrinted = true;
}

} // namespace orrery::cli
