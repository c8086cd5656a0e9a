#include "engines/builtin/open_workbook.h"

#include "book/error.h"
#include "engines/builtin/open_view.h"
#include "places/places.h"
#include "util/error.h"
#include "util/file_replace.h"
#include "util/scratch_folder.h"
#include "xls/built_compound.h"
#include "xls/stream_builder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>

namespace orrery::builtin {
namespace {

using book::ErrorKind;
using xls::test::BuildCompound;
using xls::test::Stream;

const std::filesystem::path kTests = places::SourceFolder() / "tests/engines/builtin";

class OpenWorkbookTest : public testing::Test {
protected:
    /// The kind of error for a file of these bytes, which is the same whether it is filled or
    /// looked at; nothing if it opens.
    std::optional<util::AnyErrorKind> Problem(const std::string& bytes)
    {
        util::ReplaceFile(file_, bytes);
        const auto problem = ProblemOf([this] { OpenWorkbookFile(file_); });
        EXPECT_EQ(problem, ProblemOf([this] { OpenWorkbookView(file_); }));
        return problem;
    }

    template <typename Action> std::optional<util::AnyErrorKind> ProblemOf(Action action)
    {
        try {
            action();
        }
        catch (const util::Error& error) {
            EXPECT_EQ(error.Subject(), file_.string());
            return error.Kind();
        }
        return std::nullopt;
    }

    testing_support::ScratchFolder folder_;
    std::filesystem::path file_ = folder_ / "file.bin";
};

std::string BytesOf(const std::filesystem::path& path)
{
    return util::ReadFile(path).value();
}

TEST_F(OpenWorkbookTest, TheContentDecidesTheFormatNotTheName)
{
    EXPECT_EQ(Problem(BytesOf(kTests / "xls" / "data" / "contract.xls")), std::nullopt);
    EXPECT_EQ(Problem(BytesOf(kTests / "xlsx" / "data" / "contract.xlsx")), std::nullopt);
}

TEST_F(OpenWorkbookTest, RefusesFilesThatAreNotWorkbooks)
{
    EXPECT_EQ(Problem(""), ErrorKind::NotAWorkbook);
    EXPECT_EQ(Problem("name,date\r\nEaster,0405\r\n"), ErrorKind::NotAWorkbook);
    EXPECT_EQ(Problem(BuildCompound({Stream(u"WordDocument", "text")})), ErrorKind::NotAWorkbook);
    EXPECT_EQ(Problem(BuildCompound({xls::test::Storage(u"Workbook", {})})),
              ErrorKind::NotAWorkbook);
}

TEST_F(OpenWorkbookTest, RefusesFilesThatNeedAPassword)
{
    EXPECT_EQ(Problem(BuildCompound({Stream(u"EncryptionInfo", "how"),
                                     Stream(u"EncryptedPackage", std::string(5000, 'x'))})),
              ErrorKind::PasswordProtected);
}

TEST_F(OpenWorkbookTest, RefusesOldFormats)
{
    const auto old = xls::test::BofOf(5, 0x0500) + xls::test::EofRecord();
    EXPECT_EQ(Problem(BuildCompound({Stream(u"Book", old)})), ErrorKind::OldBinaryFormat);
    EXPECT_EQ(Problem(std::string("\x09\x00\x04\x00\x02\x00\x10\x00", 8)),
              ErrorKind::OldBinaryFormat);
    EXPECT_EQ(Problem(std::string("\x09\x04\x06\x00\x00\x04\x10\x00", 8)),
              ErrorKind::OldBinaryFormat);
}

TEST_F(OpenWorkbookTest, RefusesDamagedFiles)
{
    EXPECT_EQ(Problem(BuildCompound({Stream(u"Workbook", "no records")})),
              ErrorKind::DamagedWorkbook);
    EXPECT_EQ(Problem(BuildCompound({}).substr(0, 68)), ErrorKind::DamagedWorkbook);
}

TEST_F(OpenWorkbookTest, AMissingFileAndAFolderCannotBeRead)
{
    EXPECT_THROW(OpenWorkbookFile(folder_ / "missing.xls"), util::Error);
    EXPECT_THROW(OpenWorkbookFile(kTests), util::Error);
}

TEST_F(OpenWorkbookTest, AnEnormousFileIsNotReadIntoMemory)
{
    const std::filesystem::path file = folder_.Write("a.xls", BuildCompound({}));
    std::filesystem::resize_file(file, (std::uintmax_t{1} << 30U) + 1);
    try {
        OpenWorkbookFile(file);
        ADD_FAILURE() << "it was opened";
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), ErrorKind::TooLargeUnpacked);
    }
}

} // namespace
} // namespace orrery::builtin
