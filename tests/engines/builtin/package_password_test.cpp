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

using testing_support::BytesOf;

const std::string kDefault = "VelvetSweatshop";

std::string Fixture(const std::string& name)
{
    return BytesOf(places::SourceFolder() / "tests/engines/builtin/data" /
                   ("encryption_" + name + ".info"));
}

class OpensPackageTest : public testing::TestWithParam<const char*> {};

TEST_P(OpensPackageTest, TakesTheRightPasswordOnly)
{
    const std::string info = Fixture(GetParam());
    EXPECT_TRUE(OpensPackage(info, kDefault));
    for (const char* const other : {"velvetsweatshop", "secret", ""})
        EXPECT_FALSE(OpensPackage(info, other)) << other;
}

TEST_P(OpensPackageTest, SurvivesATruncatedStream)
{
    const std::string info = Fixture(GetParam());
    for (std::size_t size = 0; size < info.size(); size += 7) {
        try {
            OpensPackage(info.substr(0, size), kDefault); // may have read enough
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
        BytesOf(places::SourceFolder() / "tests/engines/libreoffice/data/password.xlsx"),
        xls::EncryptedPackage::Accept);
    const std::string info = file.ReadStream(file.Find("EncryptionInfo").value());
    EXPECT_TRUE(OpensPackage(info, "secret"));
    EXPECT_FALSE(OpensPackage(info, kDefault));
}

TEST(OpensPackageOtherTest, RefusesUnknownMethods)
{
    std::string info = Fixture("standard");
    info[2] = '\x03'; // extensible
    EXPECT_FALSE(OpensPackage(info, kDefault));
    info = Fixture("standard");
    info[12 + 13] = '\x00'; // another digest
    EXPECT_FALSE(OpensPackage(info, kDefault));
    info = Fixture("agile");
    info.replace(info.find("<p:encryptedKey"), 0, "<!--");
    info.replace(info.find("</keyEncryptors>"), 0, "-->");
    EXPECT_FALSE(OpensPackage(info, kDefault)) << "no password opens it";
    info = Fixture("agile");
    const auto digest = info.rfind("SHA512");
    info.replace(digest, 6, "SHA999");
    EXPECT_FALSE(OpensPackage(info, kDefault));
}

} // namespace
} // namespace orrery::builtin
