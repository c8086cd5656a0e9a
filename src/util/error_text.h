#pragma once

#include <exception>
#include <string>

namespace orrery::util {

/// The one sentence for the user: what is wrong, where, and what to do. Any exception is taken;
/// those that are not `Error` give their own text.
std::string ErrorText(const std::exception& error);

} // namespace orrery::util
