#include "engines/builtin/xlsx/sheet_copy.h"

#include "engines/builtin/xlsx/part_references.h"
#include "util/scratch_folder.h"
#include "xlsx/built_book.h"
#include "xlsx/saved_package.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>

namespace orrery::xlsx {
namespace {

using testing::IsSupersetOf;

SheetNames ModelIs(std::string current)
{
    return [current](std::string_view name) -> std::optional<std::string> {
        if (name == "Model")
            return current;
        return std::nullopt;
    };
}

TEST(OwnedPartsTest, AreAllThatTheSheetReachesButPictures)
{
    const auto package = Package(test::EverythingPath());
    const auto owned = OwnedParts(package, "/xl/worksheets/sheet1.xml");
    EXPECT_THAT(owned, IsSupersetOf({"/xl/drawings/drawing1.xml", "/xl/drawings/vmlDrawing1.vml",
                                     "/xl/drawings/vmlDrawing2.vml", "/xl/charts/chart1.xml",
                                     "/xl/comments1.xml", "/xl/tables/table1.xml",
                                     "/xl/ctrlProps/ctrlProp1.xml",
                                     "/xl/threadedComments/threadedComment1.xml",
                                     "/xl/printerSettings/printerSettings1.bin"}));
    EXPECT_EQ(owned.size(), 9U);
}

struct LinkCase {
    const char* name;
    const char* target;
    const char* current;
    const char* expected;
};
class InnerLinkTest : public testing::TestWithParam<LinkCase> {};

TEST_P(InnerLinkTest, FollowsTheSheet)
{
    Relationships relationships;
    relationships.Add("http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
                      "hyperlink",
                      GetParam().target);
    EXPECT_EQ(HasInnerLinks(relationships), GetParam().target[0] == '#');
    const auto renamed = RenameInnerLinks(relationships, ModelIs(GetParam().current));
    EXPECT_EQ(renamed.All().front().Target, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Links, InnerLinkTest,
    testing::Values(LinkCase{"PlainName", "#Model!A1", "May", "#May!A1"},
                    LinkCase{"NewNameNeedsQuotes", "#Model!A1", "My May", "#'My%20May'!A1"},
                    LinkCase{"QuotedInTheTemplate", "#'Model'!B2", "May", "#May!B2"},
                    LinkCase{"OtherSheet", "#Other!A1", "May", "#Other!A1"},
                    LinkCase{"OutsideTheWorkbook", "https://example.org/Model!A1", "May",
                             "https://example.org/Model!A1"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(SheetCopierTest, CopiesOfOneSheetHaveNothingInCommon)
{
    const auto package = Package(test::EverythingPath());
    SheetCopier copier(package, {});
    const auto first = copier.Copy("/xl/worksheets/sheet1.xml");
    const auto second = copier.Copy("/xl/worksheets/sheet1.xml");
    EXPECT_EQ(first->identity.tables.at("Plan"), "Plan_2");
    EXPECT_EQ(second->identity.tables.at("Plan"), "Plan_3");
    EXPECT_NE(first->identity.number, second->identity.number);
    EXPECT_NE(first->identity.drawings, second->identity.drawings);
    EXPECT_EQ(first->plan.parts.size(), 10U);
    std::set<std::string> parts;
    for (const auto* copy : {first.get(), second.get()}) {
        for (const auto& part : copy->plan.parts) {
            EXPECT_TRUE(package.IsFree(part.copy)) << part.copy;
            EXPECT_TRUE(copier.HasPart(part.copy)) << part.copy;
            parts.insert(part.copy);
        }
    }
    EXPECT_EQ(parts.size(), 20U);
}

TEST(SheetCopierTest, ACopyHasThePartsOfItsModelUnderOtherNames)
{
    const auto package = Package(test::EverythingPath());
    SheetCopier copier(package, {});
    const auto copy = copier.Copy("/xl/worksheets/sheet1.xml");
    const auto names = std::make_shared<const NamesOfOwner>(NamesOfOwner{ModelIs("May"), {}});
    const testing_support::ScratchFolder folder;
    PackageEdit edit(package);
    copier.Put(
        edit, *copy, [](zip::EntrySink& sink) { sink.Add("<a/>"); }, names);
    edit.Save(folder / "saved.xlsx");
    const Package saved(folder / "saved.xlsx");
    EXPECT_EQ(*saved.Read(copy->Part()), "<a/>");
    std::vector<std::string> copies;
    for (std::size_t i = 1; i < copy->plan.parts.size(); ++i)
        copies.push_back(copy->plan.parts[i].copy);
    EXPECT_THAT(OwnedParts(saved, copy->Part()), testing::UnorderedElementsAreArray(copies));
}

TEST(SheetCopierTest, APivotTableWithoutAUidIsCopiedPacked)
{
    const std::string text = " name=\"" + std::string(1000, 'P') + "\"/>";
    test::BuiltBook book;
    book.Put("xl/pivotTable1.xml", "<pivotTableDefinition" + text, "pivotTable");
    book.Part("xl/pivotTable1.xml").stored = true; // what is rewritten is compressed
    book.Put("xl/pivotTable2.xml",
             "<pivotTableDefinition xmlns:xr=\"urn:xr\" "
             "xr:uid=\"{ABCDEF01-0000-4000-8000-000000000001}\"" +
                 text,
             "pivotTable");
    book.Put("xl/worksheets/_rels/sheet1.xml.rels",
             test::BuiltBook::Links(
                 {{"pivotTable", "../pivotTable1.xml"}, {"pivotTable", "../pivotTable2.xml"}}));
    const testing_support::ScratchFolder folder;
    const auto bytes = book.Bytes();
    const Package package(book.WriteTo(folder));
    SheetCopier copier(package, {});
    const auto copy = copier.Copy("/xl/worksheets/sheet1.xml");
    PackageEdit edit(package);
    copier.Put(
        edit, *copy, [](zip::EntrySink& sink) { sink.Add("<a/>"); },
        std::make_shared<const NamesOfOwner>());
    edit.Save(folder / "saved.xlsx");
    const auto saved = testing_support::BytesOf(folder / "saved.xlsx");
    const auto packed = test::PackedBytes(bytes, "xl/pivotTable1.xml");
    ASSERT_TRUE(packed);
    EXPECT_EQ(test::PackedBytes(saved, "xl/pivotTable3.xml"), packed);
    EXPECT_NE(*Package(folder / "saved.xlsx").Read("/xl/pivotTable4.xml"),
              *package.Read("/xl/pivotTable2.xml"));
}

} // namespace
} // namespace orrery::xlsx
