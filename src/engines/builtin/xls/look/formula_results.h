#pragma once

#include "book/look/sheet_look.h"
#include "engines/builtin/xls/formula_text/formula_names.h"
#include "engines/builtin/xls/look/records/byte_cursor.h"
#include "engines/builtin/xls/look/records/look_records.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// Reads the formulas of cells and their results. Shared and array formulas stand in records of
/// their own, which the formulas of their cells refer to. [MS-XLS] 2.4.127, 2.4.277, 2.4.4, 2.4.313
class FormulaResults {
public:
    FormulaResults(book::SheetLook& look, const FormulaNames& names) : look_(look), names_(names) {}

    /// Reads the rest of a FORMULA record behind its place, for the last cell of the look. Throws
    /// Error(DamagedWorkbook).
    void ReadFormula(const LookRecord& record, ByteCursor cursor);
    /// Reads a record that defines a formula of several cells; false for other records. Throws
    /// Error(DamagedWorkbook).
    bool ReadDefinition(const LookRecord& record);
    /// The cell whose result is the text of the STRING record that follows, once; or nullptr.
    book::Cell* TakeTextCell();
    /// Gives the cells of shared and array formulas their formulas. The cells are where they were
    /// when they were read.
    void Finish();

private:
    using Anchor = std::pair<std::uint16_t, std::uint16_t>; // row and column from 0
    struct Definition {
        std::string_view tokens;
        std::string_view extra;
        std::optional<book::CellRange> array;
    };
    struct Reference {
        std::size_t cell = 0; // in the look
        Anchor anchor;
    };

    void ReadResult(book::Cell& cell, std::string_view result);
    Definition ReadShared(std::string_view data) const;
    Definition ReadArray(std::string_view data) const;
    void SetFormula(book::Cell& cell, const Definition& formula);

    book::SheetLook& look_;
    const FormulaNames& names_;
    std::optional<std::size_t> textCell_;
    std::optional<Anchor> anchor_; // of the last formula, if it refers to another record
    std::vector<Reference> references_;
    std::map<Anchor, Definition> definitions_;
    std::deque<std::string> joined_; // continued records
    std::size_t textBytes_ = 0;
};

} // namespace orrery::xls
