#include "cli/console.h"

#include "cli/command_line.h"

#include <algorithm>
#include <ostream>

namespace orrery::cli {

std::string WithPlainLineEnds(const std::string& text)
{
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' || i + 1 == text.size() || text[i + 1] != '\n')
            plain += text[i];
    }
    return plain;
}

void ConsoleReporter::Report(const std::string& text)
{
    reports_.push_back(WithPlainLineEnds(text));
    console_.err << WithPlainLineEnds(util::ErrorReportText(text)) << '\n' << std::flush;
}

void ConsoleReporter::Warn(const std::string& text)
{
    const std::string plain = WithPlainLineEnds(text);
    if (std::find(warnings_.begin(), warnings_.end(), plain) != warnings_.end())
        return;
    warnings_.push_back(plain);
    console_.err << "Warning: " << plain << '\n' << std::flush;
}

int ConsoleReporter::ExitCode() const
{
    return reports_.empty() ? kExitSuccess : kExitReported;
}

int FinishOutput(Console& console, int exitCode)
{
    if (console.out.flush())
        return exitCode;
    ConsoleReporter reporter(console);
    reporter.Report("Standard output cannot be written.");
    return kExitReported;
}

ProgressBar::ProgressBar(std::ostream& err, bool shown, std::size_t total)
    : err_(err), shown_(shown), total_(std::max<std::size_t>(total, 1))
{
}

ProgressBar::~ProgressBar()
{
    Clear();
}

void ProgressBar::Show(std::size_t done, const std::string& label)
{
    if (!shown_)
        return;
    constexpr std::size_t width = 40;
    const std::size_t full = std::min(done, total_) * width / total_;
    err_ << "\r\033[K[" << std::string(full, '#') << std::string(width - full, ' ') << "] " << label
         << std::flush;
}

void ProgressBar::Clear()
{
    if (shown_)
        err_ << "\r\033[K" << std::flush;
}

} // namespace orrery::cli
