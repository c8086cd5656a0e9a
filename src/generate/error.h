#pragma once

#include "util/error.h"

#include <string>

namespace orrery::generate {

enum class ErrorKind {
    OutputIsTemplate, ///< the output would replace the template
};

std::string Sentence(ErrorKind kind, const util::ErrorDetails& details);

} // namespace orrery::generate
