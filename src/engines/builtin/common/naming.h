#pragma once

#include "util/error.h"
#include "util/paths.h"

#include <filesystem>

namespace orrery::builtin {

/// Does something with a workbook's content. An Error without a subject is thrown on with the path.
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

} // namespace orrery::builtin
