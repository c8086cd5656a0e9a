#pragma once

#include "engines/builtin/xls/sheet/sheet_cells.h"
#include "engines/builtin/xls/sheet/sheet_text.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// The shared formulas whose first cell was written over. Their cells name that cell (PtgExp), and
/// the formula stands behind it (SHRFMLA): the first cell that is left takes its place, as when
/// Excel saves such a sheet. [MS-XLS] 2.4.277, 2.5.198.58
class SharedFormulas {
public:
    SharedFormulas(const SheetText& text, std::span<const SheetCells::Written> written);

    bool Empty() const { return groups_.empty(); }
    /// Whether the formula of that cell is one of them.
    bool Holds(const CellPlace& cell) const { return Find(cell) != nullptr; }
    /// Makes the FORMULA record at `at` in `table` name the new first cell of its group.
    void Redirect(const CellPlace& cell, std::string& table, std::size_t at) const;
    /// The SHRFMLA record that belongs behind the FORMULA record of that cell; empty for those that
    /// are not the first of their group. `base` holds the bytes of the text.
    std::string Carried(const CellPlace& cell, std::string_view base) const;

private:
    struct Group {
        std::uint32_t from;      // the cell written over, as FORMULA names it
        std::uint32_t to = 0;    // the first cell that is left
        std::uint32_t record;    // offset of the SHRFMLA record
        std::uint32_t count = 0; // of the cells that are left
        CellRange range;         // of them
    };
    void FindCells(std::span<const SheetCells::Written> written);
    const Group* Find(const CellPlace& cell) const;

    const SheetText& text_;
    std::vector<Group> groups_; // by `from`
};

} // namespace orrery::xls
