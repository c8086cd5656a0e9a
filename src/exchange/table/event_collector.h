#pragma once

#include "exchange/event.h"

#include <cstddef>
#include <string>

namespace orrery::exchange {

/// The events of a file and the lines that are passed over, as many as a user can look at.
class EventCollector {
public:
    static constexpr std::size_t kMostEvents = 100'000;
    static constexpr std::size_t kMostPassedOver = 1000;

    bool IsFull() const { return calendar_.events.size() >= kMostEvents; }
    void Add(Event event) { calendar_.events.push_back(std::move(event)); }
    void PassOver(std::size_t line, std::string reason);
    /// Counts an event for which there is no room.
    void CountFurther(std::size_t line);
    Calendar Take();

private:
    Calendar calendar_;
    std::size_t firstUntold_ = 0; ///< line
    std::size_t untold_ = 0;      ///< passed over without a reason of their own
    std::size_t firstFurther_ = 0;
    std::size_t further_ = 0;
};

} // namespace orrery::exchange
