#include "engines/builtin/xlsx/look/drawing/geometry/custom_geometry.h"

#include "engines/builtin/xlsx/look/drawing/geometry/guides.h"
#include "engines/builtin/xlsx/look/drawing/values/attribute_values.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <string_view>

namespace orrery::xlsx::drawing {
namespace {

using book::FreeformStep;
using book::SharePoint;

constexpr double kDegree = 60'000;

/// How much lighter or darker a path is filled: ECMA-376 20.1.10.37.
double ShadeOf(std::string_view fill)
{
    if (fill == "lighten")
        return 0.4;
    if (fill == "lightenLess")
        return 0.2;
    if (fill == "darken")
        return -0.4;
    return fill == "darkenLess" ? -0.2 : 0;
}

double Part(double length, double whole)
{
    return whole > 0 ? length / whole : 0;
}

/// The parameter of an ellipse's point that is seen at an angle.
double EllipseParameter(double angle, double radiusX, double radiusY)
{
    const double parameter = std::atan2(radiusX * std::sin(angle), radiusY * std::cos(angle));
    const double turns = std::round((angle - parameter) / (2 * std::numbers::pi));
    return parameter + 2 * std::numbers::pi * turns;
}

/// Reads one path: ECMA-376 20.1.9.15.
class PathReader {
public:
    PathReader(const xml::Element& path, const Guides& guides, double width, double height,
               std::size_t& steps)
        : path_(path), guides_(guides), steps_(steps)
    {
        const double ownWidth = NumberOf(path, "w").value_or(0);
        const double ownHeight = NumberOf(path, "h").value_or(0);
        width_ = ownWidth > 0 ? ownWidth : width;
        height_ = ownHeight > 0 ? ownHeight : height;
    }

    /// False if there are too many steps.
    bool Read(book::FreeformPart& part)
    {
        const std::string fill = path_.Attribute("fill");
        part.isFilled = fill != "none";
        part.shade = ShadeOf(fill);
        part.isStroked = FlagOf(path_, "stroke", true);
        for (const xml::Element command : path_) {
            if (!ReadCommand(command, part.steps))
                return false;
        }
        return true;
    }

private:
    using Steps = std::vector<FreeformStep>;

    bool ReadCommand(const xml::Element& command, Steps& steps)
    {
        constexpr std::size_t kMostOfOne = 6; // an arc
        if (steps_ < kMostOfOne)
            return false;
        const std::size_t before = steps.size();
        const std::string_view name = command.Name();
        if (name == "moveTo")
            Move(steps, PointOf(command.First()));
        else if (name == "lnTo")
            AddLine(steps, PointOf(command.First()));
        else if (name == "cubicBezTo")
            AddCurve(steps, PointOf(command.First()), PointOf(command.First().Next()),
                     PointOf(command.First().Next().Next()));
        else if (name == "quadBezTo")
            AddQuadratic(steps, PointOf(command.First()), PointOf(command.First().Next()));
        else if (name == "arcTo")
            AddArc(steps, command);
        else if (name == "close")
            Close(steps);
        steps_ -= steps.size() - before;
        return true;
    }

    SharePoint PointOf(const xml::Element& point) const
    {
        return {guides_.Value(point.Attribute("x")), guides_.Value(point.Attribute("y"))};
    }

    SharePoint ToShares(SharePoint point) const
    {
        return {Part(point.x, width_), Part(point.y, height_)};
    }

    void Move(Steps& steps, SharePoint to)
    {
        isOpen_ = true;
        begin_ = current_ = to;
        steps.push_back({FreeformStep::Kind::Move, ToShares(to), {}, {}});
    }

    /// What has no beginning of its own begins where the last line ended.
    void BeginIfClosed(Steps& steps)
    {
        if (!isOpen_)
            Move(steps, current_);
    }

    void AddLine(Steps& steps, SharePoint to)
    {
        BeginIfClosed(steps);
        current_ = to;
        steps.push_back({FreeformStep::Kind::Line, ToShares(to), {}, {}});
    }

    void AddCurve(Steps& steps, SharePoint control1, SharePoint control2, SharePoint to)
    {
        BeginIfClosed(steps);
        current_ = to;
        steps.push_back(
            {FreeformStep::Kind::Curve, ToShares(to), ToShares(control1), ToShares(control2)});
    }

    void AddQuadratic(Steps& steps, SharePoint control, SharePoint to)
    {
        const auto towards = [&control](SharePoint from) {
            return SharePoint{from.x + (control.x - from.x) * 2 / 3,
                              from.y + (control.y - from.y) * 2 / 3};
        };
        AddCurve(steps, towards(current_), towards(to), to);
    }

    /// An arc of an ellipse on which the current point lies. ECMA-376 20.1.9.4
    void AddArc(Steps& steps, const xml::Element& arc)
    {
        const double radiusX = guides_.Value(arc.Attribute("wR"));
        const double radiusY = guides_.Value(arc.Attribute("hR"));
        const double start =
            Radians(std::fmod(guides_.Value(arc.Attribute("stAng")), 360 * kDegree));
        const double sweep = Radians(
            std::clamp(guides_.Value(arc.Attribute("swAng")), -360 * kDegree, 360 * kDegree));
        const double first = EllipseParameter(start, radiusX, radiusY);
        const double last = EllipseParameter(start + sweep, radiusX, radiusY);
        const SharePoint middle{current_.x - radiusX * std::cos(first),
                                current_.y - radiusY * std::sin(first)};
        const int pieces = std::clamp(
            static_cast<int>(std::ceil(std::abs(sweep) * 2 / std::numbers::pi - 1e-9)), 1, 4);
        const double step = (last - first) / pieces;
        const double handle = 4.0 / 3 * std::tan(step / 4);
        const auto at = [&](double angle, double along) {
            return SharePoint{middle.x + radiusX * (std::cos(angle) - along * std::sin(angle)),
                              middle.y + radiusY * (std::sin(angle) + along * std::cos(angle))};
        };
        for (int i = 0; i < pieces; ++i) {
            const double from = first + i * step;
            AddCurve(steps, at(from, handle), at(from + step, -handle), at(from + step, 0));
        }
    }

    void Close(Steps& steps)
    {
        if (!isOpen_)
            return;
        steps.push_back({FreeformStep::Kind::Close, {}, {}, {}});
        current_ = begin_;
        isOpen_ = false;
    }

    static double Radians(double angle) { return angle / kDegree * std::numbers::pi / 180; }

    const xml::Element& path_;
    const Guides& guides_;
    std::size_t& steps_;
    double width_ = 0; // of the path's coordinates
    double height_ = 0;
    SharePoint current_; // in the path's coordinates
    SharePoint begin_;
    bool isOpen_ = false;
};

book::ShareBox TextBoxOf(const xml::Element& rectangle, const Guides& guides, double width,
                         double height)
{
    if (!rectangle)
        return {};
    const auto side = [&](const char* name, double whole) {
        return std::clamp(Part(guides.Value(rectangle.Attribute(name)), whole), -10.0, 10.0);
    };
    const book::ShareBox box{side("l", width), side("t", height), side("r", width),
                             side("b", height)};
    return box.right > box.left && box.bottom > box.top ? box : book::ShareBox();
}

} // namespace

std::shared_ptr<const book::Freeform> ReadCustomGeometry(const xml::Element& geometry, double width,
                                                         double height, std::size_t& steps)
{
    Guides guides(width, height);
    guides.Add(geometry.Child("avLst"));
    guides.Add(geometry.Child("gdLst"));
    auto freeform = std::make_shared<book::Freeform>();
    for (const xml::Element path : geometry.Child("pathLst")) {
        if (path.Name() != "path")
            continue;
        book::FreeformPart part;
        if (!PathReader(path, guides, width, height, steps).Read(part))
            return nullptr;
        freeform->parts.push_back(std::move(part));
    }
    freeform->text = TextBoxOf(geometry.Child("rect"), guides, width, height);
    return freeform;
}

} // namespace orrery::xlsx::drawing
