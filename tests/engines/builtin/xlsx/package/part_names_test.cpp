#include "engines/builtin/xlsx/package/part_names.h"

#include <gtest/gtest.h>
#include <string>

namespace orrery::xlsx {
namespace {

struct NameCase {
    const char* name;
    std::string from;
    std::string target;
    std::string expected;
};

std::string NameOf(const testing::TestParamInfo<NameCase>& info)
{
    return info.param.name;
}

class ResolveTargetTest : public testing::TestWithParam<NameCase> {};
TEST_P(ResolveTargetTest, Resolves)
{
    EXPECT_EQ(ResolveTarget(GetParam().from, GetParam().target), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Targets, ResolveTargetTest,
    testing::Values(
        NameCase{"OfThePackage", "", "xl/workbook.xml", "/xl/workbook.xml"},
        NameCase{"AbsoluteOfThePackage", "", "/xl/workbook.xml", "/xl/workbook.xml"},
        NameCase{"Beside", "/xl/workbook.xml", "styles.xml", "/xl/styles.xml"},
        NameCase{"Below", "/xl/workbook.xml", "worksheets/sheet1.xml", "/xl/worksheets/sheet1.xml"},
        NameCase{"Up", "/xl/worksheets/sheet1.xml", "../media/image1.png", "/xl/media/image1.png"},
        NameCase{"Absolute", "/xl/worksheets/sheet1.xml", "/media/image1.png", "/media/image1.png"},
        NameCase{"DotSteps", "/xl/workbook.xml", "./a/./b/../c.xml", "/xl/a/c.xml"},
        NameCase{"NotAboveTheRoot", "/xl/workbook.xml", "../../../a.xml", "/a.xml"},
        NameCase{"Backslashes", "/xl/workbook.xml", "worksheets\\sheet1.xml",
                 "/xl/worksheets/sheet1.xml"},
        NameCase{"DoubleSlashes", "", "//xl//workbook.xml", "/xl/workbook.xml"},
        NameCase{"EscapesStay", "/xl/workbook.xml", "my%20sheet.xml", "/xl/my%20sheet.xml"},
        NameCase{"PlaceInTheWorkbook", "/xl/worksheets/sheet1.xml", "#Desk!A1",
                 "/xl/worksheets/#Desk!A1"},
        NameCase{"Nothing", "/xl/workbook.xml", "", "/xl"}),
    NameOf);

class RelativeTargetTest : public testing::TestWithParam<NameCase> {};
TEST_P(RelativeTargetTest, RoundTripsThroughResolve)
{
    EXPECT_EQ(RelativeTarget(GetParam().from, GetParam().target), GetParam().expected);
    EXPECT_EQ(ResolveTarget(GetParam().from, GetParam().expected), GetParam().target);
}
INSTANTIATE_TEST_SUITE_P(
    Targets, RelativeTargetTest,
    testing::Values(
        NameCase{"OfThePackage", "", "/xl/workbook.xml", "xl/workbook.xml"},
        NameCase{"Beside", "/xl/workbook.xml", "/xl/styles.xml", "styles.xml"},
        NameCase{"Below", "/xl/workbook.xml", "/xl/worksheets/sheet1.xml", "worksheets/sheet1.xml"},
        NameCase{"Up", "/xl/worksheets/sheet1.xml", "/xl/media/image1.png", "../media/image1.png"},
        NameCase{"TwoUp", "/xl/a/b/c.xml", "/xl/d.xml", "../../d.xml"},
        NameCase{"NamesThatBeginAlike", "/xl/sheets/a.xml", "/xl/sheetsold/b.xml",
                 "../sheetsold/b.xml"},
        NameCase{"OtherTopFolder", "/xl/workbook.xml", "/docProps/app.xml", "/docProps/app.xml"},
        NameCase{"FromTheTop", "/workbook.xml", "/styles.xml", "styles.xml"}),
    NameOf);

TEST(RelationshipsPartName, IsInAFolderBesideThePart)
{
    EXPECT_EQ(RelationshipsPartName(""), "/_rels/.rels");
    EXPECT_EQ(RelationshipsPartName("/xl/workbook.xml"), "/xl/_rels/workbook.xml.rels");
    EXPECT_EQ(RelationshipsPartName("/workbook.xml"), "/_rels/workbook.xml.rels");
}

struct SameCase {
    const char* name;
    std::string left;
    std::string right;
    bool same;
};

class PartKeyTest : public testing::TestWithParam<SameCase> {};
TEST_P(PartKeyTest, Compares)
{
    EXPECT_EQ(PartKey(GetParam().left) == PartKey(GetParam().right), GetParam().same);
}
INSTANTIATE_TEST_SUITE_P(
    Names, PartKeyTest,
    testing::Values(SameCase{"Case", "/XL/Workbook.XML", "/xl/workbook.xml", true},
                    SameCase{"SlashInFront", "xl/workbook.xml", "/xl/workbook.xml", true},
                    SameCase{"Backslashes", "xl\\workbook.xml", "/xl/workbook.xml", true},
                    SameCase{"EscapedBlank", "/my%20sheet.xml", "/my sheet.xml", true},
                    SameCase{"EscapedLetters", "/%C3%A4.xml", "/\xC3\xA4.xml", true},
                    SameCase{"EscapesInSmallLetters", "/%c3%a4.xml", "/%C3%A4.xml", true},
                    SameCase{"EscapedSlash", "/a%2Fb.xml", "/a/b.xml", false},
                    SameCase{"NoEscape", "/100%.xml", "/100%25.xml", true},
                    SameCase{"CaseBeyondAscii", "/\xC3\xA4.xml", "/\xC3\x84.xml", false},
                    SameCase{"Different", "/xl/sheet1.xml", "/xl/sheet2.xml", false}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(IsMainNamespace, KnowsTransitionalAndStrict)
{
    EXPECT_TRUE(IsMainNamespace("http://schemas.openxmlformats.org/spreadsheetml/2006/main"));
    EXPECT_TRUE(IsMainNamespace("http://purl.oclc.org/ooxml/spreadsheetml/main"));
    EXPECT_FALSE(IsMainNamespace("http://schemas.openxmlformats.org/drawingml/2006/main"));
    EXPECT_FALSE(IsMainNamespace(""));
}

} // namespace
} // namespace orrery::xlsx
