#include "app/calendar_view.h"
#include "book/error.h"
#include "cli/commands.h"
#include "cli/error.h"
#include "cli/look_json.h"
#include "look/canvas/svg_canvas.h"
#include "look/display/now.h"
#include "look/display/sheet_picture.h"
#include "look/text/font_tables.h"
#include "model/parameter_file.h"
#include "util/file_replace.h"
#include "util/paths.h"
#include "util/sentence.h"
#include "util/text.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <system_error>

namespace orrery::cli {
namespace {

/// A workbook that is looked at, and the sheet of it.
struct SheetChoice {
    std::unique_ptr<book::WorkbookView> file;
    std::optional<app::CalendarView> calendar; ///< of a year
    std::size_t sheet = 0;

    book::WorkbookView& View() { return calendar ? calendar->Sheets() : *file; }
};

/// Throws Error (WouldReplaceInput) if the picture would replace the template, its parameter file
/// or another workbook.
void CheckPicturePath(const std::string& picture, const ChosenTemplate& chosen)
{
    const auto path = util::ToPath(util::AbsolutePath(picture));
    const std::string& folder = chosen.settings.TemplatePath;
    std::error_code ignored; // what does not exist is no input
    for (const std::string& input :
         {folder + chosen.file, model::ParameterFilePath(folder, chosen.file)}) {
        if (std::filesystem::equivalent(path, util::ToPath(input), ignored))
            throw Error(ErrorKind::WouldReplaceInput, picture);
    }
    const std::string ending = util::ToUpperAscii(util::FromPath(path.extension()));
    const bool isWorkbook = ending.starts_with(".XLS") || ending.starts_with(".XLT");
    if (isWorkbook && std::filesystem::exists(path, ignored))
        throw Error(ErrorKind::WouldReplaceInput, picture);
}

std::string ListSheets(const book::WorkbookLook& workbook)
{
    const bool isOne = workbook.sheets.size() == 1;
    std::string names = isOne ? "its only sheet is " : "its sheets are ";
    for (const book::SheetSummary& sheet : workbook.sheets)
        names += (&sheet == &workbook.sheets.front() ? "" : ", ") + util::Printable(sheet.name);
    return names;
}

std::size_t FindSheet(const book::WorkbookView& view, const std::string& name)
{
    if (name.empty())
        return view.Workbook().activeSheet;
    if (const auto found = view.FindSheet(name))
        return *found;
    throw Error(ErrorKind::NoSuchSheet, name, ListSheets(view.Workbook()));
}

std::unique_ptr<book::WorkbookView> OpenFile(Session& session, const std::filesystem::path& path)
{
    auto file = session.engines.OpenView(path);
    if (file->Workbook().sheets.empty())
        throw Error(book::ErrorKind::DamagedWorkbook, util::FromPath(path), "it has no sheets");
    return file;
}

/// The page of a month; with 0 that of the year, or January's if there is none.
std::size_t FindPage(const app::CalendarView& calendar, std::int16_t month, std::int16_t year)
{
    if (const auto sheet = calendar.SheetOf(month))
        return *sheet;
    const auto january = month == 0 ? calendar.SheetOf(1) : std::nullopt;
    if (january)
        return *january;
    const std::string date = std::to_string(year) + (month == 0 ? "" : '-' + std::to_string(month));
    const auto& findings = calendar.Findings();
    throw Error(ErrorKind::NoSuchPage, date,
                findings.empty() ? std::string() : findings.front().text);
}

/// The sheet with that name; by the name that it has in the template, the page that is made of it.
std::size_t FindSheetOfYear(app::CalendarView& calendar, const CommandLine& line, std::int16_t year)
{
    const std::string& name = line.sheetName;
    if (name.empty())
        return FindPage(calendar, line.month, year);
    const book::WorkbookView& sheets = calendar.Sheets();
    const auto filled = sheets.FindSheet(name)
                            ? std::nullopt
                            : sheets.ReferencedSheet(name, sheets.Workbook().sheets.size());
    if (!filled)
        return FindSheet(sheets, name);
    return line.month != 0 ? FindPage(calendar, line.month, year) : *filled;
}

/// What the user should know of a page that is not as it was meant to be.
void WarnOfFindings(Session& session, const app::CalendarView& calendar,
                    const ChosenTemplate& chosen)
{
    for (const generate::Finding& finding : calendar.Findings())
        session.reporter.Warn(finding.text);
    for (const std::string& problem : FindFileProblems(chosen))
        session.reporter.Warn(problem);
}

/// Nothing if the year was reported as wrong.
std::optional<SheetChoice> ChooseSheet(Session& session, const ChosenTemplate& chosen)
{
    const CommandLine& line = session.line;
    const auto path = util::ToPath(chosen.settings.TemplatePath + chosen.file);
    SheetChoice choice;
    if (line.years.empty()) {
        choice.file = OpenFile(session, path);
        choice.sheet = FindSheet(*choice.file, line.sheetName);
        return choice;
    }
    const auto year = ReadYearArgument(session, line.years.front());
    if (!year)
        return std::nullopt;
    choice.calendar.emplace(session.engines,
                            app::CalendarRequest{path, *year, chosen.sets, chosen.settings.names});
    choice.sheet = FindSheetOfYear(*choice.calendar, line, *year);
    WarnOfFindings(session, *choice.calendar, chosen);
    return choice;
}

std::string DrawSvg(look::SheetPicture& picture)
{
    look::SvgCanvas canvas(picture.Layout().width, picture.Layout().height, picture.Name());
    picture.Paint(canvas);
    return canvas.Finish();
}

void SaveSvg(Session& session, look::SheetPicture& picture)
{
    const std::string& path = session.line.svgFile;
    if (path == kStandardOutput)
        session.console.out << DrawSvg(picture);
    else
        util::ReplaceFile(util::ToPath(util::AbsolutePath(path)), DrawSvg(picture));
}

/// A few lines for a reader.
void PrintSummary(std::ostream& out, const look::SheetPicture& picture)
{
    const look::Layout& layout = picture.Layout();
    out << picture.Name() << ": " << book::FormatCellRange(layout.range) << ", "
        << layout.pages.size() << (layout.pages.size() == 1 ? " page" : " pages") << '\n';
    for (const book::LeftOut& left : layout.leftOut) {
        out << "Not shown: " << left.what << (left.where.empty() ? "" : " " + left.where)
            << (left.reason.empty() ? "" : ", because " + left.reason) << '\n';
    }
    for (const book::CellAddress cell : picture.NotComputed())
        out << "Not computed: " << book::FormatCellAddress(cell) << '\n';
}

} // namespace

void RunLookCommand(Session& session)
{
    const ChosenTemplate chosen = ChooseTemplate(session);
    const std::string& svgFile = session.line.svgFile;
    if (!svgFile.empty() && svgFile != kStandardOutput)
        CheckPicturePath(svgFile, chosen);
    auto choice = ChooseSheet(session, chosen);
    if (!choice)
        return;
    const look::FontTables fonts;
    look::SheetPicture picture(
        choice->View(), choice->sheet, fonts,
        {look::LocalSerial(session.console.now), chosen.file, chosen.settings.TemplatePath});
    if (!svgFile.empty())
        SaveSvg(session, picture);
    if (session.line.json)
        PrintJson(session, LookJson(picture, session.reporter.Warnings()));
    else if (svgFile.empty())
        PrintSummary(session.console.out, picture);
}

} // namespace orrery::cli
