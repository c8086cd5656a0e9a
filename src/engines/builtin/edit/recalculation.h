#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace orrery::edit {

/// What the formulas of a sheet may read.
struct SheetReads {
    bool everything = false;
    std::vector<std::size_t> sheets; ///< by position
};

/// Which sheets need recalculation, by position: those in `changed` and all that read one of them,
/// directly or through others. `readsOf` is called once for each unchanged sheet, and not at all if
/// nothing changed.
std::vector<bool> PropagateChanges(std::vector<bool> changed,
                                   const std::function<SheetReads(std::size_t sheet)>& readsOf);

} // namespace orrery::edit
