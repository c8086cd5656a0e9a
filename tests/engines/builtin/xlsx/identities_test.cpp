#include "engines/builtin/xlsx/identity_patch.h"

#include "util/scratch_folder.h"
#include "xlsx/built_book.h"
#include "xlsx/saved_package.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <regex>
#include <set>
#include <string>

namespace orrery::xlsx {
namespace {

constexpr const char* kSheet1 = "/xl/worksheets/sheet1.xml";
constexpr const char* kFirstGuid = "{ABCDEF01-0000-4000-8000-000000000001}";
constexpr const char* kSecondGuid = "{ABCDEF01-0000-4000-8000-000000000002}";
constexpr std::string_view kTableType =
    "application/vnd.openxmlformats-officedocument.spreadsheetml.table+xml";

TEST(IdentitiesTest, TableNamesAvoidDefinedNamesWithoutRegardToCase)
{
    const auto package = Package(test::EverythingPath());
    Identities identities(package, {"PLAN_2", "plan_4"});
    EXPECT_EQ(identities.ForCopy(kSheet1, {"/xl/tables/table1.xml"}).tables.at("Plan"), "Plan_3");
    EXPECT_EQ(identities.ForCopy(kSheet1, {"/xl/tables/table1.xml"}).tables.at("Plan"), "Plan_5");
}

TEST(IdentitiesTest, TableNamesAvoidOthersWithoutRegardToCaseInEveryScript)
{
    const testing_support::ScratchFolder folder;
    test::BuiltBook book;
    book.Put("xl/table1.xml",
             "<table xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" id=\"1\" "
             "name=\"Übersicht\" displayName=\"Übersicht\" ref=\"A1:B2\"/>",
             "table");
    const Package package(book.WriteTo(folder));
    Identities identities(package, {"ÜBERSICHT_2", "übersicht_3", "Обзор"});
    const auto copy = identities.ForCopy(kSheet1, {"/xl/table1.xml"});
    EXPECT_EQ(copy.tables.at("Übersicht"), "Übersicht_4");
}

TEST(IdentitiesTest, GuidsKeepTheirShapeAndDependOnlyOnModelAndCopy)
{
    const std::regex shape(
        R"(\{[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\})");
    std::set<std::string> all = {kFirstGuid, kSecondGuid};
    for (const std::string guid : {kFirstGuid, kSecondGuid}) {
        for (std::uint32_t copy = 1; copy <= 11; ++copy) {
            const auto own = OwnId(guid, copy);
            EXPECT_TRUE(std::regex_match(own, shape)) << own;
            EXPECT_EQ(own, OwnId(guid, copy));
            EXPECT_TRUE(all.insert(own).second) << own << " twice";
        }
    }
    EXPECT_EQ(OwnId("{abcdef01-0000-4000-8000-000000000001}", 1), OwnId(kFirstGuid, 1))
        << "whatever the case";
}

TEST(IdentitiesTest, OtherIdsGetTheNumberOfTheCopy)
{
    EXPECT_EQ(OwnId("dashboard", 1), "dashboard_2");
    EXPECT_EQ(OwnId("{ABCDEF01-0000-4000-8000-00000000000G}", 2),
              "{ABCDEF01-0000-4000-8000-00000000000G}_3");
}

struct ApplyCase {
    const char* name;
    std::string_view type;
    const char* xml;
    const char* expected;
};
class ApplyIdentityTest : public testing::TestWithParam<ApplyCase> {};

TEST_P(ApplyIdentityTest, ReplacesJustTheNames)
{
    CopyIdentity identity;
    identity.number = 3;
    identity.tables = {{"Plan", "Plan_2"}};
    identity.tableIds = {{"Plan", 7}};
    identity.slicers = {{"Day", "Day_2"}};
    const auto patch = ApplyIdentity(GetParam().xml, "/part.xml", GetParam().type, identity);
    std::string expected = GetParam().expected;
    if (const auto own = expected.find("OWN"); own != expected.npos)
        expected.replace(own, 3, OwnId(kFirstGuid, identity.number));
    EXPECT_EQ(patch.Apply(GetParam().xml), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Parts, ApplyIdentityTest,
    testing::Values(
        ApplyCase{
            "Table", kTableType,
            R"(<table id="1" name="Plan" displayName="Plan"><tableColumn name="Plan"/></table>)",
            R"(<table id="7" name="Plan_2" displayName="Plan_2"><tableColumn name="Plan"/></table>)"},
        ApplyCase{"Slicers", "application/vnd.ms-excel.slicer+xml",
                  R"(<slicers><slicer name="Day" cache="C"/><slicer name="Else"/></slicers>)",
                  R"(<slicers><slicer name="Day_2" cache="C"/><slicer name="Else"/></slicers>)"},
        ApplyCase{"SlicerShape", "application/vnd.openxmlformats-officedocument.drawing+xml",
                  R"(<a><cNvPr name="Day"/><sle:slicer xmlns:sle="s" name="Day"/></a>)",
                  R"(<a><cNvPr name="Day"/><sle:slicer xmlns:sle="s" name="Day_2"/></a>)"},
        ApplyCase{"CommentAuthor",
                  "application/vnd.openxmlformats-officedocument.spreadsheetml.comments+xml",
                  "<author>tc={ABCDEF01-0000-4000-8000-000000000001}</author>",
                  "<author>tc=OWN</author>"},
        ApplyCase{"OtherBraces",
                  "application/vnd.openxmlformats-officedocument.spreadsheetml.comments+xml",
                  "<t>{ABCDEF01-0000-4000-8000-000000000001} tc={x</t>",
                  "<t>{ABCDEF01-0000-4000-8000-000000000001} tc={x</t>"},
        ApplyCase{
            "MappedTable", kTableType,
            R"(<table id="1" name="Plan" displayName="Plan" tableType="xml" )"
            R"(connectionId="4"><tableColumn id="1" uniqueName="Day" name="Day">)"
            R"(<xmlColumnPr mapId="1" xpath="/a/b" xmlDataType="string"/></tableColumn></table>)",
            R"(<table id="7" name="Plan_2" displayName="Plan_2">)"
            R"(<tableColumn id="1" name="Day"></tableColumn></table>)"},
        ApplyCase{
            "TableOfAQuery", kTableType,
            R"(<table id="1" name="Plan" displayName="Plan" tableType="queryTable">)"
            R"(<tableColumn id="1" uniqueName="1" name="Day" queryTableFieldId="1"/></table>)",
            R"(<table id="7" name="Plan_2" displayName="Plan_2" tableType="queryTable">)"
            R"(<tableColumn id="1" uniqueName="1" name="Day" queryTableFieldId="1"/></table>)"},
        ApplyCase{"OtherPart", "application/xml", R"(<table displayName="Plan"/>)",
                  R"(<table displayName="Plan"/>)"}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace orrery::xlsx
