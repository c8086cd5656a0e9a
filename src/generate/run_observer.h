#pragma once

#include "holidays/holiday_readers.h"
#include "util/error_report.h"

#include <cstdint>
#include <exception>
#include <string>

namespace orrery::generate {

using holidays::CalendarKind;

enum class RequestField { Year, Template };

/// What is wrong with a request: the field that gets the focus and the message.
struct RequestProblem {
    RequestField field;
    std::string message;
};

/// Told what happens in runs, in the order in which it happens. Only reports have to be taken.
class RunObserver : public util::ErrorReporter {
public:
    /// The request fails its checks: shows the message and puts the focus into the field.
    virtual void ShowProblem(const RequestProblem& problem) { Report(problem.message); }
    virtual void SetHourglass(bool /*on*/) {}
    /// A failure that a run passes over without a report: a sheet that keeps its name or is not
    /// copied. `what` is a sentence about it.
    virtual void PassedOver(const std::string& /*what*/, const std::exception& /*error*/) {}
    /// A month [1:12] was worked through.
    virtual void MonthDone(CalendarKind /*kind*/, std::int16_t /*month*/) {}
    /// The workbook is about to be saved, which takes long when its sheets are large.
    virtual void Saving() {}
    /// A PDF of that path is about to be made.
    virtual void Printing(const std::string& /*path*/) {}
};

} // namespace orrery::generate
