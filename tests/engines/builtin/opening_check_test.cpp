#include "engines/builtin/opening_check.h"

#include "book/error.h"
#include "places/places.h"
#include "util/error.h"
#include "util/file_replace.h"
#include "util/scratch_folder.h"
#include "xls/built_compound.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

namespace orrery::builtin {
namespace {

using book::ErrorKind;
using xls::test::BuildCompound;
using xls::test::Stream;

const std::filesystem::path kEngineTests = places::SourceFolder() / "tests/engines";

class OpeningCheckTest : public testing::Test {
protected:
    /// What is wrong with a file of that name and content; nothing if it may be opened.
    std::optional<util::Error> Problem(const std::string& name, const std::string& bytes)
    {
        const std::filesystem::path file = folder_ / name;
        util::ReplaceFile(file, bytes);
        try {
            CheckBeforeOpening(file);
        }
        catch (const util::Error& error) {
            EXPECT_EQ(error.Subject(), file.string());
            return error;
        }
        return std::nullopt;
    }
    std::optional<util::AnyErrorKind> KindOf(const std::string& name, const std::string& bytes)
    {
        const auto problem = Problem(name, bytes);
        return problem ? std::optional(problem->Kind()) : std::nullopt;
    }
    /// An encrypted package whose password is described by a stream.
    static std::string Package(const std::string& info)
    {
        return BuildCompound(
            {Stream(u"EncryptionInfo", info), Stream(u"EncryptedPackage", std::string(5000, 'x'))});
    }

    testing_support::ScratchFolder folder_;
};

TEST_F(OpeningCheckTest, LetsWorkbooksPass)
{
    EXPECT_EQ(
        KindOf("a.xls", testing_support::BytesOf(kEngineTests / "builtin/xls/data/contract.xls")),
        std::nullopt);
    EXPECT_EQ(KindOf("a.xlsx",
                     testing_support::BytesOf(kEngineTests / "builtin/xlsx/data/contract.xlsx")),
              std::nullopt);
}

TEST_F(OpeningCheckTest, RefusesWhatAsksForAPassword)
{
    EXPECT_EQ(
        KindOf("a.xlsx", testing_support::BytesOf(kEngineTests / "libreoffice/data/password.xlsx")),
        ErrorKind::PasswordProtected);
    EXPECT_EQ(KindOf("a.xlsx", Package("some other method")), ErrorKind::PasswordProtected);
    EXPECT_EQ(KindOf("a.xls",
                     BuildCompound({Stream(u"Workbook", testing_support::BytesOf(
                                                            kEngineTests / "builtin/xls/data" /
                                                            "encrypted_other_password.stream"))})),
              ErrorKind::PasswordProtected);
}

// The records BOF of a workbook and of a sheet that is a file of its own, before BIFF8.
constexpr std::string_view kWorkbook5("\x09\x08\x08\x00\x00\x05\x05\x00\xD3\x10\xCC\x07", 12);
constexpr std::string_view kSheet4("\x09\x04\x06\x00\x00\x04\x10\x00\x00\x00", 10);

/// The same with FILEPASS, which tells the key and the verifier of a password, and EOF.
std::string WithPassword(std::string_view begin, std::string_view keyAndVerifier)
{
    std::string records(begin);
    records += std::string_view("\x2F\x00\x04\x00", 4);
    records += keyAndVerifier;
    records += std::string_view("\x0A\x00\x00\x00", 4);
    return records;
}

TEST_F(OpeningCheckTest, RefusesEarlierVersionsThatAskForAPassword)
{
    const std::string someNumbers = "1234";
    EXPECT_EQ(
        KindOf("a.xls", BuildCompound({Stream(u"Book", WithPassword(kWorkbook5, someNumbers))})),
        ErrorKind::PasswordProtected);
    EXPECT_EQ(KindOf("a.xls", WithPassword(kSheet4, someNumbers)), ErrorKind::PasswordProtected);
}

TEST_F(OpeningCheckTest, LetsTheDefaultPasswordOfEarlierVersionsPass)
{
    const std::string stream =
        testing_support::BytesOf(kEngineTests / "builtin/xls/data/encrypted_xor.stream");
    const std::string_view filePass("\x2F\x00\x06\x00\x00\x00", 6); // with the method
    const std::string numbers = stream.substr(stream.find(filePass) + filePass.size(), 4);
    EXPECT_EQ(KindOf("a.xls", BuildCompound({Stream(u"Book", WithPassword(kWorkbook5, numbers))})),
              std::nullopt);
    EXPECT_EQ(KindOf("a.xls", WithPassword(kSheet4, numbers)), std::nullopt);
}

TEST_F(OpeningCheckTest, AnEncryptedPackageIsNoXls)
{
    const auto package =
        Package(testing_support::BytesOf(kEngineTests / "builtin/data/encryption_standard.info"));
    const auto problem = Problem("a.xls", package);
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->Kind(), ErrorKind::WrongExtension);
    EXPECT_EQ(problem->Cause(), ".xlsx");
    EXPECT_EQ(KindOf("a.xlsm", package), std::nullopt) << "nobody knows which kind it is";
}

TEST_F(OpeningCheckTest, LetsTheDefaultPasswordPass)
{
    EXPECT_EQ(KindOf("a.xlsx", Package(testing_support::BytesOf(
                                   kEngineTests / "builtin/data/encryption_standard.info"))),
              std::nullopt);
    EXPECT_EQ(KindOf("a.xlsx", Package(testing_support::BytesOf(
                                   kEngineTests / "builtin/data/encryption_agile.info"))),
              std::nullopt);
    EXPECT_EQ(KindOf("a.xls", testing_support::BytesOf(
                                  kEngineTests / "builtin/xls/data/encrypted_libreoffice.xls")),
              std::nullopt);
}

TEST_F(OpeningCheckTest, RefusesTheExtensionOfAnotherKindAndNamesTheRightOne)
{
    const auto binary = testing_support::BytesOf(kEngineTests / "builtin/xls/data/contract.xls");
    const auto package = testing_support::BytesOf(kEngineTests / "builtin/xlsx/data/contract.xlsx");
    for (const auto& [name, bytes, expected] : {std::tuple{"a.xlsx", binary, ".xls"},
                                                {"a.xlsm", binary, ".xls"},
                                                {"a.xls", package, ".xlsx"},
                                                {"a.XLS", package, ".xlsx"},
                                                {"a.xlsm", package, ".xlsx"},
                                                {"a.xltx", package, ".xlsx"},
                                                {"a.xlsb", package, ".xlsx"}}) {
        const auto problem = Problem(name, bytes);
        ASSERT_TRUE(problem) << name;
        EXPECT_EQ(problem->Kind(), ErrorKind::WrongExtension) << name;
        EXPECT_EQ(problem->Cause(), expected) << name;
    }
}

TEST_F(OpeningCheckTest, LetsEveryExtensionThatFitsAndEveryUnknownOnePass)
{
    const auto binary = testing_support::BytesOf(kEngineTests / "builtin/xls/data/contract.xls");
    const auto package = testing_support::BytesOf(kEngineTests / "builtin/xlsx/data/contract.xlsx");
    for (const char* const name : {"a.xls", "a.XLS", "a.xlt", "a.calendar", "a"})
        EXPECT_EQ(KindOf(name, binary), std::nullopt) << name;
    for (const char* const name : {"a.xlsx", "a.Xlsx", "a.calendar"})
        EXPECT_EQ(KindOf(name, package), std::nullopt) << name;
    EXPECT_EQ(KindOf("a.xls", std::string("\x09\x04\x06\x00\x00\x04\x10\x00", 8)), std::nullopt);
}

TEST_F(OpeningCheckTest, RefusesWhatOnlyHasTheNameOfAWorkbook)
{
    const std::string page = "<html><table><tr><td>1</td></tr></table></html>";
    EXPECT_EQ(KindOf("a.xls", page), ErrorKind::NotAWorkbook);
    EXPECT_EQ(KindOf("a.xlsx", page), ErrorKind::NotAWorkbook);
    EXPECT_EQ(KindOf("a.xls", BuildCompound({Stream(u"WordDocument", "text")})),
              ErrorKind::NotAWorkbook);
    EXPECT_EQ(KindOf("a.htm", page), std::nullopt) << "Excel opens and saves that";
}

TEST_F(OpeningCheckTest, LeavesDamageToTheProgram)
{
    EXPECT_EQ(KindOf("a.xls", BuildCompound({Stream(u"Workbook", "no records")})), std::nullopt);
    EXPECT_EQ(KindOf("a.xls", BuildCompound({}).substr(0, 68)), std::nullopt);
    EXPECT_EQ(KindOf("a.xlsx", "PK\x03\x04 and no more"), std::nullopt);
}

TEST_F(OpeningCheckTest, AMissingOrEmptyFileIsRefused)
{
    EXPECT_THROW(CheckBeforeOpening(folder_ / "missing.xls"), util::Error);
    EXPECT_EQ(KindOf("a.xls", ""), ErrorKind::NotAWorkbook);
}

} // namespace
} // namespace orrery::builtin
