#include "engines/builtin/xlsx/formula/references.h"

#include "engines/builtin/xml/attribute_patch.h"
#include "util/error.h"

#include <gtest/gtest.h>

#include <string>

namespace orrery::xlsx {
namespace {

std::optional<std::string> NewSheet(std::string_view name)
{
    if (name == "Desk")
        return "Jan";
    if (name == "My Desk")
        return "It's <Feb>";
    return std::nullopt;
}

TableNames NewTables()
{
    TableNames tables;
    tables.Set("Days", {"Days_2", {}, {}, {}});
    tables.Set("_xlchart.v1.0", {"_xlchart.v1.9", {}, {}, {}});
    return tables;
}

std::string Rename(std::string_view xml)
{
    const std::string part = "<part>" + std::string(xml) + "</part>";
    return RenameReferences(part, FindReferences(part, "/x.xml"), NewSheet, NewTables())
        .Apply(part);
}

struct PlaceCase {
    const char* name;
    std::string_view xml;
    std::string_view expected;
};
class ReferencePlacesTest : public testing::TestWithParam<PlaceCase> {};
TEST_P(ReferencePlacesTest, FollowsTheNames)
{
    EXPECT_EQ(Rename(GetParam().xml), "<part>" + std::string(GetParam().expected) + "</part>");
}

INSTANTIATE_TEST_SUITE_P(
    Contents, ReferencePlacesTest,
    testing::Values(
        PlaceCase{"Cell", "<c><f>Desk!A1</f><v>1</v></c>", "<c><f>Jan!A1</f><v>1</v></c>"},
        PlaceCase{"CellOfPrefix",
                  "<x:c><x:f t=\"shared\" ref=\"A1:A3\" si=\"0\">Desk!A1</x:f></x:c>",
                  "<x:c><x:f t=\"shared\" ref=\"A1:A3\" si=\"0\">Jan!A1</x:f></x:c>"},
        PlaceCase{"Entities", "<f>'My Desk'!A1&lt;&gt;\"&amp;\"</f>",
                  "<f>'It''s &lt;Feb&gt;'!A1&lt;&gt;\"&amp;\"</f>"},
        PlaceCase{"CData", "<f>1+<![CDATA['My Desk'!A1<2]]></f>",
                  "<f>1+'It''s &lt;Feb&gt;'!A1&lt;2</f>"},
        PlaceCase{"Comment", "<f>Desk<!-- here -->!A1</f>", "<f>Jan!A1</f>"},
        PlaceCase{"MarkAsReference", "<f>Desk&#33;A1</f>", "<f>Jan!A1</f>"},
        PlaceCase{"ConditionalFormat", "<cfRule><formula>Desk!A1&gt;1</formula></cfRule>",
                  "<cfRule><formula>Jan!A1&gt;1</formula></cfRule>"},
        PlaceCase{"Threshold", "<cfvo type=\"formula\" val=\"Desk!$A$1\"/>",
                  "<cfvo type=\"formula\" val=\"Jan!$A$1\"/>"},
        PlaceCase{"Validation",
                  "<dataValidation><formula1>Desk!A1</formula1><formula2>Desk!A2</formula2></"
                  "dataValidation>",
                  "<dataValidation><formula1>Jan!A1</formula1><formula2>Jan!A2</formula2></"
                  "dataValidation>"},
        PlaceCase{"NewerValidation",
                  "<x14:formula1><xm:f>Desk!A1:A2</xm:f></x14:formula1><xm:sqref>B1</xm:sqref>",
                  "<x14:formula1><xm:f>Jan!A1:A2</xm:f></x14:formula1><xm:sqref>B1</xm:sqref>"},
        PlaceCase{"Sparkline",
                  "<x14:sparkline><xm:f>Desk!A1:C1</xm:f><xm:sqref>D1</xm:sqref></x14:sparkline>",
                  "<x14:sparkline><xm:f>Jan!A1:C1</xm:f><xm:sqref>D1</xm:sqref></x14:sparkline>"},
        PlaceCase{"ChartOf2016", "<cx:f>_xlchart.v1.0</cx:f><cx:f>_xlchart.v1.00</cx:f>",
                  "<cx:f>_xlchart.v1.9</cx:f><cx:f>_xlchart.v1.00</cx:f>"},
        PlaceCase{"ChartSeries",
                  "<c:multiLvlStrRef><c:f>Desk!$A$1</c:f><c:pt><c:v>Desk!A1</c:v></c:pt></"
                  "c:multiLvlStrRef>",
                  "<c:multiLvlStrRef><c:f>Jan!$A$1</c:f><c:pt><c:v>Desk!A1</c:v></c:pt></"
                  "c:multiLvlStrRef>"},
        PlaceCase{"ChartFilter",
                  "<c15:formulaRef><c15:sqref>Desk!$A$1</c15:sqref></c15:formulaRef>",
                  "<c15:formulaRef><c15:sqref>Jan!$A$1</c15:sqref></c15:formulaRef>"},
        PlaceCase{"NewerChart", "<cx:f dir=\"row\">Desk!$A$1</cx:f><cx:nf>Desk!$B$1</cx:nf>",
                  "<cx:f dir=\"row\">Jan!$A$1</cx:f><cx:nf>Jan!$B$1</cx:nf>"},
        PlaceCase{
            "PivotChart",
            "<c:pivotSource><c:name>[Book1.xlsx]My Desk!Sales</c:name></c:pivotSource>",
            "<c:pivotSource><c:name>[Book1.xlsx]It's &lt;Feb&gt;!Sales</c:name></c:pivotSource>"},
        PlaceCase{
            "TableFormulas",
            "<calculatedColumnFormula>Days[[#This Row],[A]]+Desk!A1</calculatedColumnFormula>"
            "<totalsRowFormula>SUM(Days[A])</totalsRowFormula>",
            "<calculatedColumnFormula>Days_2[[#This Row],[A]]+Jan!A1</calculatedColumnFormula>"
            "<totalsRowFormula>SUM(Days_2[A])</totalsRowFormula>"}),
    [](const auto& test) { return std::string(test.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Attributes, ReferencePlacesTest,
    testing::Values(
        PlaceCase{"Hyperlink", "<hyperlink ref=\"A1\" location=\"Desk!A1\" display=\"Desk!A1\"/>",
                  "<hyperlink ref=\"A1\" location=\"Jan!A1\" display=\"Desk!A1\"/>"},
        PlaceCase{"InApostrophes", "<hyperlink location='Desk!A1'/>",
                  "<hyperlink location='Jan!A1'/>"},
        PlaceCase{"QuotedInApostrophes", "<hyperlink location='&apos;My Desk&apos;!A1'/>",
                  "<hyperlink location='&apos;It&apos;&apos;s &lt;Feb&gt;&apos;!A1'/>"},
        PlaceCase{"TextBox", "<xdr:sp macro=\"\" textlink=\"Desk!$A$1\"></xdr:sp>",
                  "<xdr:sp macro=\"\" textlink=\"Jan!$A$1\"></xdr:sp>"},
        PlaceCase{"LinkedPicture",
                  "<a14:cameraTool cellRange=\"Desk!$A$1:$B$2\" spid=\"_x0000_s1025\"/>",
                  "<a14:cameraTool cellRange=\"Jan!$A$1:$B$2\" spid=\"_x0000_s1025\"/>"},
        PlaceCase{"FormControl",
                  "<formControlPr fmlaGroup=\"Desk!A1\" fmlaLink=\"Desk!$A$1\" "
                  "fmlaRange=\"Desk!A1:A3\" fmlaTxbx=\"Desk!B1\"/>",
                  "<formControlPr fmlaGroup=\"Jan!A1\" fmlaLink=\"Jan!$A$1\" "
                  "fmlaRange=\"Jan!A1:A3\" fmlaTxbx=\"Jan!B1\"/>"},
        PlaceCase{"Control",
                  "<controlPr r:id=\"rId1\" linkedCell=\"Desk!A1\" listFillRange=\"Desk!A1:A3\" "
                  "macro=\"[0]!Go\"/>",
                  "<controlPr r:id=\"rId1\" linkedCell=\"Jan!A1\" listFillRange=\"Jan!A1:A3\" "
                  "macro=\"[0]!Go\"/>"},
        PlaceCase{"QueryParameter", "<parameter cell=\"Desk!$B$5\"/>",
                  "<parameter cell=\"Jan!$B$5\"/>"},
        PlaceCase{"PivotSource", "<worksheetSource ref=\"A1:B2\" sheet=\"My Desk\"/>",
                  "<worksheetSource ref=\"A1:B2\" sheet=\"It's &lt;Feb&gt;\"/>"},
        PlaceCase{"PivotTableSource", "<worksheetSource name=\"Days\"/>",
                  "<worksheetSource name=\"Days_2\"/>"},
        PlaceCase{"PivotRanges", "<rangeSet ref=\"A1\" sheet=\"Desk\"/>",
                  "<rangeSet ref=\"A1\" sheet=\"Jan\"/>"},
        PlaceCase{"Consolidation", "<dataRef ref=\"A1\" sheet=\"Desk\"/>",
                  "<dataRef ref=\"A1\" sheet=\"Jan\"/>"}),
    [](const auto& test) { return std::string(test.param.name); });

struct NoPlaceCase {
    const char* name;
    std::string_view xml;
};
class NoReferenceTest : public testing::TestWithParam<NoPlaceCase> {};
TEST_P(NoReferenceTest, StaysAsItIs)
{
    EXPECT_EQ(Rename(GetParam().xml), "<part>" + std::string(GetParam().xml) + "</part>");
}
INSTANTIATE_TEST_SUITE_P(
    Places, NoReferenceTest,
    testing::Values(
        NoPlaceCase{"Value", "<c><v>Desk!A1</v></c>"},
        NoPlaceCase{"InlineText", "<c><is><t>Desk!A1</t></is></c>"},
        NoPlaceCase{"EmptyFormula", "<c><f si=\"0\"/><v>Desk!A1</v></c>"},
        NoPlaceCase{"LinkIntoAnotherFile", "<hyperlink r:id=\"rId1\" location=\"Desk!A1\"/>"},
        NoPlaceCase{"PivotOfAnotherFile", "<worksheetSource r:id=\"rId1\" sheet=\"Desk\"/>"},
        NoPlaceCase{"OtherPrefixForLinks", "<rangeSet rel:id=\"rId1\" sheet=\"Desk\"/>"},
        NoPlaceCase{"ProtectionFlag", "<sheetProtection sheet=\"Desk\"/>"},
        NoPlaceCase{"TrendlineName", "<c:trendline><c:name>Desk!A1</c:name></c:trendline>"},
        NoPlaceCase{"LaterName",
                    "<c:pivotSource><c:fmtId/></c:pivotSource><c:name>Desk!A1</c:name>"},
        NoPlaceCase{"Macro", "<xdr:sp macro=\"[0]!Desk.Go\"/>"},
        NoPlaceCase{"OtherBook", "<c:f>[1]Desk!A1</c:f>"},
        NoPlaceCase{"Comment", "<c><!-- <f>Desk!A1</f> --></c>"},
        NoPlaceCase{"ErrorText", "<dataValidation error=\"Desk!A1\"/>"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(FindReferencesTest, ListsOnlyWhatRefersToSomething)
{
    const auto sites = FindReferences("<s><c><f>A1+B1</f></c><c><f>Desk!A1</f></c><hyperlink "
                                      "location=\"B2\"/></s>",
                                      "/x.xml");
    ASSERT_EQ(sites.size(), 1U);
    EXPECT_EQ(sites[0].kind, ReferenceSite::Kind::FormulaText);
}

TEST(FindReferencesTest, RefusesWhatIsNotXml)
{
    EXPECT_THROW(FindReferences("<f>Desk!A1</g>", "/x.xml"), util::Error);
}

TEST(FindReferencesTest, RenamesNothingWithoutNames)
{
    const std::string xml = "<s><f>Desk!A1</f><worksheetSource sheet=\"Desk\" name=\"Days\"/>"
                            "<hyperlink location=\"Desk!A1\"/></s>";
    EXPECT_TRUE(RenameReferences(xml, FindReferences(xml, "/x.xml"), {}, {}).Empty());
}

std::string RenameVml(std::string_view vml)
{
    return RenameReferences(vml, FindVmlReferences(vml), NewSheet, NewTables()).Apply(vml);
}

TEST(FindVmlReferencesTest, FollowsControlsInWhatIsNotXml)
{
    EXPECT_EQ(
        RenameVml("<div><br><x:ClientData><x:FmlaLink>Desk!$A$1</x:FmlaLink>\n"
                  "<x:FmlaRange>'My Desk'!A1:A3</x:FmlaRange><x:FmlaMacro>[0]!Go</x:FmlaMacro>"
                  "<x:FmlaPict/><x:FmlaTxbx>Desk!B1</x:FmlaTxbx></x:ClientData>"),
        "<div><br><x:ClientData><x:FmlaLink>Jan!$A$1</x:FmlaLink>\n"
        "<x:FmlaRange>'It''s &lt;Feb&gt;'!A1:A3</x:FmlaRange><x:FmlaMacro>[0]!Go</x:FmlaMacro>"
        "<x:FmlaPict/><x:FmlaTxbx>Jan!B1</x:FmlaTxbx></x:ClientData>");
}

TEST(FindVmlReferencesTest, LeavesEverythingElse)
{
    for (const std::string_view vml :
         {"", "<", "<x:FmlaLink", "<x:FmlaLink>", "<div>Desk!A1</div>", "<x:Fmla/>Desk!A1<br>",
          "<x:FmlaLink>$A$1</x:FmlaLink>Desk!A1", "</x:FmlaLink>Desk!A1", "<<<<:Fmla"})
        EXPECT_EQ(RenameVml(vml), vml);
}

struct LocationCase {
    const char* name;
    std::string_view location;
    std::string_view expected; ///< empty if nothing changes
};
class RenameInLocationTest : public testing::TestWithParam<LocationCase> {};
TEST_P(RenameInLocationTest, FollowsTheSheets)
{
    EXPECT_EQ(RenameInLocation(GetParam().location, NewSheet).value_or(""), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Locations, RenameInLocationTest,
    testing::Values(LocationCase{"Plain", "Desk!A1", "Jan!A1"},
                    LocationCase{"Fragment", "#Desk!A1", "#Jan!A1"},
                    LocationCase{"Quoted", "'My Desk'!A1:B2", "'It''s <Feb>'!A1:B2"},
                    LocationCase{"QuotedFragment", "#'My Desk'!A1", "#'It''s <Feb>'!A1"},
                    LocationCase{"ForgottenQuotes", "My Desk!A1", "'It''s <Feb>'!A1"},
                    LocationCase{"Name", "Desk!Total", "Jan!Total"},
                    LocationCase{"BothEnds", "Desk!A1:Desk!B2", "Jan!A1:Jan!B2"},
                    LocationCase{"OtherSheet", "Other!A1", ""}, LocationCase{"NoSheet", "A1", ""},
                    LocationCase{"DefinedName", "Desk", ""}, LocationCase{"Empty", "", ""},
                    LocationCase{"OnlyHash", "#", ""},
                    LocationCase{"OtherBook", "[Book.xlsx]Desk!A1", ""}),
    [](const auto& test) { return std::string(test.param.name); });

struct SetCase {
    const char* name;
    std::string_view element;
    std::string_view expected;
};
class SetAttributeTest : public testing::TestWithParam<SetCase> {};
TEST_P(SetAttributeTest, ReplacesOrAdds)
{
    const std::string xml = "<r>" + std::string(GetParam().element) + "</r>";
    TextPatch patch;
    xml::SetAttribute(patch, xml, 3, "name", "It's \"<&>\"");
    EXPECT_EQ(patch.Apply(xml), "<r>" + std::string(GetParam().expected) + "</r>");
}
INSTANTIATE_TEST_SUITE_P(
    Elements, SetAttributeTest,
    testing::Values(SetCase{"Replaced", "<s name=\"x\" id=\"1\"/>",
                            "<s name=\"It's &quot;&lt;&amp;&gt;&quot;\" id=\"1\"/>"},
                    SetCase{"InApostrophes", "<s name='x'/>",
                            "<s name='It&apos;s &quot;&lt;&amp;&gt;&quot;'/>"},
                    SetCase{"Added", "<p:s id=\"1\"/>",
                            "<p:s name=\"It's &quot;&lt;&amp;&gt;&quot;\" id=\"1\"/>"},
                    SetCase{"TheFirst", "<s></s>",
                            "<s name=\"It's &quot;&lt;&amp;&gt;&quot;\"></s>"}),
    [](const auto& test) { return std::string(test.param.name); });

} // namespace
} // namespace orrery::xlsx
