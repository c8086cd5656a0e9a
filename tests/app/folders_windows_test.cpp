#include "app/folders.h"
#include "util/file_read.h"
#include "util/scratch_folder_test.h"

#include <gtest/gtest.h>
#include <windows.h>

namespace orrery::app {
namespace {

std::string EnvironmentFolder(const char* variable)
{
    const char* const value = std::getenv(variable);
    return util::WithTrailingSeparator(value == nullptr ? "" : value);
}

TEST(SystemFoldersTest, TheSystemIsAskedForTheUsersFolders)
{
    const SystemFolders system = FindSystemFolders();
    EXPECT_EQ(system.config, EnvironmentFolder("APPDATA"));
    EXPECT_TRUE(std::filesystem::is_directory(util::ToPath(system.data))) << system.data;
    EXPECT_TRUE(system.data.starts_with(EnvironmentFolder("USERPROFILE"))) << system.data;
}

TEST(SystemFoldersTest, TheProgramKnowsItsOwnFolder)
{
    const SystemFolders system = FindSystemFolders();
    EXPECT_TRUE(util::FileExists(system.executable + "app_tests.exe")) << system.executable;
    EXPECT_EQ(system.help, system.executable);
    EXPECT_EQ(system.installed, "") << "nothing is installed beside a test";
}

} // namespace
} // namespace orrery::app
