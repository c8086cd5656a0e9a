#pragma once

#include "look/evaluate/functions/call/call.h"

#include <string_view>

namespace orrery::formula {

/// The function of an upper-case name, or nullptr.
const FunctionEntry* FindFunction(std::string_view name);

} // namespace orrery::formula
