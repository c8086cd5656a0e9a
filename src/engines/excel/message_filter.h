#pragma once

#include "engines/excel/com.h"

#include <functional>

namespace orrery::excel {

/// Decides what happens on this thread during a call to another program: windows are painted, input
/// waits, and a rejected call is repeated as `PauseAfter` says. Installed for as long as it lives;
/// then the previous filter is restored.
class MessageFilter final : private IMessageFilter {
public:
    /// `onMessage` is called when a message arrives during a call; true cancels the call. It may be
    /// empty.
    explicit MessageFilter(std::function<bool()> onMessage = {});
    ~MessageFilter();
    MessageFilter(const MessageFilter&) = delete;
    MessageFilter& operator=(const MessageFilter&) = delete;

    /// What COM calls.
    IMessageFilter& Interface() { return *this; }

private:
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    // It is not deleted by reference count.
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP_(DWORD)
    HandleInComingCall(DWORD type, HTASK caller, DWORD ticks, LPINTERFACEINFO call) override;
    STDMETHODIMP_(DWORD) RetryRejectedCall(HTASK callee, DWORD ticks, DWORD answer) override;
    STDMETHODIMP_(DWORD) MessagePending(HTASK callee, DWORD ticks, DWORD nesting) override;

    std::function<bool()> onMessage_;
    Pointer<IMessageFilter> before_;
    bool registered_ = false;
};

} // namespace orrery::excel
