#include "cli/command_line.h"

#include "cli/error.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/numbers.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <ostream>

namespace orrery::cli {
namespace {

constexpr const char* kExamples = R"(Examples:
  orrery-cli generate Desk.xls 2027
      One calendar: 2027Desk.xls in the output folder.
  orrery-cli generate ~/calendars/Wall.xlsx 2027-2036 --output-folder ~/walls
      Ten calendars from a template of your own, with the Wall.ini beside it.
  orrery-cli generate Desk.xls 2027 --pdf-by builtin
      The calendar, and a PDF of its pages.
  orrery-cli check Desk.xls 2027
      Whether the sheets are there and every cell lies inside them.
  orrery-cli look Desk.xls --year 2027 --month 5 --svg May.svg
      A picture of the page as it will come out.
  orrery-cli propose Mine.xlsx --write
      Parameters for a template of your own, from the looks of its sheets.
  orrery-cli holidays Germany.txt 2027
  orrery-cli holidays Germany.txt 2027-2030 --ics Germany.ics
      The holidays for a calendar program.
  orrery-cli import Club.csv
      A holiday file from a table, an iCalendar file or Outlook's holidays.
  orrery-cli easter 2027-2030

Exit status: 0 when all went well, 1 when something was reported, 2 for a
command that is not understood. "orrery-cli COMMAND --help" explains a command.)";

constexpr const char* kTemplateHelp = "A name in the template folder, or a path";

void AddSettings(CLI::App& command, CommandLine& line)
{
    command
        .add_option("--settings", line.settingsFile,
                    "Read this orrery.ini; its folders lie beside it unless it says otherwise")
        ->type_name("FILE");
    command
        .add_option("--template-folder", line.templateFolder,
                    "Look for templates and their parameter files here")
        ->type_name("DIR");
    command.add_option("--holiday-folder", line.holidayFolder, "Look for holiday files here")
        ->type_name("DIR");
}

void AddEngine(CLI::App& command, CommandLine& line)
{
    command
        .add_option("--engine", line.engine,
                    "The spreadsheet application: auto, builtin, excel or libreoffice")
        ->type_name("NAME")
        ->check(CLI::IsMember({"auto", "builtin", "excel", "libreoffice"}));
}

void AddJson(CLI::App& command, CommandLine& line)
{
    command.add_flag("--json", line.json, "Print one JSON object for other programs");
}

void AddTemplate(CLI::App& command, CommandLine& line)
{
    command.add_option("TEMPLATE", line.templateName, kTemplateHelp)->required();
}

/// A positional argument for one text of years.
CLI::Option* AddYears(CLI::App& command, CommandLine& line, const char* name, const char* help)
{
    const auto take = [&line](const std::string& text) { line.years = {text}; };
    return command.add_option_function<std::string>(name, take, help);
}

using AddOptions = void (*)(CLI::App& command, CommandLine& line);

/// Options are added when the command is met: those of all commands would take a large part of the
/// time in which a calendar is made.
void AddCommand(CLI::App& app, CommandLine& line, Command kind, const char* name,
                const char* description, AddOptions addOptions)
{
    CLI::App* const command = app.add_subcommand(name, description);
    command->preparse_callback(
        [command, &line, addOptions](std::size_t) { addOptions(*command, line); });
    command->callback([&line, kind] { line.command = kind; });
}

void AddGenerate(CLI::App& command, CommandLine& line)
{
    AddTemplate(command, line);
    AddYears(command, line, "YEARS", "A year or a range: 2027 or 2027-2036")->required();
    AddSettings(command, line);
    command
        .add_option("--output-folder", line.outputFolder,
                    "Save here; a workbook of the same name is replaced")
        ->type_name("DIR");
    AddEngine(command, line);
    command.add_flag("--pdf", line.pdf,
                     "Make a PDF of the calendar's pages, too; this needs Excel or LibreOffice");
    command
        .add_option("--pdf-by", line.pdfBy,
                    "Make a PDF, too: by this program alone (builtin), or as --pdf (office)")
        ->type_name("NAME")
        ->check(CLI::IsMember({"builtin", "office"}));
    command.add_flag("--open", line.open, "Open each saved workbook with the desktop's program");
    AddJson(command, line);
    command.footer("Prints the path of each saved workbook. For a year and a template Desk.xls\n"
                   "that is 2027Desk.xls in the output folder. With --pdf the path of the PDF\n"
                   "follows, 2027Desk.pdf in the same folder.");
}

void AddTemplates(CLI::App& command, CommandLine& line)
{
    AddSettings(command, line);
    AddJson(command, line);
}

void AddParameters(CLI::App& command, CommandLine& line)
{
    AddTemplate(command, line);
    AddSettings(command, line);
    AddJson(command, line);
}

void AddCheck(CLI::App& command, CommandLine& line)
{
    AddTemplate(command, line);
    AddYears(command, line, "YEAR", "The year to look at instead of this one");
    AddSettings(command, line);
    AddEngine(command, line);
    AddJson(command, line);
    command.footer("A name that ends in .txt is a holiday file: its lines are checked.");
}

void AddLook(CLI::App& command, CommandLine& line)
{
    command.add_option("FILE", line.templateName, kTemplateHelp)->required();
    command.add_option("--sheet", line.sheetName, "This sheet instead of the one that opens first")
        ->type_name("NAME");
    CLI::Option* const year =
        AddYears(command, line, "--year", "The calendar's page of this year, as it will come out");
    year->type_name("YEAR");
    command.add_option("--month", line.month, "The page of this month instead of the year's")
        ->type_name("MONTH")
        ->check(CLI::Range(1, 12))
        ->needs(year);
    command
        .add_option("--svg", line.svgFile,
                    "Save a picture of the sheet; a file is replaced, \"-\" is the standard output")
        ->type_name("FILE");
    AddSettings(command, line);
    AddJson(command, line);
    command.footer(
        "Without a year the sheet is shown as it is in the file. Nothing is changed, and no\n"
        "spreadsheet program is needed.");
}

void AddPropose(CLI::App& command, CommandLine& line)
{
    command.add_option("FILE", line.templateName, kTemplateHelp)->required();
    command.add_flag("--write", line.write,
                     "Save the proposal as the template's parameter file, if it has none");
    AddSettings(command, line);
    AddJson(command, line);
    command.footer(
        "What the sheets do not tell is called unknown; a saved file then has the default.");
}

void AddHolidays(CLI::App& command, CommandLine& line)
{
    const auto take = [&line](std::vector<std::string> texts) {
        if (texts.size() < 2)
            throw CLI::RequiredError("the year behind FILE");
        line.years = {std::move(texts.back())};
        texts.pop_back();
        line.holidayFiles = std::move(texts);
    };
    command
        .add_option_function<std::vector<std::string>>(
            "FILE", take, "Names in the holiday folder, or paths; then YEAR, a year or a range")
        ->type_name("")
        ->required()
        ->expected(-1);
    command.add_option("--region", line.region, "Show a region's holidays, too: BY for Bayern")
        ->type_name("CODE");
    command.add_flag("--all-kinds", line.allKinds,
                     "Not only public holidays: bank, school, optional and half ones, observances");
    command.add_option("--language", line.language, "The language of the names, such as de")
        ->type_name("CODE");
    command
        .add_option("--section", line.section,
                    "Read the holidays of a parameter file's monthly or yearly calendar")
        ->type_name("NAME")
        ->check(CLI::IsMember({"monthly", "yearly"}));
    command
        .add_option(
            "--ics", line.icsFile,
            "Save a calendar for calendar programs (iCalendar) instead of printing; a file is "
            "replaced, \"-\" is the standard output")
        ->type_name("FILE");
    AddSettings(command, line);
    AddJson(command, line);
}

void AddImport(CLI::App& command, CommandLine& line)
{
    command
        .add_option("FILE", line.importFile,
                    "The path of a table (.csv), an iCalendar file (.ics) or holidays of Outlook "
                    "(.hol)")
        ->required();
    AddYears(command, line, "--years", "Only days of these years: 2027 or 2027-2030")
        ->type_name("YEARS");
    command
        .add_option("--output", line.outputFile,
                    "Write this holiday file instead of one in the folder of own files")
        ->type_name("FILE");
    command.add_flag("--replace", line.replace, "Replace the holiday file if it is there");
    command
        .add_option("--date-order", line.dateOrder,
                    "How a table writes its dates: dmy, mdy or ymd, day, month and year")
        ->type_name("ORDER")
        ->check(CLI::IsMember({"dmy", "mdy", "ymd"}));
    command
        .add_option("--section", line.section, "Only this section of a .hol file, such as Germany")
        ->type_name("NAME");
    AddSettings(command, line);
    AddJson(command, line);
    command.footer(
        "Prints what it found, the lines that it passes over, and the path of the holiday file.\n"
        "What comes again in every year becomes a rule, other events become dates: with --years\n"
        "those of these years, else all, and of the next ten years where they have no end.");
}

void AddEaster(CLI::App& command, CommandLine& line)
{
    command.add_option("YEAR", line.years, "Years or ranges")->required();
    AddJson(command, line);
}

void AddCommands(CLI::App& app, CommandLine& line)
{
    AddCommand(app, line, Command::Generate, "generate",
               "Write the calendars of one or more years from a template", AddGenerate);
    AddCommand(app, line, Command::Templates, "templates", "List the template folder",
               AddTemplates);
    AddCommand(app, line, Command::Parameters, "parameters",
               "Print a template's parameters: the defaults and what its file changes",
               AddParameters);
    AddCommand(app, line, Command::Check, "check",
               "Check that a template has the sheets and cells to be written", AddCheck);
    AddCommand(app, line, Command::Look, "look", "Tell how a sheet of a workbook looks, or draw it",
               AddLook);
    AddCommand(app, line, Command::Propose, "propose",
               "Propose parameters from the looks of a template's sheets", AddPropose);
    AddCommand(app, line, Command::Holidays, "holidays",
               "Print the dates and names of a file's holidays in a year", AddHolidays);
    AddCommand(app, line, Command::Import, "import",
               "Make a holiday file of a calendar of another program", AddImport);
    AddCommand(app, line, Command::Easter, "easter", "Print the date of Easter Sunday", AddEaster);
}

std::optional<std::int16_t> ReadRangeEnd(const std::string& digits)
{
    constexpr std::size_t longest = 5;
    const bool plain =
        !digits.empty() && digits.size() <= longest &&
        std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
    const int value = plain ? std::stoi(digits) : -1;
    if (value < 0 || value > std::numeric_limits<std::int16_t>::max())
        return std::nullopt;
    return static_cast<std::int16_t>(value);
}

bool IsImportYear(const std::string& text)
{
    constexpr double last = 9999;
    const double year = util::ReadNumber(text).value_or(0);
    return year >= 1 && year <= last && year == std::floor(year);
}

int ReportWrongUsage(const std::string& cause, std::ostream& err)
{
    err << util::ErrorText(Error(ErrorKind::WrongUsage, {}, cause)) << '\n';
    return kExitUsage;
}

/// Replaces each text with the years that it stands for. Returns the first text that is invalid.
std::optional<std::string> ExpandAll(std::vector<std::string>& texts)
{
    std::vector<std::string> years;
    for (const std::string& text : texts) {
        const auto expanded = ExpandYears(text);
        if (!expanded)
            return text;
        years.insert(years.end(), expanded->begin(), expanded->end());
    }
    texts = std::move(years);
    return std::nullopt;
}

} // namespace

std::optional<std::vector<std::string>> ExpandYears(const std::string& text)
{
    if (util::ReadNumber(text))
        return std::vector{text};
    const std::size_t dash = text.find('-');
    if (dash == std::string::npos)
        return std::nullopt;
    const auto first = ReadRangeEnd(text.substr(0, dash));
    const auto last = ReadRangeEnd(text.substr(dash + 1));
    if (!first || !last || *first > *last)
        return std::nullopt;
    std::vector<std::string> years;
    for (int year = *first; year <= *last; ++year)
        years.push_back(std::to_string(year));
    return years;
}

std::variant<CommandLine, Finished> ParseCommandLine(int argc, const char* const* argv,
                                                     std::ostream& out, std::ostream& err)
{
    CommandLine line;
    CLI::App app("Fills your own Excel templates with calendars.", "orrery-cli");
    app.allow_windows_style_options(false); // "/a/b.xlsx" is a path on every system
    app.footer(kExamples);
    app.set_version_flag("--version", std::string("orrery-cli ") + ORRERY_VERSION);
    app.require_subcommand(0, 1);
    AddCommands(app, line);
    try {
        app.parse(argc, argv);
    }
    catch (const CLI::Success& help) {
        return Finished{app.exit(help, out, err)};
    }
    catch (const CLI::ParseError& error) {
        return Finished{ReportWrongUsage(error.what(), err)};
    }
    if (app.get_subcommands().empty())
        return Finished{ReportWrongUsage("a command is missing", err)};
    if (const auto wrong = ExpandAll(line.years))
        return Finished{ReportWrongUsage(
            '"' + *wrong + "\" is neither a year nor a range; write 2027 or 2027-2036", err)};
    const bool oneYear = line.command == Command::Check || line.command == Command::Look;
    if (oneYear && line.years.size() > 1)
        return Finished{ReportWrongUsage("this command takes one year; write 2027", err)};
    if (line.command == Command::Import &&
        !std::all_of(line.years.begin(), line.years.end(), IsImportYear))
        return Finished{ReportWrongUsage("write years from 1 to 9999", err)};
    line.pdf = line.pdf || !line.pdfBy.empty();
    if (line.json && line.svgFile == kStandardOutput)
        return Finished{
            ReportWrongUsage("--json and --svg - would both write to the standard output", err)};
    return line;
}

} // namespace orrery::cli
