#include "engines/builtin/xlsx/package/package.h"

#include "util/error.h"
#include "util/paths.h"
#include "util/scratch_folder.h"
#include "zip/built_zip.h"
#include "zip/thrown_kind.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

namespace orrery::xlsx {
namespace {

using test::BuildZip;
using test::PackedBytes;
using test::ZipPart;
using testing_support::BytesOf;
using testing_support::ScratchFolder;
using util::Error;
using util::ErrorKind;

using Parts = std::vector<ZipPart>;

constexpr std::string_view kTypeFamily = "application/vnd.openxmlformats-officedocument.";
const std::string kBookType = std::string(kTypeFamily) + "spreadsheetml.sheet.main+xml";
const std::string kSheetType = std::string(kTypeFamily) + "spreadsheetml.worksheet+xml";
const std::string kRelations =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
const std::string kStrictRelations = "http://purl.oclc.org/ooxml/officeDocument/relationships";
const std::string kMain = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";

std::string Types(const std::string& bookName = "/xl/workbook.xml",
                  const std::string& bookType = kBookType)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n"
           "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
           "<Default Extension=\"rels\" "
           "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
           "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
           "<Default Extension=\"png\" ContentType=\"image/png\"/>"
           "<Override PartName=\"" +
           bookName + "\" ContentType=\"" + bookType +
           "\"/><Override PartName=\"/xl/worksheets/sheet1.xml\" ContentType=\"" + kSheetType +
           "\"/></Types>";
}

std::string Rels(const std::string& type, const std::string& target, const std::string& id = "rId1")
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n"
           "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
           "<Relationship Id=\"" +
           id + "\" Type=\"" + type + "\" Target=\"" + target + "\"/></Relationships>";
}

std::string Book(const std::string& root = "workbook")
{
    return "<" + root + " xmlns=\"" + kMain + "\"><sheets/></" + root + ">";
}

const std::string kSheet = "<worksheet xmlns=\"" + kMain + "\"><sheetData/></worksheet>";

Parts Workbook()
{
    return {
        {"[Content_Types].xml", Types()},
        {"_rels/.rels", Rels(kRelations + "/officeDocument", "xl/workbook.xml")},
        {"xl/workbook.xml", Book()},
        {"xl/_rels/workbook.xml.rels", Rels(kRelations + "/worksheet", "worksheets/sheet1.xml")},
        {"xl/worksheets/sheet1.xml", kSheet},
        {"xl/media/image1.png", "no picture, but bytes", true}};
}

/// The workbook with some of its entries exchanged.
Parts With(const Parts& others)
{
    Parts parts = Workbook();
    for (const ZipPart& other : others) {
        const auto same = std::find_if(parts.begin(), parts.end(), [&](const ZipPart& part) {
            return part.name == other.name;
        });
        if (same == parts.end())
            parts.push_back(other);
        else
            *same = other;
    }
    return parts;
}

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

/// In UTF-16 with a byte-order mark, the declaration left as it is.
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
    ErrorKind kind;
    std::string cause = {}; ///< a piece of it
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

TEST(Package, TellsMissingFilesFromFolders)
{
    const ScratchFolder folder;
    const auto kindOf = [](const std::filesystem::path& path) {
        try {
            const Package package(path);
        }
        catch (const Error& error) {
            return error.Kind();
        }
        return ErrorKind::WrongUsage;
    };
    EXPECT_EQ(kindOf(folder / "none.xlsx"), ErrorKind::FileNotFound);
    EXPECT_EQ(kindOf(folder.Path()), ErrorKind::NotARegularFile);
}

class PackageTest : public testing::Test {
protected:
    static std::string ThrownCause(const std::function<void()>& action, ErrorKind kind)
    {
        try {
            action();
        }
        catch (const Error& error) {
            EXPECT_EQ(error.Kind(), kind);
            return error.Cause();
        }
        ADD_FAILURE() << "nothing was thrown";
        return {};
    }
    static std::vector<std::string> EntryNames(const std::filesystem::path& path)
    {
        const zip::Reader zip(path);
        std::vector<std::string> names;
        for (const zip::Entry& entry : zip.Entries())
            names.push_back(entry.name);
        return names;
    }
    /// What an entry holds.
    static std::string Entry(const std::filesystem::path& path, const std::string& name)
    {
        const zip::Reader zip(path);
        for (std::size_t i = 0; i < zip.Entries().size(); ++i)
            if (zip.Entries()[i].name == name)
                return zip.Read(i);
        ADD_FAILURE() << name << " is missing";
        return {};
    }

    ScratchFolder folder;
    std::string bytes = BuildZip(With({{"xl/styles.xml", "<styleSheet/>"}, {"custom/", "", true}}));
    std::filesystem::path source = folder.Write("a.xlsx", bytes);
    std::filesystem::path target = folder / "b.xlsx";
    Package package{source};
};

TEST_F(PackageTest, ListsPartsInOrder)
{
    package.Put("/xl/worksheets/sheet10.xml", kSheetType, kSheet);
    package.Put("/xl/worksheets/sheet2.xml", kSheetType, kSheet);
    package.Remove("/xl/styles.xml");
    EXPECT_THAT(package.PartNames(),
                testing::ElementsAre("/xl/workbook.xml", "/xl/worksheets/sheet1.xml",
                                     "/xl/media/image1.png", "/xl/worksheets/sheet10.xml",
                                     "/xl/worksheets/sheet2.xml"));
}

TEST_F(PackageTest, SaysWhichPartIsMissing)
{
    EXPECT_EQ(ThrownCause([&] { package.Read("/xl/none.xml"); }, ErrorKind::DamagedWorkbook),
              "the part /xl/none.xml is missing");
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
    package.Put("/XL/Worksheets/Sheet2.xml", kSheetType, kSheet);
    EXPECT_EQ(free("/xl/worksheets/sheet"), "/xl/worksheets/sheet3.xml");
    EXPECT_EQ(free("/xl/worksheets/sheet", 7), "/xl/worksheets/sheet7.xml");
    EXPECT_EQ(free("/xl/drawings/drawing"), "/xl/drawings/drawing1.xml");
}

TEST_F(PackageTest, SavesUnchangedPartsBitForBit)
{
    package.Save(target);
    const std::string saved = BytesOf(target);
    EXPECT_EQ(EntryNames(target), EntryNames(source));
    for (const std::string& name : EntryNames(source)) {
        ASSERT_TRUE(PackedBytes(saved, name)) << name;
        EXPECT_EQ(PackedBytes(saved, name), PackedBytes(bytes, name)) << name;
    }
}

TEST_F(PackageTest, SavesChangedPartsInTheirPlaceAndNewOnesBehind)
{
    package.Put("/XL/Workbook.xml", kBookType, "<workbook/>");
    package.Put("/xl/worksheets/sheet2.xml", kSheetType,
                [] { return std::string("<worksheet/>"); });
    package.PutCopy("/xl/media/image2.png", "/xl/media/image1.png");
    package.Save(target);

    auto names = EntryNames(source);
    names.insert(names.end(), {"xl/worksheets/sheet2.xml", "xl/media/image2.png"});
    EXPECT_EQ(EntryNames(target), names);
    EXPECT_EQ(Entry(target, "xl/workbook.xml"), "<workbook/>");
    EXPECT_EQ(Entry(target, "xl/worksheets/sheet2.xml"), "<worksheet/>");
    EXPECT_EQ(Entry(target, "xl/media/image2.png"), "no picture, but bytes");
    const std::string saved = BytesOf(target);
    EXPECT_EQ(PackedBytes(saved, "xl/worksheets/sheet1.xml"),
              PackedBytes(bytes, "xl/worksheets/sheet1.xml"));
    EXPECT_EQ(PackedBytes(saved, "xl/media/image2.png"), PackedBytes(bytes, "xl/media/image1.png"));

    std::string types = Types();
    types.insert(types.find("</Types>"),
                 "<Override PartName=\"/xl/worksheets/sheet2.xml\" ContentType=\"" + kSheetType +
                     "\"/>");
    EXPECT_EQ(Entry(target, "[Content_Types].xml"), types) << "the picture's extension has a type";
}

TEST_F(PackageTest, ReadsItsPartsAsTheyWereOpened)
{
    package.Put("/xl/workbook.xml", kBookType, "<workbook/>");
    EXPECT_EQ(*package.ReadXml("/xl/workbook.xml"), Book());
    package.PutCopy("/xl/copy.xml", "/xl/workbook.xml");
    EXPECT_EQ(*package.Read("/xl/copy.xml"), Book());
    package.Put("/xl/new.xml", kSheetType, "<a/>");
    EXPECT_EQ(*package.ReadXml("/xl/new.xml"), "<a/>");
    package.PutCopy("/xl/newcopy.xml", "/xl/new.xml");
    EXPECT_EQ(*package.Read("/xl/newcopy.xml"), "<a/>");
    EXPECT_EQ(package.TypeOf("/xl/newcopy.xml"), kSheetType);
    EXPECT_NE(
        ThrownCause([&] { package.PutCopy("/xl/x.xml", "/xl/y.xml"); }, ErrorKind::DamagedWorkbook),
        "");
}

TEST_F(PackageTest, RemovesPartsWithTypeAndRelationships)
{
    Relationships relationships;
    relationships.Add(kRelations + "/image", "../media/image1.png");
    package.SetRelationships("/xl/worksheets/sheet1.xml", std::move(relationships));
    package.Remove("/XL/worksheets/sheet1.xml");
    EXPECT_FALSE(package.Has("/xl/worksheets/sheet1.xml"));
    EXPECT_TRUE(package.RelationshipsOf("/xl/worksheets/sheet1.xml").All().empty());
    package.Remove("/xl/workbook.xml");
    package.Save(target);
    EXPECT_THAT(EntryNames(target),
                testing::ElementsAre("[Content_Types].xml", "_rels/.rels", "xl/media/image1.png",
                                     "xl/styles.xml", "custom/"));
    EXPECT_EQ(Entry(target, "[Content_Types].xml").find("Override"), std::string::npos);
}

TEST_F(PackageTest, RestoresParts)
{
    package.Put("/xl/worksheets/sheet1.xml", "t/other", "<a/>");
    package.Remove("/xl/workbook.xml");
    package.Put("/xl/new.xml", kSheetType, "<a/>");
    package.Restore("/xl/Worksheets/sheet1.xml");
    package.Restore("/xl/workbook.xml");
    package.Restore("/xl/new.xml");
    package.Restore("/xl/never.xml");
    EXPECT_EQ(package.RelationshipsOf("/xl/workbook.xml").All().size(), 1U);
    package.Save(target);
    EXPECT_EQ(EntryNames(target), EntryNames(source));
    for (const std::string& name : EntryNames(source))
        EXPECT_EQ(Entry(target, name), Entry(source, name)) << name;
}

TEST_F(PackageTest, WritesRelationships)
{
    Relationships book = package.RelationshipsOf("/xl/workbook.xml");
    book.Add(kRelations + "/worksheet", "worksheets/sheet2.xml");
    package.SetRelationships("/xl/workbook.xml", book);
    package.SetRelationships("/xl/worksheets/sheet1.xml", Relationships());
    package.Put("/xl/worksheets/sheet2.xml", kSheetType, kSheet);
    package.SetRelationships("/xl/worksheets/sheet2.xml", book);
    EXPECT_EQ(package.RelationshipsOf("/xl/workbook.xml").All(), book.All());
    package.Save(target);
    auto names = EntryNames(source);
    names.insert(names.end(), {"xl/worksheets/sheet2.xml", "xl/worksheets/_rels/sheet2.xml.rels"});
    EXPECT_EQ(EntryNames(target), names) << "no part for no relationships";
    EXPECT_EQ(Package(target).RelationshipsOf("/xl/worksheets/sheet2.xml").All(), book.All());
    EXPECT_EQ(Package(target).RelationshipsOf("/xl/workbook.xml").All(), book.All());
}

TEST_F(PackageTest, SavesTwiceTheSame)
{
    package.Put("/xl/worksheets/sheet2.xml", kSheetType, kSheet);
    package.Save(target);
    package.Save(folder / "c.xlsx");
    EXPECT_EQ(BytesOf(target), BytesOf(folder / "c.xlsx"));
}

TEST_F(PackageTest, ReadingAndSavingElsewhereLeavesTheFileAlone)
{
    const auto time = std::filesystem::last_write_time(source);
    package.ReadXml("/xl/workbook.xml");
    package.Remove("/xl/styles.xml");
    package.Save(target);
    EXPECT_EQ(BytesOf(source), bytes);
    EXPECT_EQ(std::filesystem::last_write_time(source), time);
    EXPECT_EQ(folder.Entries(), 2) << "no temporary file is left";
}

TEST_F(PackageTest, SavesOverItsOwnFile)
{
    package.Put("/xl/workbook.xml", kBookType, "<workbook/>");
    if (util::kSeparator == '\\') { // Windows replaces no file that is open
        ThrownCause([&] { package.Save(source); }, ErrorKind::FileNotWritable);
        EXPECT_EQ(BytesOf(source), bytes);
        return;
    }
    package.Save(source);
    EXPECT_EQ(Entry(source, "xl/workbook.xml"), "<workbook/>");
    EXPECT_EQ(*package.Read("/xl/worksheets/sheet1.xml"), kSheet) << "the old file is still open";
    package.Save(source);
    EXPECT_EQ(Entry(source, "xl/media/image1.png"), "no picture, but bytes");
    EXPECT_EQ(folder.Entries(), 1);
}

TEST_F(PackageTest, KeepsTheOldTargetWhenContentFails)
{
    folder.Write("b.xlsx", "old");
    package.Put("/xl/new.xml", kSheetType,
                []() -> std::string { throw std::invalid_argument("x"); });
    EXPECT_THROW(package.Save(target), std::invalid_argument);
    EXPECT_EQ(BytesOf(target), "old");
    EXPECT_EQ(folder.Entries(), 2);
}

TEST_F(PackageTest, NamesTheTargetThatCannotBeWritten)
{
    const auto nowhere = folder / "none/b.xlsx";
    try {
        package.Save(nowhere);
        FAIL() << "nothing was thrown";
    }
    catch (const Error& error) {
        EXPECT_EQ(error.Kind(), ErrorKind::FileNotWritable);
        EXPECT_EQ(error.Subject(), nowhere.string());
    }
}

TEST(PackageNames, ThatDifferInCaseAreCarriedAlong)
{
    const ScratchFolder folder;
    const auto path = folder.Write("a.xlsx", BuildZip(With({{"XL/Workbook.xml", "<other/>"}})));
    Package package(path);
    EXPECT_EQ(*package.Read("/XL/Workbook.xml"), Book()) << "the first counts";
    EXPECT_THAT(package.PartNames(),
                testing::ElementsAre("/xl/workbook.xml", "/xl/worksheets/sheet1.xml",
                                     "/xl/media/image1.png"));
    package.Put("/xl/workbook.xml", kBookType, "<workbook/>");
    package.Save(folder / "b.xlsx");
    const zip::Reader saved(folder / "b.xlsx");
    EXPECT_EQ(saved.Read(2), "<workbook/>");
    EXPECT_EQ(saved.Entries().back().name, "XL/Workbook.xml");
    EXPECT_EQ(saved.Read(saved.Entries().size() - 1), "<other/>");
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
    const auto kindOf = [&](std::string_view part) {
        try {
            package.ReadXml(part);
        }
        catch (const Error& error) {
            EXPECT_EQ(error.Subject(), path.string());
            EXPECT_THAT(error.Cause(), testing::StartsWith(std::string(part)));
            return error.Kind();
        }
        return ErrorKind::WrongUsage;
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
    std::string noise; // packs badly: the ratio of sizes is not what is refused
    for (unsigned number = 1; noise.size() < 400'000; number = number * 1664525U + 1013904223U)
        noise += static_cast<char>('a' + (number >> 24U) % 26U);
    const ScratchFolder folder;
    const auto claims = [&](const std::string& name, std::uint32_t size) {
        return ZipPart{.name = name, .content = noise, .stored = true, .declaredSize = size};
    };
    constexpr std::uint32_t kLimit = Package::kMostRead;
    const Package package(
        folder.Write("a.xlsx", BuildZip(With({{"xl/small.xml", "<small/>"},
                                              claims("xl/over.xml", kLimit + 1),
                                              claims("xl/just.xml", kLimit),
                                              claims("xl/rest.xml", kLimit - 8)}))));
    const auto kindOf = [&](std::string_view part) {
        return test::KindThrownBy([&] { package.ReadXml(part); });
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
