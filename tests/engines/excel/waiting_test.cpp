#include "engines/excel/waiting.h"

#include "engines/excel/message_filter.h"

#include <gtest/gtest.h>

#include <thread>

namespace orrery::excel {
namespace {

using namespace std::chrono_literals;

/// Counts the messages of its window.
class Window {
public:
    Window()
    {
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = Handle;
        windowClass.lpszClassName = L"OrreryWaitingTest";
        windowClass.hInstance = GetModuleHandleW(nullptr);
        RegisterClassW(&windowClass);
        window = CreateWindowW(windowClass.lpszClassName, L"", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50,
                               nullptr, nullptr, windowClass.hInstance, nullptr);
        Empty();
        paints = keys = 0;
    }
    ~Window() { DestroyWindow(window); }
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    /// Handles all messages in the queue.
    static void Empty()
    {
        MSG message = {};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0)
            DispatchMessageW(&message);
    }

    HWND window = nullptr;
    static inline int paints = 0;
    static inline int keys = 0;

private:
    static LRESULT CALLBACK Handle(HWND window, UINT message, WPARAM first, LPARAM second)
    {
        if (message == WM_PAINT)
            ++paints;
        if (message == WM_KEYDOWN)
            ++keys;
        return DefWindowProcW(window, message, first, second);
    }
};

TEST(WaitAndPaintTest, PaintsAndLeavesKeysForLater)
{
    const Window window;
    ASSERT_NE(window.window, nullptr);
    PostMessageW(window.window, WM_KEYDOWN, VK_F1, 0);
    InvalidateRect(window.window, nullptr, TRUE);
    EXPECT_FALSE(WaitAndPaint(nullptr, 100ms));
    EXPECT_GE(Window::paints, 1);
    EXPECT_EQ(Window::keys, 0);
    Window::Empty();
    EXPECT_EQ(Window::keys, 1) << "the key waits and is not lost";
}

TEST(WaitAndPaintTest, WaitsForTheTime)
{
    const SystemClock clock;
    const auto begin = clock.Now();
    EXPECT_FALSE(WaitAndPaint(nullptr, 120ms));
    EXPECT_GE(clock.Now() - begin, 100ms);
    EXPECT_LT(clock.Now() - begin, 20s);
}

TEST(WaitAndPaintTest, EndsWithTheObject)
{
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    EXPECT_FALSE(WaitAndPaint(event, 20ms));
    std::thread later([event] {
        std::this_thread::sleep_for(50ms);
        SetEvent(event);
    });
    EXPECT_TRUE(WaitAndPaint(event, 60s));
    later.join();
    EXPECT_TRUE(WaitAndPaint(event, 0ms));
    CloseHandle(event);
}

TEST(MessageFilterTest, RepeatsCallsForAMinute)
{
    const Apartment apartment;
    MessageFilter filter;
    IMessageFilter& calls = filter.Interface();
    EXPECT_EQ(calls.RetryRejectedCall(nullptr, 0, SERVERCALL_RETRYLATER), 100U);
    EXPECT_EQ(calls.RetryRejectedCall(nullptr, 8000, SERVERCALL_REJECTED), 1000U);
    EXPECT_EQ(calls.RetryRejectedCall(nullptr, 59999, SERVERCALL_RETRYLATER), 100U)
        << "less than 100 would mean at once";
    EXPECT_EQ(calls.RetryRejectedCall(nullptr, 60000, SERVERCALL_RETRYLATER), DWORD{0xFFFFFFFF});
}

TEST(MessageFilterTest, PaintsAndHoldsInputBack)
{
    const Apartment apartment;
    MessageFilter filter;
    EXPECT_EQ(filter.Interface().MessagePending(nullptr, 100, PENDINGTYPE_TOPLEVEL),
              static_cast<DWORD>(PENDINGMSG_WAITDEFPROCESS));
}

TEST(MessageFilterTest, TellsAboutMessagesAndCancelsTheCallOnRequest)
{
    const Apartment apartment;
    int messages = 0;
    MessageFilter filter([&messages] { return ++messages == 2; });
    const auto pending = [&filter] {
        return filter.Interface().MessagePending(nullptr, 100, PENDINGTYPE_TOPLEVEL);
    };
    EXPECT_EQ(pending(), static_cast<DWORD>(PENDINGMSG_WAITDEFPROCESS));
    EXPECT_EQ(pending(), static_cast<DWORD>(PENDINGMSG_CANCELCALL));
    EXPECT_EQ(messages, 2);
}

TEST(MessageFilterTest, RestoresThePreviousFilter)
{
    const Apartment apartment;
    MessageFilter outer;
    {
        const MessageFilter inner;
    }
    Pointer<IMessageFilter> current;
    ASSERT_EQ(CoRegisterMessageFilter(nullptr, current.Receive()), S_OK);
    EXPECT_EQ(current.Get(), &outer.Interface());
    CoRegisterMessageFilter(current.Get(), nullptr);
}

} // namespace
} // namespace orrery::excel
