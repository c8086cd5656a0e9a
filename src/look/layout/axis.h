#pragma once

#include <cstdint>
#include <vector>

namespace orrery::look {

/// Columns or rows of one size, which follow each other.
struct AxisSpan {
    std::int32_t first = 1;
    std::int32_t last = 1;
    double size = 0;
};

/// Where all columns or rows of a sheet begin, from its first one; most have the default size.
class Axis {
public:
    /// Spans rise without overlaps; what is not so in a damaged file is left out.
    Axis(double defaultSize, const std::vector<AxisSpan>& spans);

    /// Where a column or row begins; that of the last one plus one is where it ends.
    double Position(std::int32_t index) const;
    double Size(std::int32_t index) const;
    double Length(std::int32_t first, std::int32_t last) const
    {
        return Position(last + 1) - Position(first);
    }

private:
    struct PlacedSpan {
        AxisSpan span;
        double position = 0; ///< of its first
    };
    /// The last span that begins at or before the index, or nullptr.
    const PlacedSpan* SpanBefore(std::int32_t index) const;

    double defaultSize_;
    std::vector<PlacedSpan> spans_;
};

} // namespace orrery::look
