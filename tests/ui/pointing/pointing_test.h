#pragma once

#include "ui/parameter_test.h"
#include "ui/pointing/tab_pointer.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace orrery::ui {

/// "B6" as an address.
inline book::CellAddress At(const std::string& text)
{
    const auto cell = model::ReadCell(text).value();
    return {cell.row, cell.column};
}

/// Both tabs, filled with `ValidSets`: days from B5, by row 5 on the monthly tab and row 1 on the
/// yearly; weekdays from C4, month D3, year AA1, holidays from B6; weeks begin on Monday; three
/// months side by side, every 8 columns and 9 rows.
class PointingTest : public testing::Test {
protected:
    PointingTest()
    {
        const model::ParameterSets sets = ValidSets();
        monthly.Show(sets.Monthly);
        yearly.Show(sets.Yearly);
    }

    std::vector<MarkedCell> Marks(const ParameterTab& tab) const
    {
        return MarksOf(ReadTab(tab), names, "New Year");
    }
    /// The cells of a mark in a block, in order.
    static std::vector<std::string> CellsOf(const std::vector<MarkedCell>& marks, Field mark,
                                            std::int16_t month = 1)
    {
        std::vector<std::string> cells;
        for (const MarkedCell& one : marks) {
            if (one.mark == mark && one.month == month)
                cells.push_back(book::FormatCellAddress(one.cell));
        }
        return cells;
    }
    static std::string SampleAt(const std::vector<MarkedCell>& marks, Field mark,
                                const std::string& cell)
    {
        const auto found = std::find_if(marks.begin(), marks.end(), [&](const MarkedCell& one) {
            return one.mark == mark && one.cell == At(cell);
        });
        return found == marks.end() ? "no such cell" : found->sample;
    }

    const model::NameTables names = TwoNameLists();
    ParameterTab monthly{'M', "MCalendar", "Output &Monthly Calendar", names};
    YearlyTab yearly{names};
};

} // namespace orrery::ui
