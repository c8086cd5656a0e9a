#include "engines/excel/connection.h"

#include "book/error.h"
#include "engines/excel/busy.h"
#include "util/system_message.h"

#include <cstdint>
#include <system_error>

namespace orrery::excel {
namespace {

constexpr HRESULT FromWindows(DWORD error)
{
    return static_cast<HRESULT>(error | 0x80070000U);
}

/// Whether the program at the other end is gone.
bool IsGone(HRESULT result)
{
    switch (result) {
    case RPC_E_DISCONNECTED:
    case RPC_E_SERVER_DIED:
    case RPC_E_SERVER_DIED_DNE:
    case RPC_E_CONNECTION_TERMINATED:
    case RPC_E_INVALID_OBJECT:
    case RPC_E_INVALID_IPID:
    case CO_E_OBJNOTCONNECTED:
    case CO_E_SERVER_STOPPING:
    case FromWindows(RPC_S_SERVER_UNAVAILABLE):
    case FromWindows(RPC_S_CALL_FAILED):
    case FromWindows(RPC_S_CALL_FAILED_DNE):
    case FromWindows(RPC_S_COMM_FAILURE):
    case FromWindows(RPC_S_UNKNOWN_IF):
        return true;
    default:
        return false;
    }
}

/// The application's own code if it gave one.
HRESULT CodeOf(HRESULT result, const ExceptionInfo& info)
{
    return result == DISP_E_EXCEPTION && info.Code() != S_OK ? info.Code() : result;
}

std::string SystemText(HRESULT code)
{
    return util::SystemMessage({code, std::system_category()});
}

/// "0x800A03EC".
std::string CodeText(HRESULT code)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto bits = static_cast<std::uint32_t>(code);
    std::string text = "0x";
    for (unsigned shift = 32; shift > 0; shift -= 4)
        text += digits[(bits >> (shift - 4)) & 0xFU];
    return text;
}

/// The application's own description, else the system's with the name of the call.
std::string DescriptionOf(const std::string& call, HRESULT code, const ExceptionInfo& info)
{
    const std::string description = info.Description();
    if (!description.empty())
        return description;
    return std::string(kApplicationName) + " failed at " + call + " (" + CodeText(code) +
           "): " + SystemText(code) + '.';
}

} // namespace

void Connection::Make(const std::string& call, const Try& attempt)
{
    if (lost_)
        throw Error(*lost_);
    const auto checkPatience = [this] {
        if (watch_ != nullptr && watch_->IsGivenUp() && !asksAgain_)
            MarkLost(kGivenUp);
    };
    checkPatience();
    ExceptionInfo info;
    const HRESULT code = RetryWhileBusy(attempt, info);
    if (Failed(code))
        checkPatience();
    if (IsBusy(code))
        MarkLost("it has been busy for a minute");
    if (IsGone(code))
        MarkLost(SystemText(code));
    if (Failed(code))
        throw CallFailure(call, code, DescriptionOf(call, code, info));
}

void Connection::AskAgain()
{
    if (watch_ == nullptr || !watch_->IsLeft())
        return;
    asksAgain_ = true;
    if (lost_ && lost_->Cause() == kGivenUp)
        lost_.reset();
}

HRESULT Connection::RetryWhileBusy(const Try& attempt, ExceptionInfo& info)
{
    const CallWatch::Call call(watch_);
    const auto begin = clock_.Now();
    for (;;) {
        const HRESULT result = attempt(info);
        if (Failed(result))
            info.Complete();
        const HRESULT code = CodeOf(result, info);
        const auto pause = PauseAfter(clock_.Now() - begin);
        if (!IsBusy(code) || !pause)
            return code;
        clock_.Pause(*pause);
    }
}

void Connection::MarkLost(const std::string& cause)
{
    lost_.emplace(book::ErrorKind::ApplicationLost, kApplicationName, cause);
    throw Error(*lost_);
}

} // namespace orrery::excel
