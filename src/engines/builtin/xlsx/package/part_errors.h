#pragma once

#include "book/error.h"
#include "util/error.h"

namespace orrery::xlsx {

/// Does something with a part that no calendar touches: one that is damaged stays as it is.
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
