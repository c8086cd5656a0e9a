#include "engines/builtin/xlsx/sheet_copy.h"

#include "xlsx/saved_package.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace orrery::xlsx {
namespace {

using testing::IsSupersetOf;
using testing::Not;

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

TEST(SheetCopierTest, CopiesOfACopyAreCopiesOfTheTemplate)
{
    auto package = Package(test::EverythingPath());
    SheetCopier copier(package, {});
    const NamesOfOwner names{[] { return ModelIs("May"); }, [] { return TableNames(); }};
    const auto first = copier.Copy(
        "/xl/worksheets/sheet1.xml", [] { return "<a/>"; }, names);
    const auto second = copier.Copy(
        "/xl/worksheets/sheet1.xml", [] { return "<a/>"; }, names);
    EXPECT_NE(first.part, second.part);
    EXPECT_EQ(first.identity->tables.at("Plan"), "Plan_2");
    EXPECT_EQ(second.identity->tables.at("Plan"), "Plan_3");
    EXPECT_NE(first.identity->guids, second.identity->guids);
    for (const auto& part : OwnedParts(package, second.part))
        EXPECT_THAT(OwnedParts(package, first.part), Not(testing::Contains(part)));
}

} // namespace
} // namespace orrery::xlsx
