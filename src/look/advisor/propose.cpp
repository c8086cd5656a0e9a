#include "look/advisor/propose.h"

#include "book/error.h"
#include "look/advisor/block_parts.h"
#include "look/advisor/titles.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace orrery::look {
namespace {

constexpr int kEnough = 3;
constexpr int kYearEnough = 1;
constexpr int kDecoy = -100;
constexpr std::int32_t kFewNumbers = 4;
constexpr int kSeveralMonths = 3; ///< so many equal grids are a part of a year

/// A calendar that a sheet may be.
struct Candidate {
    int score = kDecoy;
    double area = 0; ///< in digits and points
    std::string sheet;
    DayGrid grid;
    std::optional<YearGrid> year;
    DayCell day;
    std::optional<HolidayCell> holiday;
    std::optional<WeekdayCells> weekdays;
    std::optional<std::int16_t> firstDay;
    Titles titles;

    bool IsBetterThan(const std::optional<Candidate>& other) const
    {
        return !other || score > other->score || (score == other->score && area > other->area);
    }
};

/// Whether rows of the grid have headings, as those of tables do; numbers of weeks are none.
bool HasRowHeadings(const SeenSheet& sheet, const DayGrid& grid)
{
    constexpr std::int32_t few = 2;
    std::int32_t headings = 0;
    for (std::int32_t row = grid.first.row; row <= grid.LastRow(); ++row) {
        const std::string& text = sheet.Text(row, grid.first.column - 1);
        const bool hasDigit = text.find_first_of("0123456789") != std::string::npos;
        const bool isTime = text.find(':') != std::string::npos;
        headings += !text.empty() && (!hasDigit || isTime) ? 1 : 0;
    }
    return headings > few;
}

bool IsMostlyText(const SeenSheet& sheet, const DayGrid& grid)
{
    constexpr std::int32_t share = 4;
    std::int32_t texts = 0;
    for (const auto& [cell, content] : sheet.Contents())
        texts += grid.Contains(cell) && !content.number ? 1 : 0;
    return texts * share > kDays * grid.weeks;
}

double AreaOf(const SeenSheet& sheet, const DayGrid& grid)
{
    double width = 0;
    double height = 0;
    for (std::int32_t i = grid.first.column; i <= std::min(grid.LastColumn(), sheet.Columns()); ++i)
        width += sheet.Width(i);
    for (std::int32_t i = grid.first.row; i <= std::min(grid.LastRow(), sheet.Rows()); ++i)
        height += sheet.Height(i);
    return width * height;
}

void ReadParts(const SeenSheet& sheet, const std::vector<WeekdayRow>& rows, Candidate& candidate)
{
    candidate.day = FindDayCell(sheet, candidate.grid);
    candidate.holiday = FindHolidayCell(sheet, candidate.grid, candidate.day.cell);
    candidate.weekdays = FindWeekdayCells(sheet, candidate.grid, rows);
    candidate.firstDay = candidate.weekdays && candidate.weekdays->row.firstDay
                             ? candidate.weekdays->row.firstDay
                             : FirstDayOfLooks(sheet, candidate.grid, candidate.day);
    candidate.area = AreaOf(sheet, candidate.grid);
}

int ScoreParts(const SeenSheet& sheet, const Candidate& candidate)
{
    const DayContents& contents = candidate.day.contents;
    if (!contents.isCounted && contents.numbers > kFewNumbers)
        return kDecoy;
    if (HasRowHeadings(sheet, candidate.grid) || IsMostlyText(sheet, candidate.grid))
        return kDecoy;
    int score = 0;
    if (candidate.weekdays)
        score += candidate.weekdays->row.list || candidate.weekdays->row.firstDay ? 3 : 1;
    score += contents.isCounted ? 3 : 0;
    score += candidate.grid.height > 1 ? 1 : 0;
    score += candidate.holiday ? 1 : 0;
    return score;
}

Candidate JudgeMonth(const SeenSheet& sheet, const DayGrid& grid,
                     const std::vector<WeekdayRow>& rows, const KnownNames& names)
{
    Candidate candidate;
    candidate.grid = grid;
    ReadParts(sheet, rows, candidate);
    candidate.score = ScoreParts(sheet, candidate);
    if (candidate.score < 0)
        return candidate;
    const auto weekdays =
        candidate.weekdays ? std::optional(candidate.weekdays->row.first) : std::nullopt;
    candidate.titles = FindMonthTitles(sheet, grid, weekdays, names);
    const auto& [month, year, isInOrder, texts] = candidate.titles;
    if (month)
        candidate.score += month->isSure ? 2 : 1;
    candidate.score += year && year->isSure ? 1 : 0;
    return candidate;
}

std::optional<Candidate> FindYearPage(const SeenSheet& sheet, const std::vector<DayGrid>& grids,
                                      const std::vector<WeekdayRow>& rows, const KnownNames& names)
{
    const auto year = FindYearGrid(grids);
    if (!year)
        return std::nullopt;
    Candidate candidate;
    candidate.grid = year->january;
    candidate.year = year;
    ReadParts(sheet, rows, candidate);
    candidate.titles = FindYearTitles(sheet, *year, names);
    candidate.score = ScoreParts(sheet, candidate) + (candidate.titles.month ? 2 : 0);
    if (candidate.score < kYearEnough || !candidate.titles.isInOrder)
        return std::nullopt;
    return candidate;
}

/// What samples of days say where weekdays do not.
void LearnFirstDay(const KnownNames& names, Candidate& candidate)
{
    if (candidate.firstDay || !candidate.titles.month)
        return;
    const std::string& text = candidate.titles.month->text;
    const auto year =
        candidate.titles.year ? FindYear(candidate.titles.year->text) : FindYear(text);
    const std::int16_t month = candidate.year ? std::int16_t{1} : names.MonthOf(text);
    if (year)
        candidate.firstDay = FirstDayOfMonth(candidate.day.contents, *year, month);
}

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

/// The calendars of a workbook.
struct Found {
    std::optional<Candidate> month;
    std::optional<Candidate> year;
};

void LookAt(const SeenSheet& sheet, const std::string& name, const KnownNames& names, Found& found)
{
    const auto rows = FindWeekdayRows(sheet, names);
    const auto grids = FindDayGrids(sheet, rows);
    if (auto year = FindYearPage(sheet, grids, rows, names)) {
        year->sheet = name;
        if (year->IsBetterThan(found.year))
            found.year = std::move(year);
        return;
    }
    for (const DayGrid& grid : grids) {
        const auto equal = std::ranges::count_if(grids, [&](const DayGrid& other) {
            return other.width == grid.width && other.height == grid.height &&
                   other.weeks == grid.weeks;
        });
        if (equal >= kSeveralMonths)
            continue;
        Candidate month = JudgeMonth(sheet, grid, rows, names);
        month.sheet = name;
        if (month.score >= kEnough && month.IsBetterThan(found.month))
            found.month = std::move(month);
    }
}

} // namespace

Proposal Propose(book::WorkbookView& view, const model::NameTables& names,
                 const model::ParameterSets& initial, double now)
{
    const KnownNames known(names);
    Evaluator evaluator(view, now);
    Found found;
    const auto& sheets = view.Workbook().sheets;
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        if (sheets[i].kind != book::SheetKind::Worksheet ||
            sheets[i].state != book::SheetState::Visible)
            continue;
        LookAt(SeenSheet(view, i, evaluator), sheets[i].name, known, found);
    }
    Proposal proposal{initial, {}, {}};
    proposal.sets.Monthly.Output = false;
    proposal.sets.Yearly.Output = false;
    for (auto* const candidate : {&found.month, &found.year}) {
        if (*candidate)
            LearnFirstDay(known, **candidate);
    }
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
