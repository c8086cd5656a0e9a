#include "look/advisor/candidates.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace orrery::look {
namespace {

constexpr int kEnough = 3;
constexpr int kYearEnough = 1;
constexpr int kDecoy = -100;
constexpr std::int32_t kFewNumbers = 4;
constexpr double kLastSerial = 2958465; // 31 December 9999
constexpr int kSeveralMonths = 3;       ///< so many equal grids are a part of a year

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

/// Whether a month has numbers that are no days.
bool HasOtherNumbers(const DayContents& contents)
{
    return !contents.isCounted && contents.numbers > kFewNumbers;
}

int ScoreParts(const SeenSheet& sheet, const Candidate& candidate)
{
    const DayContents& contents = candidate.day.contents;
    if (HasOtherNumbers(contents))
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

/// Whether nothing but a title and seven headings is made for texts.
bool IsEmptyForm(const SeenSheet& sheet, const Candidate& candidate)
{
    const bool isHeaded = candidate.weekdays && !candidate.weekdays->isRead &&
                          candidate.titles.month && !candidate.titles.month->isSure;
    return isHeaded && std::ranges::none_of(sheet.Contents(), [&](const auto& content) {
               return candidate.grid.Contains(content.first);
           });
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
    candidate.titles = FindMonthTitles(sheet, grid, weekdays, rows, names);
    if (const auto& month = candidate.titles.month)
        candidate.score += month->isSure ? 2 : 1;
    candidate.score += candidate.titles.year ? 1 : 0;
    candidate.score += IsEmptyForm(sheet, candidate) ? 1 : 0;
    return candidate;
}

bool HasOtherNumbers(const SeenSheet& sheet, const YearGrid& year)
{
    for (std::int32_t month = 0; month < kMonths; ++month) {
        if (HasOtherNumbers(FindDayCell(sheet, year.Month(month)).contents))
            return true;
    }
    return false;
}

std::optional<Candidate> FindYearPage(const SeenSheet& sheet, const std::vector<DayGrid>& grids,
                                      const std::vector<WeekdayRow>& rows, const KnownNames& names)
{
    const auto year = FindYearGrid(grids);
    if (!year || HasOtherNumbers(sheet, *year))
        return std::nullopt;
    Candidate candidate;
    candidate.grid = year->january;
    candidate.year = year;
    ReadParts(sheet, rows, candidate);
    candidate.titles = FindYearTitles(sheet, *year, names);
    const auto& [month, yearCell, shown, isInOrder, texts] = candidate.titles;
    candidate.score = ScoreParts(sheet, candidate) + (month ? 2 : 0);
    candidate.score += yearCell && yearCell->isSure ? 1 : 0;
    if (candidate.score < kYearEnough || !isInOrder)
        return std::nullopt;
    return candidate;
}

/// The year of a date in the system of 1900.
std::int32_t YearOf(double date)
{
    const auto days = std::chrono::sys_days(std::chrono::year(1899) / 12 / 30) +
                      std::chrono::days(static_cast<std::int32_t>(date));
    return static_cast<std::int32_t>(std::chrono::year_month_day(days).year());
}

/// What samples of days say where weekdays do not.
void LearnFirstDay(const KnownNames& names, Candidate& candidate)
{
    if (candidate.firstDay || !candidate.titles.month)
        return;
    const std::string& text = candidate.titles.month->text;
    auto year = candidate.titles.year ? FindYear(candidate.titles.year->text) : FindYear(text);
    if (!year)
        year = candidate.titles.shownYear;
    const auto number = candidate.titles.month->number;
    if (number && *number > kMonths && *number <= kLastSerial)
        year = YearOf(*number);
    const std::int16_t month = candidate.year ? std::int16_t{1} : names.MonthOf(text);
    if (year)
        candidate.firstDay = FirstDayOfMonth(candidate.day.contents, *year, month);
}

/// Whether a grid is a month beside others, or has several inside of its weeks.
bool IsOfSeveral(const DayGrid& grid, const std::vector<DayGrid>& grids)
{
    std::int32_t equal = 0;
    std::int32_t inside = 0;
    for (const DayGrid& other : grids) {
        const bool isEqual =
            other.width == grid.width && other.height == grid.height && other.weeks == grid.weeks;
        equal += isEqual ? 1 : 0;
        inside += !isEqual && grid.Contains(other.first) ? 1 : 0;
    }
    // The rows of a day's notes look like a month, too, but one in every week.
    return grid.isPart || equal >= kSeveralMonths || inside >= 2 * grid.weeks - 1;
}

} // namespace

void LookForCalendars(const SeenSheet& sheet, const std::string& name, const KnownNames& names,
                      Candidates& found)
{
    const auto rows = FindWeekdayRows(sheet, names);
    const auto grids = FindDayGrids(sheet, rows);
    if (auto year = FindYearPage(sheet, grids, rows, names)) {
        year->sheet = name;
        LearnFirstDay(names, *year);
        if (year->IsBetterThan(found.year))
            found.year = std::move(year);
        return;
    }
    std::optional<Candidate> best;
    for (const DayGrid& grid : grids) {
        if (IsOfSeveral(grid, grids))
            continue;
        Candidate month = JudgeMonth(sheet, grid, rows, names);
        month.sheet = name;
        if (month.score >= kEnough && (month.IsBetterThan(best) || month.IsMuchLargerThan(best)) &&
            !(best && best->IsMuchLargerThan(month)))
            best = std::move(month);
    }
    if (best && best->IsBetterThan(found.month)) {
        LearnFirstDay(names, *best);
        found.month = std::move(best);
    }
}

} // namespace orrery::look
