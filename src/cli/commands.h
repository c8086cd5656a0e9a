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

/// What a command works with.
struct Session {
    const CommandLine& line;
    const app::SystemFolders& system;
    book::Engines& engines;
    Console& console;
    ConsoleReporter reporter{console};
    bool jsonPrinted = false;
};

/// Does what the command line says and gives the exit code. Never throws: every error is reported.
/// With --json there is always an object on standard output; where the command could not do its
/// work it has the member "reports" alone.
int RunCommand(const CommandLine& line, const app::SystemFolders& system, book::Engines& engines,
               Console& console);

// One function for each command that is more than a few lines; they throw what they cannot do.
void RunGenerateCommand(Session& session);
/// Nothing found gives true.
bool RunCheckCommand(Session& session);
void RunParametersCommand(Session& session);

/// A template with what belongs to it.
struct ChosenTemplate {
    std::string file; ///< its name in the settings' template folder
    app::Settings settings;
    model::ParameterSets sets; ///< the defaults and what its parameter file changes
    bool hasParameterFile = false;
};

app::Settings LoadSettings(Session& session, const std::optional<std::string>& templateFolder);
/// Finds the command line's template. Throws Error (FileNotFound, FileNotReadable, NotARegularFile)
/// for the template and for a settings or parameter file that is there and cannot be read, one
/// that is TextFileTooLarge, too.
ChosenTemplate ChooseTemplate(Session& session);
/// The engine of the command line or the settings, resolved.
std::string ChooseEngine(Session& session, const app::Settings& settings);

/// A year of the command line; what is wrong with it is reported in the Generate command's words.
std::optional<std::int16_t> YearOf(Session& session, const std::string& text);

/// Prints the JSON text of a command.
void PrintJson(Session& session, const JsonWriter& json);

} // namespace orrery::cli
