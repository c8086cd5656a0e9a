#include "engines/builtin/xls/look/drawing/freeform.h"

#include "xls/look/sheet_drawing_builder.h"

#include <gmock/gmock.h>

#include <cmath>

namespace orrery::xls {
namespace {

using Kind = book::FreeformStep::Kind;
using testing::ElementsAre;
using testing::SizeIs;

constexpr std::uint16_t kVertices = 0xC145;
constexpr std::uint16_t kSegments = 0xC146;

/// An array of elements of one size; 0xFFF0 stands for 4.
std::string ArrayOf(std::uint16_t count, std::uint16_t size, const std::string& elements)
{
    return test::Numbers({count, count, size}) + elements;
}

std::string PointsOf(const std::vector<std::uint16_t>& numbers)
{
    return ArrayOf(static_cast<std::uint16_t>(numbers.size() / 2), 0xFFF0, test::Numbers(numbers));
}

std::string SegmentsOf(const std::vector<std::uint16_t>& segments)
{
    return ArrayOf(static_cast<std::uint16_t>(segments.size()), 2, test::Numbers(segments));
}

/// The properties of a shape in the making.
class Properties {
public:
    Properties& Number(std::uint16_t key, std::uint32_t value)
    {
        AppendU16(table_, key);
        AppendU32(table_, value);
        ++count_;
        return *this;
    }
    Properties& Data(std::uint16_t key, const std::string& data)
    {
        data_ += data;
        return Number(key, static_cast<std::uint32_t>(data.size()));
    }
    std::shared_ptr<const book::Freeform> Read(std::size_t steps = 100)
    {
        bytes_ = table_ + data_;
        ShapeProperties properties;
        properties.Add(bytes_, count_);
        return ReadFreeform(properties, steps);
    }

private:
    std::string table_;
    std::string data_;
    std::string bytes_;
    std::size_t count_ = 0;
};

TEST(ReadFreeform, SegmentsTellHowPointsAreJoined)
{
    Properties shape;
    shape.Number(0x0140, 100).Number(0x0141, 0).Number(0x0142, 300).Number(0x0143, 100);
    shape.Data(kVertices, PointsOf({100, 0, 300, 50, 200, 0, 200, 100, 100, 100, 150, 25}));
    shape.Data(kSegments, SegmentsOf({0x4000, 0xAC00, 0x0001, 0xB300, 0x2001, 0x6001, 0x8000,
                                      0x4000, 0x8000}));
    const auto freeform = shape.Read();
    ASSERT_TRUE(freeform);
    ASSERT_THAT(freeform->parts, SizeIs(2));
    EXPECT_THAT(freeform->parts[0].steps,
                ElementsAre(book::FreeformStep{Kind::Move, {0, 0}, {}, {}},
                            book::FreeformStep{Kind::Line, {1, 0.5}, {}, {}},
                            book::FreeformStep{Kind::Curve, {0, 1}, {0.5, 0}, {0.5, 1}},
                            book::FreeformStep{Kind::Close, {}, {}, {}}));
    EXPECT_TRUE(freeform->parts[0].isFilled);
    EXPECT_TRUE(freeform->parts[0].isStroked);
    EXPECT_THAT(freeform->parts[1].steps,
                ElementsAre(book::FreeformStep{Kind::Move, {0.25, 0.25}, {}, {}}));
}

TEST(ReadFreeform, WithoutSegmentsAllAreJoinedAlike)
{
    Properties shape;
    shape.Data(kVertices, ArrayOf(2, 8, test::LongNumbers({0, 0, 21600, 10800})));
    const auto freeform = shape.Read();
    ASSERT_TRUE(freeform);
    EXPECT_THAT(freeform->parts.at(0).steps,
                ElementsAre(book::FreeformStep{Kind::Move, {0, 0}, {}, {}},
                            book::FreeformStep{Kind::Line, {1, 0.5}, {}, {}},
                            book::FreeformStep{Kind::Close, {}, {}, {}}));
}

TEST(ReadFreeform, CurvesMayBeOpen)
{
    Properties shape;
    shape.Number(0x0144, 2);
    shape.Data(kVertices, PointsOf({0, 0, 21600, 0, 0, 21600, 21600, 21600, 5, 5}));
    const auto freeform = shape.Read();
    ASSERT_TRUE(freeform);
    EXPECT_THAT(freeform->parts.at(0).steps,
                ElementsAre(book::FreeformStep{Kind::Move, {0, 0}, {}, {}},
                            book::FreeformStep{Kind::Curve, {1, 1}, {1, 0}, {0, 1}}));
}

TEST(ReadFreeform, PartsMayHaveNoFillOrNoLine)
{
    Properties shape;
    shape.Data(kVertices, PointsOf({0, 0, 1, 1, 2, 2}));
    shape.Data(kSegments, SegmentsOf({0xAA00, 0x4000, 0x8000, 0x4000, 0xAB00, 0x8000, 0x4000}));
    const auto freeform = shape.Read();
    ASSERT_TRUE(freeform);
    ASSERT_THAT(freeform->parts, SizeIs(3));
    EXPECT_FALSE(freeform->parts[0].isFilled);
    EXPECT_TRUE(freeform->parts[0].isStroked);
    EXPECT_FALSE(freeform->parts[1].isStroked);
    EXPECT_TRUE(freeform->parts[2].isFilled && freeform->parts[2].isStroked);
}

TEST(ReadFreeform, ArcsAreNotUnderstood)
{
    Properties shape;
    shape.Data(kVertices, PointsOf({0, 0, 1, 1, 2, 2}));
    shape.Data(kSegments, SegmentsOf({0x4000, 0xA703}));
    EXPECT_FALSE(shape.Read());
}

TEST(ReadFreeform, TooManyPointsAreNoOutline)
{
    Properties shape;
    shape.Data(kVertices, PointsOf({0, 0, 1, 1, 2, 2}));
    EXPECT_TRUE(shape.Read(4));
    EXPECT_FALSE(shape.Read(3));
}

TEST(ReadFreeform, NothingIsReadBehindTheLists)
{
    Properties shape;
    shape.Number(0x0142, 0); // no width
    shape.Data(kVertices, test::Numbers({500, 500, 8}) + test::LongNumbers({7, 7, 7, 7}));
    shape.Data(kSegments, test::Numbers({900, 900, 2, 0x1FFF, 0x3FFF, 0x4000, 0x6001, 0x6001}));
    const auto freeform = shape.Read();
    ASSERT_TRUE(freeform);
    for (const auto& step : freeform->parts.at(0).steps)
        EXPECT_TRUE(std::isfinite(step.point.x) && std::isfinite(step.point.y));
    EXPECT_EQ(freeform->parts[0].steps[0].kind, Kind::Move);
}

TEST(ReadFreeform, DamagedListsAreNoOutline)
{
    Properties shape;
    shape.Data(kVertices, test::Numbers({5, 5}));
    EXPECT_FALSE(shape.Read());
    shape.Data(kVertices, ArrayOf(2, 0, std::string(20, '\0')));
    EXPECT_FALSE(shape.Read());
    shape.Data(kVertices, ArrayOf(2, 3, std::string(20, '\0')));
    EXPECT_FALSE(shape.Read());
    shape.Data(kVertices, PointsOf({1, 1}));
    shape.Data(kSegments, ArrayOf(2, 1, std::string(20, '\0')));
    EXPECT_FALSE(shape.Read());
}

} // namespace
} // namespace orrery::xls
