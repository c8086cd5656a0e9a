#include "app/own_holidays.h"

#include "util/error.h"
#include "util/file_read.h"
#include "util/paths.h"
#include "util/scratch_folder_test.h"

#include <filesystem>

namespace orrery::app {
namespace {

namespace fs = std::filesystem;

class OwnHolidaysTest : public testing_support::ScratchFolderTest {
protected:
    std::string Folder() const { return util::WithTrailingSeparator(At("holiday")); }
    std::string Collected() const
    {
        return util::ReadFile(util::ToPath(At("holiday/own/My days.txt"))).value_or("none");
    }
    static holidays::HolidayList Days()
    {
        holidays::HolidayList list;
        list.Append({830, 0, "Ben"});
        list.AppendExtra("> born 1984");
        list.Append({505, 2, "Last Monday"});
        list.Append({-2, 8, "Easter -2"});
        list.AppendExtra("20270514,DATE,Exam");
        return list;
    }
};

TEST_F(OwnHolidaysTest, OwnFilesComeFirst)
{
    Write("holiday/own/Club.txt", "");
    Write("holiday/Germany.txt", "");
    const auto files = FindAddableFiles(Folder());
    ASSERT_EQ(files.size(), 2U);
    EXPECT_EQ(files[0].name, "Club");
    EXPECT_EQ(files[0].path, At("holiday/own/Club.txt"));
    EXPECT_TRUE(files[0].isOwn);
    EXPECT_EQ(files[1].name, "Germany");
    EXPECT_EQ(files[1].path, At("holiday/Germany.txt"));
    EXPECT_FALSE(files[1].isOwn);
}

TEST_F(OwnHolidaysTest, WithoutTheFolderThereAreNoOwnFiles)
{
    fs::create_directory(folder_ / "holiday");
    EXPECT_TRUE(FindAddableFiles(Folder()).empty());
    EXPECT_FALSE(fs::exists(folder_ / "holiday/own"));
}

TEST_F(OwnHolidaysTest, DaysAreCollectedOnce)
{
    fs::create_directory(folder_ / "holiday");
    CollectDays(Folder(), Days());
    const std::string lines = "0830,DAY,Ben\r\n> born 1984\r\n0505,MONDAY,Last Monday\r\n"
                              "-2,EASTER,Easter -2\r\n20270514,DATE,Exam\r\n";
    EXPECT_EQ(Collected(), lines);
    CollectDays(Folder(), Days());
    EXPECT_EQ(Collected(), lines);
}

TEST_F(OwnHolidaysTest, WhatTheUserWroteStays)
{
    Write("holiday/own/My days.txt", "my days\n0505,MONDAY,Last Monday\n830,DAY,Ben");
    CollectDays(Folder(), Days());
    EXPECT_EQ(Collected(), "my days\r\n0505,MONDAY,Last Monday\r\n830,DAY,Ben\r\n0830,DAY,Ben\r\n"
                           "> born 1984\r\n-2,EASTER,Easter -2\r\n20270514,DATE,Exam\r\n");
}

TEST_F(OwnHolidaysTest, AFileThatCannotBeReadIsNotReplaced)
{
    fs::create_directories(folder_ / "holiday/own/My days.txt");
    EXPECT_THROW(CollectDays(Folder(), Days()), util::Error);
    EXPECT_TRUE(fs::is_directory(folder_ / "holiday/own/My days.txt"));
}

} // namespace
} // namespace orrery::app
