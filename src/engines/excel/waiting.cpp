#include "engines/excel/waiting.h"

#include <algorithm>

namespace orrery::excel {
namespace {

using std::chrono::milliseconds;

/// One message at a time, so that a window that always needs painting does not hold up the rest.
void PaintNextWindow()
{
    MSG message = {};
    if (PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE) != 0)
        DispatchMessageW(&message);
}

} // namespace

milliseconds SystemClock::Now() const
{
    return milliseconds(GetTickCount64());
}

bool WaitAndPaint(HANDLE object, milliseconds time)
{
    const DWORD objects = object == nullptr ? 0 : 1;
    SystemClock clock;
    const milliseconds end = clock.Now() + time;
    for (;;) {
        const milliseconds left = std::max(end - clock.Now(), milliseconds(0));
        const DWORD reason =
            MsgWaitForMultipleObjects(objects, objects == 0 ? nullptr : &object, FALSE,
                                      static_cast<DWORD>(left.count()), QS_PAINT | QS_SENDMESSAGE);
        if (objects != 0 && reason == WAIT_OBJECT_0)
            return true;
        if (left.count() == 0 || reason == WAIT_FAILED)
            return false;
        PaintNextWindow();
    }
}

} // namespace orrery::excel
