#pragma once

#include "excel_server/server.h"

namespace orrery::excel_server {

/// Rejects the calls that a test has asked it to reject, as Excel does while a dialog is open.
class MessageFilter : public IMessageFilter {
public:
    explicit MessageFilter(Server& server) : server_(server) {}
    virtual ~MessageFilter() = default;
    MessageFilter(const MessageFilter&) = delete;
    MessageFilter& operator=(const MessageFilter&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    // It lives as long as the process.
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    DWORD STDMETHODCALLTYPE HandleInComingCall(DWORD type, HTASK caller, DWORD ticks,
                                               LPINTERFACEINFO info) override;
    DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK callee, DWORD ticks, DWORD type) override;
    DWORD STDMETHODCALLTYPE MessagePending(HTASK callee, DWORD ticks, DWORD type) override;

private:
    Server& server_;
};

} // namespace orrery::excel_server
