#include "engines/libreoffice/plugin/profile_folder.h"

#include "util/error.h"
#include "util/scratch_folder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <optional>
#include <unistd.h>

namespace orrery::libreoffice {
namespace {

class ProfileFolderTest : public testing::Test {
protected:
    testing_support::ScratchFolder folder_;
    std::filesystem::path profiles_ = folder_ / "a/b";
};

TEST_F(ProfileFolderTest, CreatesTheFirstWithItsSettings)
{
    const ProfileFolder profile(profiles_);
    EXPECT_EQ(profile.Path(), profiles_ / "1");
    const auto settings = testing_support::BytesOf(profiles_ / "1/user/registrymodifications.xcu");
    EXPECT_NE(settings.find("FirstRun"), std::string::npos);
}

TEST_F(ProfileFolderTest, TakesAnUnusedOne)
{
    const ProfileFolder first(profiles_);
    std::optional<ProfileFolder> second(profiles_);
    const ProfileFolder third(profiles_);
    EXPECT_EQ(second->Path(), profiles_ / "2");
    EXPECT_EQ(third.Path(), profiles_ / "3");
    second.reset();
    EXPECT_EQ(ProfileFolder(profiles_).Path(), profiles_ / "2");
}

TEST_F(ProfileFolderTest, IsTakenAsLongAsAProcessHoldsTheLock)
{
    int inherited = -1;
    {
        const ProfileFolder profile(profiles_);
        inherited = ::dup(profile.Lock());
    }
    EXPECT_EQ(ProfileFolder(profiles_).Path(), profiles_ / "2");
    ::close(inherited);
    EXPECT_EQ(ProfileFolder(profiles_).Path(), profiles_ / "1");
}

TEST_F(ProfileFolderTest, LockIsNotInheritedUnasked)
{
    const ProfileFolder profile(profiles_);
    EXPECT_EQ(::fcntl(profile.Lock(), F_GETFD), FD_CLOEXEC);
}

TEST_F(ProfileFolderTest, KeepsWhatLibreOfficeWroteThere)
{
    const auto settings = profiles_ / "1/user/registrymodifications.xcu";
    static_cast<void>(ProfileFolder(profiles_));
    std::ofstream(settings) << "as it was left";
    static_cast<void>(ProfileFolder(profiles_));
    EXPECT_EQ(testing_support::BytesOf(settings), "as it was left");
}

TEST_F(ProfileFolderTest, IsRebuiltAfterItWasCleared)
{
    {
        const ProfileFolder profile(profiles_);
        std::ofstream(profile.Path() / "user/damaged") << "half";
        profile.Clear();
        EXPECT_FALSE(std::filesystem::exists(profile.Path()));
    }
    const ProfileFolder profile(profiles_);
    EXPECT_EQ(profile.Path(), profiles_ / "1");
    EXPECT_FALSE(std::filesystem::exists(profile.Path() / "user/damaged"));
    EXPECT_TRUE(std::filesystem::exists(profile.Path() / "user/registrymodifications.xcu"));
}

TEST_F(ProfileFolderTest, RemovesOldTemporaryFiles)
{
    {
        const ProfileFolder profile(profiles_);
        EXPECT_TRUE(std::filesystem::is_empty(profile.TemporaryPath()));
        std::ofstream(profile.TemporaryPath() / "left") << "behind";
    }
    EXPECT_TRUE(std::filesystem::is_empty(ProfileFolder(profiles_).TemporaryPath()));
}

TEST_F(ProfileFolderTest, NamesTheFolderThatCannotBeCreated)
{
    folder_.Write("a", "a file");
    try {
        const ProfileFolder profile(profiles_);
        FAIL() << "nothing was thrown";
    }
    catch (const Error& error) {
        EXPECT_EQ(error.Kind(), util::ErrorKind::FolderNotCreated);
        EXPECT_EQ(error.Subject(), profiles_.string());
    }
}

} // namespace
} // namespace orrery::libreoffice
