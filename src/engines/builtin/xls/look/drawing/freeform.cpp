#include "engines/builtin/xls/look/drawing/freeform.h"

#include "engines/builtin/xls/compound/bytes.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace orrery::xls {
namespace {

using book::FreeformStep;
using book::SharePoint;

/// The elements of a property that is a list. [MS-ODRAW] 2.2.51 (IMsoArray)
class ArtArray {
public:
    explicit ArtArray(std::string_view data)
    {
        constexpr std::size_t kHeader = 6;
        constexpr std::uint16_t kShortened = 0xFFF0; // elements of 8 bytes in 4
        if (data.size() < kHeader)
            return;
        const std::uint16_t size = ReadU16(data, 4);
        elementSize_ = size == kShortened ? 4 : size;
        if (elementSize_ == 0)
            return;
        elements_ = data.substr(kHeader);
        count_ = std::min<std::size_t>(ReadU16(data, 0), elements_.size() / elementSize_);
    }

    std::size_t Count() const { return count_; }
    std::size_t ElementSize() const { return elementSize_; }
    std::string_view operator[](std::size_t index) const
    {
        return elements_.substr(index * elementSize_, elementSize_);
    }

private:
    std::string_view elements_;
    std::size_t elementSize_ = 0;
    std::size_t count_ = 0;
};

/// The points of an outline, as shares of the shape.
class Vertices {
public:
    explicit Vertices(const ShapeProperties& properties)
        : points_(properties.Data(ShapeProperty::Vertices)),
          left_(properties.Signed(ShapeProperty::GeometryLeft, 0)),
          top_(properties.Signed(ShapeProperty::GeometryTop, 0)),
          width_(properties.Signed(ShapeProperty::GeometryRight, kUsualSize) - left_),
          height_(properties.Signed(ShapeProperty::GeometryBottom, kUsualSize) - top_)
    {
    }

    bool AreUsable() const
    {
        return points_.Count() > 0 && (points_.ElementSize() == 4 || points_.ElementSize() == 8);
    }
    std::size_t Left() const { return points_.Count() - next_; }
    SharePoint Take()
    {
        const std::string_view point = points_[next_++];
        const bool isShort = points_.ElementSize() == 4;
        const auto number = [&](std::size_t index) -> double {
            return isShort ? static_cast<std::int16_t>(ReadU16(point, 2 * index))
                           : static_cast<std::int32_t>(ReadU32(point, 4 * index));
        };
        return {Share(number(0) - left_, width_), Share(number(1) - top_, height_)};
    }

private:
    static constexpr std::int32_t kUsualSize = 21600;

    static double Share(double length, double whole) { return whole != 0 ? length / whole : 0; }

    ArtArray points_;
    std::size_t next_ = 0;
    double left_;
    double top_;
    double width_;
    double height_;
};

/// Joins points to an outline.
class OutlineMaker {
public:
    OutlineMaker(const ShapeProperties& properties, std::size_t& steps)
        : vertices_(properties), steps_(steps),
          shapePath_(properties.Value(ShapeProperty::ShapePath, kLinesClosed)),
          segments_(properties.Data(ShapeProperty::Segments))
    {
    }

    std::shared_ptr<const book::Freeform> Make()
    {
        if (!vertices_.AreUsable())
            return nullptr;
        const bool isWhole = segments_.Count() > 0 ? JoinBySegments() : JoinAlike();
        if (!isWhole)
            return nullptr;
        End();
        return std::make_shared<book::Freeform>(std::move(freeform_));
    }

private:
    // [MS-ODRAW] 2.4.9 (MSOSHAPEPATH)
    static constexpr std::uint32_t kLinesClosed = 1;
    static constexpr std::uint32_t kCurves = 2;
    static constexpr std::uint32_t kCurvesClosed = 3;
    // [MS-ODRAW] 2.4.30 (MSOPATHTYPE)
    static constexpr unsigned kLineTo = 0;
    static constexpr unsigned kCurveTo = 1;
    static constexpr unsigned kMoveTo = 2;
    static constexpr unsigned kClose = 3;
    static constexpr unsigned kEnd = 4;
    // [MS-ODRAW] 2.4.31 (MSOPATHESCAPE)
    static constexpr unsigned kFirstArc = 1;
    static constexpr unsigned kLastArc = 9;
    static constexpr unsigned kNoFill = 10;
    static constexpr unsigned kNoLine = 11;

    bool Add(FreeformStep step)
    {
        if (steps_ == 0)
            return false;
        --steps_;
        if (part_.steps.empty()) // an outline begins somewhere
            step = {FreeformStep::Kind::Move, step.point, {}, {}};
        part_.steps.push_back(step);
        return true;
    }

    bool Line() { return Add({FreeformStep::Kind::Line, vertices_.Take(), {}, {}}); }
    bool Move() { return Add({FreeformStep::Kind::Move, vertices_.Take(), {}, {}}); }
    bool Close() { return Add({FreeformStep::Kind::Close, {}, {}, {}}); }
    bool Curve()
    {
        const SharePoint control1 = vertices_.Take();
        const SharePoint control2 = vertices_.Take();
        return Add({FreeformStep::Kind::Curve, vertices_.Take(), control1, control2});
    }

    /// All points are joined in one way.
    bool JoinAlike()
    {
        const bool isCurved = shapePath_ == kCurves || shapePath_ == kCurvesClosed;
        const std::size_t each = isCurved ? 3 : 1;
        bool isWhole = Move();
        while (isWhole && vertices_.Left() >= each)
            isWhole = isCurved ? Curve() : Line();
        const bool isClosed = shapePath_ == kLinesClosed || shapePath_ == kCurvesClosed;
        return isWhole && (!isClosed || Close());
    }

    bool JoinBySegments()
    {
        if (segments_.ElementSize() != 2)
            return false;
        for (std::size_t i = 0; i < segments_.Count(); ++i) {
            if (!Join(ReadU16(segments_[i], 0)))
                return false;
        }
        return true;
    }

    /// One MSOPATHINFO. [MS-ODRAW] 2.2.53
    bool Join(std::uint16_t info)
    {
        const unsigned type = info >> 13U;
        const std::size_t count = info & 0x1FFFU;
        switch (type) {
        case kLineTo:
            return Repeat(count, 1, &OutlineMaker::Line);
        case kCurveTo:
            return Repeat(count, 3, &OutlineMaker::Curve);
        case kMoveTo:
            return Repeat(1, 1, &OutlineMaker::Move);
        case kClose:
            return Close();
        case kEnd:
            End();
            return true;
        default:
            return Escape(info >> 8U & 0x1FU);
        }
    }

    bool Repeat(std::size_t count, std::size_t points, bool (OutlineMaker::*step)())
    {
        for (std::size_t i = 0; i < count && vertices_.Left() >= points; ++i) {
            if (!(this->*step)())
                return false;
        }
        return true;
    }

    bool Escape(unsigned escape)
    {
        part_.isFilled = part_.isFilled && escape != kNoFill;
        part_.isStroked = part_.isStroked && escape != kNoLine;
        return escape < kFirstArc || escape > kLastArc;
    }

    void End()
    {
        if (!part_.steps.empty())
            freeform_.parts.push_back(std::move(part_));
        part_ = {};
    }

    Vertices vertices_;
    std::size_t& steps_;
    std::uint32_t shapePath_;
    ArtArray segments_;
    book::FreeformPart part_;
    book::Freeform freeform_;
};

} // namespace

std::shared_ptr<const book::Freeform> ReadFreeform(const ShapeProperties& properties,
                                                   std::size_t& steps)
{
    return OutlineMaker(properties, steps).Make();
}

} // namespace orrery::xls
