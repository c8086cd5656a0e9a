#pragma once

#include "util/error.h"

#include <gtest/gtest.h>
#include <optional>

namespace orrery::test {

/// The kind of error that the action throws; it must throw, and name its subject.
template <typename Action> std::optional<util::AnyErrorKind> KindThrownBy(Action action)
{
    try {
        action();
    }
    catch (const util::Error& error) {
        EXPECT_FALSE(error.Subject().empty());
        return error.Kind();
    }
    ADD_FAILURE() << "nothing was thrown";
    return std::nullopt;
}

} // namespace orrery::test
