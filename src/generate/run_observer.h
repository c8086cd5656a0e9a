#pragma once

#include "holidays/files/holiday_readers.h"
#include "util/error_report.h"

#include <cstdint>
#include <exception>
#include <string>

namespace orrery::generate {

using holidays::CalendarKind;

enum class RequestField { Year, Template };

/// What is wrong with a request: the message, and the field that gets the focus.
struct RequestProblem {
    RequestField field;
    std::string message;
};

/// Is told what happens in a run, in order. Only `Report` must be implemented.
class RunObserver : public util::ErrorReporter {
public:
    /// The request fails its checks: shows the message and moves the focus to the field.
    virtual void ShowProblem(const RequestProblem& problem) { Report(problem.message); }
    virtual void SetHourglass(bool /*on*/) {}
    /// The run ignores a failure without reporting it: a sheet keeps its name or is not copied.
    /// `what` is a sentence about it.
    virtual void FailureIgnored(const std::string& /*what*/, const std::exception& /*error*/) {}
    /// A month [1:12] was filled, or has failed.
    virtual void MonthDone(CalendarKind /*kind*/, std::int16_t /*month*/) {}
    /// The calendar was saved, but something of the template is missing in it. `text` is for the
    /// user.
    virtual void Warn(const std::string& /*text*/) {}
    /// The workbook is about to be saved, which takes long when its sheets are large.
    virtual void Saving() {}
    /// A PDF is about to be printed to that path.
    virtual void Printing(const std::string& /*path*/) {}
};

} // namespace orrery::generate
