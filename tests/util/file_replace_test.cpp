#include "util/file_replace.h"

#include "replace_failure.h"
#include "scratch_folder.h"
#include "util/error.h"

#include <gtest/gtest.h>

namespace orrery::util {
namespace {

namespace fs = std::filesystem;
using testing_support::BytesOf;
using testing_support::ScratchFolder;

TEST(ReplaceFile, CreatesAndReplaces)
{
    const ScratchFolder scratch;
    const fs::path file = scratch / "a.ini";
    ReplaceFile(file, "first and long");
    EXPECT_EQ(BytesOf(file), "first and long");
    ReplaceFile(file, "2");
    EXPECT_EQ(BytesOf(file), "2");
    EXPECT_EQ(scratch.Entries(), 1);
}

TEST(ReplaceFile, AcceptsTheLongestNames)
{
    const ScratchFolder scratch;
    const fs::path file = scratch / std::string(255, 'n');
    ReplaceFile(file, "x");
    EXPECT_EQ(BytesOf(file), "x");
}

TEST(ReplaceFile, RefusesAnythingButFiles)
{
    const ScratchFolder scratch;
    scratch.Write("file", "old");
    fs::create_directory(scratch / "folder");
    EXPECT_EQ(KindThrownBy(scratch / "folder"), ErrorKind::NotARegularFile);
    EXPECT_EQ(KindThrownBy(scratch / "missing/a"), ErrorKind::FileNotWritable);
    EXPECT_EQ(KindThrownBy(scratch / "file/a"), ErrorKind::FileNotWritable);
    EXPECT_EQ(scratch.Entries(), 2) << "nothing left behind";
}

TEST(CreateEmptyFile, RefusesAnExistingName)
{
    const ScratchFolder scratch;
    CreateEmptyFile(scratch / "new");
    EXPECT_EQ(BytesOf(scratch / "new"), "");
    const fs::path old = scratch.Write("old", "content");
    EXPECT_THROW(CreateEmptyFile(old), Error);
    EXPECT_EQ(BytesOf(old), "content");
}

TEST(FileReplacement, ReservesAnUnusedName)
{
    const ScratchFolder scratch;
    const FileReplacement first(scratch / "a");
    const FileReplacement second(scratch / "a");
    EXPECT_NE(first.TemporaryPath(), second.TemporaryPath());
    EXPECT_EQ(first.TemporaryPath().parent_path(), scratch.Path());
    EXPECT_EQ(BytesOf(first.TemporaryPath()), "");
}

TEST(FileReplacement, SkipsTakenNames)
{
    const ScratchFolder scratch;
    fs::path taken;
    {
        const FileReplacement probe(scratch / "a");
        taken = probe.TemporaryPath();
    }
    // The counter goes up by one each time, so the next name is taken.
    std::string next = taken.filename().string();
    const std::size_t dash = next.rfind('-') + 1;
    const auto number = std::stoull(next.substr(dash));
    next = next.substr(0, dash) + std::to_string(number + 1) + ".tmp";
    fs::create_directory(scratch / next);
    const FileReplacement replacement(scratch / "a");
    EXPECT_NE(replacement.TemporaryPath().filename(), next);
    EXPECT_TRUE(fs::is_directory(scratch / next));
}

TEST(FileReplacement, DoesNothingWithoutACommit)
{
    const ScratchFolder scratch;
    const fs::path file = scratch.Write("a", "old");
    {
        const FileReplacement replacement(file);
        std::ofstream(replacement.TemporaryPath()) << "half";
    }
    EXPECT_EQ(BytesOf(file), "old");
    EXPECT_EQ(scratch.Entries(), 1);
}

TEST(FileReplacement, TakesTheBytesOfAnotherFile)
{
    const ScratchFolder scratch;
    const fs::path source = scratch.Write("source", std::string("a\r\n\0b", 5));
    const fs::path file = scratch.Write("a", "old");
    {
        FileReplacement replacement(file);
        EXPECT_THROW(replacement.CopyFrom(scratch / "missing"), Error);
        replacement.CopyFrom(source);
        EXPECT_EQ(BytesOf(file), "old");
        replacement.Commit();
    }
    EXPECT_EQ(BytesOf(file), std::string("a\r\n\0b", 5));
}

TEST(FileReplacement, CommitsATemporaryFileThatAnotherWriterReplaced)
{
    const ScratchFolder scratch;
    const fs::path file = scratch.Write("a", "old");
    FileReplacement replacement(file);
    fs::rename(scratch.Write("b", "new"), replacement.TemporaryPath());
    replacement.Commit();
    EXPECT_EQ(BytesOf(file), "new");
    EXPECT_EQ(scratch.Entries(), 1);
}

TEST(FileReplacement, ReportsAMissingTemporaryFile)
{
    const ScratchFolder scratch;
    const fs::path file = scratch.Write("a", "old");
    FileReplacement replacement(file);
    fs::remove(replacement.TemporaryPath());
    EXPECT_THROW(replacement.Commit(), Error);
    EXPECT_EQ(BytesOf(file), "old");
}

} // namespace
} // namespace orrery::util
