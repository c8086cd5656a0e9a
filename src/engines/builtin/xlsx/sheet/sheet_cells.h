#pragma once

#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/xlsx/formula/cell_address.h"
#include "engines/builtin/xlsx/sheet/sheet_text.h"
#include "engines/builtin/xlsx/sheet/styles.h"
#include "engines/builtin/xlsx/sheet/written_values.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <variant>

namespace orrery::xlsx {

using builtin::TextPatch;

/// The cells written into one sheet, over its text.
class SheetCells {
public:
    explicit SheetCells(std::shared_ptr<const SheetText> text) : text_(std::move(text)) {}

    /// Checks that the cell may be written; call it before a text is added to the shared strings.
    /// Throws Error: CellOutsideSheet, CellLocked, PartOfArray; DamagedWorkbook if the sheet has no
    /// place for cells.
    void CheckWritable(std::int32_t row, std::int32_t column, const Styles& formats) const;
    /// Whether a value written to the cell is kept: in a merged area only the first cell keeps one,
    /// as in Excel.
    bool TakesValue(std::int32_t row, std::int32_t column) const;
    /// Replaces the value of a cell inside the sheet. The format stays; a new cell takes that of
    /// its row, else of its column. A cell that keeps no value ignores it.
    void Set(std::int32_t row, std::int32_t column, WrittenValue value);

    bool Empty() const { return values_.empty(); }
    /// Whether a formula was overwritten.
    bool RemovesFormulas() const;
    /// How many more cells refer to shared strings than in the text as read (may be negative).
    long AddedStringReferences() const;

    /// The replacements in the sheet's text: rows and cells (in order, with spans), the dimension,
    /// the new masters of shared formulas. With `recalculate` the stored results of all formulas
    /// are left out, so that the program that opens the file computes them. `change` is called for
    /// each formula that moves from one cell to another; without it such formulas keep the
    /// template's names.
    TextPatch Patch(bool recalculate, const FormulaChange& change = {}) const;

private:
    std::shared_ptr<const SheetText> text_;
    WrittenValues values_;
};

} // namespace orrery::xlsx
