#pragma once

#include <string>
#include <string_view>

namespace orrery::book {

/// Whether Excel treats two names of sheets, defined names or tables as the same: case is ignored,
/// beyond ASCII too, whatever the locale.
bool SameName(std::string_view left, std::string_view right);
/// The case-folded form of a name; names that are the same to Excel fold to the same form.
std::string FoldCase(std::string_view name);

} // namespace orrery::book
