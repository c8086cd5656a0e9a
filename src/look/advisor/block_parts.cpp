#include "look/advisor/block_parts.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace orrery::look {
namespace {

constexpr double kMostDays = 31;
constexpr double kShortestMonth = 28;
constexpr std::int32_t kFewestSamples = 20;
constexpr double kRule = 8; // points: a lower row is a line, not room for a text
constexpr std::int32_t kHeaderRows = 3;

DayContents ReadDays(const SeenSheet& sheet, const DayGrid& grid, book::CellAddress first)
{
    DayContents days;
    std::optional<double> last;
    std::int32_t lastIndex = 0;
    days.isCounted = true;
    for (std::int32_t i = 0; i < kDays * grid.weeks; ++i) {
        const std::int32_t row = first.row + i / kDays * grid.height;
        const std::int32_t column = first.column + i % kDays * grid.width;
        const SeenContent* const content = sheet.Content(row, column);
        if (content == nullptr)
            continue;
        if (!content->number) {
            ++days.texts;
            continue;
        }
        const double number = *content->number;
        const bool isDate = number > kMostDays;
        if (isDate && !days.firstSerial)
            days.firstSerial = number - i;
        const double passed = last ? *last + i - lastIndex - number : 0;
        const bool isNext = passed == 0 || (passed >= kShortestMonth && passed <= kMostDays);
        days.isCounted = days.isCounted && isNext && number >= 1;
        if (number == 1 && !days.one)
            days.one = i % kDays;
        last = number;
        lastIndex = i;
        ++days.numbers;
    }
    days.isCounted = days.isCounted && days.numbers >= kFewestSamples;
    return days;
}

bool IsAnchor(const DayGrid& grid, book::CellAddress cell)
{
    return std::ranges::find(grid.anchors, cell) != grid.anchors.end();
}

bool IsRoom(const SeenSheet& sheet, book::CellAddress cell)
{
    double height = 0;
    const book::CellRange range = sheet.Range(cell.row, cell.column);
    for (std::int32_t row = range.first.row; row <= range.last.row; ++row)
        height += sheet.Height(row);
    return height >= kRule;
}

double WidthOf(const SeenSheet& sheet, book::CellAddress cell)
{
    double width = 0;
    const book::CellRange range = sheet.Range(cell.row, cell.column);
    for (std::int32_t column = range.first.column; column <= range.last.column; ++column)
        width += sheet.Width(column);
    return width;
}

/// Whether a cell can take a text: it is high enough, or made to hide its text.
bool TakesText(const SeenSheet& sheet, book::CellAddress cell)
{
    return IsRoom(sheet, cell) || sheet.Style(cell.row, cell.column).numberFormat == ";;;";
}

/// Whether the days of two columns look alike in two of the three weeks after the first: a single
/// day may be marked. The colour of a text counts where texts are shown.
bool AreColumnsAlike(const SeenSheet& sheet, const DayGrid& grid, const DayCell& day,
                     std::int32_t one, std::int32_t other)
{
    constexpr std::int32_t weeks = 3;
    const bool isShown = day.contents.numbers > 0;
    std::int32_t equal = 0;
    for (std::int32_t week = 1; week <= weeks; ++week) {
        const std::int32_t row = day.cell.row + week * grid.height;
        const book::CellStyle& left = sheet.Style(row, day.cell.column + one * grid.width);
        const book::CellStyle& right = sheet.Style(row, day.cell.column + other * grid.width);
        equal += left.fill == right.fill && (!isShown || left.font.color == right.font.color);
    }
    return equal >= weeks - 1;
}

} // namespace

DayCell FindDayCell(const SeenSheet& sheet, const DayGrid& grid)
{
    std::vector<book::CellAddress> cells = grid.anchors;
    std::ranges::sort(cells);
    DayCell largest{cells.front(), ReadDays(sheet, grid, cells.front()), ""};
    bool isAlone = true;
    double size = sheet.Style(cells.front().row, cells.front().column).font.size;
    for (const book::CellAddress cell : cells) {
        const DayContents contents = ReadDays(sheet, grid, cell);
        if (contents.isCounted)
            return {cell, contents, "its cells have the days of a month"};
        const double other = sheet.Style(cell.row, cell.column).font.size;
        if (other > size && IsRoom(sheet, cell)) {
            size = other;
            largest = {cell, contents, ""};
        }
        isAlone = isAlone && cell == cells.front();
    }
    largest.because = isAlone ? "seven equal cells recur in every week there"
                              : "it has the largest font of the area of a day";
    return largest;
}

std::optional<HolidayCell> FindHolidayCell(const SeenSheet& sheet, const DayGrid& grid,
                                           book::CellAddress day)
{
    const book::CellRange own = sheet.Range(day.row, day.column);
    std::vector<book::CellAddress> below;
    for (std::int32_t row = own.last.row + 1; row < grid.first.row + grid.height; ++row) {
        for (std::int32_t column = grid.first.column; column < grid.first.column + grid.width;
             ++column) {
            if (IsAnchor(grid, {row, column}) && TakesText(sheet, {row, column})) {
                below.push_back({row, column});
                break;
            }
        }
    }
    for (std::int32_t column = own.last.column + 1; column < grid.first.column + grid.width;
         ++column) {
        const book::CellAddress beside{day.row, column};
        if (IsAnchor(grid, beside) &&
            (below.empty() || WidthOf(sheet, beside) >= WidthOf(sheet, day)))
            return HolidayCell{beside, 0, "it is the cell beside the day"};
    }
    for (std::int32_t column = grid.first.column; column < day.column; ++column) {
        const book::CellAddress before{day.row, column};
        if (IsAnchor(grid, before) && WidthOf(sheet, before) > WidthOf(sheet, day))
            return HolidayCell{before, 0, "it is the cell beside the day"};
    }
    if (!below.empty()) {
        return HolidayCell{below.front(), static_cast<std::int16_t>(below.size() > 1 ? 1 : 0),
                           "it is the first row of text below the day"};
    }
    for (const book::CellAddress cell : grid.anchors) {
        if (cell.row < day.row && IsRoom(sheet, cell))
            return HolidayCell{cell, 0, "it is the row of text above the day"};
    }
    for (const book::CellAddress cell : grid.anchors) {
        if (cell.row == day.row && cell.column < day.column)
            return HolidayCell{cell, 0, "it is the cell beside the day"};
    }
    return std::nullopt;
}

std::optional<WeekdayCells> FindWeekdayCells(const SeenSheet& sheet, const DayGrid& grid,
                                             const std::vector<WeekdayRow>& rows)
{
    std::optional<WeekdayCells> nearest;
    for (const WeekdayRow& row : rows) {
        const bool isAbove =
            row.first.row < grid.first.row && row.first.row >= grid.first.row - kHeaderRows;
        const bool fits = row.step == grid.width &&
                          row.first.column > grid.first.column - grid.width &&
                          row.first.column < grid.first.column + grid.width;
        if (isAbove && fits)
            nearest = {row, true};
    }
    if (nearest)
        return nearest;
    for (std::int32_t row = grid.first.row - 1; row >= std::max(1, grid.first.row - 2); --row) {
        for (std::int32_t column = std::max(1, grid.first.column - grid.width + 1);
             column < grid.first.column + grid.width; ++column) {
            const std::int32_t signature = sheet.Signature(row, column);
            bool isEven = signature != SeenSheet::kPlain && signature != SeenSheet::kCovered &&
                          IsRoom(sheet, {row, column});
            const bool isEmpty = sheet.Text(row, column).empty();
            for (std::int32_t day = 0; day < kDays && isEven; ++day) {
                const std::string& text = sheet.Text(row, column + day * grid.width);
                isEven = sheet.Signature(row, column + day * grid.width) == signature &&
                         text.empty() == isEmpty &&
                         text.find_first_of("0123456789") == std::string::npos;
            }
            if (isEven)
                return WeekdayCells{{{row, column}, grid.width, {}, {}}, !isEmpty};
        }
    }
    return std::nullopt;
}

std::optional<std::int16_t> FirstDayOfMonth(const DayContents& days, std::int32_t year,
                                            std::int16_t month)
{
    if (!days.one || !days.isCounted || month == 0)
        return std::nullopt;
    const std::chrono::year_month_day first{std::chrono::year(year),
                                            std::chrono::month(static_cast<unsigned>(month)),
                                            std::chrono::day(1)};
    const auto weekday =
        static_cast<std::int32_t>(std::chrono::weekday(std::chrono::sys_days(first)).c_encoding());
    const std::int32_t day = (weekday - *days.one + kDays) % kDays;
    return day < 2 ? std::optional(static_cast<std::int16_t>(day)) : std::nullopt;
}

std::optional<std::int16_t> FirstDayOfLooks(const SeenSheet& sheet, const DayGrid& grid,
                                            const DayCell& day)
{
    if (day.contents.firstSerial) {
        const double first = std::fmod(*day.contents.firstSerial + kDays - 1, kDays);
        if (first == 0 || first == 1)
            return static_cast<std::int16_t>(first);
    }
    const auto isLikeMiddle = [&](std::int32_t column) {
        constexpr std::int32_t middle = 3;
        return AreColumnsAlike(sheet, grid, day, column, middle);
    };
    for (std::int32_t column = 1; column < kDays - 2; ++column) {
        if (!isLikeMiddle(column))
            return std::nullopt;
    }
    const bool first = !isLikeMiddle(0);
    const bool sixth = !isLikeMiddle(kDays - 2);
    const bool last = !isLikeMiddle(kDays - 1);
    if (first && !sixth)
        return std::int16_t{0};
    if (!first && last)
        return std::int16_t{1};
    return std::nullopt;
}

} // namespace orrery::look
