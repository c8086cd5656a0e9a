#pragma once

#include "book/look/cell.h"

#include <string>
#include <string_view>

namespace orrery::look {

/// A number as General shows it: rounded to at most `characters` (at least 1; more than 11 count as
/// 11) without its minus sign, with an exponent where digits do not fit. It is longer if no form
/// fits; and of 11, an exponent of three digits makes 12: "9.33262E+157".
std::string FormatGeneral(double number, int characters = 11);

/// "#DIV/0!"
std::string_view ErrorText(book::CellError error);

} // namespace orrery::look
