#include "engines/excel/message_filter.h"

#include "engines/excel/busy.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace orrery::excel {
namespace {

constexpr DWORD kCancelCall = static_cast<DWORD>(-1);
constexpr DWORD kMinPause = 100; // smaller answers mean "at once"

} // namespace

MessageFilter::MessageFilter(std::function<bool()> onMessage) : onMessage_(std::move(onMessage))
{
    // Fails in a multithreaded apartment, where rejected calls return at once.
    registered_ = !Failed(CoRegisterMessageFilter(this, before_.Receive()));
}

MessageFilter::~MessageFilter()
{
    if (registered_)
        CoRegisterMessageFilter(before_.Get(), nullptr);
}

HRESULT MessageFilter::QueryInterface(REFIID iid, void** object)
{
    if (object == nullptr)
        return E_POINTER;
    const bool known = iid == IID_IUnknown || iid == IID_IMessageFilter;
    *object = known ? static_cast<IMessageFilter*>(this) : nullptr;
    return known ? S_OK : E_NOINTERFACE;
}

DWORD MessageFilter::HandleInComingCall(DWORD /*type*/, HTASK /*caller*/, DWORD /*ticks*/,
                                        LPINTERFACEINFO /*call*/)
{
    return SERVERCALL_ISHANDLED;
}

DWORD MessageFilter::RetryRejectedCall(HTASK /*callee*/, DWORD ticks, DWORD /*answer*/)
{
    const auto pause = PauseAfter(std::chrono::milliseconds(ticks));
    return pause ? std::max(static_cast<DWORD>(pause->count()), kMinPause) : kCancelCall;
}

DWORD MessageFilter::MessagePending(HTASK /*callee*/, DWORD /*ticks*/, DWORD /*nesting*/)
{
    if (onMessage_ && onMessage_())
        return PENDINGMSG_CANCELCALL;
    return PENDINGMSG_WAITDEFPROCESS; // paints, but lets no key or click through
}

} // namespace orrery::excel
