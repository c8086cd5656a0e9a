// What identifies things on a sheet must differ in its copies, and what refers to such a thing must
// refer to the copy's.

#include "xlsx/copied_sheets.h"

namespace orrery::xlsx {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class CopiedIdentitiesTest : public CopiedSheetsTest {};

constexpr const char* kVml =
    R"(<xml xmlns:v="urn:v" xmlns:o="urn:o"><o:shapelayout><o:idmap v:ext="edit" data="1"/>)"
    R"(</o:shapelayout><v:shapetype id="_x0000_t201"/>)"
    R"(<v:shape id="_x0000_s1025" type="#_x0000_t201"/>)"
    R"(<v:shape id="Object" o:spid="_x0000_s1026"/></xml>)";

constexpr const char* kHeaderVml =
    R"(<xml xmlns:v="urn:v" xmlns:o="urn:o"><o:idmap v:ext="edit" data="1"/>)"
    R"(<v:shape id="LH" o:spid="_x0000_s1025"/></xml>)";

TEST_F(CopiedIdentitiesTest, EachDrawingHasABlockOfNumbersOfShapes)
{
    book.Put("xl/drawings/vmlDrawing1.vml", kVml).Put("xl/drawings/vmlDrawing2.vml", kHeaderVml);
    book.Put("xl/drawings/vmlDrawing3.vml", R"(<xml><o:idmap data="2"/></xml>)"); // of no sheet
    book.Put(
        "xl/drawings/drawing1.xml",
        R"(<d xmlns:a="urn:a"><cNvPr id="1025"><a:compatExt spid="_x0000_s1025"/></cNvPr></d>)",
        "drawing");
    book.Put(kModelLinks, BuiltBook::Links({{"vmlDrawing", "../drawings/vmlDrawing2.vml"},
                                            {"vmlDrawing", "../drawings/vmlDrawing1.vml"},
                                            {"drawing", "../drawings/drawing1.xml"}}));
    book.Put(kModel, BuiltBook::Worksheet(
                         R"(<sheetData/><drawing r:id="rId3"/><legacyDrawing r:id="rId2"/>)"
                         R"(<legacyDrawingHF r:id="rId1"/>)"
                         R"(<oleObjects><oleObject shapeId="1026"/></oleObjects>)"
                         R"(<controls><control shapeId="1025" name="Box"/></controls>)"));
    const auto saved = Save();
    const auto sheets = SheetsOf(saved);
    // Blocks 3 and 5 are those of the headers.
    EXPECT_THAT(EachOf(saved, sheets, "//control/@shapeId"), ElementsAre("1025", "4097", "6145"));
    EXPECT_THAT(EachOf(saved, sheets, "//oleObject/@shapeId"), ElementsAre("1026", "4098", "6146"));
    const auto drawings = PartsOf(saved, "drawing");
    EXPECT_THAT(EachOf(saved, drawings, "//cNvPr/@id"), ElementsAre("1025", "4097", "6145"));
    EXPECT_THAT(EachOf(saved, drawings, "//@spid"),
                ElementsAre("_x0000_s1025", "_x0000_s4097", "_x0000_s6145"));
    const auto vml = PartsOf(saved, "vmlDrawing"); // of each month its header's first
    EXPECT_THAT(EachOf(saved, vml, "//o:idmap/@data"), ElementsAre("1", "1", "3", "4", "5", "6"));
    EXPECT_THAT(EachOf(saved, vml, "//@o:spid"),
                ElementsAre("_x0000_s1025", "_x0000_s1026", "_x0000_s3073", "_x0000_s4098",
                            "_x0000_s5121", "_x0000_s6146"));
    EXPECT_THAT(saved.Values(vml[3], "//v:shape/@id"), ElementsAre("_x0000_s4097", "Object"));
    EXPECT_EQ(saved.Bytes("xl/drawings/vmlDrawing1.vml"), kVml);
}

/// The model's part with a uid of its own and this content.
std::string SheetWithUid(const std::string& content)
{
    auto xml = BuiltBook::Worksheet(content);
    xml.insert(xml.find(' '),
               R"( xmlns:xr="http://schemas.microsoft.com/office/spreadsheetml/2014/revision")"
               " xr:uid=\"" +
                   Guid('1') + "\"");
    return xml;
}

TEST_F(CopiedIdentitiesTest, SheetAndFilterHaveUidsThatNamedViewsFollow)
{
    book.Put(kModel,
             SheetWithUid("<sheetData/><autoFilter ref=\"A1:B2\" xr:uid=\"" + Guid('2') + "\"/>"));
    book.Put("xl/views1.xml",
             "<namedSheetViews><namedSheetView name=\"Own\" id=\"" + Guid('3') +
                 "\"><nsvFilter filterId=\"" + Guid('2') +
                 "\" ref=\"A1:B2\" tableId=\"0\"/></namedSheetView></namedSheetViews>",
             "namedsheetviews");
    book.Put(kModelLinks, BuiltBook::Links({{"namedSheetView", "../views1.xml"}}));
    const auto saved = Save();
    const auto sheets = SheetsOf(saved);
    const auto views = PartsOf(saved, "namedSheetView");
    ExpectOwn(EachOf(saved, sheets, "/worksheet/@xr:uid"), Guid('1'));
    ExpectOwn(EachOf(saved, sheets, "//autoFilter/@xr:uid"), Guid('2'));
    ExpectOwn(EachOf(saved, views, "//namedSheetView/@id"), Guid('3'));
    EXPECT_EQ(EachOf(saved, views, "//nsvFilter/@filterId"),
              EachOf(saved, sheets, "//autoFilter/@xr:uid"));
    EXPECT_THAT(EachOf(saved, views, "//nsvFilter/@tableId"), ElementsAre("0", "0", "0"));
}

TEST_F(CopiedIdentitiesTest, NamedViewsFollowTheTable)
{
    book.Put("xl/table1.xml",
             "<table xmlns:xr=\"urn:xr\" id=\"4\" name=\"T\" displayName=\"T\" ref=\"A1:A2\">"
             "<autoFilter ref=\"A1:A2\" xr:uid=\"" +
                 Guid('1') + "\"/><tableColumns><tableColumn id=\"1\" xr:uid=\"" + Guid('2') +
                 "\" name=\"Day\"/></tableColumns></table>",
             "table");
    book.Put("xl/views1.xml",
             "<namedSheetViews><nsvFilter filterId=\"" + Guid('1') +
                 "\" tableId=\"4\"><columnFilter colId=\"0\" id=\"" + Guid('2') +
                 "\"/></nsvFilter></namedSheetViews>",
             "namedsheetviews");
    book.Put(kModelLinks,
             BuiltBook::Links({{"table", "../table1.xml"}, {"namedSheetView", "../views1.xml"}}));
    const auto saved = Save();
    const auto tables = PartsOf(saved, "table");
    const auto views = PartsOf(saved, "namedSheetView");
    EXPECT_THAT(EachOf(saved, tables, "/table/@id"), ElementsAre("4", "5", "6"));
    EXPECT_THAT(EachOf(saved, views, "//@tableId"), ElementsAre("4", "5", "6"));
    ExpectOwn(EachOf(saved, views, "//@filterId"), Guid('1'));
    EXPECT_EQ(EachOf(saved, views, "//@filterId"), EachOf(saved, tables, "//autoFilter/@xr:uid"));
    ExpectOwn(EachOf(saved, views, "//columnFilter/@id"), Guid('2'));
    EXPECT_EQ(EachOf(saved, views, "//columnFilter/@id"),
              EachOf(saved, tables, "//tableColumn/@xr:uid"));
}

TEST_F(CopiedIdentitiesTest, MentionsInThreadsAreTheirOwnAndOfTheSamePerson)
{
    book.Put("xl/thread1.xml",
             "<ThreadedComments><threadedComment ref=\"A1\" id=\"" + Guid('1') + "\" personId=\"" +
                 Guid('2') + "\"><mentions><mention mentionpersonId=\"" + Guid('2') +
                 "\" mentionId=\"" + Guid('3') +
                 "\"/></mentions></threadedComment></ThreadedComments>",
             "threadedcomments");
    book.Put("xl/comments1.xml",
             "<comments xmlns:xr=\"urn:xr\"><authors><author>tc=" + Guid('1') +
                 "</author></authors><commentList><comment ref=\"A1\" authorId=\"0\" xr:uid=\"" +
                 Guid('1') + "\"/></commentList></comments>",
             "comments");
    book.Put(kModelLinks, BuiltBook::Links({{"threadedComment", "../thread1.xml"},
                                            {"comments", "../comments1.xml"}}));
    const auto saved = Save();
    const auto threads = PartsOf(saved, "threadedComment");
    const auto comments = PartsOf(saved, "comments");
    const auto ids = EachOf(saved, threads, "//threadedComment/@id");
    ExpectOwn(ids, Guid('1'));
    ExpectOwn(EachOf(saved, threads, "//@mentionId"), Guid('3'));
    for (const char* person : {"//@personId", "//@mentionpersonId"})
        EXPECT_THAT(EachOf(saved, threads, person), testing::Each(Guid('2')));
    EXPECT_EQ(EachOf(saved, comments, "//comment/@xr:uid"), ids);
    EXPECT_THAT(EachOf(saved, comments, "//author"),
                ElementsAre("tc=" + ids[0], "tc=" + ids[1], "tc=" + ids[2]));
}

/// The extension of a sheet that lists ranges to which add-ins are bound.
std::string BoundRanges(const Texts& ids)
{
    std::string xml = "<extLst><ext uri=\"{F7C9EE02-42E1-4005-9D12-6889AFFD525C}\" "
                      "xmlns:x15=\"urn:x15\" xmlns:xm=\"urn:xm\"><x15:webExtensions>";
    for (const auto& id : ids)
        xml +=
            "<x15:webExtension appRef=\"" + id + "\"><xm:f>Model!A1:B2</xm:f></x15:webExtension>";
    return "<sheetData/>" + xml + "</x15:webExtensions></ext></extLst>";
}

/// The part of an add-in that is bound to these ranges.
std::string AddIn(const Texts& bindings)
{
    std::string xml = "<we:webextension xmlns:we=\"urn:we\" id=\"" + Guid('1') +
                      "\"><we:reference id=\"wa104\"/><we:bindings>";
    for (const auto& binding : bindings)
        xml += "<we:binding id=\"data\" type=\"matrix\" appref=\"" + binding + "\"/>";
    return xml + "</we:bindings></we:webextension>";
}

TEST_F(CopiedIdentitiesTest, AddInsAreBoundToRangesOfTheCopy)
{
    book.Put("xl/webextensions/webextension1.xml", AddIn({Guid('2'), "data", Guid('9')}),
             "webextension");
    book.Put("xl/drawings/drawing1.xml", "<d/>", "drawing");
    book.Put("xl/drawings/_rels/drawing1.xml.rels",
             BuiltBook::Links({{"webextension", "../webextensions/webextension1.xml"}}));
    book.Put(kModelLinks, BuiltBook::Links({{"drawing", "../drawings/drawing1.xml"}}));
    book.Put(kModel, BuiltBook::Worksheet(BoundRanges({Guid('2'), Guid('3'), "data"})));
    const auto saved = Save();
    const auto addIns =
        Texts{"xl/webextensions/webextension1.xml", "xl/webextensions/webextension2.xml",
              "xl/webextensions/webextension3.xml"};
    ExpectOwn(EachOf(saved, addIns, "/we:webextension/@id"), Guid('1'));
    EXPECT_THAT(EachOf(saved, addIns, "//we:reference/@id"), testing::Each("wa104"));
    const auto sheets = SheetsOf(saved);
    EXPECT_THAT(saved.Values(sheets[0], "//@appRef"), ElementsAre(Guid('2'), Guid('3'), "data"));
    for (const std::size_t copy : {1U, 2U}) {
        const auto bound = saved.Values(sheets[copy], "//@appRef");
        ASSERT_THAT(bound, SizeIs(2)) << "what another add-in is bound to stays the model's";
        EXPECT_THAT(bound, Not(testing::Contains(Guid('2'))));
        EXPECT_THAT(saved.Values(addIns[copy], "//@appref"),
                    ElementsAre(bound[0], bound[1], Guid('9')))
            << "the last one is bound to another sheet";
    }
    EXPECT_THAT(saved.Values(sheets[1], "//xm:f"), testing::Each("February!A1:B2"));
}

TEST_F(CopiedIdentitiesTest, RangesOfAddInsOfTheWorkbookStayTheModels)
{
    book.Put(kModel, BuiltBook::Worksheet(BoundRanges({Guid('2')})));
    const auto saved = Save();
    const auto sheets = SheetsOf(saved);
    EXPECT_THAT(saved.Values(sheets[0], "//ext"), SizeIs(1));
    for (const std::size_t copy : {1U, 2U})
        EXPECT_THAT(saved.Values(sheets[copy], "//ext"), IsEmpty());
}

TEST_F(CopiedIdentitiesTest, RangesOfAddInsAreFoundHoweverTheyAreNested)
{
    const std::string bound = "<x15:webExtension appRef=\"" + Guid('2') + "\">";
    for (const std::string& content :
         {"<ext><ext/>" + bound + bound + "</x15:webExtension></x15:webExtension></ext>",
          "<ext>" + bound + "</x15:webExtension><ext/></ext>",
          "<ext>" + bound + "<ext/></x15:webExtension></ext>"}) {
        book.Put(kModel, BuiltBook::Worksheet("<sheetData/><extLst xmlns:x15=\"urn:x15\">" +
                                              content + "</extLst>"));
        const auto saved = Save();
        const auto sheets = SheetsOf(saved);
        EXPECT_THAT(saved.Values(sheets[0], "//ext"), SizeIs(2)) << content;
        for (const std::size_t copy : {1U, 2U}) {
            EXPECT_THAT(saved.Values(sheets[copy], "//extLst"), SizeIs(1)) << content;
            EXPECT_THAT(saved.Values(sheets[copy], "//ext"), IsEmpty()) << content;
        }
    }
}

TEST_F(CopiedIdentitiesTest, NamesOfChartDataHaveTwinsForEachCopy)
{
    const auto name = [](const std::string& number, const std::string& cells) {
        return "<definedName name=\"_xlchart.v1." + number + "\" hidden=\"1\">" + cells +
               "</definedName>";
    };
    book.Put("xl/workbook.xml",
             BuiltBook::Workbook("<sheets>" + BuiltBook::Sheet("Model", "1", "rId1") +
                                 "</sheets><definedNames>" + name("0", "Model!$A$1:$A$3") +
                                 name("1", "Model!$B$1:$B$3") + name("3", "Model!$C$1") +
                                 name("4", "Model!$D$1") + "</definedNames>"));
    book.Put(
        "xl/charts/chartEx1.xml",
        "<cx:chartSpace xmlns:cx=\"urn:cx\"><cx:strDim><cx:f "
        "dir=\"row\">_xlchart.v1.0</cx:f><cx:nf>_xlchart.v1.4</cx:nf></cx:strDim>"
        "<cx:numDim><cx:f>_xlchart.v1.1</cx:f></cx:numDim><cx:tx><cx:f>Model!$B$1</cx:f></cx:tx>"
        "<cx:numDim><cx:f>_xlchart.v1.1</cx:f></cx:numDim></cx:chartSpace>",
        "chartex");
    book.Put("xl/drawings/drawing1.xml", "<d/>", "drawing");
    book.Put("xl/drawings/_rels/drawing1.xml.rels",
             BuiltBook::Links({{"chartEx", "../charts/chartEx1.xml"}}));
    book.Put(kModelLinks, BuiltBook::Links({{"drawing", "../drawings/drawing1.xml"}}));
    const auto saved = Save();
    EXPECT_THAT(saved.Values("xl/charts/chartEx1.xml", "//cx:f"),
                ElementsAre("_xlchart.v1.0", "_xlchart.v1.1", "January!$B$1", "_xlchart.v1.1"));
    EXPECT_THAT(saved.Values("xl/charts/chartEx2.xml", "//cx:f"),
                ElementsAre("_xlchart.v1.2", "_xlchart.v1.6", "February!$B$1", "_xlchart.v1.6"));
    EXPECT_THAT(saved.Values("xl/charts/chartEx3.xml", "//cx:f"),
                ElementsAre("_xlchart.v1.7", "_xlchart.v1.9", "March!$B$1", "_xlchart.v1.9"));
    EXPECT_THAT(
        EachOf(saved,
               {"xl/charts/chartEx1.xml", "xl/charts/chartEx2.xml", "xl/charts/chartEx3.xml"},
               "//cx:nf"),
        ElementsAre("_xlchart.v1.4", "_xlchart.v1.5", "_xlchart.v1.8"));
    EXPECT_THAT(saved.Values("xl/workbook.xml", "//definedName/@name"),
                ElementsAre("_xlchart.v1.0", "_xlchart.v1.2", "_xlchart.v1.7", "_xlchart.v1.1",
                            "_xlchart.v1.6", "_xlchart.v1.9", "_xlchart.v1.3", "_xlchart.v1.4",
                            "_xlchart.v1.5", "_xlchart.v1.8"));
    EXPECT_THAT(saved.Values("xl/workbook.xml", "//definedName"),
                ElementsAre("January!$A$1:$A$3", "February!$A$1:$A$3", "March!$A$1:$A$3",
                            "January!$B$1:$B$3", "February!$B$1:$B$3", "March!$B$1:$B$3",
                            "January!$C$1", "January!$D$1", "February!$D$1", "March!$D$1"));
    EXPECT_THAT(saved.Values("xl/workbook.xml", "//@localSheetId"), IsEmpty());
    EXPECT_THAT(saved.Values("xl/workbook.xml", "//definedName/@hidden"), SizeIs(10));
}

TEST_F(CopiedIdentitiesTest, ANameOfTheSheetIsNotTheOneOfItsChart)
{
    const std::string name = "<definedName name=\"_xlchart.v1.0\"";
    book.Put("xl/workbook.xml",
             BuiltBook::Workbook("<sheets>" + BuiltBook::Sheet("Model", "1", "rId1") +
                                 "</sheets><definedNames>" + name + ">Model!$A$1</definedName>" +
                                 name + " localSheetId=\"0\">Model!$B$1</definedName>" +
                                 "</definedNames>"));
    book.Put("xl/charts/chartEx1.xml",
             "<cx:chartSpace xmlns:cx=\"urn:cx\"><cx:f>_xlchart.v1.0</cx:f></cx:chartSpace>",
             "chartex");
    book.Put(kModelLinks, BuiltBook::Links({{"chartEx", "../charts/chartEx1.xml"}}));
    const auto saved = Save();
    EXPECT_THAT(saved.Values("xl/charts/chartEx2.xml", "//cx:f"), ElementsAre("_xlchart.v1.1"));
    EXPECT_THAT(saved.Values("xl/workbook.xml", "//definedName[not(@localSheetId)]/@name"),
                ElementsAre("_xlchart.v1.0", "_xlchart.v1.1", "_xlchart.v1.2"));
    EXPECT_THAT(saved.Values("xl/workbook.xml", "//definedName[not(@localSheetId)]"),
                ElementsAre("January!$A$1", "February!$A$1", "March!$A$1"));
}

TEST_F(CopiedIdentitiesTest, CellsOfXmlMapsStayTheModels)
{
    book.Put("xl/tables/tableSingleCells1.xml", "<singleXmlCells/>", "tableSingleCells");
    book.Put("xl/printer1.bin", "settings");
    book.Put(kModelLinks, BuiltBook::Links({{"tableSingleCells", "../tables/tableSingleCells1.xml"},
                                            {"printerSettings", "../printer1.bin"}}));
    const auto saved = Save();
    EXPECT_THAT(saved.NamesWith("xl/tables/"), SizeIs(1));
    EXPECT_THAT(PartsOf(saved, "tableSingleCells"), SizeIs(1));
    EXPECT_THAT(PartsOf(saved, "printerSettings"), SizeIs(3));
    EXPECT_THAT(saved.Bytes("[Content_Types].xml"), Not(HasSubstr("tableSingleCells2")));
}

} // namespace
} // namespace orrery::xlsx
