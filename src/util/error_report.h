#pragma once

#include <string>
#include <string_view>

namespace orrery::util {

/// The text of an error report: "Error!", a line break, "Error Info: " and the given text.
std::string ErrorReportText(std::string_view text);

/// Where unexpected failures are shown: a message box, a line on standard error, a list in a test.
class ErrorReporter {
public:
    virtual ~ErrorReporter() = default;
    /// Shows one failure. `text` is what follows "Error Info: "; its lines end in CR LF.
    virtual void Report(const std::string& text) = 0;
};

} // namespace orrery::util
