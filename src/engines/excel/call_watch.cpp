#include "engines/excel/call_watch.h"

#include <utility>

namespace orrery::excel {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kTick(100);
constexpr milliseconds kAnswerTime(1000); // for an instance that was left
constexpr UINT kTickMessage = WM_APP;

/// A window that only gets messages.
HWND MakeWindow(WNDPROC handler, CallWatch* watch)
{
    constexpr const wchar_t* name = L"OrreryCallWatch";
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = handler;
    windowClass.lpszClassName = name;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    RegisterClassW(&windowClass); // fails from the second time on: the class is there
    HWND const window = CreateWindowExW(0, name, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                        windowClass.hInstance, nullptr);
    if (window != nullptr)
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(watch));
    return window;
}

} // namespace

CallWatch::CallWatch(book::Patience& patience, std::function<bool()> end)
    : patience_(patience), end_(std::move(end)), window_(MakeWindow(HandleMessage, this)),
      thread_([this] { SendTicks(); })
{
    patience_.Add(*this);
}

CallWatch::~CallWatch()
{
    patience_.Remove(*this);
    {
        const std::lock_guard lock(mutex_);
        isStopped_ = true;
    }
    changed_.notify_one();
    thread_.join();
    DestroyWindow(window_);
}

CallWatch::Call::Call(CallWatch* watch) : watch_(watch)
{
    if (watch_ == nullptr)
        return;
    watch_->begin_ = std::chrono::steady_clock::now();
    watch_->isCalling_ = true;
}

CallWatch::Call::~Call()
{
    if (watch_ != nullptr)
        watch_->isCalling_ = false;
}

void CallWatch::Tick()
{
    if (!isCalling_ || isTicking_) // what is told may handle messages itself
        return;
    isTicking_ = true;
    patience_.OnWaiting(
        std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - begin_));
    isTicking_ = false;
}

bool CallWatch::IsLeft()
{
    const std::lock_guard lock(ending_);
    return isLeft_;
}

bool CallWatch::IsToBeCancelled() const
{
    return isLeft_ && std::chrono::steady_clock::now() - begin_ >= kAnswerTime;
}

void CallWatch::End()
{
    const std::lock_guard lock(ending_);
    isGivenUp_ = true; // first: a call fails as soon as the instance ends
    isLeft_ = !end_();
}

void CallWatch::SendTicks()
{
    std::unique_lock lock(mutex_);
    while (!changed_.wait_for(lock, kTick, [this] { return isStopped_; })) {
        // Calls are cancelled when a message is posted; one that is sent is only handled.
        if (isLeft_)
            PostMessageW(window_, kTickMessage, 0, 0);
        else if (isCalling_ && !isTickSent_.exchange(true))
            SendNotifyMessageW(window_, kTickMessage, 0, 0);
    }
}

LRESULT CALLBACK CallWatch::HandleMessage(HWND window, UINT message, WPARAM first, LPARAM second)
{
    auto* const watch = reinterpret_cast<CallWatch*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message != kTickMessage || watch == nullptr)
        return DefWindowProcW(window, message, first, second);
    watch->isTickSent_ = false;
    watch->Tick();
    return 0;
}

} // namespace orrery::excel
