#include "engines/libreoffice/plugin/watchdog.h"

#include "processes.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace orrery::libreoffice {
namespace {

using namespace std::chrono_literals;

class WatchdogTest : public testing::Test {
protected:
    static Timeouts Short(std::chrono::milliseconds idle, std::chrono::milliseconds call)
    {
        Timeouts timeouts;
        timeouts.idle = idle;
        timeouts.call = call;
        return timeouts;
    }

    Watchdog Guarding(const Timeouts& timeouts)
    {
        return Watchdog(
            timeouts, [this] { return std::chrono::milliseconds(computed_ += step_); },
            [this] { ++ended_; });
    }

    bool Ends() const
    {
        return test::Eventually([this] { return ended_ > 0; });
    }

    std::atomic<int> step_ = 0; // the computing time that the instance gains between two looks
    std::atomic<int> computed_ = 0;
    std::atomic<int> ended_ = 0;
};

TEST_F(WatchdogTest, EndsAnInstanceThatDoesNotComputeDuringACall)
{
    auto watchdog = Guarding(Short(50ms, 1h));
    EXPECT_FALSE(watchdog.HasFired());
    const Watchdog::Call call(watchdog);
    EXPECT_TRUE(Ends());
    EXPECT_TRUE(watchdog.HasFired());
}

TEST_F(WatchdogTest, EndsItOnce)
{
    auto watchdog = Guarding(Short(20ms, 20ms));
    {
        const Watchdog::Call call(watchdog);
        EXPECT_TRUE(Ends());
    }
    const Watchdog::Call next(watchdog);
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(ended_, 1);
}

TEST_F(WatchdogTest, LeavesAnInstanceThatComputes)
{
    step_ = 10;
    auto watchdog = Guarding(Short(20ms, 1h));
    const Watchdog::Call call(watchdog);
    EXPECT_TRUE(test::Eventually([this] { return computed_ > 400; })) << "it is looked at";
    EXPECT_EQ(ended_, 0) << "after forty looks, four of which take the idle time";
}

TEST_F(WatchdogTest, EndsAnInstanceThatComputesForEver)
{
    step_ = 10;
    auto watchdog = Guarding(Short(20ms, 100ms));
    const Watchdog::Call call(watchdog);
    EXPECT_TRUE(Ends());
}

TEST_F(WatchdogTest, TimesEachCallSeparately)
{
    auto watchdog = Guarding(Short(1s, 1s)); // a single call ends sooner, on a busy machine too
    const auto end = std::chrono::steady_clock::now() + 2500ms;
    while (std::chrono::steady_clock::now() < end) {
        const Watchdog::Call call(watchdog);
        std::this_thread::sleep_for(1ms);
    }
    EXPECT_EQ(ended_, 0);
}

TEST_F(WatchdogTest, SleepsBetweenCalls)
{
    auto watchdog = Guarding(Short(20ms, 20ms));
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(ended_, 0);
}

TEST_F(WatchdogTest, CanBeDestroyedDuringACall)
{
    auto watchdog = Guarding(Short(1h, 1h));
    const Watchdog::Call call(watchdog);
    SUCCEED() << "its thread does not keep anybody waiting";
}

} // namespace
} // namespace orrery::libreoffice
