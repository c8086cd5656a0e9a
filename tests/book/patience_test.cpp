#include "book/patience.h"

#include <gtest/gtest.h>

#include <thread>

namespace orrery::book {
namespace {

class CountedEnd : public Endable {
public:
    void End() override { ++ends; }
    int ends = 0;
};

TEST(PatienceTest, GivingUpEndsTheApplicationsAtWork)
{
    Patience patience;
    CountedEnd first;
    CountedEnd second;
    CountedEnd gone;
    patience.Add(first);
    patience.Add(gone);
    patience.Add(second);
    patience.Remove(gone);
    EXPECT_FALSE(patience.IsOver());
    EXPECT_TRUE(patience.GiveUp());
    EXPECT_TRUE(patience.IsOver());
    EXPECT_EQ(first.ends, 1);
    EXPECT_EQ(second.ends, 1);
    EXPECT_EQ(gone.ends, 0);
    EXPECT_TRUE(patience.GiveUp()) << "the first time may have come too early";
    EXPECT_EQ(first.ends, 2);
}

TEST(PatienceTest, CannotBeGivenUpWhileNoApplicationIsAtWork)
{
    Patience patience;
    EXPECT_FALSE(patience.GiveUp());
    EXPECT_FALSE(patience.IsOver());
    CountedEnd application;
    patience.Add(application);
    patience.Remove(application);
    EXPECT_FALSE(patience.GiveUp());
    EXPECT_FALSE(patience.IsOver());
}

TEST(PatienceTest, CanBeGivenUpOnAnotherThread)
{
    Patience patience;
    CountedEnd application;
    patience.Add(application);
    std::thread([&] { patience.GiveUp(); }).join();
    EXPECT_TRUE(patience.IsOver());
    EXPECT_EQ(application.ends, 1);
}

} // namespace
} // namespace orrery::book
