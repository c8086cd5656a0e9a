#pragma once

#include "book/look/cell_style.h"
#include "book/look/header_picture.h"
#include "look/layout/layout.h"
#include "look/text/text_measure.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::look {

/// What the fields of headers and footers stand for.
struct PageFields {
    std::int32_t page = 1;
    std::int32_t pages = 0;
    std::string fileName;
    std::string folder; ///< ends in a separator
    std::string sheetName;
    std::string date; ///< as the system writes it
    std::string time;
};

struct HeaderPiece {
    std::string text;
    book::Font font;
    bool isPicture = false; ///< then it has no text
    friend bool operator==(const HeaderPiece&, const HeaderPiece&) = default;
};
using HeaderLine = std::vector<HeaderPiece>;

/// The lines at the left, in the middle, and at the right.
struct HeaderText {
    std::array<std::vector<HeaderLine>, 3> parts;
};

/// Reads a header or footer: ECMA-376 18.3.1.46. "&CPage &P of &N" is one line in the middle, "Page
/// 1 of 2"; what stands before any of &L, &C and &R is in the middle, too. Outlines and shadows are
/// left out, and so are codes that are not known.
HeaderText ParseHeader(std::string_view text, const book::Font& font, const PageFields& fields);

/// Where a header or a footer stands on the paper: downwards from `y`, a footer upwards from there.
struct HeaderPlace {
    double left = 0;
    double right = 0;
    double y = 0;
    bool isFooter = false;
    /// What &G stands for at the left, in the middle, and at the right; nullptr if there is none.
    std::array<const book::HeaderPicture*, 3> pictures{};
    double scale = 1; ///< of fonts and pictures
};

/// Adds the lines and pictures of a header or footer to a page. A picture stands on its line like a
/// character, once in each part. The page refers to the pictures.
void PlaceHeader(const HeaderText& header, const HeaderPlace& place, const TextMeasure& measure,
                 PageBox& page);

} // namespace orrery::look
