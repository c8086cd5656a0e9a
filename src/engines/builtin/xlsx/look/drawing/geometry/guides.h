#pragma once

#include "engines/builtin/xml/tree.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace orrery::xlsx::drawing {

/// The named numbers of a shape's geometry. ECMA-376 20.1.9.11
class Guides {
public:
    static constexpr std::size_t kMaxGuides = 2000;

    /// Of a shape of this size, in EMU.
    Guides(double width, double height) : width_(width), height_(height) {}

    /// Computes the guides of a list in their order; those beyond the limit are left out.
    void Add(const xml::Element& list);
    /// A number, a guide, or a name that all shapes have ("hc", "wd2", "3cd4"). What is unknown, or
    /// has no finite value, is 0.
    double Value(std::string_view text) const;

private:
    double Compute(std::string_view formula) const;
    double ValueOfSize(std::string_view name) const;

    double width_;
    double height_;
    std::map<std::string, double, std::less<>> values_;
};

} // namespace orrery::xlsx::drawing
