#pragma once

#include "engines/builtin/xls/look/drawing/shape_properties.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace orrery::xls {

// Types of shapes with a role of their own. [MS-ODRAW] 2.4.24
inline constexpr std::uint16_t kFreeform = 0;
inline constexpr std::uint16_t kPictureFrame = 75;
inline constexpr std::uint16_t kHostControl = 201;
inline constexpr std::uint16_t kTextBox = 202;

/// The geometry of a type of shapes as ECMA-376 20.1.10.56 calls it: "rect" for types without one,
/// "custom" for freeforms.
std::string_view GeometryName(std::uint16_t type);

/// Whether the type is a line or a connector.
bool IsLineType(std::uint16_t type);
/// Whether the type is WordArt.
bool IsArtTextType(std::uint16_t type);

/// The adjustments of the geometry, where they mean the same in both formats; else empty, which is
/// the geometry's own.
std::vector<double> AdjustmentsOf(std::uint16_t type, const ShapeProperties& properties);

} // namespace orrery::xls
