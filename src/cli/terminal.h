#pragma once

#include "book/patience.h"

#include <memory>
#include <string>
#include <vector>

namespace orrery::cli {

/// The program's name and arguments in UTF-8, whatever encoding `main` received.
std::vector<std::string> ProgramArguments(int argc, const char* const* argv);

/// Switches the terminal to UTF-8 until the result is destroyed; null if there is nothing to
/// change.
std::shared_ptr<void> UseUtf8Terminal();

/// Until the result is destroyed, Ctrl+C ends the applications that are at work, if there are any,
/// instead of this program. Null where the system does what is needed by itself.
std::shared_ptr<void> WatchInterrupts(book::Patience& patience);

/// Whether standard error is a terminal.
bool ErrorOutputIsTerminal();

} // namespace orrery::cli
