#pragma once

#include "util/error.h"

#include <string>

namespace orrery::exchange {

/// What can go wrong with iCalendar files.
enum class IcsErrorKind {
    NotIcs,            ///< the subject is the path
    IcsTooLarge,       ///< likewise
    IcsNotAvailable,   ///< the library that reads them is not there
    IcsLibraryFailure, ///< it cannot be used; the subject is its path
};

std::string Sentence(IcsErrorKind kind, const util::ErrorDetails& details);

} // namespace orrery::exchange
