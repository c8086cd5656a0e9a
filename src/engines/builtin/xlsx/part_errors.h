#pragma once

#include "util/error.h"
#include "util/paths.h"

#include <filesystem>

namespace orrery::xlsx {

/// Does something with the parts of a workbook. An error that does not name the file then does.
template <typename Action> auto Naming(const std::filesystem::path& path, Action action)
{
    try {
        return action();
    }
    catch (const util::Error& error) {
        if (!error.Subject().empty())
            throw;
        throw util::Error(error.Kind(), util::FromPath(path), error.Cause());
    }
}

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
