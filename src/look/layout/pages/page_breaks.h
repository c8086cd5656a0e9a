#pragma once

#include <cstdint>
#include <vector>

namespace orrery::look {

/// Columns or rows of one page, the last one included.
struct PageSpan {
    std::int32_t first = 1;
    std::int32_t last = 1;
    friend bool operator==(const PageSpan&, const PageSpan&) = default;
};

/// What is divided into pages: columns, or rows.
struct PageDivision {
    std::int32_t first = 1;           ///< of what is printed
    std::vector<double> sizes;        ///< in pixels of the sheet
    std::vector<std::int32_t> breaks; ///< before which a page begins, rising
    std::int32_t lastTitle = 0;       ///< pages that begin behind it repeat the titles
    double titleSize = 0;             ///< of the repeated columns or rows
};

/// The pages, if each has that much room. A page has at least one column or row; pages without any
/// that is seen are left out. Ends after `most` pages.
std::vector<PageSpan> DivideIntoPages(const PageDivision& division, double room, std::size_t most);

} // namespace orrery::look
