#pragma once

#include "util/error.h"
#include "util/file_replace.h"
#include "util/paths.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <optional>

namespace orrery::util {

/// What replacing the target throws; it has to throw, and to name the target.
inline std::optional<AnyErrorKind> KindThrownBy(const std::filesystem::path& target)
{
    try {
        ReplaceFile(target, "new");
    }
    catch (const Error& error) {
        EXPECT_EQ(error.Subject(), FromPath(target));
        return error.Kind();
    }
    ADD_FAILURE() << "nothing thrown for " << target;
    return std::nullopt;
}

} // namespace orrery::util
