#pragma once

#include "util/error_report.h"

#include <string>
#include <string_view>

namespace orrery::util {

/// The message for a shell result [0:32]; results without a message of their own get a general one.
std::string ShellErrorMessage(int result);

/// Opens a document or a web address with the program that the desktop has for it. Throws
/// Error(ShellFailure) with the `ShellErrorMessage` as its cause.
void ShellExecute(const std::string& file, const std::string& parameters,
                  const std::string& directory, const std::string& verb);

/// `ShellExecute` with the verb "open"; reports a failure. True on success.
bool ShellOpen(const std::string& file, ErrorReporter& reporter);

} // namespace orrery::util
