#pragma once

#include "util/error.h"
#include "util/paths.h"

#include <filesystem>

namespace orrery::builtin {

/// Runs the action. An Error without a subject is thrown on with the path as its subject.
template <typename Action> auto WithErrorPath(const std::filesystem::path& path, Action action)
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
