#pragma once

#include "engines/libreoffice/plugin.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace orrery::libreoffice {

/// Ends an instance that does not answer a call. A call cannot be broken off by the one who makes
/// it: the only thread of the program that is not the user interface's.
class Watchdog {
public:
    using Time = std::chrono::milliseconds;

    /// `computedTime` tells how long the instance has computed, `end` ends it; both are called by
    /// another thread, while a call is under way.
    Watchdog(const Patience& patience, std::function<Time()> computedTime,
             std::function<void()> end);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    /// A call that is under way.
    class Call {
    public:
        explicit Call(Watchdog& watchdog) : watchdog_(watchdog) { watchdog_.SetCalling(true); }
        ~Call() { watchdog_.SetCalling(false); }
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;

    private:
        Watchdog& watchdog_;
    };

    /// Whether it had to end the instance.
    bool HasBitten() const;

private:
    void SetCalling(bool calling);
    void Run();
    void WatchCall(std::unique_lock<std::mutex>& lock);

    Patience patience_;
    std::function<Time()> computedTime_;
    std::function<void()> end_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    unsigned long call_ = 0; // counts the calls
    bool calling_ = false;
    bool stopped_ = false;
    bool hasBitten_ = false;
    std::thread thread_; // last: it uses the others
};

} // namespace orrery::libreoffice
