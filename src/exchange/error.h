#pragma once

#include "util/error.h"

#include <string>

namespace orrery::exchange {

/// Why a calendar of another program is not taken over.
enum class ErrorKind {
    TooManyRules,  ///< the subject is their number
    FileTooLarge,  ///< the subject is the path
    NotAText,      ///< likewise; the clipboard has no path
    NoDates,       ///< likewise
    NoSuchSection, ///< the subject is its name, the cause names those that there are
};

std::string Sentence(ErrorKind kind, const util::ErrorDetails& details);

} // namespace orrery::exchange
