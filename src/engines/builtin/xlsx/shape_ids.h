#pragma once

#include "engines/builtin/common/text_patch.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string_view>

/// The numbers of the shapes in VML drawings ("_x0000_s1025"). They come in blocks of 1,024 that
/// belong to one drawing of the workbook, which lists them ("o:idmap").
namespace orrery::xlsx {

using builtin::TextPatch;

/// The last block whose numbers are valid. [MS-ODRAW] 2.2.47
inline constexpr std::uint32_t kLastShapeBlock = 65525;

/// The blocks of a copy, by those of its model.
using ShapeBlocks = std::map<std::uint32_t, std::uint32_t>;

/// The blocks that a VML drawing lists and those of its shapes.
std::set<std::uint32_t> FindShapeBlocks(std::string_view vml);

/// The number that a model's shape has in the copy; nothing if its block does not change.
std::optional<std::uint32_t> MoveShape(std::size_t shape, const ShapeBlocks& blocks);
/// The replacements in a VML drawing.
TextPatch MoveShapes(std::string_view vml, const ShapeBlocks& blocks);
/// The replacements in a drawing part, some of whose shapes stand for those of the VML drawing and
/// have their numbers.
TextPatch MoveShapesOfDrawing(std::string_view xml, std::string_view partName,
                              const ShapeBlocks& blocks);

} // namespace orrery::xlsx
