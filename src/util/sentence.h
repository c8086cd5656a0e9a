#pragma once

#include "util/error.h"

#include <string>
#include <string_view>

/// What sentences about errors are put together from.
namespace orrery::util {

/// A text of the user's on its way into a sentence: control characters become U+FFFD.
std::string Printable(std::string_view text);

std::string Quoted(const std::string& subject);
/// The subject in quotes, or what stands for one that is not known.
std::string QuotedOr(const std::string& subject, const char* unknown);
/// ": cause" or nothing, for the end of a sentence that goes on with its own full stop.
std::string Because(const ErrorDetails& details);

} // namespace orrery::util
