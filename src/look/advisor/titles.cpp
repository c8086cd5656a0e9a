#include "look/advisor/titles.h"

#include "look/advisor/title_words.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>
#include <utility>

namespace orrery::look {
namespace {

constexpr std::int32_t kMostlyMonths = 10;
constexpr std::int32_t kBeside = 5; ///< columns beside a month in which a title may stand
constexpr std::int32_t kBelow = 10;
constexpr double kLarger = 1.2;

/// The cell to the right of a label.
book::CellAddress Beside(const SeenSheet& sheet, book::CellAddress label)
{
    return {label.row, sheet.Range(label.row, label.column).last.column + 1};
}

TitleCell ReadTitle(const SeenSheet& sheet, book::CellAddress cell, const char* because)
{
    const SeenContent* const content = sheet.Content(cell.row, cell.column);
    if (content == nullptr)
        return {cell, {}, because};
    return {cell, content->text, because, true, content->number};
}

/// Takes cells one by one and keeps those with the largest font, the first of equals.
class TitleChoice {
public:
    explicit TitleChoice(const SeenSheet& sheet) : sheet_(sheet) {}

    void Take(std::optional<TitleCell>& best, book::CellAddress cell, const char* because)
    {
        const double size = sheet_.Style(cell.row, cell.column).font.size;
        const auto sizeOfBest =
            best ? sheet_.Style(best->cell.row, best->cell.column).font.size : 0;
        if (!best || size > sizeOfBest)
            best = ReadTitle(sheet_, cell, because);
    }

private:
    const SeenSheet& sheet_;
};

/// Whether a word heads a list of texts.
bool HeadsList(const SeenSheet& sheet, book::CellAddress cell)
{
    const auto isWord = [&](std::int32_t row) {
        const SeenContent* const content = sheet.Content(row, cell.column);
        return content != nullptr && !content->number &&
               content->text.find_first_of("0123456789[<{") == std::string::npos;
    };
    return isWord(cell.row) && isWord(cell.row + 1) && isWord(cell.row + 2);
}

/// The only year that the texts above a row show.
std::optional<std::int32_t> YearAbove(const SeenSheet& sheet, std::int32_t above)
{
    std::optional<std::int32_t> year;
    for (const auto& [cell, content] : sheet.Contents()) {
        const auto shown = cell.row < above ? FindYear(content.text) : std::nullopt;
        if (shown && year && *shown != *year)
            return std::nullopt;
        year = shown ? shown : year;
    }
    return year;
}

void TakeTitle(const SeenSheet& sheet, book::CellAddress cell, const KnownNames& names,
               Titles& titles, Titles& both)
{
    TitleChoice choice(sheet);
    if (HeadsList(sheet, cell))
        return;
    switch (KindOfTitle(sheet, cell, names)) {
    case TitleKind::Month:
        choice.Take(titles.month, cell, "it shows a month");
        break;
    case TitleKind::Year:
        choice.Take(titles.year, cell, "it shows a year");
        break;
    case TitleKind::Both:
        choice.Take(both.month, cell, "it shows a month and its year");
        break;
    case TitleKind::MonthLabel:
        choice.Take(titles.month, Beside(sheet, cell), "a label before it asks for the month");
        break;
    case TitleKind::YearLabel:
        choice.Take(titles.year, Beside(sheet, cell), "a label before it asks for the year");
        break;
    case TitleKind::None:
        break;
    }
}

/// Empty cells above a row that look like titles, one of each look of a row: with a larger font or
/// merged with so many others.
std::vector<book::CellAddress> EmptyTitles(const SeenSheet& sheet, std::int32_t above,
                                           std::int32_t first, std::int32_t last, double size,
                                           std::int32_t wide)
{
    std::vector<book::CellAddress> cells;
    for (std::int32_t row = 1; row < above; ++row) {
        std::set<std::int32_t> kinds;
        for (std::int32_t column = std::max(1, first); column <= last; ++column) {
            const std::int32_t kind = sheet.Signature(row, column);
            if (kind == SeenSheet::kPlain || kind == SeenSheet::kCovered ||
                !kinds.insert(kind).second || sheet.Content(row, column) != nullptr)
                continue;
            const bool isWide = sheet.Range(row, column).last.column >= column + wide;
            if (isWide || sheet.Style(row, column).font.size >= size * kLarger)
                cells.push_back({row, column});
        }
    }
    return cells;
}

/// A text in the row of the year that is as large, or above or below it, in a larger font: the name
/// of a month that no list has.
std::optional<TitleCell> TextBeside(const SeenSheet& sheet, book::CellAddress year)
{
    const double size = sheet.Style(year.row, year.column).font.size;
    for (const auto& [cell, content] : sheet.Contents()) {
        const double own = sheet.Style(cell.row, cell.column).font.size;
        const bool isBeside = cell.row == year.row && cell != year && own >= size;
        const bool isAround = std::abs(cell.row - year.row) == 1 && cell.column == year.column &&
                              own >= size * kLarger;
        const bool isLabel = content.text.find_first_of(":0123456789") != std::string::npos;
        if ((isBeside || isAround) && !content.number && !isLabel)
            return TitleCell{cell, content.text, "a text stands beside the year", true};
    }
    return std::nullopt;
}

TitleCell LikelyTitle(book::CellAddress cell, const char* because)
{
    return {cell, {}, because, false};
}

bool IsNear(const DayGrid& grid, book::CellAddress cell)
{
    if (cell.row < grid.first.row)
        return true;
    const bool isBeside =
        cell.column >= grid.first.column - kBeside && cell.column <= grid.LastColumn() + kBeside;
    return isBeside && cell.row <= grid.LastRow() + kBelow && !grid.Contains(cell);
}

/// Whether a cell is one of seven from a first one.
bool IsOfWeek(book::CellAddress first, std::int32_t step, book::CellAddress cell)
{
    return cell.row == first.row && cell.column >= first.column &&
           cell.column < first.column + kDays * step;
}

book::CellAddress Move(book::CellAddress cell, const DayGrid& from, const DayGrid& to)
{
    return {cell.row + to.first.row - from.first.row,
            cell.column + to.first.column - from.first.column};
}

/// How many of twelve cells show their month.
struct MonthCells {
    std::int32_t months = 0;
    std::int32_t inOrder = 0;
    std::int32_t numbers = 0; ///< 1 to 12
    std::int32_t dates = 0;
    std::set<std::string> names; ///< those and other texts without digits, each once
    std::vector<std::string> texts;

    bool AreNames() const { return months >= kMostlyMonths && names.size() >= kMostlyMonths; }
    /// In a language that no list has.
    bool AreUnknownNames() const { return names.size() == static_cast<std::size_t>(kMonths); }
    bool AreNumbers() const { return std::max(numbers, dates) >= kMostlyMonths; }
};

MonthCells ReadMonthCells(const SeenSheet& sheet, const YearGrid& year, book::CellAddress january,
                          const KnownNames& names)
{
    MonthCells found;
    for (std::int32_t month = 0; month < kMonths; ++month) {
        const book::CellAddress cell = Move(january, year.january, year.Month(month));
        const SeenContent* const content = sheet.Content(cell.row, cell.column);
        found.texts.push_back(content == nullptr ? std::string() : content->text);
        if (content == nullptr)
            continue;
        const TitleKind kind = KindOfTitle(sheet, cell, names);
        if (content->number) {
            found.numbers += *content->number == month + 1 ? 1 : 0;
            found.dates += kind == TitleKind::Month || kind == TitleKind::Both ? 1 : 0;
        }
        else {
            const std::int16_t shown = names.MonthOf(content->text);
            found.months += shown != 0 ? 1 : 0;
            found.inOrder += shown == month + 1 ? 1 : 0;
            std::string name = WithoutYear(content->text);
            const bool hasDigit = name.find_first_of("0123456789") != std::string::npos;
            if (shown != 0 || (!name.empty() && !hasDigit))
                found.names.insert(std::move(name));
        }
    }
    return found;
}

/// Whether the cells of all months look alike and are empty.
bool AreEmptyAlike(const SeenSheet& sheet, const YearGrid& year, book::CellAddress january)
{
    const std::int32_t kind = sheet.Signature(january.row, january.column);
    if (kind == SeenSheet::kPlain || kind == SeenSheet::kCovered)
        return false;
    for (std::int32_t month = 0; month < kMonths; ++month) {
        const book::CellAddress cell = Move(january, year.january, year.Month(month));
        if (sheet.Signature(cell.row, cell.column) != kind ||
            sheet.Content(cell.row, cell.column) != nullptr)
            return false;
    }
    return true;
}

void FindCaptions(const SeenSheet& sheet, const YearGrid& year, const KnownNames& names,
                  Titles& titles)
{
    constexpr std::int32_t above = 4;
    constexpr std::int32_t left = 3;
    const DayGrid& january = year.january;
    std::optional<TitleCell> empty;
    for (std::int32_t row = std::max(1, january.first.row - above); row <= january.LastRow();
         ++row) {
        for (std::int32_t column = std::max(1, january.first.column - left);
             column <= january.LastColumn(); ++column) {
            const book::CellAddress cell{row, column};
            if (january.Contains(cell))
                continue;
            MonthCells found = ReadMonthCells(sheet, year, cell, names);
            if (found.AreNames() || found.AreUnknownNames() || found.AreNumbers()) {
                titles.month =
                    ReadTitle(sheet, cell, "the cells at this place of all months show the months");
                titles.isInOrder = !found.AreNames() || found.inOrder >= kMostlyMonths;
                if (!found.AreNumbers())
                    titles.monthTexts = std::move(found.texts);
                return;
            }
            const book::CellRange range = sheet.Range(row, column);
            const bool isTitle = range.last.column > column + 1 || range.last.row > row + 1 ||
                                 sheet.Style(row, column).font.size >
                                     sheet.Style(january.first.row, january.first.column).font.size;
            const bool isOutside = row < january.first.row || column < january.first.column;
            if (!empty && isOutside && isTitle && AreEmptyAlike(sheet, year, cell))
                empty = LikelyTitle(cell, "an empty cell like a title stands at every month");
        }
    }
    titles.month = empty;
}

} // namespace

Titles FindMonthTitles(const SeenSheet& sheet, const DayGrid& grid,
                       const std::optional<book::CellAddress>& weekdays,
                       const std::vector<WeekdayRow>& rows, const KnownNames& names)
{
    Titles titles;
    titles.shownYear = YearAbove(sheet, grid.first.row);
    Titles both;
    for (const auto& seen : sheet.Contents()) {
        const book::CellAddress cell = seen.first;
        const bool isWeekday = (weekdays && IsOfWeek(*weekdays, grid.width, cell)) ||
                               std::ranges::any_of(rows, [&](const WeekdayRow& row) {
                                   return IsOfWeek(row.first, row.step, cell);
                               });
        if (!isWeekday && IsNear(grid, cell))
            TakeTitle(sheet, cell, names, titles, both);
    }
    const auto sizeOf = [&](const TitleCell& title) {
        return sheet.Style(title.cell.row, title.cell.column).font.size;
    };
    if (both.month && (!titles.month || sizeOf(*both.month) > sizeOf(*titles.month))) {
        const bool isDecoy = titles.year && sizeOf(*titles.year) > sizeOf(*both.month);
        if (!isDecoy)
            titles.month = both.month;
    }
    if (!titles.month && titles.year)
        titles.month = TextBeside(sheet, titles.year->cell);
    if (titles.month || titles.year)
        return titles;
    const std::int32_t above = weekdays ? std::min(weekdays->row, grid.first.row) : grid.first.row;
    const double size = weekdays ? sheet.Style(weekdays->row, weekdays->column).font.size
                                 : sheet.Style(grid.first.row, grid.first.column).font.size;
    const auto empty =
        EmptyTitles(sheet, above, grid.first.column - 1, grid.LastColumn(), size, 2 * grid.width);
    if (!empty.empty())
        titles.month = LikelyTitle(empty.front(), "an empty cell like a title stands above");
    if (empty.size() == 2)
        titles.year = LikelyTitle(empty.back(), "it is the other empty cell like a title");
    return titles;
}

Titles FindYearTitles(const SeenSheet& sheet, const YearGrid& year, const KnownNames& names)
{
    Titles titles;
    titles.shownYear = YearAbove(sheet, year.january.first.row);
    FindCaptions(sheet, year, names, titles);
    Titles found;
    Titles both;
    for (const auto& [cell, content] : sheet.Contents()) {
        bool isInside = false;
        for (std::int32_t month = 0; month < kMonths; ++month)
            isInside = isInside || year.Month(month).Contains(cell);
        const bool isCaption = titles.month && cell == titles.month->cell;
        if (!isInside && !isCaption)
            TakeTitle(sheet, cell, names, found, both);
    }
    titles.year = found.year;
    if (titles.year)
        return titles;
    const std::int32_t above = titles.month
                                   ? std::min(titles.month->cell.row, year.january.first.row)
                                   : year.january.first.row - 1;
    const double size = sheet.Style(year.january.first.row, year.january.first.column).font.size;
    const auto empty = EmptyTitles(sheet, above, 1, sheet.Columns(), size, kDays);
    if (!empty.empty())
        titles.year = LikelyTitle(empty.front(), "an empty cell like a title stands above");
    return titles;
}

} // namespace orrery::look
