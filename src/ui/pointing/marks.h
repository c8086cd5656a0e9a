#pragma once

#include "book/cell_address.h"
#include "generate/block_cells.h"
#include "model/name_lists.h"
#include "ui/pointing/tab_fields.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orrery::ui {

/// A cell that the parameters of a tab mean.
struct MarkedCell {
    book::CellAddress cell;
    Field mark = Field::Day;      ///< the cell field whose cells these are
    generate::GridPosition place; ///< among the days; of others than days, the same
    std::int16_t month = 1;       ///< [1:12]; 1 where there is only one block
    std::string sample;           ///< what a run would write there in a sample month; may be empty
    friend bool operator==(const MarkedCell&, const MarkedCell&) = default;

    /// The one whose place is typed into the field.
    bool IsFirst() const { return place == generate::GridPosition() && month == 1; }
};

/// The year of the sample, and its month on a sheet for one month: it has days in six weeks.
inline constexpr std::int16_t kSampleYear = 2027;
inline constexpr std::int16_t kSampleMonth = 5;

/// The cells that the values mean: year, month, weekdays, days, holidays, block after block. What
/// cannot be read or lies outside of the sheet has none. Without an interval there is one column,
/// row or block. `holiday` is the sample's only one, on the first day.
std::vector<MarkedCell> MarksOf(const TabValues& values, const model::NameTables& names,
                                const std::string& holiday);

} // namespace orrery::ui
