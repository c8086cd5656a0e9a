#pragma once

#include "book/cell_address.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The text of single operands. All of these throw Error(DamagedWorkbook) if the bytes end before
/// the operand.
namespace orrery::xls {

/// A number as formulas write it, in the shortest form that reads back as the same: "0.1", "1E+20".
/// Nothing for numbers that are not finite.
std::optional<std::string> NumberText(double number);

/// "#DIV/0!". Nothing for unknown codes. [MS-XLS] 2.5.10
std::optional<std::string> ErrorText(std::uint8_t code);

/// A text in quotes, with those inside doubled.
std::string QuotedText(std::string_view text);

/// How references are stored.
enum class ReferenceForm {
    Cell,  ///< of the cell that they refer to
    Offset ///< their relative parts count from the formula's cell
};
/// A cell at `at`: row, column with two flags. [MS-XLS] 2.5.198.84, 2.5.198.86
std::string CellText(std::string_view bytes, std::size_t at, ReferenceForm form,
                     book::CellAddress cell);
/// An area at `at`: "A1:B2", "A:C" for whole columns, "1:3" for whole rows. [MS-XLS] 2.5.198.28
std::string AreaText(std::string_view bytes, std::size_t at, ReferenceForm form,
                     book::CellAddress cell);

/// An array constant in the data behind the tokens, such as "{1,2;3,4}"; `at` moves past it.
/// Nothing if it has unknown values or is longer than `longest`. [MS-XLS] 2.5.198.59
std::optional<std::string> ArrayText(std::string_view extra, std::size_t& at, std::size_t longest);

} // namespace orrery::xls
