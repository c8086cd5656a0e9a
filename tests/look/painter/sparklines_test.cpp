#include "look/painter/sparklines.h"
#include "recording_canvas.h"

#include <gmock/gmock.h>

#include <cmath>

namespace orrery::look {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr Box kSparklineCell{0, 0, 46, 26}; // 40 by 20 inside the margins of 3

class SparklinesTest : public testing::Test {
protected:
    SparklinesTest() { group_.color = {0, 0, 255}; }
    void Paint(std::vector<std::optional<double>> values)
    {
        PaintSparkline(group_, std::move(values), kSparklineCell, canvas_);
    }

    book::SparklineGroup group_;
    RecordingCanvas canvas_;
};

TEST_F(SparklinesTest, ALineGoesFromTheLowestToTheHighestValue)
{
    Paint({0, 10, 5});
    EXPECT_THAT(canvas_.lines, ElementsAre("path 3 23 23 3 43 13 with #0000ff 1"));
}

TEST_F(SparklinesTest, AxesMayHaveBounds)
{
    group_.minimum = 0;
    group_.maximum = 20;
    Paint({5, 10});
    EXPECT_THAT(canvas_.lines, ElementsAre("path 3 18 43 13 with #0000ff 1"));
}

TEST_F(SparklinesTest, MarksHaveTheirColours)
{
    group_.high = book::Color{255, 0, 0};
    group_.first = book::Color{0, 255, 0};
    Paint({0, 10, 5});
    EXPECT_THAT(canvas_.All("fill"),
                ElementsAre("fill 1.5 21.5 3 3 #00ff00", "fill 21.5 1.5 3 3 #ff0000"));
}

TEST_F(SparklinesTest, ColumnsBeginAtZero)
{
    group_.kind = book::SparklineKind::Column;
    group_.negative = book::Color{255, 0, 0};
    Paint({10, -10, 0, std::nullopt});
    EXPECT_THAT(canvas_.lines, ElementsAre("fill 4 3 8 10 #0000ff", "fill 14 13 8 10 #ff0000"));
}

TEST_F(SparklinesTest, WinsAndLossesAreEquallyHigh)
{
    group_.kind = book::SparklineKind::WinLoss;
    Paint({1, 100, -3, 0});
    EXPECT_THAT(canvas_.lines, ElementsAre("fill 4 3 8 10 #0000ff", "fill 14 3 8 10 #0000ff",
                                           "fill 24 13 8 10 #0000ff"));
}

TEST_F(SparklinesTest, MayRunFromRightToLeft)
{
    group_.isRightToLeft = true;
    Paint({0, 10});
    EXPECT_THAT(canvas_.lines, ElementsAre("path 43 23 3 3 with #0000ff 1"));
}

TEST_F(SparklinesTest, NothingComesOfNoValues)
{
    Paint({});
    EXPECT_THAT(canvas_.lines, IsEmpty());
    PaintSparkline(group_, {1, 2}, {0, 0, 4, 4}, canvas_);
    EXPECT_THAT(canvas_.lines, IsEmpty());
}

} // namespace
} // namespace orrery::look
