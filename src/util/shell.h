#pragma once

#include "util/error_report.h"

#include <string>
#include <string_view>

namespace orrery::util {

/// The message of a shell result from 0 to 32; any result without its own gives the catch-all.
std::string ShellErrorMessage(int result);

/// Opens a document or an address with the desktop's own program. Throws Error(ShellFailure) whose
/// cause is the message of the result table.
void ShellExecute(const std::string& file, const std::string& parameters,
                  const std::string& directory, const std::string& verb);

/// Shell execute with the verb "open"; a failure goes to the reporter. True on success.
bool ShellOpen(const std::string& file, ErrorReporter& reporter);

} // namespace orrery::util
