#include "main_thread.h"

#include "native_eyes.h"

#include <thread>
#include <wx/app.h>

namespace orrery::ui::wx {

void PostToMain(std::function<void()> function)
{
    wxTheApp->CallAfter(std::move(function));
    WakeMainThread();
}

bool HappensWithin(std::chrono::milliseconds time, const std::function<bool()>& happened)
{
    const auto end = std::chrono::steady_clock::now() + time;
    while (!OnMain(happened)) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

void WaitFor(const std::string& event, const std::function<bool()>& happened)
{
    if (!HappensWithin(kPatience, happened))
        throw TimedOut("Waited in vain for: " + event);
}

void Settle()
{
    WaitFor("the end of the input", [] { return !IsInputPending(); });
    // The second round handles what the first one posted.
    for (int round = 0; round < 2; ++round)
        OnMain([] {});
}

} // namespace orrery::ui::wx
