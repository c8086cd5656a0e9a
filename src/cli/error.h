#pragma once

#include "util/error.h"

#include <string>

namespace orrery::cli {

enum class ErrorKind {
    WrongUsage, ///< a command line that is not understood; the cause says why
};

std::string Sentence(ErrorKind kind, const util::ErrorDetails& details);

} // namespace orrery::cli
