#include "generate/trial_run.h"

#include "generate/calendar_sheets.h"
#include "generate/failure.h"
#include "generate/recording_workbook.h"
#include "holidays/date.h"
#include "util/error_text.h"
#include "util/text.h"

#include <algorithm>
#include <utility>
#include <variant>

namespace orrery::generate {
namespace {

/// Collects the reports of a run, one line each after its calendar's name, and the written cells.
class TrialObserver : public RunObserver {
public:
    TrialObserver(RecordingWorkbook& workbook, std::int16_t year) : workbook_(workbook), year_(year)
    {
    }
    /// Begins a calendar whose model is the template's sheet of that name.
    void Begin(std::string calendar, std::string model)
    {
        calendar_ = std::move(calendar);
        model_ = std::move(model);
    }

    void Report(const std::string& text) override { Add(text, std::nullopt); }
    void FailureIgnored(const std::string& what, const std::exception& error) override
    {
        Report(what + "\r\n" + util::ErrorText(error));
    }
    void MonthDone(CalendarKind kind, std::int16_t month) override
    {
        const auto cells = workbook_.Take();
        const auto sheet = kind == CalendarKind::Monthly ? month : std::int16_t{0};
        ReportErrors(cells, month, sheet);
        const bool opensSheet = kind == CalendarKind::Monthly || month == 1;
        if (opensSheet)
            trial_.sheets.push_back({{}, model_, sheet, {}});
        AddCells(cells, month);
    }

    /// The trial, whose sheets get the names of the filled ones.
    Trial Take(const std::vector<std::string>& names)
    {
        // A calendar that ended early has begun a sheet that the run does not count as filled.
        trial_.sheets.resize(std::min(trial_.sheets.size(), names.size()));
        for (std::size_t i = 0; i < trial_.sheets.size(); ++i)
            trial_.sheets[i].name = names[i];
        return std::move(trial_);
    }

private:
    void Add(const std::string& text, std::optional<std::int16_t> sheet)
    {
        trial_.findings.push_back({calendar_ + ": " + util::JoinLines(text), sheet});
    }

    /// A day's number comes before its holidays; what comes before the first has no day.
    void AddCells(const std::vector<RecordedCell>& cells, std::int16_t month)
    {
        std::int16_t day = 0;
        for (const RecordedCell& cell : cells) {
            const auto* const number = std::get_if<std::int16_t>(&cell.value);
            if (number != nullptr && *number == day + 1)
                day = *number;
            trial_.sheets.back().cells.push_back({cell, month, day});
        }
    }

    void ReportErrors(const std::vector<RecordedCell>& cells, std::int16_t month,
                      std::int16_t sheet)
    {
        const auto failed = [](const RecordedCell& cell) { return cell.error.has_value(); };
        const auto first = std::find_if(cells.begin(), cells.end(), failed);
        if (first == cells.end())
            return;
        const auto count = std::count_if(first, cells.end(), failed);
        Add("in " + std::to_string(year_) + '-' + std::to_string(month) + ", " +
                std::to_string(count) + (count == 1 ? " cell" : " cells") + " cannot be written. " +
                util::ErrorText(*first->error),
            sheet);
    }

    RecordingWorkbook& workbook_;
    std::int16_t year_;
    std::string calendar_;
    std::string model_;
    Trial trial_;
};

} // namespace

std::vector<std::string> TextsOf(const std::vector<Finding>& findings)
{
    std::vector<std::string> texts;
    texts.reserve(findings.size());
    for (const Finding& finding : findings)
        texts.push_back(finding.text);
    return texts;
}

Trial TryCalendars(book::Workbook& workbook, std::int16_t year, model::ParameterSets sets,
                   const model::NameTables& names)
{
    RecordingWorkbook recording(workbook);
    TrialObserver observer(recording, year);
    std::vector<std::string> filled;
    Context context{names, observer, &filled};
    context.easter = holidays::EasterDate(year);
    try {
        observer.Begin("Monthly calendar", sets.Monthly.SheetName);
        MakeMonthlyCalendar(recording, year, sets.Monthly, context);
        observer.Begin("Yearly calendar", sets.Yearly.SheetName);
        MakeYearlyCalendar(recording, year, sets.Yearly, context);
    }
    catch (const RunEnded&) {
        // The last finding says that the application is lost.
    }
    return observer.Take(filled);
}

} // namespace orrery::generate
