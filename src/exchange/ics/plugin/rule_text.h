#pragma once

#include <string>
#include <string_view>

namespace orrery::exchange {

/// Copies the lines of a component without repetition rules whose lists or numbers are larger than
/// libical has room for, which it does not check well. Whether there were any.
bool DropRulesOutOfBounds(std::string_view text, std::string& copy);

} // namespace orrery::exchange
