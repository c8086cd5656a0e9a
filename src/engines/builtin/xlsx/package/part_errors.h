#pragma once

#include "util/error.h"

namespace orrery::xlsx {

/// Does something with a part that no calendar touches: one that is damaged stays as it is.
template <typename Action> void UnlessDamaged(Action action)
{
    try {
        action();
    }
    catch (const util::Error& error) {
        if (error.Kind() != util::ErrorKind::DamagedWorkbook &&
            error.Kind() != util::ErrorKind::TooDeeplyNested)
            throw;
    }
}

} // namespace orrery::xlsx
