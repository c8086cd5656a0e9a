#pragma once

#include <chrono>
#include <cstdint>

namespace orrery::exchange {

/// How much may be spent on the days of all events of a file that come again: enough for any
/// calendar that somebody uses, and an end for those that are made to have none.
class Effort {
public:
    /// Spends a step; false when there is none left.
    bool Spend()
    {
        if (++steps_ % kStepsBetweenLooks == 0)
            isSpent_ = isSpent_ || std::chrono::steady_clock::now() - begin_ > kLongest;
        return !isSpent_ && steps_ < kMostSteps;
    }
    bool IsSpent() const { return isSpent_; }
    /// Looks at the clock, after a step that may have been long.
    void Look() { isSpent_ = isSpent_ || std::chrono::steady_clock::now() - begin_ > kLongest; }

private:
    static constexpr std::int64_t kStepsBetweenLooks = 1024;
    static constexpr std::int64_t kMostSteps = 100'000'000;
    static constexpr std::chrono::seconds kLongest{4};

    std::int64_t steps_ = 0;
    bool isSpent_ = false;
    std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
};

} // namespace orrery::exchange
