#pragma once

#include <cstdlib>

namespace orrery::fuzz {

/// A property that must be true for every input; a failure is a finding.
inline void Require(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace orrery::fuzz
