#pragma once

#include "generate/context.h"

#include <exception>
#include <string>

namespace orrery::generate {

/// Thrown after a lost application was reported; ends the run without another report. Not a
/// std::exception, so that only the run itself catches it.
struct RunEnded {};

/// Whether the error means that the application is lost, so that no later call to it can succeed.
bool IsApplicationLost(const std::exception& error);

/// Reports the sentence, a line break and the error's description. Throws RunEnded if the
/// application is lost.
void ReportFailure(const std::string& sentence, const std::exception& error, Context& context);

} // namespace orrery::generate
