#pragma once

#include <atomic>
#include <chrono>
#include <mutex>
#include <vector>

namespace orrery::book {

/// An application at work that can be ended although it does not answer.
class Endable {
public:
    virtual ~Endable() = default;
    /// Called on any thread.
    virtual void End() = 0;
};

/// The user's patience with applications that do not answer. When it is over, they are ended, and
/// the call that they do not answer fails with ApplicationLost.
class Patience {
public:
    Patience() = default;
    virtual ~Patience() = default;
    Patience(const Patience&) = delete;
    Patience& operator=(const Patience&) = delete;

    /// A call to an application goes on for this long by now. Called several times a second on the
    /// thread that waits for the call, in the middle of it: no other call is possible.
    virtual void OnWaiting(std::chrono::milliseconds /*time*/) noexcept {}

    /// The user gives up: ends the applications that are at work. False if there are none. May be
    /// called on any thread, and again.
    bool GiveUp();
    /// Whether the user has given up.
    bool IsOver() const { return isOver_; }

    /// An application begins its work, and ceases it; it is not ended any more when that returns.
    void Add(Endable& application);
    void Remove(Endable& application);

private:
    std::mutex mutex_;
    std::vector<Endable*> applications_;
    std::atomic<bool> isOver_ = false;
};

} // namespace orrery::book
