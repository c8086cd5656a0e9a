#pragma once

#include <memory>
#include <string>
#include <vector>

namespace orrery::cli {

/// The arguments as UTF-8, whatever `main` was given; the program's name comes first.
std::vector<std::string> ProgramArguments(int argc, const char* const* argv);

/// Lets the terminal take UTF-8 as long as the result is kept; empty where nothing is to change.
std::shared_ptr<void> UseUtf8Terminal();

/// Whether somebody watches standard error.
bool ErrorOutputIsTerminal();

} // namespace orrery::cli
