#pragma once

#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/xlsx/sheet/sheet_text.h"
#include "engines/builtin/xlsx/sheet/written_values.h"

#include <cstddef>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

using builtin::TextPatch;

/// Turns written cells into replacements in a sheet's text.
class SheetPatch {
public:
    /// All outlive this object.
    SheetPatch(const SheetText& text, const WrittenValues& values, const FormulaChange& change)
        : text_(text), index_(text.Index()), xml_(text.Xml()), values_(values), change_(change)
    {
    }

    TextPatch Make(bool recalculate);

private:
    using Written = WrittenValues::const_iterator;

    void WidenDimension();
    void WriteRows();
    void InsertRow(Written first, Written last, std::string& atEnd);
    void WriteIntoRow(const RowPlace& row, Written first, Written last);
    void AppendToRow(const StartTag& tag, std::span<const CellPlace> places,
                     const std::string& cells);
    void WidenSpans(const StartTag& row, Written first, Written last);
    void Fill(const StartTag& tag, const std::string& content);
    static std::string NewCell(std::string_view prefix, std::size_t format,
                               const WrittenValues::value_type& cell);
    void ReplaceCell(const CellPlace& place, const WrittenValue& value);

    void MoveSharedMasters();
    void MoveMaster(const SharedFormula& shared);
    void ClearSpills();
    /// Of the unwritten cells in the range that have one of the flags.
    void DropResults(unsigned flags, const CellRange& range);
    void DropResult(const CellPlace& cell);

    const SheetText& text_;
    const SheetIndex& index_;
    const std::string& xml_;
    const WrittenValues& values_;
    const FormulaChange& change_;
    TextPatch patch_;
    std::set<std::size_t> numbered_; // where the counted rows begin that were given their number
};

} // namespace orrery::xlsx
