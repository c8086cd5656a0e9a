#include "app/calendar_view.h"
#include "app/today.h"
#include "cli/commands.h"
#include "cli/error.h"
#include "cli/look_json.h"
#include "look/canvas/svg_canvas.h"
#include "look/display/sheet_picture.h"
#include "look/text/font_tables.h"
#include "util/file_replace.h"
#include "util/paths.h"

#include <memory>
#include <optional>
#include <ostream>
#include <string>

namespace orrery::cli {
namespace {

/// A workbook that is looked at, and the sheet of it.
struct SheetChoice {
    std::unique_ptr<book::WorkbookView> file;
    std::optional<app::CalendarView> calendar; ///< of a year
    std::size_t sheet = 0;

    book::WorkbookView& View() { return calendar ? calendar->Sheets() : *file; }
};

std::string ListSheets(const book::WorkbookLook& workbook)
{
    std::string names = "its sheets are ";
    for (const book::SheetSummary& sheet : workbook.sheets)
        names += (&sheet == &workbook.sheets.front() ? "" : ", ") + sheet.name;
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

/// The page of the month, or of the year if there is none of months.
std::size_t FindPage(const app::CalendarView& calendar, std::int16_t month, std::int16_t year)
{
    if (const auto sheet = calendar.SheetOf(month))
        return *sheet;
    const auto january = month == 0 ? calendar.SheetOf(1) : std::nullopt;
    if (january)
        return *january;
    const std::string date = std::to_string(year) + (month == 0 ? "" : '-' + std::to_string(month));
    const auto& findings = calendar.Findings();
    throw Error(ErrorKind::NoSuchPage, date, findings.empty() ? std::string() : findings.front());
}

/// Nothing if the year was reported as wrong.
std::optional<SheetChoice> ChooseSheet(Session& session, const ChosenTemplate& chosen)
{
    const CommandLine& line = session.line;
    const auto path = util::ToPath(chosen.settings.TemplatePath + chosen.file);
    SheetChoice choice;
    if (line.years.empty()) {
        choice.file = session.engines.OpenView(path);
        choice.sheet = FindSheet(*choice.file, line.sheetName);
        return choice;
    }
    const auto year = ReadYearArgument(session, line.years.front());
    if (!year)
        return std::nullopt;
    choice.calendar.emplace(session.engines,
                            app::CalendarRequest{path, *year, chosen.sets, chosen.settings.names});
    choice.sheet = line.sheetName.empty() ? FindPage(*choice.calendar, line.month, *year)
                                          : FindSheet(choice.View(), line.sheetName);
    return choice;
}

void SaveSvg(const std::string& path, look::SheetPicture& picture)
{
    look::SvgCanvas canvas(picture.Layout().width, picture.Layout().height, picture.Name());
    picture.Paint(canvas);
    util::ReplaceFile(util::ToPath(util::AbsolutePath(path)), canvas.Finish());
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
    auto choice = ChooseSheet(session, chosen);
    if (!choice)
        return;
    const look::FontTables fonts;
    look::SheetPicture picture(
        choice->View(), choice->sheet, fonts,
        {app::LocalSerial(session.console.now), chosen.file, chosen.settings.TemplatePath});
    if (!session.line.svgFile.empty())
        SaveSvg(session.line.svgFile, picture);
    if (session.line.json)
        PrintJson(session, LookJson(picture));
    else if (session.line.svgFile.empty())
        PrintSummary(session.console.out, picture);
}

} // namespace orrery::cli
