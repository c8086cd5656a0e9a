#pragma once

#include "util/error_report.h"

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace orrery::cli {

/// Where a command writes.
struct Console {
    std::ostream& out;
    std::ostream& err;
    bool errIsTerminal = false;
};

/// Line ends of the console: CR LF becomes LF.
std::string WithPlainLineEnds(const std::string& text);

/// Error reports on standard error, and remembered.
class ConsoleReporter : public util::ErrorReporter {
public:
    explicit ConsoleReporter(Console& console) : console_(console) {}
    void Report(const std::string& text) override;
    const std::vector<std::string>& Reports() const { return reports_; }
    int ExitCode() const;

private:
    Console& console_;
    std::vector<std::string> reports_;
};

/// Flushes the output. The exit code, or that of a report where the output cannot be written.
int FinishOutput(Console& console, int exitCode);

/// A bar on the terminal's last line, such as "[######      ] 3/10  2029".
class ProgressBar {
public:
    /// Shows nothing unless `shown`; `total` is the number of steps.
    ProgressBar(std::ostream& err, bool shown, std::size_t total);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void Show(std::size_t done, const std::string& label);
    /// Clears the line, so that something else can be written.
    void Clear();

private:
    std::ostream& err_;
    bool shown_;
    std::size_t total_;
};

} // namespace orrery::cli
