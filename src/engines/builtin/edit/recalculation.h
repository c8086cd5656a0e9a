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

/// Which sheets have to be computed again, by position: those that were written and those that read
/// one of them, directly or through others. `readsOf` is asked once for every sheet that was not
/// written, and not at all where none was.
std::vector<bool> SpreadChanges(std::vector<bool> changed,
                                const std::function<SheetReads(std::size_t sheet)>& readsOf);

} // namespace orrery::edit
