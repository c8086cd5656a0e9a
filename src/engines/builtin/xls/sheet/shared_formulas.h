#pragma once

#include "engines/builtin/xls/sheet/sheet_cells.h"
#include "engines/builtin/xls/sheet/sheet_text.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// The shared formulas whose first cell was overwritten. Their cells refer to that cell (PtgExp),
/// after which the formula is stored (SHRFMLA). The first remaining cell takes its place, as when
/// Excel saves such a sheet. [MS-XLS] 2.4.277, 2.5.198.58
class SharedFormulas {
public:
    SharedFormulas(const SheetText& text, std::span<const SheetCells::Written> written);

    bool Empty() const { return groups_.empty(); }
    /// Whether the cell has one of these formulas.
    bool Contains(const CellPlace& cell) const { return Find(cell) != nullptr; }
    /// Makes the FORMULA record at `at` in `table` refer to the new first cell of its group.
    void Redirect(const CellPlace& cell, std::string& table, std::size_t at) const;
    /// The SHRFMLA record that goes after the FORMULA record of that cell; empty for cells that are
    /// not the first of their group. `base` is the text's bytes.
    std::string RecordAfter(const CellPlace& cell, std::string_view base) const;

private:
    struct Group {
        std::uint32_t from;      // the overwritten cell, as in FORMULA
        std::uint32_t to = 0;    // the first remaining cell
        std::uint32_t record;    // offset of the SHRFMLA record
        std::uint32_t count = 0; // of remaining cells
        CellRange range;         // of remaining cells
    };
    void FindCells(std::span<const SheetCells::Written> written);
    const Group* Find(const CellPlace& cell) const;

    const SheetText& text_;
    std::vector<Group> groups_; // by `from`
};

} // namespace orrery::xls
