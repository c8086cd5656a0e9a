#include "excel_server/lifetime.h"

#include <windows.h>

namespace orrery::excel_server {
namespace {

constexpr DWORD kIdleLimit = 5 * 60 * 1000; // milliseconds; no call of a test takes that long

/// False when the thread is to end.
bool HandleMessages()
{
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT)
            return false;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return true;
}

} // namespace

void Lifetime::RemoveObject()
{
    if (--objects_ > 0 || (visible_ && !quit_))
        return;
    log_.Write(quit_ ? "Application ends: it was told to"
                     : "Application ends: nobody refers to it");
    PostQuitMessage(0);
}

void Lifetime::Run()
{
    HANDLE end = CreateEventW(nullptr, TRUE, FALSE, kEndEvent);
    while (HandleMessages()) {
        const DWORD what =
            MsgWaitForMultipleObjectsEx(1, &end, kIdleLimit, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
        if (what == WAIT_OBJECT_0 + 1)
            continue;
        log_.Write(what == WAIT_OBJECT_0 ? "Application ends: its user closed it"
                                         : "Application ends: it was forgotten");
        break;
    }
    CloseHandle(end);
}

} // namespace orrery::excel_server
