#pragma once

#include "look/evaluate/formula/tree.h"

#include <optional>
#include <string_view>

namespace orrery::formula {

/// Reads a reference to a table: its name, and what is in brackets after it with the brackets:
/// "[Day]", "[[#Headers],[Day]:[Week]]", "[@Day]", "[]". A "'" makes the next character a part of a
/// column's name. Returns nothing for what is none.
std::optional<TableText> ReadTableText(std::string_view name, std::string_view brackets);

} // namespace orrery::formula
