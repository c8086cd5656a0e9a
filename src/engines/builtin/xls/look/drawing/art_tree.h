#pragma once

#include "engines/builtin/xls/look/drawing/shape_properties.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// A rectangle in the coordinates of a group; the sides may be in the wrong order.
struct ArtBox {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
};

/// Where a shape is on the sheet: column, share of 1/1024, row, share of 1/256, for two corners.
/// [MS-XLS] 2.5.193
struct SheetAnchor {
    std::array<std::uint16_t, 8> fields{};
};

/// The pixels that a picture of a header or footer is large. [MS-XLS] 2.5.192
struct HeaderAnchor {
    std::int32_t width = 0;
    std::int32_t height = 0;
};

/// A shape, picture, control or group of a sheet. [MS-ODRAW] 2.2.14
struct ArtShape {
    static constexpr std::uint32_t kDeleted = 0x08;
    static constexpr std::uint32_t kFlipsHorizontally = 0x40;
    static constexpr std::uint32_t kFlipsVertically = 0x80;

    std::uint16_t type = 0; ///< [MS-ODRAW] 2.4.24
    std::uint32_t flags = 0;
    bool isGroup = false;
    ShapeProperties properties;
    std::optional<SheetAnchor> anchor;   ///< of one on the sheet
    std::optional<HeaderAnchor> size;    ///< of one in a header
    std::optional<ArtBox> place;         ///< of one in a group
    std::optional<ArtBox> space;         ///< of groups: the coordinates of what is in them
    std::optional<std::size_t> objectAt; ///< offset in the art at which its object follows
    std::optional<std::size_t> textAt;
    std::vector<std::size_t> children; ///< indexes of shapes
};

/// The shapes of a sheet in the order of painting.
struct ArtTree {
    static constexpr std::size_t kMaxShapes = 10000;
    static constexpr std::size_t kMaxDepth = 32; ///< of groups

    std::vector<ArtShape> shapes; ///< the first one, if there is any, stands for the sheet
    bool hasTooMany = false;
    bool isTooDeep = false;
    bool isWhole = true; ///< false: the art is damaged, and shapes may be missing
};

/// Reads the art of a sheet. Its bytes must outlive the tree.
ArtTree ReadArtTree(std::string_view art);

} // namespace orrery::xls
