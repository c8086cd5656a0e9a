#include "engines/excel/call_watch.h"

#include "engines/excel/waiting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <vector>

namespace orrery::excel {
namespace {

using namespace std::chrono_literals;

/// Records what it is told, and can be given up then.
class RecordingPatience : public book::Patience {
public:
    void OnWaiting(std::chrono::milliseconds time) noexcept override
    {
        times.push_back(time);
        if (handlesMessages)
            WaitAndPaint(nullptr, 250ms); // in which more ticks come
        if (givesUp)
            GiveUp();
    }
    std::vector<std::chrono::milliseconds> times;
    bool handlesMessages = false;
    bool givesUp = false;
};

class CallWatchTest : public testing::Test {
protected:
    void Watch(bool canBeEnded = true)
    {
        watch_.emplace(patience_, [this, canBeEnded] {
            ++ends_;
            return canBeEnded;
        });
    }

    RecordingPatience patience_;
    std::optional<CallWatch> watch_;
    int ends_ = 0;
};

TEST_F(CallWatchTest, TellsHowLongACallGoesOn)
{
    Watch();
    {
        const CallWatch::Call call(&*watch_);
        WaitAndPaint(nullptr, 1s);
    }
    ASSERT_GE(patience_.times.size(), 3U);
    EXPECT_LE(patience_.times.size(), 12U);
    EXPECT_TRUE(std::is_sorted(patience_.times.begin(), patience_.times.end()));
    EXPECT_GE(patience_.times.back(), 400ms);
    EXPECT_LE(patience_.times.back(), 60s);
    EXPECT_EQ(ends_, 0);
}

TEST_F(CallWatchTest, TellsNothingBetweenCalls)
{
    Watch();
    WaitAndPaint(nullptr, 400ms);
    watch_->Tick();
    EXPECT_TRUE(patience_.times.empty());
    {
        const CallWatch::Call call(nullptr);
    } // a call that nobody watches
}

TEST_F(CallWatchTest, TellsAtOnceWhenAMessageArrives)
{
    Watch();
    const CallWatch::Call call(&*watch_);
    watch_->Tick();
    EXPECT_EQ(patience_.times.size(), 1U);
}

TEST_F(CallWatchTest, DoesNotTellInTheMiddleOfTelling)
{
    Watch();
    patience_.handlesMessages = true;
    const CallWatch::Call call(&*watch_);
    watch_->Tick();
    EXPECT_EQ(patience_.times.size(), 1U);
}

TEST_F(CallWatchTest, EndsTheInstanceWhenTheUserGivesUp)
{
    Watch();
    patience_.givesUp = true;
    const CallWatch::Call call(&*watch_);
    watch_->Tick();
    EXPECT_EQ(ends_, 1);
    EXPECT_TRUE(watch_->IsGivenUp());
    EXPECT_FALSE(watch_->IsLeft());
}

TEST_F(CallWatchTest, KnowsThatAnInstanceWasLeft)
{
    Watch(false);
    EXPECT_FALSE(watch_->IsGivenUp());
    EXPECT_FALSE(watch_->IsLeft());
    patience_.GiveUp(); // also between calls
    EXPECT_TRUE(watch_->IsGivenUp());
    EXPECT_TRUE(watch_->IsLeft());
}

TEST_F(CallWatchTest, AnInstanceThatWasLeftHasASecondForEachCall)
{
    Watch(false);
    std::optional<CallWatch::Call> call(&*watch_);
    WaitAndPaint(nullptr, 1100ms);
    EXPECT_FALSE(watch_->IsToBeCancelled()) << "nobody gave up";
    patience_.GiveUp();
    EXPECT_TRUE(watch_->IsToBeCancelled());
    call.emplace(&*watch_);
    EXPECT_FALSE(watch_->IsToBeCancelled()) << "a new call";
    WaitAndPaint(nullptr, 1100ms);
    EXPECT_TRUE(watch_->IsToBeCancelled());
}

TEST_F(CallWatchTest, CallsOfAnInstanceThatWasEndedFailByThemselves)
{
    Watch();
    const CallWatch::Call call(&*watch_);
    patience_.GiveUp();
    WaitAndPaint(nullptr, 1100ms);
    EXPECT_FALSE(watch_->IsToBeCancelled());
}

TEST_F(CallWatchTest, PostsMessagesOnceAnInstanceWasLeft)
{
    const auto isPosted = [] {
        MSG message = {};
        return PeekMessageW(&message, nullptr, WM_APP, WM_APP, PM_NOREMOVE) != FALSE;
    };
    Watch(false);
    const CallWatch::Call call(&*watch_);
    WaitAndPaint(nullptr, 300ms);
    EXPECT_FALSE(isPosted());
    patience_.GiveUp();
    WaitAndPaint(nullptr, 300ms);
    EXPECT_TRUE(isPosted()) << "without one, a call in progress is not cancelled";
}

TEST_F(CallWatchTest, IsNotEndedAfterItsLifetime)
{
    Watch();
    watch_.reset();
    EXPECT_FALSE(patience_.GiveUp());
    EXPECT_EQ(ends_, 0);
}

} // namespace
} // namespace orrery::excel
