#include "generate/month_block.h"

#include "generate/block_cells.h"
#include "generate/failure.h"
#include "util/checked.h"

#include <exception>

namespace orrery::generate {
namespace {

using model::CalendarParameters;
using model::CellPosition;
using util::Add16;
using util::Add32;

/// Where several holidays of one day are written.
enum class MultiHolidays : std::int16_t { Overwrite = 0, NextRow = 1, NextColumn = 2 };

/// Writes one month; any step may throw.
class MonthWriter {
public:
    MonthWriter(book::Worksheet& sheet, std::int16_t year, std::int16_t month,
                const CalendarParameters& parameters, Context& context)
        : sheet_(sheet), year_(year), month_(month), parameters_(parameters), names_(context.names),
          holidays_(context.holidayDates)
    {
    }

    void Write()
    {
        if (parameters_.OutYear)
            Put(parameters_.FirstCellOfYear, year_, book::CellMember::Default);
        if (parameters_.OutMonth)
            WriteMonthName();
        if (parameters_.OutWeekday)
            WriteWeekdayNames();
        WriteDays();
    }

private:
    void Put(CellPosition cell, const book::CellValue& value, book::CellMember member)
    {
        sheet_.SetCell(cell.row, cell.column, value, member);
    }

    void WriteMonthName()
    {
        const auto position = static_cast<std::int16_t>(month_ - 1);
        Put(parameters_.FirstCellOfMonth, names_.Months.Name(parameters_.MonthName, position),
            book::CellMember::Default);
    }

    void WriteWeekdayNames()
    {
        const CellPosition first = parameters_.FirstCellOfWeekday;
        const int shift = WeeksBeginOnMonday(parameters_) ? 1 : 0;
        for (std::int16_t k = 0; k < kDaysPerWeek; ++k) {
            const auto weekday = static_cast<std::int16_t>((k + shift) % kDaysPerWeek);
            const CellPosition cell = CellInGrid(first, {0, k}, parameters_);
            Put(cell, names_.Weekdays.Name(parameters_.WeekdayName, weekday),
                book::CellMember::Default);
        }
    }

    void WriteDays()
    {
        const auto firstWeekday = holidays::WeekdayOf(holidays::MakeDate(year_, month_, 1));
        const auto days = holidays::DaysInMonth(year_, month_);
        const bool mondayFirst = WeeksBeginOnMonday(parameters_);
        for (std::int16_t day = 1; day <= days; ++day) {
            const GridPosition place = PlaceInGrid(day, firstWeekday, mondayFirst);
            Put(CellInGrid(parameters_.FirstCellOfDay, place, parameters_), day,
                book::CellMember::Value);
            if (parameters_.OutHoliday && holidays_.Count > 0)
                WriteHolidays(day, place);
        }
    }

    void WriteHolidays(std::int16_t day, GridPosition place)
    {
        const auto date = holidays::MakeDate(year_, month_, day);
        // Kept on purpose: read before the count is checked, so this throws when all slots are used
        // up.
        if (date < holidays_.DateAt(holidays_.Cursor))
            return;
        std::int16_t indexOnDay = 0;
        while (holidays_.Cursor < holidays_.Count) {
            const auto entry = holidays_.DateAt(holidays_.Cursor);
            if (entry > date)
                return;
            if (entry == date) {
                WriteHoliday(holidays_.NameAt(holidays_.Cursor), place, indexOnDay);
                indexOnDay = Add16(indexOnDay, 1);
            }
            holidays_.Cursor = Add16(holidays_.Cursor, 1);
        }
    }

    /// `indexOnDay` counts the holidays of one day from 0.
    void WriteHoliday(const std::string& name, GridPosition place, std::int16_t indexOnDay)
    {
        CellPosition cell = CellInGrid(parameters_.FirstCellOfHoliday, place, parameters_);
        switch (MultiHolidays{parameters_.MultiHolidays}) {
        case MultiHolidays::Overwrite:
            break;
        case MultiHolidays::NextRow:
            cell.row = Add32(cell.row, indexOnDay);
            break;
        case MultiHolidays::NextColumn:
            cell.column = Add32(cell.column, indexOnDay);
            break;
        default:
            return; // an unknown value writes no name
        }
        Put(cell, name, book::CellMember::Value);
    }

    book::Worksheet& sheet_;
    std::int16_t year_;
    std::int16_t month_;
    const CalendarParameters& parameters_;
    const model::NameTables& names_;
    holidays::HolidayDateList& holidays_;
};

} // namespace

void FillMonth(book::Worksheet& sheet, std::int16_t year, std::int16_t month,
               const model::CalendarParameters& parameters, Context& context)
{
    try {
        MonthWriter(sheet, year, month, parameters, context).Write();
    }
    catch (const std::exception& error) {
        ReportFailure("Error in filling data(" + std::to_string(year) + "-" +
                          std::to_string(month) + ").",
                      error, context);
    }
}

} // namespace orrery::generate
