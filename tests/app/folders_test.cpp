#include "app/folders.h"

#include "util/file_replace.h"
#include "util/paths.h"
#include "util/scratch_folder_test.h"

using namespace orrery;
namespace fs = std::filesystem;

namespace orrery::app {
namespace {

class FoldersTest : public testing_support::ScratchFolderTest {
protected:
    SystemFolders System() const
    {
        return {At("program/"), At("home/config/"), At("home/data/"), At("installed/")};
    }
};

TEST_F(FoldersTest, TheUsersOwnFoldersHoldSettingsAndData)
{
    const Locations locations = LocationsFor(System());
    EXPECT_EQ(locations.settingsFile, At("home/config/orrery/orrery.ini"));
    EXPECT_EQ(locations.folder, At("home/data/orrery/"));
    EXPECT_EQ(locations.tipsFile, At("home/data/orrery/tips.txt"));
}

TEST_F(FoldersTest, SettingsBesideTheExecutableMakeItPortable)
{
    Write("program/orrery.ini", "");
    const Locations locations = LocationsFor(System());
    EXPECT_EQ(locations.settingsFile, At("program/orrery.ini"));
    EXPECT_EQ(locations.folder, At("program/"));
    EXPECT_EQ(locations.tipsFile, At("program/tips.txt"));
}

TEST_F(FoldersTest, WhereProgramsKeepTheirFilesBesideThemAWritableFolderIsUsed)
{
    SystemFolders system = System();
    system.besideExecutable = true;
    EXPECT_EQ(LocationsFor(system).settingsFile, At("home/config/orrery/orrery.ini"))
        << "nothing can be written where there is no folder";
    fs::create_directories(At("program"));
    EXPECT_EQ(LocationsFor(system).settingsFile, At("program/orrery.ini"));
    EXPECT_TRUE(fs::is_empty(At("program"))) << "trying leaves nothing behind";
    system.besideExecutable = false;
    EXPECT_EQ(LocationsFor(system).settingsFile, At("home/config/orrery/orrery.ini"));
}

TEST_F(FoldersTest, WithoutAHomeEverythingIsBesideTheExecutable)
{
    SystemFolders system = System();
    system.config.clear();
    EXPECT_EQ(LocationsFor(system).folder, At("program/"));
    system = System();
    system.data.clear();
    EXPECT_EQ(LocationsFor(system).settingsFile, At("program/orrery.ini"));
}

TEST_F(FoldersTest, ANamedSettingsFileHasItsFoldersBesideIt)
{
    const Locations locations = LocationsBeside(At("else/./mine.ini"));
    EXPECT_EQ(locations.settingsFile, At("else/mine.ini"));
    EXPECT_EQ(locations.folder, At("else/"));
    const Locations relative = LocationsBeside("mine.ini");
    EXPECT_EQ(relative.folder, util::WithTrailingSeparator(util::FromPath(fs::current_path())));
}

TEST_F(FoldersTest, TheFirstStartCopiesWhatIsInstalled)
{
    Write("installed/orrery.ini", "[Environment]\n");
    Write("installed/tips.txt", "A tip\n");
    Write("installed/holiday/Here.txt", "0101, DAY, New Year\n");
    Write("installed/template/Desk.xlsx", "workbook");
    Write("installed/template/Desk.ini", "parameters");
    Write("home/data/orrery/template/Desk.ini", "my own");
    CopyInstalledFiles(LocationsFor(System()), System().installed);
    EXPECT_EQ(util::ReadFile(At("home/config/orrery/orrery.ini")), "[Environment]\n");
    EXPECT_EQ(util::ReadFile(At("home/data/orrery/tips.txt")), "A tip\n");
    EXPECT_EQ(util::ReadFile(At("home/data/orrery/holiday/Here.txt")), "0101, DAY, New Year\n");
    EXPECT_EQ(util::ReadFile(At("home/data/orrery/template/Desk.xlsx")), "workbook");
    EXPECT_EQ(util::ReadFile(At("home/data/orrery/template/Desk.ini")), "my own");
}

TEST_F(FoldersTest, LaterStartsCopyNothing)
{
    Write("installed/orrery.ini", "new");
    Write("installed/template/Desk.xlsx", "workbook");
    Write("home/config/orrery/orrery.ini", "old");
    CopyInstalledFiles(LocationsFor(System()), System().installed);
    EXPECT_EQ(util::ReadFile(At("home/config/orrery/orrery.ini")), "old");
    EXPECT_FALSE(fs::exists(At("home/data")));
}

TEST_F(FoldersTest, PlacesOfWindowsAloneAreNoSettings)
{
    Write("installed/orrery.ini", "[Environment]\n");
    Write("installed/template/Desk.xlsx", "workbook");
    Write("home/config/orrery/orrery.ini", "[windows]\r\nfrmMain=1 2 3 4\r\n");
    CopyInstalledFiles(LocationsFor(System()), System().installed);
    EXPECT_EQ(util::ReadFile(At("home/config/orrery/orrery.ini")),
              "[Environment]\n\r\n[windows]\r\nfrmMain=1 2 3 4\r\n");
    EXPECT_EQ(util::ReadFile(At("home/data/orrery/template/Desk.xlsx")), "workbook");
}

TEST_F(FoldersTest, AFirstStartThatWasCutShortIsMadeAgain)
{
    Write("installed/orrery.ini", "new");
    Write("installed/template/Desk.xlsx", "workbook");
    Write("home/data/orrery/template", "a file where the folder should be");
    CopyInstalledFiles(LocationsFor(System()), System().installed);
    EXPECT_FALSE(fs::exists(At("home/config/orrery/orrery.ini")));
    fs::remove(At("home/data/orrery/template"));
    CopyInstalledFiles(LocationsFor(System()), System().installed);
    EXPECT_EQ(util::ReadFile(At("home/config/orrery/orrery.ini")), "new");
    EXPECT_EQ(util::ReadFile(At("home/data/orrery/template/Desk.xlsx")), "workbook");
}

TEST_F(FoldersTest, UnreadableSettingsAreNotAFirstStart)
{
    Write("installed/orrery.ini", "new");
    Write("installed/template/Desk.xlsx", "workbook");
    fs::create_directories(At("home/config/orrery/orrery.ini"));
    CopyInstalledFiles(LocationsFor(System()), System().installed);
    EXPECT_FALSE(fs::exists(At("home/data")));
}

TEST_F(FoldersTest, AMissingSourceOrUnwritableTargetIsIgnored)
{
    CopyInstalledFiles(LocationsFor(System()), "");
    EXPECT_FALSE(fs::exists(At("home")));
    Write("installed/tips.txt", "A tip\n");
    Write("home", "a file where the folders should be");
    EXPECT_NO_THROW(CopyInstalledFiles(LocationsFor(System()), System().installed));
}

} // namespace
} // namespace orrery::app
