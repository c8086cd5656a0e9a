#include "app/folders.h"
#include "util/scratch_folder_test.h"

#include <cstdlib>

namespace fs = std::filesystem;

namespace orrery::app {
namespace {

using SystemFoldersTest = testing_support::ScratchFolderTest;

/// Sets an environment variable and restores the old value at the end.
class ScopedVariable {
public:
    ScopedVariable(const char* name, const std::string& value) : name_(name)
    {
        if (const char* const old = std::getenv(name))
            old_ = old;
        setenv(name, value.c_str(), 1);
    }
    ~ScopedVariable() { setenv(name_, old_.c_str(), 1); }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    const char* name_;
    std::string old_;
};

TEST_F(SystemFoldersTest, TheSystemIsAskedForTheUsersFolders)
{
    const ScopedVariable home("HOME", At("me"));
    const ScopedVariable config("XDG_CONFIG_HOME", At("cfg"));
    const ScopedVariable data("XDG_DATA_HOME", "relative/counts/as/unset");
    const SystemFolders system = FindSystemFolders();
    EXPECT_EQ(system.config, At("cfg/"));
    EXPECT_EQ(system.data, At("me/.local/share/"));
    EXPECT_EQ(system.executable, fs::read_symlink("/proc/self/exe").parent_path().string() + "/");
    EXPECT_TRUE(system.installed.ends_with("/data/")); // the build tree's
}

TEST_F(SystemFoldersTest, AnUnsetHomeGivesNoFolder)
{
    const ScopedVariable home("HOME", "");
    const ScopedVariable config("XDG_CONFIG_HOME", "");
    const ScopedVariable data("XDG_DATA_HOME", "");
    EXPECT_EQ(FindSystemFolders().config, "");
    EXPECT_EQ(FindSystemFolders().data, "");
}

} // namespace
} // namespace orrery::app
