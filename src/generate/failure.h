#pragma once

#include "generate/context.h"

#include <exception>
#include <string>

namespace orrery::generate {

/// Thrown when the application is gone, after that was reported: ends the run without another
/// report. It is no std::exception, so that only the run itself catches it.
struct RunEnded {};

/// Whether the application is gone, so that no later call to it can succeed.
bool IsLoss(const std::exception& error);

/// Reports the sentence, a line break and the error's description. Throws RunEnded when the
/// application is gone.
void ReportFailure(const std::string& sentence, const std::exception& error, Context& context);

} // namespace orrery::generate
