#pragma once

#include <exception>
#include <string>

namespace orrery::util {

/// The message for the user: what is wrong, where, and what to do. Accepts any exception; unknown
/// ones give their own text.
std::string ErrorText(const std::exception& error);

} // namespace orrery::util
