#pragma once

#include "engines/builtin/xls/records/formats.h"
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
    /// The index of a shared text.
    struct Text {
        std::uint32_t index;
    };
    using Value = std::variant<std::int16_t, Text>;
    struct Written {
        std::uint16_t row;    ///< from 0
        std::uint16_t column; ///< from 0
        Value value;
    };

    explicit SheetCells(std::shared_ptr<const SheetText> text) : text_(std::move(text)) {}

    /// Whether the cell may be written; call it before a text is added to the shared texts. Rows
    /// and columns count from 1. Throws Error: CellOutsideSheet, CellLocked, PartOfArray;
    /// DamagedWorkbook where the sheet has no place for cells.
    void CheckWritable(std::int32_t row, std::int32_t column, const Formats& formats) const;
    /// Whether a value given to the cell stays: in a merged area only the first cell takes one, as
    /// in Excel.
    bool TakesValue(std::int32_t row, std::int32_t column) const;
    /// Replaces the value of a cell inside the sheet; the format stays, a new cell takes its row's,
    /// else its column's format. A cell that does not take a value ignores it.
    void Set(std::int32_t row, std::int32_t column, Value value);

    bool Empty() const { return written_.empty(); }
    /// How many cells refer to shared texts now, those of the text as read among them.
    std::size_t TextReferences() const;
    /// Each written cell once, row by row.
    std::vector<Written> InOrder() const;

private:
    std::shared_ptr<const SheetText> text_;
    std::vector<Written> written_; // in the order of writing; the last one of a cell counts
};

} // namespace orrery::xls
