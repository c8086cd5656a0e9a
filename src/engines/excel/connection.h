#pragma once

#include "book/error.h"
#include "engines/excel/call_watch.h"
#include "engines/excel/com.h"
#include "engines/excel/waiting.h"
#include "util/error.h"

#include <functional>
#include <optional>
#include <string>

namespace orrery::excel {

/// The application's name in messages.
inline constexpr const char* kApplicationName = "Excel";

/// Why it is lost if its user has given up.
inline constexpr const char* kGivenUp = "the run was cancelled";

/// A call that the application refused; `Error` contains its own description.
class CallFailure : public Error {
public:
    CallFailure(const std::string& call, HRESULT code, std::string description)
        : Error(book::ErrorKind::ApplicationFailure, call, std::move(description)), code_(code)
    {
    }
    HRESULT Code() const noexcept { return code_; }

private:
    HRESULT code_;
};

/// What all objects of one running instance share: it waits while the application is busy, and
/// remembers that it is gone.
class Connection {
public:
    /// One attempt at a call. The application describes a failure in the info.
    using Try = std::function<HRESULT(ExceptionInfo&)>;

    explicit Connection(Clock& clock) : clock_(clock) {}

    /// Makes a call and repeats it while the application is busy. Throws CallFailure if it is
    /// refused; Error(ApplicationLost) if the application is gone, busy for longer than
    /// `kBusyLimit`, or given up by its user, and at once from then on. `call` is a name such as
    /// "Worksheet.Copy".
    void Make(const std::string& call, const Try& attempt);

    /// From now on the user may give up during a call, which ends the application. The watch
    /// outlives the calls.
    void WatchBy(CallWatch& watch) { watch_ = &watch; }
    /// If the user gave up and the application was left, calls are made again, to give it back to
    /// its user. Those that it does not answer are cancelled.
    void AskAgain();

    bool IsLost() const { return lost_.has_value(); }

private:
    HRESULT RetryWhileBusy(const Try& attempt, ExceptionInfo& info);
    [[noreturn]] void MarkLost(const std::string& cause);

    Clock& clock_;
    CallWatch* watch_ = nullptr;
    bool asksAgain_ = false;
    std::optional<Error> lost_;
};

} // namespace orrery::excel
