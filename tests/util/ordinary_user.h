#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

namespace orrery::testing_support {

/// Switches from root to an ordinary user until the scope ends, so that permissions matter.
class OrdinaryUser {
public:
    OrdinaryUser()
    {
        if (root_) {
            EXPECT_EQ(::seteuid(kNobody), 0);
        }
    }
    ~OrdinaryUser()
    {
        if (root_) {
            EXPECT_EQ(::seteuid(0), 0);
        }
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    static constexpr uid_t kNobody = 65534;
    bool root_ = ::geteuid() == 0;
};

} // namespace orrery::testing_support
