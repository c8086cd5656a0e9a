#include "engines/builtin/package_password.h"

#include "book/error.h"
#include "engines/builtin/xls/compound/compound_file.h"
#include "places/places.h"
#include "util/error.h"
#include "util/scratch_folder.h"

#include <gtest/gtest.h>

#include <string>

namespace orrery::builtin {
namespace {

const std::string kDefaultWord = "VelvetSweatshop";

std::string InfoOf(const std::string& name)
{
    return testing_support::BytesOf(places::SourceFolder() / "tests/engines/builtin/data" /
                                    ("encryption_" + name + ".info"));
}

class OpensPackageTest : public testing::TestWithParam<const char*> {};

TEST_P(OpensPackageTest, TakesTheRightPasswordOnly)
{
    const std::string info = InfoOf(GetParam());
    EXPECT_TRUE(OpensPackage(info, kDefaultWord));
    for (const char* const other : {"velvetsweatshop", "secret", ""})
        EXPECT_FALSE(OpensPackage(info, other)) << other;
}

TEST_P(OpensPackageTest, SurvivesATruncatedStream)
{
    const std::string info = InfoOf(GetParam());
    for (std::size_t size = 0; size < info.size(); size += 7) {
        try {
            OpensPackage(info.substr(0, size), kDefaultWord); // may have read enough
        }
        catch (const util::Error& error) {
            EXPECT_EQ(error.Kind(), book::ErrorKind::DamagedWorkbook);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Methods, OpensPackageTest, testing::Values("standard", "agile"),
                         [](const auto& each) { return std::string(each.param); });

TEST(OpensPackageOtherTest, ReadsWhatLibreOfficeWrote)
{
    const xls::CompoundFile file(
        testing_support::BytesOf(places::SourceFolder() /
                                 "tests/engines/libreoffice/data/password.xlsx"),
        xls::EncryptedPackage::Accept);
    const std::string info = file.ReadStream(file.Find("EncryptionInfo").value());
    EXPECT_TRUE(OpensPackage(info, "secret"));
    EXPECT_FALSE(OpensPackage(info, kDefaultWord));
}

TEST(OpensPackageOtherTest, RefusesUnknownMethods)
{
    std::string info = InfoOf("standard");
    info[2] = '\x03'; // extensible
    EXPECT_FALSE(OpensPackage(info, kDefaultWord));
    info = InfoOf("standard");
    info[12 + 13] = '\x00'; // another digest
    EXPECT_FALSE(OpensPackage(info, kDefaultWord));
    info = InfoOf("agile");
    info.replace(info.find("<p:encryptedKey"), 0, "<!--");
    info.replace(info.find("</keyEncryptor>"), 0, "-->");
    EXPECT_FALSE(OpensPackage(info, kDefaultWord)) << "no password opens it";
    info = InfoOf("agile");
    const auto digest = info.rfind("SHA512");
    info.replace(digest, 6, "SHA999");
    EXPECT_FALSE(OpensPackage(info, kDefaultWord));
}

} // namespace
} // namespace orrery::builtin
