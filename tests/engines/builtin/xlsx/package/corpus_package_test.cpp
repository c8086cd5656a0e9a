// Real workbooks, if the folder with them exists.

#include "engines/builtin/xlsx/package/package.h"
#include "engines/builtin/xlsx/package/package_edit.h"
#include "places/places.h"
#include "util/error.h"
#include "util/scratch_folder.h"
#include "zip/built_zip.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <gtest/gtest.h>

namespace orrery::xlsx {
namespace {

namespace fs = std::filesystem;

class CorpusPackageTest : public testing::Test {
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
        for (const auto& entry : fs::directory_iterator(places::CorpusFolder() / folder))
            files.push_back(entry.path());
        std::sort(files.begin(), files.end());
        return files;
    }
};

bool IsXml(const std::string& type)
{
    return type.ends_with("+xml") || type.ends_with("/xml");
}

TEST_F(CorpusPackageTest, OpensEveryWorkbookAndReadsItsXml)
{
    std::size_t parts = 0;
    for (const fs::path& file : Files("xlsx")) {
        SCOPED_TRACE(file.filename());
        try {
            const Package package(file);
            for (const std::string& part : package.PartNames()) {
                package.RelationshipsOf(part);
                if (IsXml(package.TypeOf(part)))
                    package.ReadXml(part);
                ++parts;
            }
        }
        catch (const util::Error& error) {
            ADD_FAILURE() << error.what();
        }
    }
    EXPECT_GT(parts, 1000U);
}

TEST_F(CorpusPackageTest, SavesEveryWorkbookPartByPart)
{
    const testing_support::ScratchFolder folder;
    const fs::path target = folder / "saved.xlsx";
    for (const fs::path& file : Files("xlsx")) {
        SCOPED_TRACE(file.filename());
        const Package package(file);
        PackageEdit(package).Save(target);
        const zip::Reader before(file);
        const zip::Reader after(target);
        ASSERT_EQ(after.Entries().size(), before.Entries().size());
        const std::string bytesBefore = testing_support::BytesOf(file);
        const std::string bytesAfter = testing_support::BytesOf(target);
        for (std::size_t i = 0; i < before.Entries().size(); ++i) {
            const zip::Entry& entry = before.Entries()[i];
            EXPECT_EQ(after.Entries()[i].name, entry.name);
            EXPECT_EQ(after.Entries()[i].packed, entry.packed) << entry.name;
            EXPECT_TRUE(after.Read(i) == before.Read(i)) << entry.name;
            const auto packed = test::PackedBytes(bytesBefore, entry.name);
            EXPECT_TRUE(!packed || test::PackedBytes(bytesAfter, entry.name) == packed)
                << entry.name;
        }
    }
}

TEST_F(CorpusPackageTest, BadFilesQuicklyGiveOneError)
{
    using Clock = std::chrono::steady_clock;
    std::size_t refused = 0;
    for (const fs::path& file : Files("bad")) {
        SCOPED_TRACE(file.filename());
        const auto begin = Clock::now();
        try {
            const Package package(file);
            for (const std::string& part : package.PartNames())
                if (IsXml(package.TypeOf(part)))
                    package.ReadXml(part);
        }
        catch (const util::Error& error) {
            EXPECT_EQ(error.Subject(), file.string());
            ++refused;
        }
        EXPECT_LT(Clock::now() - begin, std::chrono::seconds(2));
    }
    EXPECT_GT(refused, 40U);
}

} // namespace
} // namespace orrery::xlsx
