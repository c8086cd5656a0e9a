#include "engines/builtin/xls/records/encryption.h"

#include "book/error.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/compound/compound_file.h"
#include "engines/builtin/xls/records/records.h"
#include "places/places.h"
#include "util/error.h"
#include "util/scratch_folder.h"
#include "xls/stream_builder.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <vector>

namespace orrery::xls {
namespace {

namespace fs = std::filesystem;

using testing_support::BytesOf;

std::string Fixture(const std::string& name)
{
    return BytesOf(places::SourceFolder() / "tests/engines/builtin/xls/data" /
                   ("encrypted_" + name));
}

std::string StreamOf(const fs::path& path)
{
    const CompoundFile file(BytesOf(path));
    return file.ReadStream(file.Find("Workbook").value());
}

class DecryptTest : public testing::TestWithParam<const char*> {};

TEST_P(DecryptTest, GivesTheStreamWithoutEncryption)
{
    const auto stream = Decrypt(Fixture(GetParam() + std::string(".stream")));
    ASSERT_TRUE(stream);
    EXPECT_TRUE(*stream == Fixture("plain.stream"));
}

TEST_P(DecryptTest, NeedsTheRightPassword)
{
    const auto bytes = Fixture(GetParam() + std::string(".stream"));
    EXPECT_FALSE(Decrypt(bytes, "velvetsweatshop"));
    EXPECT_FALSE(Decrypt(bytes, ""));
}

TEST_P(DecryptTest, SurvivesATruncatedStream)
{
    const auto bytes = Fixture(GetParam() + std::string(".stream"));
    for (std::size_t size = 0; size < 300; ++size) {
        try {
            Decrypt(bytes.substr(0, size));
        }
        catch (const util::Error& error) {
            EXPECT_EQ(error.Kind(), book::ErrorKind::DamagedWorkbook);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Methods, DecryptTest,
                         testing::Values("xor", "rc4", "cryptoapi_40", "cryptoapi_128"),
                         [](const auto& test) { return std::string(test.param); });

TEST(DecryptStreamTest, LeavesAStreamWithoutEncryption)
{
    const auto plain = Fixture("plain.stream");
    EXPECT_EQ(Decrypt(plain), plain);
    EXPECT_EQ(Decrypt(""), "");
    EXPECT_EQ(Decrypt("damaged"), "damaged");
}

TEST(DecryptStreamTest, NeedsThePasswordOfAProtectedWorkbook)
{
    EXPECT_FALSE(Decrypt(Fixture("other_password.stream")));
    EXPECT_EQ(Decrypt(Fixture("other_password.stream"), "secret"), Fixture("plain.stream"));
}

TEST(DecryptStreamTest, ReadsWhatLibreOfficeEncrypts)
{
    const auto stream = Decrypt(StreamOf(places::SourceFolder() / "tests/engines/builtin/xls/data" /
                                         "encrypted_libreoffice.xls"));
    ASSERT_TRUE(stream);
    EXPECT_TRUE(*stream == Fixture("plain.stream"));
}

std::string FilePassOf(const std::vector<std::uint16_t>& numbers)
{
    return test::BofOf(5) + test::RecordOf(RecordType::FilePass, test::Numbers(numbers)) +
           test::EofRecord();
}

TEST(DecryptStreamTest, CannotReadMethodsThatItDoesNotKnow)
{
    EXPECT_FALSE(Decrypt(FilePassOf({2, 0, 0})));
    EXPECT_FALSE(Decrypt(FilePassOf({1, 7, 2, 0, 0})));
    EXPECT_FALSE(Decrypt(FilePassOf({1, 2, 3, 0, 0})));
}

TEST(DecryptStreamTest, RefusesAMethodWithoutItsData)
{
    EXPECT_THROW(Decrypt(FilePassOf({})), util::Error);
    EXPECT_THROW(Decrypt(FilePassOf({0, 1})), util::Error);
    EXPECT_THROW(Decrypt(FilePassOf({1, 1, 1, 5, 5})), util::Error);
    EXPECT_THROW(Decrypt(FilePassOf({1, 2, 2, 0, 0, 0xFFFF, 0xFFFF})), util::Error);
    EXPECT_THROW(Decrypt(FilePassOf({1, 2, 2, 0, 0, 2, 0, 0})), util::Error);
}

TEST(DecryptStreamTest, OpensEncryptedWorkbooksOfTheCorpus)
{
    if (!fs::is_directory(places::CorpusFolder())) {
        if (std::getenv("CI") != nullptr)
            FAIL() << "no workbooks in " << places::CorpusFolder();
        GTEST_SKIP() << "no workbooks in " << places::CorpusFolder();
    }
    struct Case {
        const char* file;
        std::string_view password;
    };
    for (const Case& book :
         {Case{"edr-protectedsheet-xxx.xls", kDefaultPassword},
          Case{"phpss-pwtest.xls", kDefaultPassword}, Case{"phpss-pwtest3.xls", kDefaultPassword},
          Case{"poi-xor-encryption-abc.xls", "abc"}}) {
        SCOPED_TRACE(book.file);
        const auto stream =
            Decrypt(StreamOf(places::CorpusFolder() / "bad" / book.file), book.password);
        ASSERT_TRUE(stream);
        RecordReader reader(*stream);
        std::size_t sheets = 0;
        while (reader.Peek()->type != RecordType::Eof) {
            const auto record = reader.Next();
            EXPECT_NE(record->type, RecordType::FilePass);
            if (record->type != RecordType::BoundSheet)
                continue;
            EXPECT_GT(SubstreamEnd(*stream, ReadU32(record->data, 0)), 0U);
            ++sheets;
        }
        EXPECT_GT(sheets, 0U);
    }
    EXPECT_FALSE(Decrypt(StreamOf(places::CorpusFolder() / "bad" / "npoi-97_password.xls")));
}

} // namespace
} // namespace orrery::xls
