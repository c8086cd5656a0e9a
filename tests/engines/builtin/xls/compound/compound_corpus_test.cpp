// Real workbooks, if the folder with them exists.

#include "book/error.h"
#include "engines/builtin/xls/compound/compound_writer.h"
#include "places/places.h"
#include "util/error.h"
#include "util/scratch_folder.h"
#include "xls/compound_snapshot.h"
#include "xls/tree_check.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

namespace fs = std::filesystem;

class CompoundCorpusTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (fs::is_directory(places::CorpusFolder()))
            return;
        if (std::getenv("CI") != nullptr)
            FAIL() << "no workbooks in " << places::CorpusFolder();
        GTEST_SKIP() << "no workbooks in " << places::CorpusFolder();
    }

    static std::vector<fs::path> Files(const char* folder)
    {
        std::vector<fs::path> files;
        for (const auto& entry : fs::directory_iterator(places::CorpusFolder() / folder)) {
            if (entry.path().extension() == ".xls")
                files.push_back(entry.path());
        }
        std::sort(files.begin(), files.end());
        return files;
    }
};

void ExpectWrittenAsRead(const CompoundFile& file)
{
    const testing_support::ScratchFolder folder;
    CompoundWriter(file).SaveTo(folder / "saved.xls");
    const CompoundFile again(testing_support::BytesOf(folder / "saved.xls"));
    test::ExpectSame(test::SnapshotOf(again), test::SnapshotOf(file));
    EXPECT_EQ(test::FindTreeFault(again.Entries()), "");
}

TEST_F(CompoundCorpusTest, WritesEveryWorkbookAsItReadIt)
{
    std::size_t files = 0;
    for (const fs::path& path : Files("xls")) {
        SCOPED_TRACE(path.filename());
        try {
            const CompoundFile file(testing_support::BytesOf(path));
            EXPECT_TRUE(file.Find("Workbook") || file.Find("Book"));
            ExpectWrittenAsRead(file);
            ++files;
        }
        catch (const util::Error& error) {
            ADD_FAILURE() << error.what();
        }
    }
    EXPECT_GT(files, 100U);
}

TEST_F(CompoundCorpusTest, BadFilesAreReadOrRefusedQuickly)
{
    using Clock = std::chrono::steady_clock;
    std::size_t refused = 0;
    for (const fs::path& path : Files("bad")) {
        SCOPED_TRACE(path.filename());
        const std::string bytes = testing_support::BytesOf(path);
        const auto begin = Clock::now();
        try {
            const CompoundFile file(bytes);
            EXPECT_LT(Clock::now() - begin, std::chrono::milliseconds(200));
            ExpectWrittenAsRead(file);
        }
        catch (const util::Error& error) {
            EXPECT_LT(Clock::now() - begin, std::chrono::milliseconds(200));
            EXPECT_TRUE(error.Kind() == book::ErrorKind::NotAWorkbook || !error.Cause().empty());
            ++refused;
        }
    }
    EXPECT_GT(refused, 10U);
}

} // namespace
} // namespace orrery::xls
