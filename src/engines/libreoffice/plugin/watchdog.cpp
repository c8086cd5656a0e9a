#include "engines/libreoffice/plugin/watchdog.h"

#include <algorithm>
#include <utility>

namespace orrery::libreoffice {

using Clock = std::chrono::steady_clock;

Watchdog::Watchdog(const Timeouts& timeouts, std::function<Time()> computedTime,
                   std::function<void()> end)
    : timeouts_(timeouts), computedTime_(std::move(computedTime)), end_(std::move(end)),
      thread_([this] { Run(); })
{
}

Watchdog::~Watchdog()
{
    {
        const std::lock_guard lock(mutex_);
        stopped_ = true;
    }
    changed_.notify_one();
    thread_.join();
}

bool Watchdog::HasFired() const
{
    const std::lock_guard lock(mutex_);
    return hasFired_;
}

void Watchdog::SetCalling(bool calling)
{
    // The thread is not woken for each of thousands of short calls; it polls.
    const std::lock_guard lock(mutex_);
    calling_ = calling;
    call_ += calling ? 1 : 0;
}

void Watchdog::Run()
{
    std::unique_lock lock(mutex_);
    while (!stopped_) {
        if (calling_ && !hasFired_)
            WatchCall(lock);
        else
            changed_.wait_for(lock, std::min(timeouts_.idle / 2, Time(500)));
    }
}

/// Returns when the call is over, or when the instance was ended.
void Watchdog::WatchCall(std::unique_lock<std::mutex>& lock)
{
    const auto call = call_;
    const auto begin = Clock::now();
    auto lastWork = begin;
    auto computed = Time(-1);
    while (calling_ && call_ == call && !stopped_) {
        changed_.wait_for(lock, std::min(timeouts_.idle / 4, Time(500)));
        lock.unlock();
        const auto now = Clock::now();
        const auto computedNow = computedTime_();
        lock.lock();
        if (!calling_ || call_ != call)
            return;
        if (computedNow != std::exchange(computed, computedNow))
            lastWork = now;
        if (now - lastWork > timeouts_.idle || now - begin > timeouts_.call) {
            hasFired_ = true;
            end_();
            return;
        }
    }
}

} // namespace orrery::libreoffice
