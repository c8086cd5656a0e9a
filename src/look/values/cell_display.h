#pragma once

#include "book/look/cell.h"
#include "look/values/shared_style.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrery::look {

/// A data bar in a cell, in shares of the cell's width.
struct BarDisplay {
    double begin = 0; ///< [0:1], from the left
    double end = 0;   ///< [begin:1]
    book::Color color;
    std::optional<book::Color> border;
    bool isGradient = true;
    bool growsLeft = false;     ///< its full colour is at the right end, where it begins
    std::optional<double> axis; ///< [0:1], where negative and positive bars meet
    book::Color axisColor;
    friend bool operator==(const BarDisplay&, const BarDisplay&) = default;
};

/// An icon in a cell: the set's name of ECMA-376 18.18.42, and the position in it from 0, worst
/// first.
struct IconDisplay {
    std::string set;
    std::int32_t position = 0;
    friend bool operator==(const IconDisplay&, const IconDisplay&) = default;
};

/// What a cell shows: its value as text, formatted, with conditional formats and table styles
/// applied.
struct CellDisplay {
    std::string text;                ///< as displayed, without regard to its column's width
    std::vector<book::TextRun> runs; ///< of a rich text; else empty
    SharedStyle style;
    std::optional<book::Color>
        color;                    ///< of the text, if the number format or a condition gives one
    bool isNumber = false;        ///< does not overflow: "###" if it is too wide
    bool isTooWide = false;       ///< "#" over the whole cell: a date outside of the calendar
    bool isGeneralNumber = false; ///< "General": fewer digits rather than "###"
    double number = 0;            ///< of a number
    /// `style`'s, General replaced by what a number, a logical value or an error asks for. A text
    /// keeps General: its direction decides.
    book::HorizontalAlignment horizontal = book::HorizontalAlignment::General;
    std::optional<std::size_t>
        fillAt; ///< offset in `text` at which a character is repeated ("* " in a format)
    std::string fillCharacter;
    std::optional<BarDisplay> bar;
    std::optional<IconDisplay> icon;
    bool showsValue = true; ///< false: a bar or an icon alone
    bool isComputed = true; ///< false: the formula cannot be computed, and the text is empty
};

/// Tells what the cells of a sheet show.
class CellSource {
public:
    virtual ~CellSource() = default;
    /// Of any cell, also one that the file does not have.
    virtual CellDisplay Display(book::CellAddress cell) = 0;
};

} // namespace orrery::look
