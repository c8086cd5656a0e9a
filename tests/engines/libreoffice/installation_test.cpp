#include "engines/libreoffice/installation.h"

#include "util/scratch_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace orrery::libreoffice {
namespace {

class FindInstallationTest : public testing::Test {
protected:
    void TearDown() override
    {
        if (path_)
            ::setenv("PATH", path_->c_str(), 1);
    }

    /// Creates the program that the search path finds.
    void Search(const std::filesystem::path& folder)
    {
        path_ = std::getenv("PATH");
        ::setenv("PATH", ("/nowhere::" + folder.string()).c_str(), 1);
    }

    std::filesystem::path Make(const std::string& name, std::initializer_list<const char*> files)
    {
        const auto folder = folder_ / name;
        std::filesystem::create_directories(folder);
        for (const char* const file : files)
            folder_.Write(name + "/" + file, "");
        return folder;
    }

    testing_support::ScratchFolder folder_;
    std::optional<std::string> path_;
};

constexpr auto kWhole = {"soffice", "soffice.bin", "types.rdb", "libuno_cppuhelpergcc3.so.3"};

TEST_F(FindInstallationTest, FollowsTheLinkOnTheSearchPath)
{
    const auto program = Make("office/program", kWhole);
    const auto bin = Make("bin", {});
    std::filesystem::create_symlink("../office/program/soffice", bin / "libreoffice");
    Search(bin);
    EXPECT_EQ(FindInstallation(), program);
}

TEST_F(FindInstallationTest, TakesAFolderOfProgramsOnTheSearchPath)
{
    const auto program = Make("program", kWhole);
    Search(program);
    EXPECT_EQ(FindInstallation(), program);
}

TEST_F(FindInstallationTest, IgnoresWhatCannotBeDriven)
{
    Search(Make("container", {"soffice", "libreoffice"}));
    const auto found = FindInstallation();
    ASSERT_TRUE(found) << "the one of these tests";
    EXPECT_FALSE(found->string().starts_with(folder_.Path().string()));
    EXPECT_TRUE(std::filesystem::exists(*found / "types.rdb"));
}

} // namespace
} // namespace orrery::libreoffice
