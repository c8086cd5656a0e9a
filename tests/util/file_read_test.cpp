#include "util/file_read.h"

#include "scratch_folder.h"
#include "util/file_replace.h"
#include "util/paths.h"

#include <chrono>
#include <gtest/gtest.h>

namespace orrery::util {
namespace {

namespace fs = std::filesystem;
using testing_support::ScratchFolder;

/// The kind of an error, whose subject must be the path.
std::optional<AnyErrorKind> KindOf(const std::optional<Error>& error, const fs::path& path)
{
    if (!error)
        return std::nullopt;
    EXPECT_EQ(error->Subject(), FromPath(path));
    return error->Kind();
}

TEST(ReadFile, ReturnsTheBytes)
{
    const ScratchFolder scratch;
    std::string bytes(200000, 'x');
    bytes[70000] = '\0';
    EXPECT_TRUE(ReadFile(scratch.Write("a", bytes)) == bytes);
    EXPECT_EQ(ReadFile(scratch.Write("b", "")), "");
}

TEST(ReadFile, ReturnsNothingForAnythingButFiles)
{
    const ScratchFolder scratch;
    EXPECT_EQ(ReadFile(scratch / "missing"), std::nullopt);
    EXPECT_EQ(ReadFile(scratch.Path()), std::nullopt);
}

TEST(ReadTextFile, ReadsAtMostSixteenMebibytes)
{
    const ScratchFolder scratch;
    const fs::path file = scratch.Write("a", "");
    fs::resize_file(file, kMaxTextFileSize);
    const auto bytes = ReadTextFile(file);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->size(), 16777216U);
    EXPECT_EQ(FindTextReadError(file), std::nullopt);
    fs::resize_file(file, kMaxTextFileSize + 1);
    EXPECT_EQ(ReadTextFile(file), std::nullopt);
    EXPECT_EQ(KindOf(FindTextReadError(file), file), ErrorKind::TextFileTooLarge);
    EXPECT_EQ(FindReadError(file), std::nullopt) << "only texts have the limit";
}

TEST(InputFile, StopsAtTheLimitIfTheFileGrows)
{
    const ScratchFolder scratch;
    const fs::path path = scratch.Write("a", "short");
    InputFile file(path);
    fs::resize_file(path, 100001);
    EXPECT_THROW(file.ReadAll(100000), Error);
}

TEST(InputFile, DetectsChanges)
{
    const ScratchFolder folder;
    const auto path = folder.Write("a.txt", "first");
    const InputFile file(path);
    EXPECT_NO_THROW(file.CheckUnchanged());
    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) +
                                               std::chrono::seconds(2));
    EXPECT_THROW(file.CheckUnchanged(), Error);
}

TEST(InputFile, IgnoresAnotherFileThatTakesItsName)
{
    const ScratchFolder folder;
    const auto path = folder.Write("a.txt", "first");
    const InputFile file(path);
    ReplaceFile(path, "second");
    EXPECT_NO_THROW(file.CheckUnchanged());
}

TEST(FindReadError, DistinguishesMissingFilesFromFolders)
{
    const ScratchFolder scratch;
    const fs::path file = scratch.Write("a", "text");
    EXPECT_EQ(FindReadError(file), std::nullopt);
    const fs::path missing = scratch / "missing";
    EXPECT_EQ(KindOf(FindReadError(missing), missing), ErrorKind::FileNotFound);
    EXPECT_EQ(KindOf(FindReadError(scratch.Path()), scratch.Path()), ErrorKind::NotARegularFile);
    EXPECT_TRUE(IsMissing(missing));
    EXPECT_FALSE(IsMissing(file));
    EXPECT_FALSE(IsMissing(scratch.Path()));
}

TEST(FindExistingTextReadError, IgnoresMissingFiles)
{
    const ScratchFolder scratch;
    EXPECT_EQ(FindExistingTextReadError(scratch / "missing"), std::nullopt);
    EXPECT_EQ(FindExistingTextReadError(scratch.Write("a", "")), std::nullopt);
    EXPECT_EQ(KindOf(FindExistingTextReadError(scratch.Path()), scratch.Path()),
              ErrorKind::NotARegularFile);
}

TEST(FindListError, RefusesAnythingButFolders)
{
    const ScratchFolder scratch;
    EXPECT_EQ(FindListError(scratch.Path()), std::nullopt);
    const fs::path missing = scratch / "missing";
    EXPECT_EQ(KindOf(FindListError(missing), missing), ErrorKind::FileNotFound);
    const fs::path file = scratch.Write("file", "");
    EXPECT_EQ(KindOf(FindListError(file), file), ErrorKind::FileNotReadable);
    EXPECT_EQ(KindOf(FindListError(file / ""), file / ""), ErrorKind::FileNotReadable);
}

TEST(FileExists, IsTrueForReadableFilesOnly)
{
    const ScratchFolder scratch;
    const std::string file = FromPath(scratch.Write("a.txt", ""));
    EXPECT_TRUE(FileExists(file));
    EXPECT_TRUE(FileExists(file + '\\'));
    EXPECT_FALSE(FileExists(FromPath(scratch / "b.txt")));
    EXPECT_FALSE(FileExists(FromPath(scratch.Path()))) << "a folder";
    EXPECT_FALSE(FileExists(FromPath(scratch.Path()) + '\\')) << "a folder";
    EXPECT_FALSE(FileExists(""));
}

} // namespace
} // namespace orrery::util
