#include "engines/builtin/zip/reader.h"

#include "book/error.h"
#include "util/error.h"
#include "util/scratch_folder.h"
#include "zip/built_zip.h"
#include "zip/thrown_kind.h"

#include <cstdint>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

namespace orrery::zip {
namespace {

using book::ErrorKind;
using test::BuildZip;
using test::KindThrownBy;
using test::kMiB;
using test::PackedBytes;
using test::ZipPart;
using testing_support::BytesOf;
using testing_support::ScratchFolder;

const std::string kText = "All work and no play makes Jack a dull boy. All work and no play ...";

struct ReadCase {
    const char* name;
    ZipPart part;
};

class ReadZipTest : public testing::TestWithParam<ReadCase> {};
TEST_P(ReadZipTest, GivesTheContent)
{
    const ScratchFolder folder;
    const Reader zip(
        folder.Write("a.zip", BuildZip({{"first", "1"}, GetParam().part, {"last", "2"}})));
    ASSERT_EQ(zip.Entries().size(), 3U);
    EXPECT_EQ(zip.Entries()[1].name, GetParam().part.name);
    EXPECT_EQ(zip.Entries()[1].size, GetParam().part.content.size());
    EXPECT_EQ(zip.Read(1), GetParam().part.content);
    EXPECT_EQ(zip.Read(2), "2");
    EXPECT_EQ(zip.Read(1), GetParam().part.content) << "as often as wanted";
}
INSTANTIATE_TEST_SUITE_P(
    Entries, ReadZipTest,
    testing::Values(ReadCase{"Packed", {"xl/a.xml", kText}},
                    ReadCase{"Stored", {"xl/a.xml", kText, true}},
                    ReadCase{"Descriptor", {"xl/a.xml", kText, false, true}},
                    ReadCase{"StoredWithDescriptor", {"xl/a.xml", kText, true, true}},
                    ReadCase{"Zip64", {"xl/a.xml", kText, false, false, true}},
                    ReadCase{"Empty", {"xl/a.xml", ""}}, ReadCase{"Folder", {"xl/", "", true}},
                    ReadCase{"Backslash", {"xl\\a.xml", kText}},
                    ReadCase{"Utf8Name", {"xl/\xC3\xA4.xml", kText, false, false, false, 0x800}},
                    ReadCase{"Long", {"xl/a.xml", std::string(3 * kMiB + 7, 'x')}}),
    [](const auto& row) { return std::string(row.param.name); });

/// A container of 1 MiB that does not pack, so that its beginning and its end are not in memory
/// together.
std::string LargeZip()
{
    std::string noise(kMiB, '\0');
    std::uint32_t state = 1;
    for (char& byte : noise) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<char>(state >> 24U);
    }
    return BuildZip({{"first", "1"}, {"noise", noise, true}, {"last", "2"}});
}

TEST(ClosedZipTest, IsOpenedAgainWhenItIsRead)
{
    const ScratchFolder folder;
    Reader zip(folder.Write("a.zip", LargeZip()));
    EXPECT_EQ(zip.Read(2), "2");
    zip.CloseFile();
    EXPECT_EQ(zip.Read(0), "1");
    EXPECT_EQ(zip.Read(1).size(), std::size_t{kMiB});
}

TEST(ClosedZipTest, ARefusalTellsThatItWasReplaced)
{
    const ScratchFolder folder;
    Reader zip(folder.Write("a.zip", LargeZip()));
    EXPECT_EQ(zip.Read(2), "2");
    zip.CloseFile();
    folder.Write("a.zip", BuildZip({{"first", "another"}}));
    EXPECT_EQ(KindThrownBy([&] { zip.Read(0); }), util::ErrorKind::FileNotReadable);
    std::filesystem::remove(folder / "a.zip");
    EXPECT_EQ(KindThrownBy([&] { zip.Read(0); }), util::ErrorKind::FileNotFound);
}

struct LieCase {
    const char* name;
    ZipPart part;
};

class LyingZipTest : public testing::TestWithParam<LieCase> {};
TEST_P(LyingZipTest, IsFoundDamagedWhenRead)
{
    const ScratchFolder folder;
    const Reader zip(folder.Write("a.zip", BuildZip({GetParam().part, {"last", "2"}})));
    EXPECT_EQ(KindThrownBy([&] { zip.Read(0); }), ErrorKind::DamagedWorkbook);
    EXPECT_EQ(zip.Read(1), "2");
}
INSTANTIATE_TEST_SUITE_P(
    Entries, LyingZipTest,
    testing::Values(
        LieCase{"MoreThanDeclared", {.name = "a", .content = kText, .declaredSize = 10}},
        LieCase{"NothingDeclared", {.name = "a", .content = kText, .declaredSize = 0}},
        LieCase{"LessThanDeclared", {.name = "a", .content = kText, .declaredSize = 1000}},
        LieCase{"StoredLessThanDeclared",
                {.name = "a", .content = kText, .stored = true, .declaredSize = 1000}},
        LieCase{"StoredMoreThanDeclared",
                {.name = "a", .content = kText, .stored = true, .declaredSize = 10}},
        LieCase{"LargeLessThanDeclared",
                {.name = "a", .content = std::string(2 * kMiB, 'x'), .declaredSize = 3 * kMiB}},
        LieCase{"LargeMoreThanDeclared",
                {.name = "a", .content = std::string(3 * kMiB, 'x'), .declaredSize = 2 * kMiB}},
        LieCase{"LargePackedCut",
                {.name = "a", .content = std::string(2 * kMiB, 'x'), .declaredPacked = 50}},
        LieCase{"PackedBeyondTheFile",
                {.name = "a", .content = kText, .declaredPacked = 1'000'000}},
        LieCase{"OtherChecksum", {.name = "a", .content = kText, .declaredChecksum = 1}},
        LieCase{"PackedCut", {.name = "a", .content = kText, .declaredPacked = 5}}),
    [](const auto& row) { return std::string(row.param.name); });

struct RefusedZipCase {
    const char* name;
    std::string bytes;
    util::AnyErrorKind kind;
};

class RefuseZipTest : public testing::TestWithParam<RefusedZipCase> {};
TEST_P(RefuseZipTest, SaysWhy)
{
    const ScratchFolder folder;
    const auto path = folder.Write("a.zip", GetParam().bytes);
    EXPECT_EQ(KindThrownBy([&] { Reader zip(path); }), GetParam().kind);
}

std::string WithoutDirectory()
{
    const std::string zip = BuildZip({{"a", kText}});
    return zip.substr(0, zip.size() - 22);
}

std::string Bomb(std::size_t entries, std::uint32_t declared)
{
    std::vector<ZipPart> parts;
    for (std::size_t i = 0; i < entries; ++i)
        parts.push_back({.name = std::to_string(i), .content = kText, .declaredSize = declared});
    return BuildZip(parts);
}

INSTANTIATE_TEST_SUITE_P(
    Files, RefuseZipTest,
    testing::Values(
        RefusedZipCase{"Empty", "", ErrorKind::NotAWorkbook},
        RefusedZipCase{"Text", "Just a text, although it has a few bytes", ErrorKind::NotAWorkbook},
        RefusedZipCase{"NoDirectory", WithoutDirectory(), ErrorKind::DamagedWorkbook},
        RefusedZipCase{"Cut", BuildZip({{"a", kText}, {"b", kText}}).substr(0, 100),
                       ErrorKind::DamagedWorkbook},
        RefusedZipCase{"Encrypted", BuildZip({{"a", kText, false, false, false, 1}}),
                       ErrorKind::PasswordProtected},
        RefusedZipCase{"EntryOverTheRatio", Bomb(1, 11 * kMiB), ErrorKind::TooLargeUnpacked},
        RefusedZipCase{"ManyOverTheRatio", Bomb(3, 10 * kMiB), ErrorKind::TooLargeUnpacked},
        RefusedZipCase{"MoreThanAGibibyte", Bomb(5, 0xFFFFFFF0), ErrorKind::TooLargeUnpacked}),
    [](const auto& row) { return std::string(row.param.name); });

struct AmbiguousCase {
    const char* name;
    std::string zip;
};
class AmbiguousZipTest : public testing::TestWithParam<AmbiguousCase> {};
TEST_P(AmbiguousZipTest, IsRefused)
{
    const ScratchFolder folder;
    const auto path = folder.Write("a.zip", GetParam().zip);
    EXPECT_EQ(KindThrownBy([&] { Reader zip(path); }), ErrorKind::DamagedWorkbook);
}
const std::string kSecondEnd = std::string("PK\x05\x06", 4) + std::string(18, '\0');
INSTANTIATE_TEST_SUITE_P(
    Containers, AmbiguousZipTest,
    testing::Values(AmbiguousCase{"SecondDirectoryWithoutEntries",
                                  BuildZip({{"xl/a.xml", "1"}}) + kSecondEnd},
                    AmbiguousCase{"NameThatContinuesAfterAZero",
                                  BuildZip({{std::string("xl/a.xml\0x", 10), "1"}})},
                    AmbiguousCase{"NameWithAControlCharacter", BuildZip({{"xl/\x7F"
                                                                          "a.xml",
                                                                          "1"}})},
                    AmbiguousCase{"OtherNameInAnExtraField",
                                  BuildZip({{"xl/a.xml",
                                             "1",
                                             false,
                                             false,
                                             false,
                                             0,
                                             0x6C20,
                                             0x5A4B,
                                             {},
                                             {},
                                             {},
                                             test::UnicodePathField("xl/a.xml", "xl/b.xml")}})}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Reader, AcceptsTwoNamesOfAnEntryBeyondAscii)
{
    const ScratchFolder folder;
    const ZipPart part = {"xl/\x84.xml",
                          "1",
                          false,
                          false,
                          false,
                          0,
                          0x6C20,
                          0x5A4B,
                          {},
                          {},
                          {},
                          test::UnicodePathField("xl/\x84.xml", "xl/\xC3\xA4.xml")};
    const Reader zip(folder.Write("a.zip", BuildZip({part})));
    EXPECT_EQ(zip.Entries().front().name, "xl/\xC3\xA4.xml");
}

TEST(Reader, DecodesNamesOfOldPrograms)
{
    const ScratchFolder folder;
    const Reader zip(folder.Write("a.zip", BuildZip({{"\x84\x8E\xE1.xml", "1"}, // code page 437
                                                     {"\xC3\xA4.xml", "2"}})));
    EXPECT_EQ(zip.Entries()[0].name, "\xC3\xA4\xC3\x84\xC3\x9F.xml");
    EXPECT_EQ(zip.Entries()[1].name, "\xC3\xA4.xml");
}

TEST(Reader, IgnoresTheDirectoryOfAContainerInside)
{
    const ScratchFolder folder;
    const std::string inner = BuildZip({{"inner", kText}});
    const Reader zip(folder.Write("a.zip", BuildZip({{"first", "1"}, {"b.xlsx", inner, true}})));
    ASSERT_EQ(zip.Entries().size(), 2U);
    EXPECT_EQ(zip.Read(1), inner);
}

TEST(Reader, NamesTheMethodThatItDoesNotUnpack)
{
    const ScratchFolder folder;
    std::string bytes = BuildZip({{"a.xml", kText}});
    constexpr std::size_t kMethod = 10; // in the directory's header
    bytes.replace(bytes.find("PK\x01\x02") + kMethod, 2, std::string("\x0E\0", 2));
    const Reader zip(folder.Write("a.zip", bytes));
    try {
        zip.Read(0);
        FAIL();
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), ErrorKind::DamagedWorkbook);
        EXPECT_EQ(error.Cause(),
                  "a.xml: it is compressed with method 14, which workbooks do not have");
    }
}

TEST(Reader, VerifiesWithoutKeeping)
{
    const ScratchFolder folder;
    ZipPart wrong = {"wrong", kText};
    wrong.declaredChecksum = 1;
    const Reader zip(folder.Write("a.zip", BuildZip({{"right", kText}, wrong})));
    zip.Verify(0);
    EXPECT_EQ(KindThrownBy([&] { zip.Verify(1); }), ErrorKind::DamagedWorkbook);
}

TEST(Reader, AcceptsSmallEntriesOfAnyRatio)
{
    const ScratchFolder folder;
    const Reader zip(
        folder.Write("a.zip", BuildZip({{"a", std::string(10 * kMiB, ' ')},
                                        {"b", std::string(64 * 1024, '\x7F'), true}})));
    EXPECT_EQ(zip.Read(0).size(), 10 * kMiB);
}

TEST(Reader, DistinguishesMissingFilesFromFolders)
{
    const ScratchFolder folder;
    EXPECT_EQ(KindThrownBy([&] { Reader zip(folder / "none.zip"); }),
              util::ErrorKind::FileNotFound);
    EXPECT_EQ(KindThrownBy([&] { Reader zip(folder.Path()); }), util::ErrorKind::NotARegularFile);
}

} // namespace
} // namespace orrery::zip
