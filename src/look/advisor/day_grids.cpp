#include "look/advisor/day_grids.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace orrery::look {
namespace {

constexpr std::int32_t kWidestDay = 12;
constexpr std::int32_t kHighestDay = 20;
constexpr std::int32_t kMostWeeks = 6;
constexpr double kSameHeight = 0.6; // points
constexpr double kWidthRatio = 2.5; // of a weekend's columns and others

/// A column, a step, a signature, and whether most of the week is bold.
using RunKind = std::tuple<std::int32_t, std::int32_t, std::int32_t, bool>;
using Runs = std::map<RunKind, std::set<std::int32_t>>; ///< the rows with such a run

bool IsEqualRun(const SeenSheet& sheet, std::int32_t row, std::int32_t column, std::int32_t step)
{
    const std::int32_t signature = sheet.Signature(row, column);
    for (std::int32_t day = 1; day < kDays; ++day) {
        if (sheet.Signature(row, column + day * step) != signature)
            return false;
    }
    return true;
}

/// Whether the columns between the days of a run are alike from day to day, and not all like it.
bool IsPeriodic(const SeenSheet& sheet, std::int32_t row, std::int32_t column, std::int32_t step)
{
    bool isUniform = step > 1;
    for (std::int32_t offset = 1; offset < step; ++offset) {
        const std::int32_t signature = sheet.Signature(row, column + offset);
        isUniform = isUniform && signature == sheet.Signature(row, column);
        for (std::int32_t day = 1; day < kDays - 1; ++day) {
            if (sheet.Signature(row, column + day * step + offset) != signature)
                return false;
        }
    }
    return !isUniform;
}

bool HasEvenWidths(const SeenSheet& sheet, std::int32_t column, std::int32_t step)
{
    double narrowest = 1e9;
    double widest = 0;
    for (std::int32_t day = 0; day < kDays; ++day) {
        double width = 0;
        for (std::int32_t offset = 0; offset < step; ++offset) {
            const std::int32_t at = column + day * step + offset;
            width += at <= sheet.Columns() ? sheet.Width(at) : 0;
        }
        if (width <= 0)
            continue; // hidden, as weekends may be
        narrowest = std::min(narrowest, day == kDays - 1 ? std::max(width, narrowest) : width);
        widest = std::max(widest, width);
    }
    return widest <= narrowest * kWidthRatio;
}

bool AreWeekdays(const std::vector<WeekdayRow>& weekdays, std::int32_t row, std::int32_t column,
                 std::int32_t step)
{
    return std::ranges::any_of(weekdays, [&](const WeekdayRow& names) {
        return names.first == book::CellAddress{row, column} && names.step == step;
    });
}

/// Whether a run has to be one of days: seven and no more, or as the names of weekdays say.
bool IsBounded(const SeenSheet& sheet, std::int32_t row, std::int32_t column, std::int32_t step,
               const std::vector<WeekdayRow>& weekdays)
{
    const std::int32_t signature = sheet.Signature(row, column);
    const auto countDays = [&](std::int32_t direction) {
        std::int32_t count = 0;
        while (sheet.Signature(row, column + direction * (count + 1)) == signature)
            ++count;
        return count;
    };
    if (countDays(-step) % kDays == 0 && countDays(step) % kDays == kDays - 1)
        return true; // months may stand side by side without a distance
    return std::ranges::any_of(weekdays, [&](const WeekdayRow& names) {
        return names.step == step && names.first.row < row && column >= names.first.column &&
               column < names.first.column + step;
    });
}

/// Of most days: weekends and single days may differ.
bool IsBold(const SeenSheet& sheet, std::int32_t row, std::int32_t column, std::int32_t step)
{
    std::int32_t bold = 0;
    for (std::int32_t day = 0; day < kDays; ++day)
        bold += sheet.Style(row, column + day * step).font.bold ? 1 : 0;
    return bold > kDays / 2;
}

Runs FindRuns(const SeenSheet& sheet, const std::vector<WeekdayRow>& weekdays)
{
    Runs runs;
    for (std::int32_t step = 1; step <= kWidestDay; ++step) {
        for (std::int32_t column = 1; column + (kDays - 1) * step <= sheet.Columns(); ++column) {
            if (!HasEvenWidths(sheet, column, step))
                continue;
            for (std::int32_t row = 1; row <= sheet.Rows(); ++row) {
                const std::int32_t signature = sheet.Signature(row, column);
                if (signature != SeenSheet::kPlain && signature != SeenSheet::kCovered &&
                    IsEqualRun(sheet, row, column, step) &&
                    !AreWeekdays(weekdays, row, column, step) &&
                    IsBounded(sheet, row, column, step, weekdays) &&
                    IsPeriodic(sheet, row, column, step))
                    runs[{column, step, signature, IsBold(sheet, row, column, step)}].insert(row);
            }
        }
    }
    return runs;
}

bool IsSameHeight(const SeenSheet& sheet, std::int32_t one, std::int32_t other)
{
    return std::abs(sheet.Height(one) - sheet.Height(other)) < kSameHeight;
}

/// Whether the rows below the first one of each week are alike from week to week.
bool AreWeeksAlike(const SeenSheet& sheet, const DayGrid& grid)
{
    for (std::int32_t week = 1; week < grid.weeks; ++week) {
        const bool isLast = week == grid.weeks - 1;
        for (std::int32_t offset = 0; offset < (isLast ? 1 : grid.height); ++offset) {
            const std::int32_t row = grid.first.row + offset;
            const std::int32_t other = row + week * grid.height;
            if (!IsSameHeight(sheet, row, other))
                return false;
            for (std::int32_t column = grid.first.column;
                 column <= grid.first.column + (kDays - 1) * grid.width; ++column) {
                if (sheet.Signature(row, column) != sheet.Signature(other, column))
                    return false;
            }
        }
    }
    return true;
}

/// Whether all rows of a day are the same: then they are rows of a table, not of weeks.
bool AreRowsEqual(const SeenSheet& sheet, const DayGrid& grid)
{
    const book::CellAddress first = grid.first;
    for (std::int32_t row = first.row + 1; row < first.row + grid.height; ++row) {
        if (!IsSameHeight(sheet, row, first.row))
            return false;
        for (std::int32_t column = first.column; column < first.column + grid.width; ++column) {
            if (sheet.Signature(row, column) != sheet.Signature(first.row, column))
                return false;
        }
    }
    return grid.height > 1;
}

/// The number of rows at that distance that have a run, from a first one.
std::int32_t CountWeeks(const std::set<std::int32_t>& rows, std::int32_t row, std::int32_t height)
{
    std::int32_t weeks = 1;
    while (rows.contains(row + weeks * height))
        ++weeks;
    return weeks;
}

/// The months that stand below each other without a distance.
std::int32_t MonthsOf(std::int32_t weeks)
{
    for (const std::int32_t months : {2, 3, 4, 6, 12}) {
        if (weeks == months * kMostWeeks)
            return months;
    }
    return 1;
}

void AddGrids(const SeenSheet& sheet, const RunKind& kind, const std::set<std::int32_t>& rows,
              std::vector<DayGrid>& grids)
{
    for (const std::int32_t row : rows) {
        for (std::int32_t height = 1; height <= kHighestDay; ++height) {
            if (rows.contains(row - height))
                continue;
            std::int32_t weeks = CountWeeks(rows, row, height);
            const std::int32_t months = MonthsOf(weeks);
            weeks = months > 1 ? kMostWeeks : weeks;
            if (weeks != kMostWeeks && weeks != kMostWeeks - 1)
                continue;
            for (std::int32_t month = 0; month < months; ++month) {
                const book::CellAddress first{row + month * weeks * height, std::get<0>(kind)};
                DayGrid grid{first, std::get<1>(kind), height, weeks, {first}, months > 1};
                if (AreWeeksAlike(sheet, grid) && !AreRowsEqual(sheet, grid))
                    grids.push_back(std::move(grid));
            }
        }
    }
}

/// Joins grids that are parts of the same days.
std::vector<DayGrid> Join(std::vector<DayGrid> parts)
{
    std::vector<DayGrid> grids;
    for (DayGrid& part : parts) {
        const auto same = std::ranges::find_if(grids, [&](const DayGrid& grid) {
            return grid.width == part.width && grid.height == part.height &&
                   grid.weeks == part.weeks &&
                   std::abs(grid.first.row - part.first.row) < grid.height &&
                   std::abs(grid.first.column - part.first.column) < grid.width;
        });
        if (same == grids.end()) {
            grids.push_back(std::move(part));
            continue;
        }
        same->first.row = std::min(same->first.row, part.first.row);
        same->first.column = std::min(same->first.column, part.first.column);
        same->anchors.push_back(part.first);
    }
    return grids;
}

std::int32_t Size(const DayGrid& grid)
{
    return grid.width * grid.height * grid.weeks;
}

/// The distance of equally spaced numbers; 0 for one, nothing if they are uneven.
std::optional<std::int32_t> Spacing(const std::set<std::int32_t>& numbers)
{
    std::int32_t spacing = 0;
    for (auto next = numbers.begin(), at = next++; next != numbers.end(); ++at, ++next) {
        if (spacing != 0 && *next - *at != spacing)
            return std::nullopt;
        spacing = *next - *at;
    }
    return spacing;
}

std::optional<YearGrid> ArrangeYear(const std::vector<DayGrid>& months)
{
    std::set<std::int32_t> rows;
    std::set<std::int32_t> columns;
    for (const DayGrid& month : months) {
        rows.insert(month.first.row);
        columns.insert(month.first.column);
    }
    const auto rowInterval = Spacing(rows);
    const auto columnInterval = Spacing(columns);
    const bool isWhole = months.size() == kMonths && rows.size() * columns.size() == kMonths;
    if (!isWhole || !rowInterval || !columnInterval)
        return std::nullopt;
    const DayGrid& first = months.front();
    if ((columns.size() > 1 && *columnInterval < (kDays - 1) * first.width + 1) ||
        (rows.size() > 1 && *rowInterval < (first.weeks - 1) * first.height + 1))
        return std::nullopt;
    const auto january = std::ranges::find_if(months, [&](const DayGrid& month) {
        return month.first == book::CellAddress{*rows.begin(), *columns.begin()};
    });
    return YearGrid{*january, static_cast<std::int32_t>(columns.size()),
                    static_cast<std::int32_t>(rows.size()), *columnInterval, *rowInterval};
}

std::optional<WeekdayRow> ReadWeekdays(const SeenSheet& sheet, book::CellAddress first,
                                       std::int32_t step, const KnownNames& names)
{
    std::vector<std::string> texts;
    std::vector<double> dates;
    for (std::int32_t day = 0; day < kDays; ++day) {
        const std::int32_t column = first.column + day * step;
        const SeenContent* const content = sheet.Content(first.row, column);
        if (content == nullptr)
            return std::nullopt;
        if (!content->number) {
            texts.push_back(content->text);
            continue;
        }
        const bool isDate =
            sheet.Style(first.row, column).numberFormat.find("ddd") != std::string::npos;
        const bool isNext =
            dates.empty() || std::fmod(*content->number - dates.back() + kDays, kDays) == 1;
        if (!isDate || !isNext)
            return std::nullopt;
        dates.push_back(*content->number);
    }
    if (dates.size() == kDays) {
        const auto day = static_cast<std::int16_t>(std::fmod(dates.front() + kDays - 1, kDays));
        return WeekdayRow{first, step, {}, day < 2 ? std::optional(day) : std::nullopt};
    }
    if (texts.size() != kDays)
        return std::nullopt;
    if (const auto match = names.FindWeekdays(texts))
        return WeekdayRow{first, step, match->list, match->firstDay};
    if (const auto firstDay = names.FindFirstDay(texts))
        return WeekdayRow{first, step, {}, firstDay};
    return std::nullopt;
}

} // namespace

bool DayGrid::Contains(book::CellAddress cell) const
{
    return cell.row >= first.row && cell.row <= LastRow() && cell.column >= first.column &&
           cell.column <= LastColumn();
}

std::vector<WeekdayRow> FindWeekdayRows(const SeenSheet& sheet, const KnownNames& names)
{
    std::vector<WeekdayRow> rows;
    for (const auto& [cell, content] : sheet.Contents()) {
        // Where months stand side by side, a week also begins inside of another.
        if (!rows.empty() && rows.back().first.row == cell.row &&
            cell.column < rows.back().first.column + kDays * rows.back().step)
            continue;
        if (!content.number && !names.BeginsWeekday(content.text))
            continue;
        for (std::int32_t step = 1; step <= kWidestDay; ++step) {
            if (auto row = ReadWeekdays(sheet, cell, step, names)) {
                rows.push_back(*row);
                break;
            }
        }
    }
    return rows;
}

std::vector<DayGrid> FindDayGrids(const SeenSheet& sheet, const std::vector<WeekdayRow>& weekdays)
{
    std::vector<DayGrid> parts;
    for (const auto& [kind, rows] : FindRuns(sheet, weekdays))
        AddGrids(sheet, kind, rows, parts);
    std::ranges::sort(
        parts, [](const DayGrid& left, const DayGrid& right) { return left.first < right.first; });
    std::vector<DayGrid> grids = Join(std::move(parts));
    std::ranges::stable_sort(
        grids, [](const DayGrid& left, const DayGrid& right) { return Size(left) > Size(right); });
    return grids;
}

DayGrid YearGrid::Month(std::int32_t index) const
{
    DayGrid month = january;
    const std::int32_t right = index % across * columnInterval;
    const std::int32_t below = index / across * rowInterval;
    month.first.row += below;
    month.first.column += right;
    for (book::CellAddress& anchor : month.anchors) {
        anchor.row += below;
        anchor.column += right;
    }
    return month;
}

std::optional<YearGrid> FindYearGrid(const std::vector<DayGrid>& grids)
{
    std::map<std::tuple<std::int32_t, std::int32_t, std::int32_t>, std::vector<DayGrid>> equal;
    for (const DayGrid& grid : grids)
        equal[{grid.width, grid.height, grid.weeks}].push_back(grid);
    std::optional<YearGrid> best;
    for (const auto& [kind, months] : equal) {
        const auto year = ArrangeYear(months);
        if (year && (!best || Size(year->january) > Size(best->january)))
            best = year;
    }
    return best;
}

} // namespace orrery::look
