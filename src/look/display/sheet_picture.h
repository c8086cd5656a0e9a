#pragma once

#include "look/canvas/canvas.h"
#include "look/display/sheet_display.h"
#include "look/layout/layout.h"
#include "look/painter/paint_options.h"
#include "look/text/text_measure.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrery::look {

class ComputedValues;

/// What a picture shows that the workbook does not tell.
struct PictureOptions {
    double now = 0;       ///< local time, in days since the 30th of December 1899
    std::string fileName; ///< for headers and footers
    std::string folder;
    /// The number of its first page, unless the set-up says another, and how many pages are printed
    /// together; 0: those of the sheet.
    std::int32_t firstPage = 1;
    std::int32_t allPages = 0;
    /// The cells to show; absent: all that are used, and the pages on which they are printed.
    std::optional<book::CellRange> range = {};
};

/// A sheet, laid out and ready to be painted.
class SheetPicture {
public:
    /// `view` and `measure` outlive the object. Throws as `WorkbookView::Sheet`.
    SheetPicture(book::WorkbookView& view, std::size_t sheet, const TextMeasure& measure,
                 const PictureOptions& options);

    const std::string& Name() const { return name_; }
    const look::Layout& Layout() const { return layout_; }
    /// The shown cells whose formulas cannot be computed, row by row.
    std::vector<book::CellAddress> NotComputed() const;
    /// Paints the sheet, or a part of it.
    void Paint(Canvas& canvas, const std::optional<Box>& part = {});
    /// Paints a printed page of the layout on its paper.
    void PaintPage(std::size_t page, Canvas& canvas, LinesLie lines = LinesLie::BeforeEdges);

private:
    PaintOptions Options(const ComputedValues& values) const;

    book::WorkbookView& view_;
    const TextMeasure& measure_;
    std::string name_;
    std::size_t sheet_;
    Evaluator evaluator_;
    SheetDisplay display_;
    look::Layout layout_;
};

/// The colour of a cell's text.
book::Color TextColor(const CellDisplay& display);

} // namespace orrery::look
