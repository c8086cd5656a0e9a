#include "engines/builtin/xlsx/identities.h"

#include "xlsx/saved_package.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

namespace orrery::xlsx {
namespace {

constexpr std::string_view kTableType =
    "application/vnd.openxmlformats-officedocument.spreadsheetml.table+xml";

TEST(IdentitiesTest, TableNamesAvoidDefinedNamesWithoutRegardToCase)
{
    const auto package = Package(test::EverythingPath());
    Identities identities(package, {"PLAN_2", "plan_4"});
    EXPECT_EQ(identities.ForCopy(package, {"/xl/tables/table1.xml"}).tables.at("Plan"), "Plan_3");
    EXPECT_EQ(identities.ForCopy(package, {"/xl/tables/table1.xml"}).tables.at("Plan"), "Plan_5");
}

TEST(IdentitiesTest, GuidsKeepTheirShapeAndAreTheSameInEveryRun)
{
    const auto package = Package(test::EverythingPath());
    const std::vector<std::string> parts = {"/xl/threadedComments/threadedComment1.xml"};
    const auto first = Identities(package, {}).ForCopy(package, parts).guids;
    const auto again = Identities(package, {}).ForCopy(package, parts).guids;
    EXPECT_EQ(first, again);
    ASSERT_EQ(first.size(), 2U);
    const std::regex shape(
        R"(\{[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\})");
    for (const auto& [model, own] : first) {
        EXPECT_TRUE(std::regex_match(own, shape)) << own;
        EXPECT_NE(model, own);
    }
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
    identity.tables = {{"Plan", "Plan_2"}};
    identity.tableIds = {{"Plan", 7}};
    identity.slicers = {{"Day", "Day_2"}};
    identity.guids = {
        {"{00000000-0000-0000-0000-000000000001}", "{00000000-0000-4000-8000-000000000002}"}};
    const auto patch = ApplyIdentity(GetParam().xml, "/part.xml", GetParam().type, identity);
    EXPECT_EQ(patch.Apply(GetParam().xml), GetParam().expected);
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
                  R"(<author>tc={00000000-0000-0000-0000-000000000001}</author>)",
                  R"(<author>tc={00000000-0000-4000-8000-000000000002}</author>)"},
        ApplyCase{"OtherPart", "application/xml", R"(<table displayName="Plan"/>)",
                  R"(<table displayName="Plan"/>)"}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace orrery::xlsx
