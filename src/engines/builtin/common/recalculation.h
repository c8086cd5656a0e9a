#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace orrery::builtin {

/// Which sheets have to be computed anew, by position: those that were written and those that read
/// one of them, directly or through others. `reads` tells whether a sheet reads one of a set.
std::vector<bool> SpreadChanges(
    std::vector<bool> changed,
    const std::function<bool(std::size_t sheet, const std::vector<bool>& changed)>& reads);

} // namespace orrery::builtin
