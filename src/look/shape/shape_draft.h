#pragma once

#include "look/shape/outline.h"

#include <cstddef>
#include <initializer_list>
#include <vector>

namespace orrery::look {

/// A shape in the making: its box begins at the origin.
class ShapeDraft {
public:
    ShapeDraft(double boxWidth, double boxHeight, const std::vector<double>& adjustments);

    /// An adjustment in its own unit.
    double Raw(std::size_t index, double fallback) const;
    /// An adjustment in 1/100,000 as a share, moved into a range.
    double Share(std::size_t index, double fallback, double low, double high) const;
    /// One in 1/60,000 degree, as degrees [0:360].
    double Degrees(std::size_t index, double fallback) const;

    /// Begins a part; what is drawn goes into the last one.
    ShapeDraft& Part(bool isFilled = true, bool isStroked = true, double shade = 0);
    ShapeDraft& Move(double x, double y);
    ShapeDraft& Line(double x, double y);
    ShapeDraft& Curve(Point control1, Point control2, Point end);
    /// An arc of an ellipse, clockwise from the right by degrees as they are seen, with a line to
    /// its beginning.
    ShapeDraft& Arc(Point middle, double radiusX, double radiusY, double start, double sweep);
    ShapeDraft& Close();
    /// A part of its own.
    ShapeDraft& Polygon(std::initializer_list<Point> points);
    ShapeDraft& Ellipse(const Box& box);
    ShapeDraft& Text(double left, double top, double right, double bottom);

    void MirrorX();
    void MirrorY();
    /// Exchanges x and y, and width and height.
    void Transpose();

    const double width;
    const double height;
    const double side; ///< the shorter one
    Shape shape;

private:
    void Add(PathStep step);
    template <typename Change> void ChangePoints(Change change);

    const std::vector<double>& adjustments_;
};

} // namespace orrery::look
