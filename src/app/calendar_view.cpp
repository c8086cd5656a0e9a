#include "app/calendar_view.h"

#include <algorithm>
#include <utility>
#include <variant>

namespace orrery::app {
namespace {

generate::Trial Try(book::Engines& engines, const CalendarRequest& request)
{
    const auto application = engines.Start("builtin", {});
    book::Workbook& workbook = application->OpenWorkbook(request.templatePath, true);
    return generate::TryCalendars(workbook, request.year, request.sets, request.names);
}

book::CellContent ContentOf(const book::CellValue& value)
{
    if (const auto* const number = std::get_if<std::int16_t>(&value))
        return static_cast<double>(*number);
    return std::get<std::string>(value);
}

std::vector<look::FilledSheet> FilledSheets(const generate::Trial& trial)
{
    std::vector<look::FilledSheet> sheets;
    for (const generate::TrialSheet& sheet : trial.sheets) {
        look::FilledSheet& filled = sheets.emplace_back();
        filled.name = sheet.name;
        filled.model = sheet.model;
        for (const generate::RecordedCell& cell : sheet.cells) {
            if (!cell.error)
                filled.cells[{cell.cell.row, cell.cell.column}] = ContentOf(cell.value);
        }
    }
    return sheets;
}

} // namespace

CalendarView::CalendarView(book::Engines& engines, const CalendarRequest& request)
    : template_(engines.OpenView(request.templatePath)), trial_(Try(engines, request)),
      filled_(*template_, FilledSheets(trial_))
{
}

std::optional<std::size_t> CalendarView::SheetOf(std::int16_t month) const
{
    const auto made =
        std::find_if(trial_.sheets.begin(), trial_.sheets.end(),
                     [month](const generate::TrialSheet& sheet) { return sheet.month == month; });
    if (made == trial_.sheets.end())
        return std::nullopt;
    return filled_.FindSheet(made->name);
}

} // namespace orrery::app
