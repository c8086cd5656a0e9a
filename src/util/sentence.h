#pragma once

#include "util/error.h"

#include <string>
#include <string_view>

/// Building blocks of error messages.
namespace orrery::util {

/// Makes a user's text safe to show in a message: control characters become U+FFFD.
std::string Printable(std::string_view text);

std::string Quoted(const std::string& subject);
/// The same for a text of a file, which may be very long: only its beginning.
std::string QuotedBeginning(std::string_view text);
/// The subject in quotes, or `unknown` if it is empty.
std::string QuotedOr(const std::string& subject, const char* unknown);
/// ": cause" without its full stop, or empty if there is no cause.
std::string Because(const ErrorDetails& details);

} // namespace orrery::util
