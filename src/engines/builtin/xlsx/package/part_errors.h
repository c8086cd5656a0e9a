#pragma once

#include "book/error.h"
#include "util/error.h"

namespace orrery::xlsx {

/// Runs an action on a part that no calendar touches: a damaged one stays as it is.
template <typename Action> void UnlessDamaged(Action action)
{
    try {
        action();
    }
    catch (const util::Error& error) {
        if (error.Kind() != book::ErrorKind::DamagedWorkbook &&
            error.Kind() != book::ErrorKind::TooDeeplyNested)
            throw;
    }
}

} // namespace orrery::xlsx
