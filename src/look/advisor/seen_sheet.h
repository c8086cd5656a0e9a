#pragma once

#include "book/look/workbook_view.h"
#include "look/evaluate/evaluator.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orrery::look {

/// What a cell shows.
struct SeenContent {
    std::string text;             ///< as displayed
    std::optional<double> number; ///< of a number or a date
};

/// The cells of a sheet as the advisor compares them: cells of one kind have one signature.
class SeenSheet {
public:
    /// Like a cell without a style, without lines, not merged.
    static constexpr std::int32_t kPlain = 0;
    static constexpr std::int32_t kCovered = -1; ///< inside of merged cells, not their first

    /// The view outlives the object. Throws as `WorkbookView::Sheet`.
    SeenSheet(book::WorkbookView& view, std::size_t sheet, Evaluator& evaluator);

    std::int32_t Rows() const { return rows_; }
    std::int32_t Columns() const { return columns_; }
    /// Equal for cells with the same font, alignment, number format and shape of the merge. Fills,
    /// lines and bold do not count, since weekends and edges differ. Plain outside of the sheet.
    std::int32_t Signature(std::int32_t row, std::int32_t column) const;
    /// Nothing if the cell shows nothing.
    const SeenContent* Content(std::int32_t row, std::int32_t column) const;
    /// The displayed text, empty if there is none.
    const std::string& Text(std::int32_t row, std::int32_t column) const;
    const book::CellStyle& Style(std::int32_t row, std::int32_t column) const;
    /// The cell and those that are merged with it.
    book::CellRange Range(std::int32_t row, std::int32_t column) const;
    const std::map<book::CellAddress, SeenContent>& Contents() const { return contents_; }
    /// Digits of the Normal font; 0 if the column is hidden.
    double Width(std::int32_t column) const { return widths_[static_cast<std::size_t>(column)]; }
    /// Points; 0 if the row is hidden.
    double Height(std::int32_t row) const { return heights_[static_cast<std::size_t>(row)]; }

private:
    std::size_t Index(std::int32_t row, std::int32_t column) const;
    void Measure();
    void ReadSizes();
    void ReadSignatures();
    void ReadContents(book::WorkbookView& view, std::size_t sheet, Evaluator& evaluator);

    const book::SheetLook& look_;
    std::int32_t rows_ = 0;
    std::int32_t columns_ = 0;
    std::vector<std::int32_t> signatures_; ///< row by row
    std::vector<double> widths_;           ///< from index 1
    std::vector<double> heights_;
    std::map<book::CellAddress, book::CellRange> merges_; ///< by first cell
    std::map<book::CellAddress, SeenContent> contents_;
};

} // namespace orrery::look
