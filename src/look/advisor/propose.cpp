#include "look/advisor/propose.h"

#include "look/advisor/candidates.h"

#include <optional>
#include <utility>

namespace orrery::look {
namespace {

/// Writes a candidate as parameters.
class Writer {
public:
    Writer(std::string calendar, const KnownNames& names, Proposal& proposal)
        : calendar_(std::move(calendar)), names_(names), proposal_(proposal)
    {
    }

    void Write(const Candidate& found, model::CalendarParameters& set)
    {
        set.Output = true;
        Tell("Output", found.year ? "twelve equal grids of seven days and " + Weeks(found) +
                                        " stand at even distances"
                                  : "seven equal cells recur in " + Weeks(found));
        set.SheetName = found.sheet;
        Tell("SheetName", "the calendar is on this sheet");
        WriteDays(found, set);
        WriteWeekdays(found, set);
        WriteTitles(found, set);
        WriteHolidays(found, set);
    }
    void WriteLayout(const YearGrid& year, model::YearlyParameters& set)
    {
        set.MonthLayout = static_cast<std::int16_t>(year.across);
        Tell("MonthLayout", "so many grids stand side by side");
        WriteInterval(year.columnInterval, set.ColIntervalOfMonth, "ColIntervalOfMonth");
        WriteInterval(year.rowInterval, set.RowIntervalOfMonth, "RowIntervalOfMonth");
    }

private:
    static model::CellPosition Position(book::CellAddress cell) { return {cell.row, cell.column}; }
    static std::string Weeks(const Candidate& found)
    {
        return found.grid.weeks == 5 ? "five weeks" : "six weeks";
    }
    void Tell(const char* key, std::string because)
    {
        proposal_.reasons.push_back({calendar_ + '.' + key, std::move(because)});
    }
    void Leave(const char* key, std::string because)
    {
        proposal_.unknown.insert(calendar_ + '.' + key);
        Tell(key, std::move(because));
    }
    void WriteInterval(std::int32_t interval, std::int32_t& field, const char* key)
    {
        if (interval == 0)
            return Leave(key, "there is only one month in this direction");
        field = interval;
        Tell(key, "the grids have this distance");
    }
    void WriteDays(const Candidate& found, model::CalendarParameters& set)
    {
        if (found.firstDay) {
            set.FirstDayOfWeek = *found.firstDay;
            Tell("FirstDayOfWeek", found.weekdays && found.weekdays->isRead
                                       ? "the weekdays that stand above say so"
                                       : "the days or the columns of the weekend say so");
        }
        else {
            Leave("FirstDayOfWeek", "neither weekdays nor days nor a weekend tell it");
        }
        set.FirstCellOfDay = Position(found.day.cell);
        Tell("FirstCellOfDay", found.day.because);
        set.ColIntervalOfDay = found.grid.width;
        Tell("ColIntervalOfDay", "the days of a week have this distance");
        set.RowIntervalOfDay = found.grid.height;
        Tell("RowIntervalOfDay", "the weeks have this distance");
    }
    void WriteWeekdays(const Candidate& found, model::CalendarParameters& set)
    {
        set.OutWeekday = found.weekdays.has_value();
        if (!found.weekdays)
            return Tell("OutWeekday", "there is no row for weekdays above the days");
        const WeekdayCells& cells = *found.weekdays;
        Tell("OutWeekday", cells.isRead ? "weekdays stand above the days"
                                        : "seven equal cells stand above the days");
        set.FirstCellOfWeekday = Position(cells.row.first);
        Tell("FirstCellOfWeekday", "it is the first of these cells");
        if (cells.row.list) {
            set.WeekdayName = *cells.row.list;
            Tell("WeekdayName", "these names stand there");
        }
        else {
            Leave("WeekdayName", "no names of a known list stand there");
        }
    }
    void WriteTitles(const Candidate& found, model::CalendarParameters& set)
    {
        const auto& month = found.titles.month;
        set.OutMonth = month.has_value();
        Tell("OutMonth", month ? "there is a cell for the month" : "no cell shows a month");
        if (month) {
            set.FirstCellOfMonth = Position(month->cell);
            Tell("FirstCellOfMonth", month->because);
            WriteMonthNames(found, *month, set);
        }
        const auto& year = found.titles.year;
        set.OutYear = year.has_value();
        Tell("OutYear", year ? "there is a cell for the year" : "no cell shows a year alone");
        if (year) {
            set.FirstCellOfYear = Position(year->cell);
            Tell("FirstCellOfYear", year->because);
        }
    }
    void WriteMonthNames(const Candidate& found, const TitleCell& month,
                         model::CalendarParameters& set)
    {
        if (month.number)
            return Leave("MonthName", "a format shows the date there in any language");
        auto list = names_.FindMonths(found.titles.monthTexts);
        const auto fitting = names_.ListsWithMonth(month.text);
        if (!list && found.weekdays && found.weekdays->row.list)
            list = names_.InLanguage(fitting, *found.weekdays->row.list);
        if (!list && fitting.size() == 1)
            list = fitting.front();
        if (!list)
            return Leave("MonthName", "no names of a known list stand there");
        set.MonthName = *list;
        Tell("MonthName", "the text that stands there is one of these names");
    }
    void WriteHolidays(const Candidate& found, model::CalendarParameters& set)
    {
        set.OutHoliday = found.holiday.has_value();
        if (!found.holiday)
            return Tell("OutHoliday", "beside the days is no room for texts");
        Tell("OutHoliday", "the area of a day has room for texts");
        set.FirstCellOfHoliday = Position(found.holiday->cell);
        Tell("FirstCellOfHoliday", found.holiday->because);
        set.MultiHolidays = found.holiday->multiple;
        Tell("MultiHolidays", set.MultiHolidays == 1 ? "there are several rows of text"
                                                     : "there is one cell for each day");
    }

    std::string calendar_;
    const KnownNames& names_;
    Proposal& proposal_;
};

} // namespace

Proposal Propose(book::WorkbookView& view, const model::NameTables& names,
                 const model::ParameterSets& initial, double now)
{
    const KnownNames known(names);
    Evaluator evaluator(view, now);
    Candidates found;
    const auto& sheets = view.Workbook().sheets;
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        if (sheets[i].kind != book::SheetKind::Worksheet ||
            sheets[i].state != book::SheetState::Visible)
            continue;
        LookForCalendars(SeenSheet(view, i, evaluator), sheets[i].name, known, found);
    }
    Proposal proposal{initial, {}, {}};
    proposal.sets.Monthly.Output = false;
    proposal.sets.Yearly.Output = false;
    if (found.month)
        Writer("monthly", known, proposal).Write(*found.month, proposal.sets.Monthly);
    if (found.year) {
        Writer writer("yearly", known, proposal);
        writer.Write(*found.year, proposal.sets.Yearly);
        writer.WriteLayout(*found.year->year, proposal.sets.Yearly);
    }
    return proposal;
}

} // namespace orrery::look
