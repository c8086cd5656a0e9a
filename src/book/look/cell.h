#pragma once

#include "book/cell_address.h"
#include "book/look/cell_style.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace orrery::book {

/// In the order of the values that both formats know; the numbers are those of [MS-XLS] 2.5.10.
enum class CellError : std::uint8_t {
    Null = 0x00,
    DivisionByZero = 0x07,
    Value = 0x0F,
    Reference = 0x17,
    Name = 0x1D,
    Number = 0x24,
    NotAvailable = 0x2A,
    GettingData = 0x2B,
    Spill = 0x2D,
    Calculation = 0x32
};

/// The stored value of a cell: nothing, a number (dates are numbers), a text, a logical value, an
/// error.
using CellContent = std::variant<std::monostate, double, std::string, bool, CellError>;

/// A run of characters with a font of its own.
struct TextRun {
    std::size_t begin =
        0; ///< offset of its first byte in the text; it ends where the next one begins
    Font font;
    friend bool operator==(const TextRun&, const TextRun&) = default;
};

/// A formula in the notation of the files: English names of functions, commas, A1 references,
/// without "=". Shared formulas are written out for each cell.
struct CellFormula {
    std::string text;
    std::optional<CellRange>
        array; ///< the cells that an array formula fills; at its first cell only
};

struct Cell {
    CellAddress address;
    std::uint32_t style = 0;    ///< index of `SheetLook::styles`
    std::int32_t formula = -1;  ///< index of `SheetLook::formulas`, or -1
    std::int32_t richText = -1; ///< index of `SheetLook::richTexts`, or -1
    CellContent content;        ///< of a formula the stored result; nothing if none is stored
};

} // namespace orrery::book
