#pragma once

#include "book/patience.h"
#include "engines/excel/com.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace orrery::excel {

/// Watches the calls to an instance for the user's patience: tells it while a call goes on, and
/// ends the instance when it is over, because a call cannot be broken off. The calling thread
/// handles messages that are sent to its windows during a call; another thread sends them.
class CallWatch final : private book::Endable {
public:
    /// `end` ends the instance, on any thread; it returns false if the instance must be left.
    /// `patience` outlives the watch.
    CallWatch(book::Patience& patience, std::function<bool()> end);
    ~CallWatch() override;
    CallWatch(const CallWatch&) = delete;
    CallWatch& operator=(const CallWatch&) = delete;

    /// A call in progress, on the thread that made the watch.
    class Call {
    public:
        /// Without a watch nobody is told.
        explicit Call(CallWatch* watch);
        ~Call();
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;

    private:
        CallWatch* watch_;
    };

    /// Tells the patience about the call in progress, if there is one. On the calling thread.
    void Tick();
    /// Whether the user has given up.
    bool IsGivenUp() const { return isGivenUp_; }
    /// Whether the instance was not ended then. Waits while that is being decided.
    bool IsLeft();
    /// Whether a call is to be cancelled: the instance was left, and does not answer within a
    /// second. On the calling thread.
    bool IsToBeCancelled() const;

private:
    void End() override;
    void SendTicks();
    static LRESULT CALLBACK HandleMessage(HWND window, UINT message, WPARAM first, LPARAM second);

    book::Patience& patience_;
    std::function<bool()> end_;
    std::mutex ending_; // locked while the instance is ended
    std::atomic<bool> isGivenUp_ = false;
    std::atomic<bool> isLeft_ = false;
    std::atomic<bool> isCalling_ = false;
    std::atomic<bool> isTickSent_ = false;
    bool isTicking_ = false;
    std::chrono::steady_clock::time_point begin_; // of the call
    HWND window_ = nullptr;                       // gets the messages; it is never shown
    std::mutex mutex_;
    std::condition_variable changed_;
    bool isStopped_ = false;
    std::thread thread_; // last: it uses the other members
};

} // namespace orrery::excel
