#include "engines/excel/busy.h"

#include <gtest/gtest.h>

namespace orrery::excel {
namespace {

using namespace std::chrono_literals;
using std::chrono::milliseconds;

TEST(BusyTest, RecognisesBusyAnswers)
{
    EXPECT_TRUE(IsBusy(RPC_E_CALL_REJECTED));
    EXPECT_TRUE(IsBusy(RPC_E_SERVERCALL_RETRYLATER));
    EXPECT_TRUE(IsBusy(static_cast<HRESULT>(0x800AC472)));
    EXPECT_FALSE(IsBusy(S_OK));
    EXPECT_FALSE(IsBusy(DISP_E_EXCEPTION));
    EXPECT_FALSE(IsBusy(RPC_E_DISCONNECTED));
}

TEST(BusyTest, PausesGrowUpToASecond)
{
    EXPECT_EQ(PauseAfter(0ms), 100ms);
    EXPECT_EQ(PauseAfter(1s), 250ms);
    EXPECT_EQ(PauseAfter(30s), 1000ms);
}

TEST(BusyTest, TheLastPauseEndsAtTheLimit)
{
    EXPECT_EQ(PauseAfter(59900ms), 100ms);
    EXPECT_EQ(PauseAfter(59999ms), 1ms);
    EXPECT_EQ(PauseAfter(60s), std::nullopt);
    EXPECT_EQ(PauseAfter(2h), std::nullopt);
}

} // namespace
} // namespace orrery::excel
