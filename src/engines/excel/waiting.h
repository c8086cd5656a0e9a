#pragma once

#include "engines/excel/com.h"

#include <chrono>

namespace orrery::excel {

/// Waits and paints the thread's windows meanwhile; keys and clicks wait, too. Returns true early
/// when the object is signalled; it may be null.
bool WaitAndPaint(HANDLE object, std::chrono::milliseconds time);

/// Tells the time and pauses.
class Clock {
public:
    virtual ~Clock() = default;
    virtual std::chrono::milliseconds Now() const = 0; ///< since a fixed moment
    virtual void Pause(std::chrono::milliseconds time) = 0;
};

/// Windows are painted during a pause.
class SystemClock : public Clock {
public:
    std::chrono::milliseconds Now() const override;
    void Pause(std::chrono::milliseconds time) override { WaitAndPaint(nullptr, time); }
};

} // namespace orrery::excel
