#include "cli/commands.h"

#include "app/template_folder.h"
#include "app/working_sets.h"
#include "holidays/files/holiday_readers.h"
#include "holidays/language/evaluation.h"
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

/// "2027-03-28".
std::string IsoDate(holidays::Date date)
{
    const std::chrono::year_month_day parts(date);
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02u", static_cast<int>(parts.year()),
                  static_cast<unsigned>(parts.month()), static_cast<unsigned>(parts.day()));
    return text.data();
}

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

/// Whether a file argument is a path and not just a name.
bool IsPath(const std::string& file)
{
    return file.find_first_of("\\/") != std::string::npos;
}

/// The holiday or parameter file of the command line: a path unchanged; a name in the holiday or
/// template folder, or else in the current folder.
std::string FindHolidayFile(Session& session)
{
    std::string file = session.line.holidayFile;
    if (!IsPath(file)) {
        const app::Settings settings = LoadSettings(session, session.line.templateFolder);
        const std::string& folder =
            session.line.section.empty() ? settings.HolidayFilePath : settings.TemplatePath;
        if (!util::IsMissing(util::ToPath(folder + file)) || !util::FileExists(file))
            file = folder + file;
    }
    if (const auto error = util::FindTextReadError(util::ToPath(file)))
        throw Error(*error);
    return file;
}

holidays::HolidayList ReadHolidays(Session& session)
{
    const auto path = util::ToPath(FindHolidayFile(session));
    holidays::HolidayList list;
    if (session.line.section.empty()) {
        holidays::ReadHolidayFile(path, list);
    }
    else {
        const bool yearly = session.line.section == "yearly";
        holidays::ReadTemplateHolidays(
            yearly ? holidays::CalendarKind::Yearly : holidays::CalendarKind::Monthly, path, list);
    }
    return list;
}

void ReportYearOverflow(Session& session, const std::string& year)
{
    session.reporter.Report(util::ErrorText(Error(util::ErrorKind::Overflow, year)));
}

/// Easter Sunday of a year; reports a year for which it cannot be computed.
std::optional<holidays::Date> EasterOf(Session& session, std::int16_t year)
{
    try {
        return holidays::EasterDate(year);
    }
    catch (const util::OverflowError&) {
        ReportYearOverflow(session, std::to_string(year));
        return std::nullopt;
    }
}

void RunHolidaysCommand(Session& session)
{
    const auto year = ReadYearArgument(session, session.line.years.front());
    const auto easter = year ? EasterOf(session, *year) : std::nullopt;
    if (!easter)
        return;
    holidays::HolidayDateList dates;
    holidays::FillHolidayDates(*year, ReadHolidays(session), {}, *easter, dates);
    JsonWriter json;
    json.BeginObject().Key("year").Number(*year).Key("holidays").BeginArray();
    for (std::int16_t i = 0; i < dates.Count; ++i) {
        if (dates.DateAt(i) == holidays::kNoDate)
            continue;
        const std::string date = IsoDate(dates.DateAt(i));
        json.BeginObject().Key("date").Text(date).Key("name").Text(dates.NameAt(i)).EndObject();
        if (!session.line.json)
            session.console.out << date << '\t' << dates.NameAt(i) << '\n';
    }
    json.EndArray().EndObject();
    if (session.line.json)
        PrintJson(session, json);
}

void RunEasterCommand(Session& session)
{
    JsonWriter json;
    json.BeginObject().Key("easter").BeginArray();
    for (const std::string& text : session.line.years) {
        const auto year = ReadYearArgument(session, text);
        const auto easter = year ? EasterOf(session, *year) : std::nullopt;
        if (!easter)
            continue;
        const std::string date = IsoDate(*easter);
        json.BeginObject().Key("year").Number(*year).Key("date").Text(date).EndObject();
        if (!session.line.json)
            session.console.out << date << '\n';
    }
    json.EndArray().Key("reports").Texts(session.reporter.Reports()).EndObject();
    if (session.line.json)
        PrintJson(session, json);
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
    case Command::Easter:
        RunEasterCommand(session);
        return true;
    }
    return true;
}

} // namespace

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
