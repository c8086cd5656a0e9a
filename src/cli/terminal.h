#pragma once

#include <string>
#include <vector>

namespace orrery::cli {

/// The arguments as UTF-8, whatever `main` was given; the program's name comes first.
std::vector<std::string> ProgramArguments(int argc, const char* const* argv);

/// The terminal that a program writes to, where there is one; it takes UTF-8 as long as this lives.
class Terminal {
public:
    Terminal();
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    /// Whether somebody watches standard error.
    bool ShowsErrors() const;

private:
    [[maybe_unused]] unsigned codePage_ = 0; ///< that it had before; 0 where nothing is to change
};

} // namespace orrery::cli
