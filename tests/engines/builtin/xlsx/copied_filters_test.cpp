// Slicers and timelines of a copied sheet filter the copy's tables and pivot tables.

#include "xlsx/copied_sheets.h"

namespace orrery::xlsx {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

const std::string kWorkbookLinks = "xl/_rels/workbook.xml.rels";

/// An extension of the workbook that lists the cache with a relationship.
std::string ListOf(const std::string& list, const std::string& entry, const std::string& id)
{
    return "<ext xmlns:l=\"urn:l\"><l:" + list + "><l:" + entry + " r:id=\"" + id +
           "\"/></l:" + list + "></ext>";
}

std::string NameOf(const std::string& cache)
{
    return "<definedName name=\"" + cache + "\">#N/A</definedName>";
}

class CopiedFiltersTest : public CopiedSheetsTest {
protected:
    /// A workbook with the sheets "Model", of the id 4, and "Other", of the id 2, and the one
    /// cache.
    void PutWorkbook(const std::string& kind, const std::string& target, const std::string& rest)
    {
        book.Put("xl/workbook.xml",
                 BuiltBook::Workbook("<sheets>" + BuiltBook::Sheet("Model", "4", "rId1") +
                                     BuiltBook::Sheet("Other", "2", "rId2") + "</sheets>" + rest));
        book.Put("xl/worksheets/sheet2.xml", BuiltBook::Worksheet("<sheetData/>"), "worksheet");
        book.Put(kWorkbookLinks, BuiltBook::Links({{"worksheet", "worksheets/sheet1.xml"},
                                                   {"worksheet", "worksheets/sheet2.xml"},
                                                   {kind, target}}));
    }
    void PutSlicerCache(const std::string& content)
    {
        PutWorkbook("slicerCache", "slicerCaches/slicerCache1.xml",
                    "<definedNames>" + NameOf("Slicer_Day") + NameOf("Lost") +
                        "</definedNames><extLst>" + ListOf("slicerCaches", "slicerCache", "rId3") +
                        "</extLst>");
        book.Put("xl/slicerCaches/slicerCache1.xml",
                 "<slicerCacheDefinition xmlns:xr10=\"urn:xr10\" name=\"Slicer_Day\" "
                 "sourceName=\"Day\" xr10:uid=\"" +
                     Guid('1') + "\">" + content + "</slicerCacheDefinition>",
                 "slicerCache");
    }
    void PutSlicer()
    {
        book.Put("xl/slicers/slicer1.xml",
                 "<slicers><slicer name=\"Day\" cache=\"Slicer_Day\"/></slicers>", "slicer");
    }

    /// The caches of the three months, by their part, as the slicers name them.
    static Texts CachesOf(const SavedPackage& saved)
    {
        std::map<std::string, std::string> parts; // by name
        for (const auto& target : saved.Targets("xl/workbook.xml")) {
            if (target.type.ends_with("Cache"))
                parts[saved.Values(target.target, "/*/@name").at(0)] = target.target;
        }
        Texts caches;
        for (const auto& name : EachOf(saved, PartsOf(saved, "slicer"), "//@cache"))
            caches.push_back(parts[name]);
        return caches;
    }
};

TEST_F(CopiedFiltersTest, SlicersOfATableFilterTheTableOfTheCopy)
{
    PutSlicerCache("<extLst><x:ext xmlns:x=\"urn:x\" xmlns:x15=\"urn:x15\"><x15:tableSlicerCache "
                   "tableId=\"7\" column=\"1\"/></x:ext></extLst>");
    PutSlicer();
    book.Put("xl/tables/table1.xml",
             R"(<table id="7" name="Plan" displayName="Plan" ref="A1:A2"/>)", "table");
    book.Put(kModelLinks, BuiltBook::Links({{"table", "../tables/table1.xml"},
                                            {"slicer", "../slicers/slicer1.xml"}}));
    const auto saved = Save();
    const auto slicers = PartsOf(saved, "slicer");
    EXPECT_THAT(EachOf(saved, slicers, "//slicer/@name"), ElementsAre("Day", "Day_2", "Day_3"));
    EXPECT_THAT(EachOf(saved, slicers, "//slicer/@cache"),
                ElementsAre("Slicer_Day", "Slicer_Day_2", "Slicer_Day_3"));
    const auto caches = CachesOf(saved);
    EXPECT_EQ(EachOf(saved, caches, "//@tableId"),
              EachOf(saved, PartsOf(saved, "table"), "/table/@id"));
    EXPECT_THAT(EachOf(saved, caches, "/*/@sourceName"), testing::Each("Day"));
    ExpectOwn(EachOf(saved, caches, "/*/@xr10:uid"), Guid('1'));
    for (const auto& cache : caches)
        EXPECT_TRUE(saved.HasType(cache)) << cache;
}

TEST_F(CopiedFiltersTest, TheWorkbookListsAndNamesTheCachesOfCopies)
{
    PutSlicerCache(R"(<pivotTables><pivotTable tabId="4" name="P"/></pivotTables>)");
    PutSlicer();
    book.Put(kModelLinks, BuiltBook::Links({{"slicer", "../slicers/slicer1.xml"}}));
    const auto saved = Save();
    EXPECT_THAT(saved.Values("xl/workbook.xml", "//definedName/@name"),
                ElementsAre("Slicer_Day", "Slicer_Day_2", "Slicer_Day_3", "Lost"));
    EXPECT_THAT(saved.Values("xl/workbook.xml", "//definedName"), testing::Each("#N/A"));
    EXPECT_THAT(saved.Values("xl/workbook.xml", "//@localSheetId"), IsEmpty());
    Texts listed; // the parts to which the list leads
    for (const auto& id : saved.Values("xl/workbook.xml", "//l:slicerCaches/l:slicerCache/@r:id")) {
        for (const auto& target : saved.Targets("xl/workbook.xml")) {
            if (target.id == id)
                listed.push_back(target.target);
        }
    }
    EXPECT_EQ(listed, CachesOf(saved));
    EXPECT_THAT(std::set<std::string>(listed.begin(), listed.end()), SizeIs(3));
}

TEST_F(CopiedFiltersTest, SlicersOfAPivotTableFilterThatOfTheCopyAlone)
{
    PutSlicerCache(
        R"(<pivotTables><pivotTable tabId="4" name="P"/><pivotTable tabId="2" )"
        R"(name="Q"></pivotTable></pivotTables><data><tabular pivotCacheId="1"/></data>)");
    PutSlicer();
    book.Put(kModelLinks, BuiltBook::Links({{"slicer", "../slicers/slicer1.xml"}}));
    const auto saved = Save();
    const auto caches = CachesOf(saved);
    EXPECT_THAT(saved.Values(caches[0], "//pivotTable/@tabId"), ElementsAre("4", "2"));
    const auto ids = saved.Values("xl/workbook.xml", "//sheet/@sheetId");
    ASSERT_THAT(ids, SizeIs(4)); // three months and "Other"
    for (const std::size_t copy : {1U, 2U}) {
        EXPECT_THAT(saved.Values(caches[copy], "//pivotTable/@tabId"), ElementsAre(ids[copy]));
        EXPECT_THAT(saved.Values(caches[copy], "//pivotTable/@name"), ElementsAre("P"));
        EXPECT_THAT(saved.Values(caches[copy], "//tabular/@pivotCacheId"), ElementsAre("1"));
    }
}

TEST_F(CopiedFiltersTest, SlicersOfACopyFilterNoPivotTablesOfCharts)
{
    const auto charts = [](const std::string& tables) {
        return "<ext><x15:slicerCachePivotTables xmlns:x15=\"urn:x15\">" + tables +
               "</x15:slicerCachePivotTables></ext>";
    };
    const std::string own = R"(<pivotTable tabId="4" name="P"/>)";
    const std::string chart = R"(<pivotTable tabId="4294967295" name="Chart"/>)";
    PutSlicerCache("<pivotTables>" + own + "</pivotTables><extLst><ext><other/></ext>" +
                   charts(chart) + charts(chart + own) + "</extLst>");
    PutSlicer();
    book.Put(kModelLinks, BuiltBook::Links({{"slicer", "../slicers/slicer1.xml"}}));
    const auto saved = Save();
    const auto caches = CachesOf(saved);
    EXPECT_THAT(saved.Values(caches[0], "//pivotTable/@name"),
                ElementsAre("P", "Chart", "Chart", "P"));
    for (const std::size_t copy : {1U, 2U}) {
        EXPECT_THAT(saved.Values(caches[copy], "//pivotTable/@name"), ElementsAre("P", "P"));
        EXPECT_THAT(saved.Values(caches[copy], "//extLst/ext"), SizeIs(2));
        EXPECT_THAT(saved.Values(caches[copy], "//other"), SizeIs(1));
    }
}

TEST_F(CopiedFiltersTest, SlicersThatFilterAnotherSheetShareItsCache)
{
    PutSlicerCache(R"(<pivotTables><pivotTable tabId="2" name="Q"/></pivotTables>)");
    PutSlicer();
    book.Put(kModelLinks, BuiltBook::Links({{"slicer", "../slicers/slicer1.xml"}}));
    const auto saved = Save();
    EXPECT_THAT(saved.NamesWith("xl/slicerCaches/"), SizeIs(1));
    EXPECT_THAT(EachOf(saved, PartsOf(saved, "slicer"), "//@cache"), testing::Each("Slicer_Day"));
    EXPECT_THAT(saved.Values("xl/workbook.xml", "//definedName"), SizeIs(2));
}

TEST_F(CopiedFiltersTest, ACacheThatIsShownOnAnotherSheetStaysTheWorkbooks)
{
    PutSlicerCache(R"(<pivotTables><pivotTable tabId="4" name="P"/></pivotTables>)");
    PutSlicer();
    book.Put("xl/worksheets/_rels/sheet2.xml.rels",
             BuiltBook::Links({{"slicer", "../slicers/slicer1.xml"}}));
    const auto saved = Save();
    EXPECT_THAT(saved.NamesWith("xl/slicerCaches/"), SizeIs(1));
    EXPECT_THAT(saved.Values("xl/slicerCaches/slicerCache1.xml", "//@tabId"), ElementsAre("4"));
}

TEST_F(CopiedFiltersTest, TimelinesFilterThePivotTableOfTheCopy)
{
    PutWorkbook("timelineCache", "timelineCaches/timelineCache1.xml",
                "<definedNames>" + NameOf("NativeTimeline_Date") + "</definedNames><extLst>" +
                    ListOf("timelineCacheRefs", "timelineCacheRef", "rId3") + "</extLst>");
    book.Put("xl/timelineCaches/timelineCache1.xml",
             R"(<timelineCacheDefinition name="NativeTimeline_Date"><pivotTables>)"
             R"(<pivotTable tabId="4" name="P"/></pivotTables></timelineCacheDefinition>)",
             "timelineCache");
    book.Put("xl/timelines/timeline1.xml",
             R"(<timelines><timeline name="Date" cache="NativeTimeline_Date"/></timelines>)",
             "timeline");
    book.Put(kModelLinks, BuiltBook::Links({{"timeline", "../timelines/timeline1.xml"}}));
    const auto saved = Save();
    EXPECT_THAT(
        EachOf(saved, PartsOf(saved, "timeline"), "//@cache"),
        ElementsAre("NativeTimeline_Date", "NativeTimeline_Date_2", "NativeTimeline_Date_3"));
    const auto ids = saved.Values("xl/workbook.xml", "//sheet/@sheetId");
    ASSERT_THAT(ids, SizeIs(4));
    EXPECT_THAT(
        EachOf(saved,
               {"xl/timelineCaches/timelineCache1.xml", "xl/timelineCaches/timelineCache2.xml",
                "xl/timelineCaches/timelineCache3.xml"},
               "//@tabId"),
        ElementsAre(ids[0], ids[1], ids[2]));
    EXPECT_THAT(saved.Values("xl/workbook.xml", "//l:timelineCacheRef"), SizeIs(3));
    EXPECT_THAT(saved.Values("xl/workbook.xml", "//definedName"), SizeIs(3));
}

TEST_F(CopiedFiltersTest, ADamagedCacheStaysAsItIs)
{
    PutSlicerCache("<a></b>");
    PutSlicer();
    book.Put(kModelLinks, BuiltBook::Links({{"slicer", "../slicers/slicer1.xml"}}));
    const auto saved = Save();
    EXPECT_THAT(saved.NamesWith("xl/slicerCaches/"), SizeIs(1));
    EXPECT_THAT(EachOf(saved, PartsOf(saved, "slicer"), "//@cache"), testing::Each("Slicer_Day"));
}

} // namespace
} // namespace orrery::xlsx
