#include "excel_server/message_filter.h"

namespace orrery::excel_server {

HRESULT MessageFilter::QueryInterface(REFIID iid, void** object)
{
    if (object == nullptr)
        return E_POINTER;
    *object = iid == IID_IUnknown || iid == IID_IMessageFilter ? static_cast<IMessageFilter*>(this)
                                                               : nullptr;
    return *object != nullptr ? S_OK : E_NOINTERFACE;
}

DWORD MessageFilter::HandleInComingCall(DWORD /*type*/, HTASK /*caller*/, DWORD /*ticks*/,
                                        LPINTERFACEINFO info)
{
    if (info == nullptr || info->iid != IID_IDispatch)
        return SERVERCALL_ISHANDLED;
    const SERVERCALL answer = server_.faults.AtFilter();
    if (answer != SERVERCALL_ISHANDLED)
        server_.log.Write(answer == SERVERCALL_REJECTED ? "Filter rejects a call"
                                                        : "Filter asks to retry later");
    return answer;
}

DWORD MessageFilter::RetryRejectedCall(HTASK /*callee*/, DWORD /*ticks*/, DWORD /*type*/)
{
    return static_cast<DWORD>(-1); // this server makes no calls
}

DWORD MessageFilter::MessagePending(HTASK /*callee*/, DWORD /*ticks*/, DWORD /*type*/)
{
    return PENDINGMSG_WAITDEFPROCESS;
}

} // namespace orrery::excel_server
