#pragma once

#include "book/look/drawing.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace orrery::book {

/// Which pages a header or footer is of.
enum class HeaderPages : std::uint8_t { Usual, First, Even };
enum class HeaderPart : std::uint8_t { Left, Middle, Right };

/// A place for one picture.
struct HeaderSlot {
    HeaderPages pages = HeaderPages::Usual;
    HeaderPart part = HeaderPart::Left;
    bool isFooter = false;
    friend bool operator==(const HeaderSlot&, const HeaderSlot&) = default;
};

/// The place that the name of a picture stands for: "LH" is at the left of the header, "CFFIRST" in
/// the middle of the first page's footer. Nothing for other names.
std::optional<HeaderSlot> ParseHeaderSlot(std::string_view name);

/// A picture of a header or footer, shown where its text has &G.
struct HeaderPicture {
    static constexpr std::size_t kMost = 18; ///< as many as there are places

    HeaderSlot slot;
    double width = 0; ///< points
    double height = 0;
    Drawing drawing; ///< a picture; its anchor does not count
};

} // namespace orrery::book
