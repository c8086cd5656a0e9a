#include "util/temporary_file.h"

#include "scratch_folder.h"
#include "util/file_replace.h"
#include "util/paths.h"

#include <chrono>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace orrery::util {
namespace {

namespace fs = std::filesystem;
using testing_support::ScratchFolder;

constexpr const char* kNoProcess = "4294967292"; // never the number of a process
constexpr const char* kOtherSystem = "0badcafe";

std::string Name(const std::string& mark, const std::string& process)
{
    return ".orrery-" + mark + '-' + process + "-0.tmp";
}

void MakeOld(const fs::path& file)
{
    fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::hours(25));
}

TEST(RemoveAbandonedFiles, RemovesFilesOfEndedProcesses)
{
    const ScratchFolder scratch;
    scratch.Write(Name(SystemId(), kNoProcess), "half a workbook");
    RemoveAbandonedFiles(scratch.Path());
    EXPECT_EQ(scratch.Entries(), 0);
}

TEST(RemoveAbandonedFiles, KeepsFilesInUse)
{
    const ScratchFolder scratch;
    const TemporaryFile file(scratch / "target");
    RemoveAbandonedFiles(scratch.Path());
    EXPECT_TRUE(fs::exists(file.Path()));
}

TEST(RemoveAbandonedFiles, KeepsFilesOfOtherComputersForADay)
{
    const ScratchFolder scratch;
    const fs::path other = scratch.Write(Name(kOtherSystem, kNoProcess), "half");
    const fs::path former = scratch.Write(".orrery-4194000-0.tmp", "half");
    RemoveAbandonedFiles(scratch.Path());
    EXPECT_EQ(scratch.Entries(), 2);
    MakeOld(other);
    MakeOld(former);
    RemoveAbandonedFiles(scratch.Path());
    EXPECT_EQ(scratch.Entries(), 0);
}

TEST(RemoveAbandonedFiles, KeepsFilesWithSimilarNames)
{
    const ScratchFolder scratch;
    const std::string mark = SystemId();
    for (const std::string& name :
         {Name(mark, "x"), Name(mark, ""), Name(mark + '0', kNoProcess), Name("12AB5678", "1"),
          Name(mark, kNoProcess) + "2", 'a' + Name(mark, kNoProcess), std::string(".orrery-.tmp"),
          std::string(".orrery-1.tmp"), std::string(".orrery-1-2-3.tmp"),
          std::string(".orrery-tmp")})
        MakeOld(scratch.Write(name, "the user's"));
    fs::create_directory(scratch / Name(mark, kNoProcess));
    const auto before = scratch.Entries();
    RemoveAbandonedFiles(scratch.Path());
    EXPECT_EQ(scratch.Entries(), before);
}

TEST(RemoveAbandonedFiles, AcceptsAMissingFolder)
{
    const ScratchFolder scratch;
    RemoveAbandonedFiles(scratch / "missing");
    EXPECT_EQ(scratch.Entries(), 0);
}

TEST(FileReplacement, RemovesAbandonedFilesBesideTheTarget)
{
    const ScratchFolder scratch;
    scratch.Write(Name(SystemId(), kNoProcess), "half a workbook");
    ReplaceFile(scratch / "a", "new");
    EXPECT_THAT(scratch.Entries(), 1);
}

} // namespace
} // namespace orrery::util
