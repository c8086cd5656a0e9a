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

    /// Whether the cell may be written; call it before a text is added to the shared texts.
    /// Throws Error: CellOutsideSheet, CellLocked, PartOfArray; DamagedWorkbook where the sheet has
    /// no place for cells.
    void CheckWritable(std::int32_t row, std::int32_t column, const Styles& styles) const;
    /// Whether a value given to the cell stays: in a merged area only the first cell takes one, as
    /// in Excel.
    bool TakesValue(std::int32_t row, std::int32_t column) const;
    /// Replaces the value of a cell inside the sheet; the format stays, a new cell takes its row's,
    /// else its column's format. A cell that does not take a value ignores it.
    void Set(std::int32_t row, std::int32_t column, WrittenValue value);

    bool Empty() const { return values_.empty(); }
    /// Whether a formula was written over.
    bool RemovesFormulas() const;
    /// How many cells refer to shared texts more than in the text as read (may be negative).
    long AddedTextReferences() const;

    /// The replacements in the sheet's text: rows and cells (in order, with spans), the
    /// dimension, shared formulas handed over. With `recalculate` the stored results of all
    /// formulas are left out, so that whoever opens the file computes them. `change` is asked for
    /// each formula that a cell receives from another; without it they stay as they are.
    TextPatch Patch(bool recalculate, const FormulaChange& change = {}) const;

private:
    std::shared_ptr<const SheetText> text_;
    WrittenValues values_;
};

} // namespace orrery::xlsx
