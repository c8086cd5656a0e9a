#include "engines/builtin/xlsx/package/package_edit.h"

#include "book/error.h"
#include "util/error.h"
#include "util/paths.h"
#include "util/scratch_folder.h"
#include "xlsx/package/small_package.h"
#include "zip/built_zip.h"
#include "zip/thrown_kind.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

namespace orrery::xlsx {
namespace {

using namespace test;
using orrery::test::BuildZip;
using orrery::test::KindThrownBy;
using orrery::test::PackedBytes;
using testing_support::BytesOf;
using testing_support::ScratchFolder;
using util::Error;

class PackageEditTest : public testing::Test {
protected:
    static std::vector<std::string> EntryNames(const std::filesystem::path& path)
    {
        const zip::Reader zip(path);
        std::vector<std::string> names;
        for (const zip::Entry& entry : zip.Entries())
            names.push_back(entry.name);
        return names;
    }
    /// The content of an entry.
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
    const Package package{source};
    PackageEdit edit{package};
};

TEST_F(PackageEditTest, SavesUnchangedPartsBitForBit)
{
    edit.Save(target);
    const std::string saved = BytesOf(target);
    EXPECT_EQ(EntryNames(target), EntryNames(source));
    for (const std::string& name : EntryNames(source)) {
        ASSERT_TRUE(PackedBytes(saved, name)) << name;
        EXPECT_EQ(PackedBytes(saved, name), PackedBytes(bytes, name)) << name;
    }
}

TEST_F(PackageEditTest, SavesChangedPartsInTheirPlaceAndNewOnesAtTheEnd)
{
    edit.Put("/XL/Workbook.xml", kBookType, "<workbook/>");
    edit.Put("/xl/worksheets/sheet2.xml", kSheetType,
             [](zip::EntrySink& sink) { sink.Add("<worksheet/>"); });
    edit.PutCopy("/xl/media/image2.png", "/xl/media/image1.png");
    edit.Save(target);

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

TEST_F(PackageEditTest, LeavesThePackageAsItWasOpened)
{
    edit.Put("/xl/workbook.xml", kBookType, "<workbook/>");
    edit.Remove("/xl/styles.xml");
    edit.Put("/xl/new.xml", kSheetType, "<a/>");
    EXPECT_EQ(*package.ReadXml("/xl/workbook.xml"), Book());
    EXPECT_TRUE(package.Has("/xl/styles.xml"));
    EXPECT_FALSE(package.Has("/xl/new.xml"));
    PackageEdit(package).Save(target);
    EXPECT_EQ(EntryNames(target), EntryNames(source)) << "another edit begins anew";
}

TEST_F(PackageEditTest, CopiesPartsOfThePackageOnly)
{
    edit.PutCopy("/xl/copy.xml", "/xl/worksheets/sheet1.xml");
    edit.Save(target);
    EXPECT_EQ(*Package(target).Read("/xl/copy.xml"), kSheet);
    EXPECT_EQ(Package(target).TypeOf("/xl/copy.xml"), kSheetType);
    EXPECT_EQ(KindThrownBy([&] { edit.PutCopy("/xl/x.xml", "/xl/y.xml"); }),
              book::ErrorKind::DamagedWorkbook);
}

TEST_F(PackageEditTest, RemovesPartsWithTypeAndRelationships)
{
    Relationships relationships;
    relationships.Add(kRelations + "/image", "../media/image1.png");
    edit.SetRelationships("/xl/worksheets/sheet1.xml", std::move(relationships));
    edit.Remove("/XL/worksheets/sheet1.xml");
    edit.Remove("/xl/workbook.xml");
    edit.Save(target);
    EXPECT_THAT(EntryNames(target),
                testing::ElementsAre("[Content_Types].xml", "_rels/.rels", "xl/media/image1.png",
                                     "xl/styles.xml", "custom/"));
    EXPECT_EQ(Entry(target, "[Content_Types].xml").find("Override"), std::string::npos);
}

TEST_F(PackageEditTest, WritesRelationships)
{
    Relationships book = package.RelationshipsOf("/xl/workbook.xml");
    book.Add(kRelations + "/worksheet", "worksheets/sheet2.xml");
    edit.SetRelationships("/xl/workbook.xml", book);
    edit.SetRelationships("/xl/worksheets/sheet1.xml", Relationships());
    edit.Put("/xl/worksheets/sheet2.xml", kSheetType, kSheet);
    edit.SetRelationships("/xl/worksheets/sheet2.xml", book);
    edit.Save(target);
    auto names = EntryNames(source);
    names.insert(names.end(), {"xl/worksheets/sheet2.xml", "xl/worksheets/_rels/sheet2.xml.rels"});
    EXPECT_EQ(EntryNames(target), names) << "no part for no relationships";
    EXPECT_EQ(Package(target).RelationshipsOf("/xl/worksheets/sheet2.xml").All(), book.All());
    EXPECT_EQ(Package(target).RelationshipsOf("/xl/workbook.xml").All(), book.All());
}

TEST_F(PackageEditTest, SavesTwiceTheSame)
{
    edit.Put("/xl/worksheets/sheet2.xml", kSheetType, kSheet);
    edit.Save(target);
    edit.Save(folder / "c.xlsx");
    EXPECT_EQ(BytesOf(target), BytesOf(folder / "c.xlsx"));
}

TEST_F(PackageEditTest, ReadingAndSavingElsewhereLeavesTheFileAlone)
{
    const auto time = std::filesystem::last_write_time(source);
    package.ReadXml("/xl/workbook.xml");
    edit.Remove("/xl/styles.xml");
    edit.Save(target);
    EXPECT_EQ(BytesOf(source), bytes);
    EXPECT_EQ(std::filesystem::last_write_time(source), time);
    EXPECT_EQ(folder.Entries(), 2) << "no temporary file is left";
}

TEST_F(PackageEditTest, SavesOverItsOwnFile)
{
    edit.Put("/xl/workbook.xml", kBookType, "<workbook/>");
    edit.Save(source);
    EXPECT_EQ(Entry(source, "xl/workbook.xml"), "<workbook/>");
    EXPECT_EQ(*package.Read("/xl/worksheets/sheet1.xml"), kSheet) << "the old file is still open";
    edit.Save(source);
    EXPECT_EQ(Entry(source, "xl/media/image1.png"), "no picture, but bytes");
    const bool staysUntilClosed = util::kSeparator == '\\';
    EXPECT_EQ(folder.Entries(), staysUntilClosed ? 2 : 1);
}

TEST_F(PackageEditTest, KeepsTheOldTargetWhenContentFails)
{
    folder.Write("b.xlsx", "old");
    edit.Put("/xl/new.xml", kSheetType, [](zip::EntrySink&) { throw std::invalid_argument("x"); });
    EXPECT_THROW(edit.Save(target), std::invalid_argument);
    EXPECT_EQ(BytesOf(target), "old");
    EXPECT_EQ(folder.Entries(), 2);
}

TEST_F(PackageEditTest, NamesTheTargetThatCannotBeWritten)
{
    const auto nowhere = folder / "none/b.xlsx";
    try {
        edit.Save(nowhere);
        FAIL() << "nothing was thrown";
    }
    catch (const Error& error) {
        EXPECT_EQ(error.Kind(), util::ErrorKind::FileNotWritable);
        EXPECT_EQ(error.Subject(), nowhere.string());
    }
}

TEST(PackageEditNames, ThatDifferInCaseAreCarriedAlong)
{
    const ScratchFolder folder;
    const auto path = folder.Write("a.xlsx", BuildZip(With({{"XL/Workbook.xml", "<other/>"}})));
    const Package package(path);
    PackageEdit edit(package);
    edit.Put("/xl/workbook.xml", kBookType, "<workbook/>");
    edit.Save(folder / "b.xlsx");
    const zip::Reader saved(folder / "b.xlsx");
    EXPECT_EQ(saved.Read(2), "<workbook/>");
    EXPECT_EQ(saved.Entries().back().name, "XL/Workbook.xml");
    EXPECT_EQ(saved.Read(saved.Entries().size() - 1), "<other/>");
}

} // namespace
} // namespace orrery::xlsx
