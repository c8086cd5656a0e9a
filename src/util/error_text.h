#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace orrery::util {

/// The one sentence for the user: what is wrong, where, and what to do. Any exception is taken;
/// those that are not `Error` give their own text.
std::string ErrorText(const std::exception& error);
/// A text of the user's on its way into a sentence: control characters become U+FFFD.
std::string Printable(std::string_view text);

} // namespace orrery::util
