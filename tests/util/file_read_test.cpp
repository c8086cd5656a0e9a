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

/// The kind of an obstacle, which has to name the path.
std::optional<AnyErrorKind> KindOf(const std::optional<Error>& obstacle, const fs::path& path)
{
    if (!obstacle)
        return std::nullopt;
    EXPECT_EQ(obstacle->Subject(), FromPath(path));
    return obstacle->Kind();
}

TEST(ReadFile, GivesTheBytes)
{
    const ScratchFolder scratch;
    std::string bytes(200000, 'x');
    bytes[70000] = '\0';
    EXPECT_TRUE(ReadFile(scratch.Write("a", bytes)) == bytes);
    EXPECT_EQ(ReadFile(scratch.Write("b", "")), "");
}

TEST(ReadFile, GivesNothingForWhatIsNoFile)
{
    const ScratchFolder scratch;
    EXPECT_EQ(ReadFile(scratch / "missing"), std::nullopt);
    EXPECT_EQ(ReadFile(scratch.Path()), std::nullopt);
}

TEST(ReadTextFile, TakesSixteenMebibytesAndNoMore)
{
    const ScratchFolder scratch;
    const fs::path file = scratch.Write("a", "");
    fs::resize_file(file, kMostText);
    const auto bytes = ReadTextFile(file);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->size(), 16777216U);
    EXPECT_EQ(TextObstacle(file), std::nullopt);
    fs::resize_file(file, kMostText + 1);
    EXPECT_EQ(ReadTextFile(file), std::nullopt);
    EXPECT_EQ(KindOf(TextObstacle(file), file), ErrorKind::TextFileTooLarge);
    EXPECT_EQ(ReadingObstacle(file), std::nullopt) << "only texts have the limit";
}

TEST(InputFile, DoesNotReadBeyondTheLimitWhatGrowsMeanwhile)
{
    const ScratchFolder scratch;
    const fs::path path = scratch.Write("a", "short");
    InputFile file(path);
    fs::resize_file(path, 100001);
    EXPECT_THROW(file.ReadAll(100000), Error);
}

TEST(InputFile, TellsWhetherItChanged)
{
    const ScratchFolder folder;
    const auto path = folder.Write("a.txt", "first");
    const InputFile file(path);
    EXPECT_NO_THROW(file.CheckUnchanged());
    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) +
                                               std::chrono::seconds(2));
    EXPECT_THROW(file.CheckUnchanged(), Error);
}

TEST(InputFile, DoesNotMindAFileThatTakesItsName)
{
    const ScratchFolder folder;
    const auto path = folder.Write("a.txt", "first");
    const InputFile file(path);
    ReplaceFile(path, "second");
    EXPECT_NO_THROW(file.CheckUnchanged());
}

TEST(ReadingObstacle, TellsWhatIsMissingFromWhatIsNoFile)
{
    const ScratchFolder scratch;
    const fs::path file = scratch.Write("a", "text");
    EXPECT_EQ(ReadingObstacle(file), std::nullopt);
    const fs::path missing = scratch / "missing";
    EXPECT_EQ(KindOf(ReadingObstacle(missing), missing), ErrorKind::FileNotFound);
    EXPECT_EQ(KindOf(ReadingObstacle(scratch.Path()), scratch.Path()), ErrorKind::NotARegularFile);
    EXPECT_TRUE(IsMissing(missing));
    EXPECT_FALSE(IsMissing(file));
    EXPECT_FALSE(IsMissing(scratch.Path()));
}

TEST(ObstacleOfExistingText, LeavesOutWhatIsMissing)
{
    const ScratchFolder scratch;
    EXPECT_EQ(ObstacleOfExistingText(scratch / "missing"), std::nullopt);
    EXPECT_EQ(ObstacleOfExistingText(scratch.Write("a", "")), std::nullopt);
    EXPECT_EQ(KindOf(ObstacleOfExistingText(scratch.Path()), scratch.Path()),
              ErrorKind::NotARegularFile);
}

TEST(ListingObstacle, TellsAFolderFromOtherThings)
{
    const ScratchFolder scratch;
    EXPECT_EQ(ListingObstacle(scratch.Path()), std::nullopt);
    const fs::path missing = scratch / "missing";
    EXPECT_EQ(KindOf(ListingObstacle(missing), missing), ErrorKind::FileNotFound);
    const fs::path file = scratch.Write("file", "");
    EXPECT_EQ(KindOf(ListingObstacle(file), file), ErrorKind::FileNotReadable);
    EXPECT_EQ(KindOf(ListingObstacle(file / ""), file / ""), ErrorKind::FileNotReadable);
}

} // namespace
} // namespace orrery::util
