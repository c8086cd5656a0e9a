#pragma once

#include "book/patience.h"
#include "util/error_report.h"

#include <cstddef>
#include <ctime>
#include <iosfwd>
#include <string>
#include <vector>

namespace orrery::cli {

/// Where a command runs: the streams that it writes to, its user and the time.
struct Console {
    std::ostream& out;
    std::ostream& err;
    bool errIsTerminal = false;
    book::Patience* patience = nullptr; ///< over when the user presses Ctrl+C; may be null
    std::time_t now = std::time(nullptr);
};

/// Converts line ends for the console: CR LF becomes LF.
std::string WithPlainLineEnds(const std::string& text);

/// Writes error reports and warnings to standard error and remembers them.
class ConsoleReporter : public util::ErrorReporter {
public:
    explicit ConsoleReporter(Console& console) : console_(console) {}
    void Report(const std::string& text) override;
    /// Something that is not an error. A text is written once, however many calendars it is about.
    void Warn(const std::string& text);
    const std::vector<std::string>& Reports() const { return reports_; }
    const std::vector<std::string>& Warnings() const { return warnings_; }
    /// Warnings do not count.
    int ExitCode() const;

private:
    Console& console_;
    std::vector<std::string> reports_;
    std::vector<std::string> warnings_;
};

/// Flushes the output. Returns the exit code, or `kExitReported` if the output cannot be written.
int FinishOutput(Console& console, int exitCode);

/// A progress bar on the terminal's last line, such as "[######      ] 3/10  2029".
class ProgressBar {
public:
    /// Shows nothing unless `shown`; `total` is the number of steps.
    ProgressBar(std::ostream& err, bool shown, std::size_t total);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void Show(std::size_t done, const std::string& label);
    /// Clears the line, so that other text can be written.
    void Clear();

private:
    std::ostream& err_;
    bool shown_;
    std::size_t total_;
};

} // namespace orrery::cli
