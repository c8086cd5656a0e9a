#pragma once

#include "engines/builtin/xls/records/styles.h"
#include "engines/builtin/xls/sheet/sheet_text.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <variant>
#include <vector>

namespace orrery::xls {

/// The cells written into one sheet, over its text.
class SheetCells {
public:
    /// The index of a shared string.
    struct SharedStringIndex {
        std::uint32_t index;
    };
    using Value = std::variant<std::int16_t, SharedStringIndex>;
    struct Written {
        std::uint16_t row;    ///< from 0
        std::uint16_t column; ///< from 0
        Value value;
    };

    explicit SheetCells(std::shared_ptr<const SheetText> text) : text_(std::move(text)) {}

    /// Checks that the cell may be written; call it before a text is added to the shared strings.
    /// Rows and columns count from 1. Throws Error: CellOutsideSheet, CellLocked, PartOfArray;
    /// DamagedWorkbook if the sheet has no place for cells.
    void CheckWritable(std::int32_t row, std::int32_t column, const Styles& formats) const;
    /// Whether a value written to the cell is kept: in a merged area only the first cell keeps one,
    /// as in Excel.
    bool TakesValue(std::int32_t row, std::int32_t column) const;
    /// Replaces the value of a cell inside the sheet. The format stays; a new cell takes that of
    /// its row, else of its column. A cell that keeps no value ignores it.
    void Set(std::int32_t row, std::int32_t column, Value value);

    bool Empty() const { return written_.empty(); }
    /// How many cells refer to shared strings now, those of the text as read included.
    std::size_t StringReferences() const;
    /// Each written cell once, row by row.
    std::vector<Written> InOrder() const;

private:
    std::shared_ptr<const SheetText> text_;
    std::vector<Written> written_; // in the order of writing; the last one for a cell counts
};

} // namespace orrery::xls
