#include "scratch_folder.h"
#include "util/paths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orrery::util {
namespace {

TEST(ListFiles, SortsByTheBytesOfTheNames)
{
    const testing_support::ScratchFolder scratch;
    for (const char* name : {"us.txt", "de.txt", "JP.txt"})
        scratch.Write(name, "");
    EXPECT_THAT(ListFiles(FromPath(scratch.Path())),
                testing::ElementsAre("JP.txt", "de.txt", "us.txt"));
}

} // namespace
} // namespace orrery::util
