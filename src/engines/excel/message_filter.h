#pragma once

#include "engines/excel/com.h"

namespace orrery::excel {

/// Decides what happens on this thread while a call to another program is under way: windows are
/// painted, input waits, and a call that was turned away is made again for the time of
/// `PauseAfter`. In force as long as it lives; the filter before it then is again.
class MessageFilter final : private IMessageFilter {
public:
    MessageFilter();
    ~MessageFilter();
    MessageFilter(const MessageFilter&) = delete;
    MessageFilter& operator=(const MessageFilter&) = delete;

    /// What COM calls.
    IMessageFilter& Interface() { return *this; }

private:
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    // Its life does not depend on who refers to it.
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP_(DWORD)
    HandleInComingCall(DWORD type, HTASK caller, DWORD ticks, LPINTERFACEINFO call) override;
    STDMETHODIMP_(DWORD) RetryRejectedCall(HTASK callee, DWORD ticks, DWORD answer) override;
    STDMETHODIMP_(DWORD) MessagePending(HTASK callee, DWORD ticks, DWORD nesting) override;

    Pointer<IMessageFilter> before_;
    bool registered_ = false;
};

} // namespace orrery::excel
