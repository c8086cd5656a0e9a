#pragma once

#include "app/folders.h"
#include "app/settings.h"
#include "book/engines.h"
#include "cli/command_line.h"
#include "cli/console.h"
#include "cli/json.h"
#include "generate/run.h"

#include <cstdint>
#include <optional>
#include <string>

namespace orrery::cli {

/// What the commands share.
struct Session {
    const CommandLine& line;
    const app::SystemFolders& system;
    book::Engines& engines;
    Console& console;
    ConsoleReporter reporter{console};
    bool jsonPrinted = false;
};

/// Runs the command and returns the exit code. Never throws: every error is reported. With --json
/// there is always an object on standard output; if the command failed, its only member is
/// "reports".
int RunCommand(const CommandLine& line, const app::SystemFolders& system, book::Engines& engines,
               Console& console);

// The larger commands. They throw if they fail.
void RunGenerateCommand(Session& session);
/// True if nothing was found.
bool RunCheckCommand(Session& session);
void RunParametersCommand(Session& session);
void RunLookCommand(Session& session);
void RunProposeCommand(Session& session);
void RunHolidaysCommand(Session& session);
void RunEasterCommand(Session& session);
void RunImportCommand(Session& session);

/// A template, its settings and its parameters.
struct ChosenTemplate {
    std::string file; ///< file name in the settings' template folder
    app::Settings settings;
    model::ParameterSets sets; ///< the defaults, changed by its parameter file
    bool hasParameterFile = false;
    std::vector<holidays::LineProblem> problems; ///< lines of the file that are not read
};

app::Settings LoadSettings(Session& session, const std::optional<std::string>& templateFolder);
/// Finds the command line's template. Throws Error (FileNotFound, FileNotReadable, NotARegularFile)
/// for the template, and also (TextFileTooLarge) for an existing settings or parameter file that
/// cannot be read.
ChosenTemplate ChooseTemplate(Session& session);
/// What is wrong with lines of the parameter file, one line each. Without one, of the holiday
/// files, which take the place of its holidays.
std::vector<std::string> FindFileProblems(const ChosenTemplate& chosen);
/// The resolved engine from the command line or the settings.
std::string ChooseEngine(Session& session, const app::Settings& settings);

/// A year from the command line. Reports an invalid one with the Generate command's messages.
std::optional<std::int16_t> ReadYearArgument(Session& session, const std::string& text);

/// A holiday file, or with a section a parameter file, of the command line: a path unchanged; a
/// name in the holiday or template folder, or else in the current folder. Throws Error if it cannot
/// be read.
std::string FindHolidayFile(Session& session, std::string file);

/// Whether a file argument is a path and not just a name.
bool IsPath(const std::string& file);

/// Says that a year is too large for its holidays.
void ReportYearOverflow(Session& session, const std::string& year);

/// Prints the JSON object of a command.
void PrintJson(Session& session, const JsonWriter& json);

} // namespace orrery::cli
