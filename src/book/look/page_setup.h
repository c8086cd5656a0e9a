#pragma once

#include "book/cell_address.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrery::book {

/// How a sheet is printed. Lengths are inches.
struct PageSetup {
    std::int32_t paper = 1;           ///< ECMA-376 18.3.1.63 (paperSize): 1 is Letter, 9 is A4
    std::optional<double> paperWidth; ///< of a paper without a number, upright
    std::optional<double> paperHeight;
    bool isLandscape = false;
    std::int32_t scale = 100;   ///< percent [10:400]
    bool fitsPages = false;     ///< then the scale does not count
    std::int32_t pagesWide = 1; ///< 0: as many as it takes
    std::int32_t pagesHigh = 1;
    double left = 0.7;
    double right = 0.7;
    double top = 0.75;
    double bottom = 0.75;
    double headerMargin = 0.3;
    double footerMargin = 0.3;
    bool centersHorizontally = false;
    bool centersVertically = false;
    bool printsGridLines = false;
    bool printsHeadings = false; ///< letters of columns and numbers of rows
    bool isOverThenDown = false; ///< the order of pages
    std::int32_t firstPageNumber = 1;
    // Texts with the codes of ECMA-376 18.3.1.46: "&L", "&P", "&\"Arial,Bold\"".
    std::string header;
    std::string footer;
    std::optional<std::string> firstHeader;
    std::optional<std::string> firstFooter;
    std::optional<std::string> evenHeader;
    std::optional<std::string> evenFooter;
    bool scalesHeaders = true;              ///< headers and footers are scaled with the page
    std::vector<CellRange> printAreas;      ///< empty: all that is used
    std::optional<CellRange> titleRows;     ///< repeated on each page; whole rows
    std::optional<CellRange> titleColumns;  ///< whole columns
    std::vector<std::int32_t> rowBreaks;    ///< rows above which a page begins, rising
    std::vector<std::int32_t> columnBreaks; ///< columns left of which a page begins, rising
};

} // namespace orrery::book
