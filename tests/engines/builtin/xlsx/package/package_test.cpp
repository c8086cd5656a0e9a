#include "engines/builtin/xlsx/package/package.h"

#include "book/error.h"
#include "util/error.h"
#include "util/paths.h"
#include "util/scratch_folder.h"
#include "xlsx/package/small_package.h"
#include "zip/built_zip.h"
#include "zip/thrown_kind.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orrery::xlsx {
namespace {

using namespace test;
using book::ErrorKind;
using orrery::test::BuildZip;
using orrery::test::ZipPart;
using testing_support::ScratchFolder;
using util::Error;

Parts Without(const std::string& name, Parts parts = Workbook())
{
    std::erase_if(parts, [&](const ZipPart& part) { return part.name == name; });
    return parts;
}

Parts Renamed(Parts parts, std::string (*rename)(const std::string&))
{
    for (ZipPart& part : parts)
        part.name = rename(part.name);
    return parts;
}

Parts AllDescriptors(Parts parts)
{
    for (ZipPart& part : parts)
        part.descriptor = true;
    return parts;
}

Parts Twice(Parts parts)
{
    parts.push_back(parts.back());
    return parts;
}

std::string Backslashed(const std::string& name)
{
    std::string result = name;
    std::replace(result.begin(), result.end(), '/', '\\');
    return result;
}

std::string Rooted(const std::string& name)
{
    return "/" + name;
}

std::string Capitals(const std::string& name)
{
    std::string result = name;
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
    return result;
}

/// In UTF-16 with a byte-order mark; the declaration is unchanged.
std::string InUtf16(const std::string& ascii)
{
    std::string bytes = "\xFF\xFE";
    for (const char c : ascii) {
        bytes += c;
        bytes += '\0';
    }
    return bytes;
}

struct OpenCase {
    const char* name;
    Parts parts;
    std::string mainPart = "/xl/workbook.xml";
};

class OpenPackageTest : public testing::TestWithParam<OpenCase> {};
TEST_P(OpenPackageTest, FindsTheWorkbook)
{
    const ScratchFolder folder;
    const Package package(folder.Write("a.xlsx", BuildZip(GetParam().parts)));
    EXPECT_EQ(package.MainPart(), GetParam().mainPart);
    EXPECT_EQ(*package.ReadXml(package.MainPart()), Book());
    EXPECT_EQ(package.RelationshipsOf(package.MainPart()).All().size(), 1U);
    EXPECT_TRUE(package.Has("/xl/worksheets/sheet1.xml"));
    EXPECT_TRUE(package.Has("/XL/Worksheets/Sheet1.XML"));
    EXPECT_FALSE(package.Has("/xl/worksheets/sheet2.xml"));
    EXPECT_EQ(package.TypeOf("/XL/worksheets/sheet1.xml"), kSheetType);
    EXPECT_EQ(*package.Read("/xl/worksheets/sheet1.xml"), kSheet);
}

const std::string kOddBook = "/xl/my%20book.XML";

INSTANTIATE_TEST_SUITE_P(
    Packages, OpenPackageTest,
    testing::Values(
        OpenCase{"Usual", Workbook()},
        OpenCase{"Strict", With({{"_rels/.rels",
                                  Rels(kStrictRelations + "/officeDocument", "xl/workbook.xml")}})},
        OpenCase{"AbsoluteTarget",
                 With({{"_rels/.rels", Rels(kRelations + "/officeDocument", "/xl/workbook.xml")}})},
        OpenCase{"Backslashes", Renamed(Workbook(), Backslashed)},
        OpenCase{"SlashesInFront", Renamed(Workbook(), Rooted)},
        OpenCase{"Capitals", Renamed(Workbook(), Capitals)},
        OpenCase{"Descriptors", AllDescriptors(Workbook())},
        OpenCase{"Folders", With({{"xl/", "", true}, {"xl/worksheets\\", "", true}})},
        OpenCase{"OtherPartName",
                 {{"xl/my book.xml", Book()},
                  {"xl/_rels/my book.xml.rels",
                   Rels(kRelations + "/worksheet", "worksheets/sheet1.xml")},
                  {"xl/worksheets/sheet1.xml", kSheet},
                  {"_rels/.rels", Rels(kRelations + "/officeDocument", "xl/my%20book.XML")},
                  {"[Content_Types].xml", Types(kOddBook)}},
                 kOddBook},
        OpenCase{"Template",
                 With({{"[Content_Types].xml",
                        Types("/xl/workbook.xml",
                              std::string(kTypeFamily) + "spreadsheetml.template.main+xml")}})},
        OpenCase{"Macros", With({{"[Content_Types].xml",
                                  Types("/xl/workbook.xml",
                                        "application/vnd.ms-excel.sheet.macroEnabled.main+xml")}})},
        OpenCase{"TypeOfAnyXml",
                 With({{"[Content_Types].xml", Types("/xl/workbook.xml", "application/xml")}})},
        OpenCase{"Utf16", With({{"[Content_Types].xml", InUtf16(Types())},
                                {"xl/workbook.xml", InUtf16(Book())}})}),
    [](const auto& row) { return std::string(row.param.name); });

struct RefusedCase {
    const char* name;
    std::string bytes;
    util::AnyErrorKind kind;
    std::string cause = {}; ///< a part of it
};

class RefusePackageTest : public testing::TestWithParam<RefusedCase> {};
TEST_P(RefusePackageTest, SaysWhy)
{
    const ScratchFolder folder;
    const auto path = folder.Write("a.xlsx", GetParam().bytes);
    try {
        const Package package(path);
        FAIL() << "not refused";
    }
    catch (const Error& error) {
        EXPECT_EQ(error.Kind(), GetParam().kind);
        EXPECT_EQ(error.Subject(), path.string());
        EXPECT_THAT(error.Cause(), testing::HasSubstr(GetParam().cause));
    }
}

std::string Presentation()
{
    return BuildZip(
        {{"[Content_Types].xml",
          Types("/ppt/presentation.xml",
                std::string(kTypeFamily) + "presentationml.presentation.main+xml")},
         {"_rels/.rels", Rels(kRelations + "/officeDocument", "ppt/presentation.xml")},
         {"ppt/presentation.xml", "<p:presentation xmlns:p=\"http://schemas.openxmlformats.org/"
                                  "presentationml/2006/main\"/>"}});
}

std::string Binary(const std::string& type)
{
    return BuildZip({{"[Content_Types].xml", Types("/xl/workbook.bin", type)},
                     {"_rels/.rels", Rels(kRelations + "/officeDocument", "xl/workbook.bin")},
                     {"xl/workbook.bin", "\x83\x01"}});
}

INSTANTIATE_TEST_SUITE_P(
    Files, RefusePackageTest,
    testing::Values(
        RefusedCase{"Empty", "", ErrorKind::NotAWorkbook},
        RefusedCase{"Text", "name,date\r\nEaster,0405\r\n", ErrorKind::NotAWorkbook},
        RefusedCase{"Page", "<html><body><table></table></body></html>", ErrorKind::NotAWorkbook},
        RefusedCase{"XmlOf2003",
                    "<?xml version=\"1.0\"?><Workbook "
                    "xmlns=\"urn:schemas-microsoft-com:office:spreadsheet\"/>",
                    ErrorKind::NotAWorkbook},
        RefusedCase{"OldestFormat", std::string("\x09\x00\x04\x00\x02\x00\x10\x00", 8),
                    ErrorKind::NotAWorkbook},
        RefusedCase{"CutContainer", BuildZip(Workbook()).substr(0, 700), ErrorKind::DamagedWorkbook,
                    "no directory"},
        RefusedCase{"OtherZip", BuildZip({{"readme.txt", "hello"}}), ErrorKind::NotAWorkbook},
        RefusedCase{"Presentation", Presentation(), ErrorKind::NotAWorkbook,
                    "/ppt/presentation.xml"},
        RefusedCase{"BinaryByType",
                    Binary("application/vnd.ms-excel.sheet.binary.macroEnabled.main"),
                    ErrorKind::BinaryWorkbook},
        RefusedCase{"BinaryByName", Binary("application/octet-stream"), ErrorKind::BinaryWorkbook},
        RefusedCase{"NoTypes", BuildZip(Without("[Content_Types].xml")), ErrorKind::DamagedWorkbook,
                    "/[Content_Types].xml"},
        RefusedCase{"NoPackageRelationships", BuildZip(Without("_rels/.rels")),
                    ErrorKind::DamagedWorkbook, "which part"},
        RefusedCase{
            "NoWorkbookRelationship",
            BuildZip(With({{"_rels/.rels", Rels(kRelations + "/image", "xl/workbook.xml")}})),
            ErrorKind::DamagedWorkbook, "which part"},
        RefusedCase{"NoMainPart", BuildZip(Without("xl/workbook.xml")), ErrorKind::DamagedWorkbook,
                    "/xl/workbook.xml"},
        RefusedCase{"PartTwice", BuildZip(Twice(Workbook())), ErrorKind::DamagedWorkbook, "twice"},
        RefusedCase{"TypesNotWellFormed", BuildZip(With({{"[Content_Types].xml", "<Types>"}})),
                    ErrorKind::DamagedWorkbook, "/[Content_Types].xml"},
        RefusedCase{"TypesWithEntities",
                    BuildZip(With({{"[Content_Types].xml",
                                    "<!DOCTYPE a [<!ENTITY b \"c\">]><Types>&b;</Types>"}})),
                    ErrorKind::DamagedWorkbook, "document type"},
        RefusedCase{"RelationshipsNotWellFormed", BuildZip(With({{"_rels/.rels", "<R>"}})),
                    ErrorKind::DamagedWorkbook, "/_rels/.rels"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Package, DistinguishesMissingFilesFromFolders)
{
    const ScratchFolder folder;
    const auto kindOf = [](const std::filesystem::path& path) -> std::optional<util::AnyErrorKind> {
        try {
            const Package package(path);
        }
        catch (const Error& error) {
            return error.Kind();
        }
        return std::nullopt;
    };
    EXPECT_EQ(kindOf(folder / "none.xlsx"), util::ErrorKind::FileNotFound);
    EXPECT_EQ(kindOf(folder.Path()), util::ErrorKind::NotARegularFile);
}

class PackageTest : public testing::Test {
protected:
    ScratchFolder folder;
    Package package{folder.Write("a.xlsx", BuildZip(With({{"custom/", "", true}})))};
};

TEST_F(PackageTest, ListsPartsInOrder)
{
    EXPECT_THAT(package.PartNames(),
                testing::ElementsAre("/xl/workbook.xml", "/xl/worksheets/sheet1.xml",
                                     "/xl/media/image1.png"));
}

TEST_F(PackageTest, NamesTheMissingPart)
{
    try {
        package.Read("/xl/none.xml");
        FAIL() << "nothing was thrown";
    }
    catch (const Error& error) {
        EXPECT_EQ(error.Kind(), ErrorKind::DamagedWorkbook);
        EXPECT_EQ(error.Cause(), "the part /xl/none.xml is missing");
    }
}

TEST_F(PackageTest, KeepsTheTextOfXmlParts)
{
    EXPECT_EQ(package.ReadXml("/xl/workbook.xml"), package.ReadXml("/XL/workbook.xml"));
}

TEST_F(PackageTest, HasNoRelationshipsWithoutTheirPart)
{
    EXPECT_TRUE(package.RelationshipsOf("/xl/worksheets/sheet1.xml").All().empty());
    EXPECT_EQ(package.RelationshipsOf("").All().size(), 1U);
}

TEST_F(PackageTest, FindsFreePartNames)
{
    const auto free = [this](std::string_view prefix, std::size_t number = 1) {
        return package.FreePartName(prefix, ".xml", number);
    };
    EXPECT_EQ(free("/xl/worksheets/sheet"), "/xl/worksheets/sheet2.xml");
    EXPECT_EQ(free("/XL/Worksheets/Sheet"), "/XL/Worksheets/Sheet2.xml");
    EXPECT_EQ(free("/xl/worksheets/sheet", 7), "/xl/worksheets/sheet7.xml");
    EXPECT_EQ(free("/xl/drawings/drawing"), "/xl/drawings/drawing1.xml");
}

TEST(PackageNames, ThatDifferInCaseAreCarriedAlong)
{
    const ScratchFolder folder;
    const auto path = folder.Write("a.xlsx", BuildZip(With({{"XL/Workbook.xml", "<other/>"}})));
    const Package package(path);
    EXPECT_EQ(*package.Read("/XL/Workbook.xml"), Book()) << "the first counts";
    EXPECT_THAT(package.PartNames(),
                testing::ElementsAre("/xl/workbook.xml", "/xl/worksheets/sheet1.xml",
                                     "/xl/media/image1.png"));
}

TEST(PackageXml, IsCheckedWhenItIsRead)
{
    std::string deep;
    for (int i = 0; i < 300; ++i)
        deep += "<a>";
    for (int i = 0; i < 300; ++i)
        deep += "</a>";
    const ScratchFolder folder;
    const auto path = folder.Write(
        "a.xlsx", BuildZip(With({{"xl/cut.xml", "<a><b></a>"},
                                 {"xl/deep.xml", deep},
                                 {"xl/type.xml", "<!DOCTYPE a SYSTEM \"file:///etc/passwd\"><a/>"},
                                 {"xl/bytes.xml", "<a>\xFF</a>"},
                                 {"xl/latin.xml",
                                  "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE4</a>"}})));
    const Package package(path);
    const auto kindOf = [&](std::string_view part) -> std::optional<util::AnyErrorKind> {
        try {
            package.ReadXml(part);
        }
        catch (const Error& error) {
            EXPECT_EQ(error.Subject(), path.string());
            EXPECT_THAT(error.Cause(), testing::StartsWith(std::string(part)));
            return error.Kind();
        }
        return std::nullopt;
    };
    EXPECT_EQ(kindOf("/xl/cut.xml"), ErrorKind::DamagedWorkbook);
    EXPECT_EQ(kindOf("/xl/deep.xml"), ErrorKind::TooDeeplyNested);
    EXPECT_EQ(kindOf("/xl/type.xml"), ErrorKind::DamagedWorkbook);
    EXPECT_EQ(kindOf("/xl/bytes.xml"), ErrorKind::DamagedWorkbook);
    EXPECT_EQ(*package.ReadXml("/xl/latin.xml"),
              "<?xml version='1.0' encoding='UTF-8'?><a>\xC3\xA4</a>");
    EXPECT_EQ(*package.Read("/xl/cut.xml"), "<a><b></a>") << "the bytes may be had";
}

TEST(PackageXml, IsReadUpToALimitInAll)
{
    std::string noise; // hardly compressible: the ratio of sizes is not the reason for the refusal
    for (unsigned number = 1; noise.size() < 400'000; number = number * 1664525U + 1013904223U)
        noise += static_cast<char>('a' + (number >> 24U) % 26U);
    const ScratchFolder folder;
    const auto claims = [&](const std::string& name, std::uint32_t size) {
        return ZipPart{.name = name, .content = noise, .stored = true, .declaredSize = size};
    };
    constexpr std::uint32_t kLimit = Package::kMaxRead;
    const Package package(
        folder.Write("a.xlsx", BuildZip(With({{"xl/small.xml", "<small/>"},
                                              claims("xl/over.xml", kLimit + 1),
                                              claims("xl/just.xml", kLimit),
                                              claims("xl/rest.xml", kLimit - 8)}))));
    const auto kindOf = [&](std::string_view part) -> std::optional<util::AnyErrorKind> {
        return orrery::test::KindThrownBy([&] { package.ReadXml(part); });
    };
    EXPECT_EQ(kindOf("/xl/over.xml"), ErrorKind::TooLargeUnpacked);
    EXPECT_EQ(kindOf("/xl/just.xml"), ErrorKind::DamagedWorkbook) << "it was tried";
    EXPECT_EQ(*package.ReadXml("/xl/small.xml"), "<small/>");
    EXPECT_EQ(kindOf("/xl/just.xml"), ErrorKind::TooLargeUnpacked) << "8 bytes are kept";
    EXPECT_EQ(kindOf("/xl/rest.xml"), ErrorKind::DamagedWorkbook) << "it was tried";
    EXPECT_EQ(*package.ReadXml("/xl/small.xml"), "<small/>") << "what is kept needs no more room";
}

} // namespace
} // namespace orrery::xlsx
