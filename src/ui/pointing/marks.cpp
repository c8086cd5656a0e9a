#include "ui/pointing/marks.h"

#include "holidays/date.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orrery::ui {
namespace {

using generate::GridPosition;
using generate::kDaysPerWeek;
using generate::kMonthsPerYear;
using generate::kWeeksPerMonth;
using model::CellPosition;

/// The days of a month as they stand in the grid; 0 where there is none.
using MonthGrid = std::array<std::array<std::int16_t, kDaysPerWeek>, kWeeksPerMonth>;

MonthGrid GridOf(std::int16_t month, bool mondayFirst)
{
    MonthGrid grid{};
    const auto first = holidays::WeekdayOf(holidays::MakeDate(kSampleYear, month, 1));
    for (std::int16_t day = 1; day <= holidays::DaysInMonth(kSampleYear, month); ++day) {
        const GridPosition place = generate::PlaceInGrid(day, first, mondayFirst);
        grid.at(static_cast<std::size_t>(place.week)).at(static_cast<std::size_t>(place.column)) =
            day;
    }
    return grid;
}

template <std::size_t Count>
std::string NameIn(const model::NameLists<Count>& table, std::int16_t list, int position)
{
    if (list < 0 || list >= table.Count())
        return {};
    return table.Name(list, static_cast<std::int16_t>(position));
}

class Marker {
public:
    Marker(const TabValues& values, const model::NameTables& names, const std::string& holiday)
        : set_(values.set), isYearly_(values.isYearly), names_(names), holiday_(holiday)
    {
        // A cell that is absent stays so in every block.
        outDays_ = IsThere(set_.FirstCellOfDay);
        set_.OutWeekday = set_.OutWeekday && IsThere(set_.FirstCellOfWeekday);
        set_.OutMonth = set_.OutMonth && IsThere(set_.FirstCellOfMonth);
        set_.OutYear = set_.OutYear && IsThere(set_.FirstCellOfYear);
        set_.OutHoliday = set_.OutHoliday && IsThere(set_.FirstCellOfHoliday);
    }

    std::vector<MarkedCell> Mark()
    {
        if (!set_.Output)
            return {};
        if (set_.OutYear)
            Put(set_.FirstCellOfYear, Field::Year, {}, std::to_string(kSampleYear));
        const auto origins = generate::OriginsOf(set_);
        for (month_ = 1; month_ <= BlockCount(); ++month_) {
            if (isYearly_ && HasLayout())
                generate::ShiftToBlock(origins, month_, set_);
            MarkBlock(isYearly_ ? month_ : kSampleMonth);
            generate::RestoreOrigins(origins, set_);
        }
        return std::move(marks_);
    }

private:
    static bool IsThere(CellPosition cell) { return cell.row >= 1 && cell.column >= 1; }
    bool HasLayout() const { return set_.MonthLayout >= 1; }

    /// One, unless it is known where the others are.
    std::int16_t BlockCount() const
    {
        const bool isKnown = isYearly_ && HasLayout() &&
                             (set_.MonthLayout == 1 || set_.ColIntervalOfMonth > 0) &&
                             (set_.MonthLayout == kMonthsPerYear || set_.RowIntervalOfMonth > 0);
        return isKnown ? kMonthsPerYear : std::int16_t{1};
    }

    void MarkBlock(std::int16_t month)
    {
        if (set_.OutMonth)
            Put(set_.FirstCellOfMonth, Field::Month, {},
                NameIn(names_.Months, set_.MonthName, month - 1));
        if (set_.OutWeekday)
            MarkWeekdays();
        const MonthGrid grid = GridOf(month, generate::WeeksBeginOnMonday(set_));
        if (outDays_) {
            MarkGrid(set_.FirstCellOfDay, Field::Day, [&](GridPosition place) {
                const auto day = DayAt(grid, place);
                return day == 0 ? std::string() : std::to_string(day);
            });
        }
        if (set_.OutHoliday) {
            MarkGrid(set_.FirstCellOfHoliday, Field::Holiday, [&](GridPosition place) {
                return DayAt(grid, place) == 1 ? holiday_ : std::string();
            });
        }
    }

    static std::int16_t DayAt(const MonthGrid& grid, GridPosition place)
    {
        return grid.at(static_cast<std::size_t>(place.week))
            .at(static_cast<std::size_t>(place.column));
    }

    std::int16_t Columns() const { return set_.ColIntervalOfDay > 0 ? kDaysPerWeek : 1; }
    std::int16_t Weeks() const { return set_.RowIntervalOfDay > 0 ? kWeeksPerMonth : 1; }

    void MarkWeekdays()
    {
        const int shift = generate::WeeksBeginOnMonday(set_) ? 1 : 0;
        for (std::int16_t column = 0; column < Columns(); ++column)
            Put(set_.FirstCellOfWeekday, Field::Weekday, {0, column},
                NameIn(names_.Weekdays, set_.WeekdayName, (column + shift) % kDaysPerWeek));
    }

    template <typename SampleOf>
    void MarkGrid(CellPosition first, Field mark, const SampleOf& sampleOf)
    {
        for (std::int16_t week = 0; week < Weeks(); ++week) {
            for (std::int16_t column = 0; column < Columns(); ++column)
                Put(first, mark, {week, column}, sampleOf({week, column}));
        }
    }

    void Put(CellPosition first, Field mark, GridPosition place, std::string sample)
    {
        const CellPosition cell = generate::CellInGrid(first, place, set_);
        if (cell.row <= model::kMaxRow && cell.column <= model::kMaxColumn)
            marks_.push_back({{cell.row, cell.column}, mark, place, month_, std::move(sample)});
    }

    model::YearlyParameters set_;
    const bool isYearly_;
    bool outDays_ = false;
    const model::NameTables& names_;
    const std::string& holiday_;
    std::int16_t month_ = 1;
    std::vector<MarkedCell> marks_;
};

} // namespace

std::vector<MarkedCell> MarksOf(const TabValues& values, const model::NameTables& names,
                                const std::string& holiday)
{
    return Marker(values, names, holiday).Mark();
}

} // namespace orrery::ui
