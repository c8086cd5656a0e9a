#pragma once

#include "util/error.h"

#include <string>

namespace orrery::cli {

enum class ErrorKind {
    WrongUsage, ///< an invalid command line; the cause says why
};

std::string Sentence(ErrorKind kind, const util::ErrorDetails& details);

} // namespace orrery::cli
