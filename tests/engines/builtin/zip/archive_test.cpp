#include "engines/builtin/zip/archive.h"

#include "book/error.h"
#include "util/error.h"
#include "util/scratch_folder.h"
#include "zip/built_zip.h"
#include "zip/thrown_kind.h"

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

TEST(Writer, CopiesPackedBytesAndTimes)
{
    const ScratchFolder folder;
    const std::string source = BuildZip({{"packed", kText + kText},
                                         {"stored", kText, true},
                                         {"empty", ""},
                                         {"large", std::string(kMiB, 'x')},
                                         {"folder/", "", true}});
    const Reader reader(folder.Write("a.zip", source));
    Writer writer(folder / "b.zip");
    for (std::size_t i = 0; i < reader.Entries().size(); ++i)
        writer.CopyEntry(reader, i, reader.Entries()[i].name);
    writer.CopyEntry(reader, 0, "again");
    writer.Close();

    const std::string copy = BytesOf(folder / "b.zip");
    for (const char* const name : {"packed", "stored", "empty", "large", "folder/"}) {
        ASSERT_TRUE(PackedBytes(copy, name)) << name;
        EXPECT_EQ(PackedBytes(copy, name), PackedBytes(source, name)) << name;
    }
    EXPECT_EQ(PackedBytes(copy, "again"), PackedBytes(source, "packed"));
    EXPECT_EQ(copy.substr(10, 4), source.substr(10, 4)) << "time and date of the first entry";

    const Reader read(folder / "b.zip");
    std::vector<std::string> names;
    for (std::size_t i = 0; i < read.Entries().size(); ++i)
        names.push_back(read.Entries()[i].name);
    EXPECT_THAT(names,
                testing::ElementsAre("packed", "stored", "empty", "large", "folder/", "again"));
    EXPECT_EQ(read.Read(5), kText + kText);
}

TEST(Writer, CopiesEntriesOfStreamsAndZip64)
{
    const ScratchFolder folder;
    const std::string packed = test::Deflate(kText, 1);
    const Reader reader(folder.Write("a.zip", BuildZip({{"descriptor", kText, false, true},
                                                        {"zip64", kText, false, false, true}})));
    Writer writer(folder / "b.zip");
    writer.CopyEntry(reader, 0, "descriptor");
    writer.CopyEntry(reader, 1, "zip64");
    writer.Close();
    const std::string copy = BytesOf(folder / "b.zip");
    EXPECT_EQ(PackedBytes(copy, "descriptor"), packed);
    EXPECT_EQ(PackedBytes(copy, "zip64"), packed);
}

TEST(Writer, PacksNewEntries)
{
    const ScratchFolder folder;
    Writer writer(folder / "a.zip");
    writer.AddEntry("a.xml", [](EntrySink& sink) { sink.Add(kText + kText); });
    writer.AddEntry("empty.xml", [](EntrySink& sink) { sink.Add(""); });
    writer.AddEntry("large.xml", [](EntrySink& sink) { sink.Add(std::string(5 * kMiB, 'x')); });
    writer.Close();
    const Reader reader(folder / "a.zip");
    EXPECT_EQ(reader.Read(0), kText + kText);
    EXPECT_LT(reader.Entries()[0].compressedSize, kText.size());
    EXPECT_EQ(reader.Read(1), "");
    EXPECT_EQ(reader.Read(2), std::string(5 * kMiB, 'x'));
}

TEST(Writer, WritesPlainHeadersOfAFixedDate)
{
    const ScratchFolder folder;
    for (const char* const name : {"a.zip", "b.zip"}) {
        Writer writer(folder / name);
        writer.AddEntry("a.xml", [](EntrySink& sink) { sink.Add(kText); });
        writer.Close();
    }
    const std::string bytes = BytesOf(folder / "a.zip");
    EXPECT_EQ(bytes, BytesOf(folder / "b.zip"));
    EXPECT_EQ(bytes.substr(4, 2), std::string("\x14\0", 2)) << "version 2.0, not zip64";
    EXPECT_EQ(bytes.substr(6, 2), std::string(2, '\0')) << "no descriptor";
    EXPECT_EQ(bytes.substr(10, 4), std::string("\0\0\x21\0", 4)) << "1980-01-01";
}

TEST(Writer, AsksForOneContentAtATime)
{
    const ScratchFolder folder;
    std::vector<std::string> asked;
    Writer writer(folder / "a.zip");
    for (const char* const name : {"a", "b", "c"})
        writer.AddEntry(name, [&asked, name](EntrySink& sink) {
            asked.emplace_back(name);
            sink.Add(kText);
        });
    EXPECT_TRUE(asked.empty()) << "nothing is made before the end";
    writer.Close();
    EXPECT_THAT(asked, testing::ElementsAre("a", "b", "c"));
}

TEST(Writer, PassesOnWhatAProducerThrows)
{
    const ScratchFolder folder;
    {
        Writer writer(folder / "a.zip");
        writer.AddEntry("a", [](EntrySink& sink) { sink.Add(kText); });
        writer.AddEntry("b", [](EntrySink&) { throw std::invalid_argument("mine"); });
        EXPECT_THROW(writer.Close(), std::invalid_argument);
    }
    EXPECT_EQ(folder.Entries(), 0) << "nothing is left behind";
}

TEST(Writer, DiscardsWhatIsNotClosed)
{
    const ScratchFolder folder;
    {
        Writer writer(folder / "a.zip");
        writer.AddEntry("a", [](EntrySink& sink) { sink.Add(kText); });
    }
    EXPECT_EQ(folder.Entries(), 0);
}

TEST(Writer, NamesTheFileThatCannotBeWritten)
{
    const ScratchFolder folder;
    EXPECT_EQ(KindThrownBy([&] {
                  Writer writer(folder / "none/a.zip");
                  writer.AddEntry("a", [](EntrySink& sink) { sink.Add(kText); });
                  writer.Close();
              }),
              util::ErrorKind::FileNotWritable);
}

} // namespace
} // namespace orrery::zip
