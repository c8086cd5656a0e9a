#include "scratch_folder.h"
#include "util/paths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

namespace orrery::util {
namespace {

using testing::ElementsAre;
using testing_support::ScratchFolder;

TEST(ListFiles, KeepsTheSystemsOrder)
{
    const ScratchFolder scratch;
    for (const char* name : {"us.txt", "de.txt", "JP.txt"})
        scratch.Write(name, "");
    EXPECT_THAT(ListFiles(FromPath(scratch.Path())), ElementsAre("de.txt", "JP.txt", "us.txt"));
}

TEST(ListFiles, SkipsHiddenFiles)
{
    const ScratchFolder scratch;
    scratch.Write("seen.txt", "");
    SetFileAttributesW(scratch.Write("unseen.txt", "").c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_THAT(ListFiles(FromPath(scratch.Path())), ElementsAre("seen.txt"));
}

TEST(ToPath, PrefixesLongPaths)
{
    const std::string folder = R"(C:\)" + std::string(200, 'f');
    EXPECT_EQ(ToPath(folder + "/a/../b.ini").native().substr(0, 7), LR"(\\?\C:\)");
    EXPECT_EQ(FromPath(ToPath(folder + "/a/../b.ini")), folder + R"(\b.ini)");
    const std::string share = R"(\\server\share\)" + std::string(200, 'f');
    EXPECT_EQ(ToPath(share).native().substr(0, 21), LR"(\\?\UNC\server\share\)");
    EXPECT_EQ(FromPath(ToPath(share)), share);
    EXPECT_EQ(ToPath(R"(C:\short)").native(), LR"(C:\short)");
}

} // namespace
} // namespace orrery::util
