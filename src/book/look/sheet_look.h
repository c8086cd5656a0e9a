#pragma once

#include "book/look/cell.h"
#include "book/look/conditional_format.h"
#include "book/look/drawing.h"
#include "book/look/header_picture.h"
#include "book/look/page_setup.h"
#include "book/look/table.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrery::book {

/// Columns of one width and style.
struct ColumnLook {
    std::int32_t first = 1;
    std::int32_t last = 1;
    std::optional<double>
        width; ///< in digits of the Normal font, padding included; absent: the default
    bool isHidden = false;
    std::uint32_t style = 0; ///< index of `SheetLook::styles`, for cells that are not there
};

struct RowLook {
    std::int32_t row = 1;
    std::optional<double> height; ///< points; absent: the default, or as its cells need
    bool isHidden = false;
    bool isCustomHeight = false;        ///< set by hand, not from the cells
    std::optional<std::uint32_t> style; ///< for cells that are not there
};

struct ViewLook {
    bool isRightToLeft = false;
    bool showsGridLines = true;
    std::optional<Color> gridColor;
    bool showsZeros = true;
    bool showsFormulas = false;
    std::int32_t frozenRows = 0;
    std::int32_t frozenColumns = 0;
    CellAddress topLeft{1, 1}; ///< of what the window shows
};

/// Something of a sheet that is not in its look, for the user.
struct LeftOut {
    std::string what;   ///< "picture", "chart sheet", "conditional format"
    std::string where;  ///< a cell, a range, a name or a part; may be empty
    std::string reason; ///< half a sentence: "it has more than 100,000,000 pixels"
    friend bool operator==(const LeftOut&, const LeftOut&) = default;
};

/// How a sheet looks: what both formats know of it, in one form. Read only.
struct SheetLook {
    std::string name;
    ViewLook view;

    // Sizes
    std::optional<double> standardWidth;    ///< of columns without one, as `ColumnLook::width`
    double baseWidth = 8;                   ///< digits, if there is no standard width
    std::optional<double> basePadding;      ///< digits beside them; absent: five pixels
    std::optional<double> defaultRowHeight; ///< points
    bool areRowsHidden = false;             ///< those without an entry
    bool areRowsWholePixels = true;         ///< as Excel shows them; false: as high as stored
    std::vector<ColumnLook> columns;        ///< rising, without overlaps
    std::vector<RowLook> rows;              ///< rising

    std::vector<CellStyle> styles; ///< the first is that of cells without one; never empty
    std::vector<Cell> cells;       ///< row by row, each once
    std::vector<CellFormula> formulas;
    std::vector<std::vector<TextRun>> richTexts;
    std::vector<CellRange> merges; ///< without overlaps, row by row
    std::vector<ConditionalFormat> conditions;
    std::vector<Table> tables;
    std::vector<SparklineGroup> sparklines;
    std::vector<Drawing> drawings;
    PageSetup page;
    std::vector<HeaderPicture> headerPictures;
    std::vector<LeftOut> leftOut;

    /// The cell, or nullptr if the file has none there.
    const Cell* FindCell(CellAddress address) const;
    /// The row's entry, or nullptr.
    const RowLook* FindRow(std::int32_t row) const;
    /// The column's entry, or nullptr.
    const ColumnLook* FindColumn(std::int32_t column) const;
    /// The index of a cell's style: its own, else the row's, else the column's.
    std::uint32_t StyleAt(CellAddress address) const;
    const CellStyle& Style(CellAddress address) const { return styles[StyleAt(address)]; }
};

} // namespace orrery::book
