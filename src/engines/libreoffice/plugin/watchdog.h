#pragma once

#include "engines/libreoffice/plugin.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace orrery::libreoffice {

/// Ends an instance that does not answer a call, because its caller cannot cancel the call. Owns
/// the only thread of the program beside the user interface's.
class Watchdog {
public:
    using Time = std::chrono::milliseconds;

    /// `computedTime` returns how long the instance has computed, `end` ends it; both are called on
    /// another thread while a call is in progress.
    Watchdog(const Timeouts& timeouts, std::function<Time()> computedTime,
             std::function<void()> end);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    /// A call in progress.
    class Call {
    public:
        explicit Call(Watchdog& watchdog) : watchdog_(watchdog) { watchdog_.SetCalling(true); }
        ~Call() { watchdog_.SetCalling(false); }
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;

    private:
        Watchdog& watchdog_;
    };

    /// Whether it ended the instance.
    bool HasFired() const;

private:
    void SetCalling(bool calling);
    void Run();
    void WatchCall(std::unique_lock<std::mutex>& lock);

    Timeouts timeouts_;
    std::function<Time()> computedTime_;
    std::function<void()> end_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    unsigned long call_ = 0; // counts calls
    bool calling_ = false;
    bool stopped_ = false;
    bool hasFired_ = false;
    std::thread thread_; // last: it uses the other members
};

} // namespace orrery::libreoffice
