#pragma once

#include "util/error.h"
#include "util/file_replace.h"
#include "util/paths.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <optional>

namespace orrery::util {

/// The kind of error that replacing the target throws. It must throw, with the target as subject.
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
