#pragma once

#include "util/error.h"

#include <string>

namespace orrery::generate {

enum class ErrorKind {
    OutputIsTemplate, ///< a calendar would replace the template that it is made from
};

std::string Sentence(ErrorKind kind, const util::ErrorDetails& details);

} // namespace orrery::generate
