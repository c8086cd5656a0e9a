#include "generate/trial_run.h"

#include "generate/calendar_sheets.h"
#include "generate/failure.h"
#include "generate/recording_workbook.h"
#include "holidays/date.h"
#include "util/error_text.h"
#include "util/text.h"

#include <optional>
#include <utility>

namespace orrery::generate {
namespace {

/// Collects the reports of a run, one line each, after its calendar's name.
class FindingList : public RunObserver {
public:
    FindingList(RecordingWorkbook& workbook, std::int16_t year) : workbook_(workbook), year_(year)
    {
    }
    void Begin(std::string calendar) { calendar_ = std::move(calendar); }

    void Report(const std::string& text) override
    {
        std::string line;
        for (const std::string_view part : util::SplitLines(text))
            line += (line.empty() ? "" : " ") + std::string(part);
        lines_.push_back(calendar_ + ": " + line);
    }
    void FailureIgnored(const std::string& what, const std::exception& error) override
    {
        Report(what + "\r\n" + util::ErrorText(error));
    }
    void MonthDone(CalendarKind /*kind*/, std::int16_t month) override
    {
        std::size_t count = 0;
        std::optional<util::Error> first;
        for (RecordedCell& cell : workbook_.Take()) {
            if (cell.error && count++ == 0)
                first = std::move(cell.error);
        }
        if (first) {
            Report("in " + std::to_string(year_) + '-' + std::to_string(month) + ", " +
                   std::to_string(count) + (count == 1 ? " cell" : " cells") +
                   " cannot be written. " + util::ErrorText(*first));
        }
    }

    std::vector<std::string> Take() { return std::move(lines_); }

private:
    RecordingWorkbook& workbook_;
    std::int16_t year_;
    std::string calendar_;
    std::vector<std::string> lines_;
};

} // namespace

std::vector<std::string> TryCalendars(book::Workbook& workbook, std::int16_t year,
                                      model::ParameterSets sets, const model::NameTables& names)
{
    RecordingWorkbook recording(workbook);
    FindingList findings(recording, year);
    Context context{names, findings};
    context.easter = holidays::EasterDate(year);
    try {
        findings.Begin("Monthly calendar");
        MakeMonthlyCalendar(recording, year, sets.Monthly, context);
        findings.Begin("Yearly calendar");
        MakeYearlyCalendar(recording, year, sets.Yearly, context);
    }
    catch (const RunEnded&) {
        // The last finding says that the application is lost.
    }
    return findings.Take();
}

} // namespace orrery::generate
