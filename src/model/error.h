#pragma once

#include "util/error.h"

#include <string>

namespace orrery::model {

enum class ErrorKind {
    TooManyNameLists, ///< in a parameter file; the subject is the line's value
};

std::string Sentence(ErrorKind kind, const util::ErrorDetails& details);

} // namespace orrery::model
