#pragma once

#include "engines/builtin/xlsx/package/package.h"
#include "engines/builtin/xlsx/part_kinds.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orrery::xlsx {

/// What a part declares, or uses as its own: the name of a table or slicer, the id of an add-in's
/// binding, the name that holds data of a chart.
struct Declaration {
    PartKind kind = PartKind::Other; ///< of the part
    std::string name;
    std::uint32_t tableId = 0; ///< of tables only
    std::string cache{};       ///< of slicers only: the name of what they show
};

/// Those of a part of that kind. Throws Error as `Package` does if it cannot be read.
std::vector<Declaration> DeclarationsIn(const Package& package, const std::string& part,
                                        PartKind kind);

} // namespace orrery::xlsx
