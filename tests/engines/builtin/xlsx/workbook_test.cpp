#include "engines/builtin/xlsx/workbook.h"

#include "book/error.h"
#include "places/places.h"
#include "util/error.h"
#include "xlsx/saved_package.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace orrery::xlsx {
namespace {

using book::AccessMode;
using book::CellMember;
using book::CellValue;
using book::ErrorKind;
using test::SavedPackage;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::filesystem::path kEverything =
    places::SourceFolder() / "tests/engines/builtin/xlsx/data" / "everything.xlsx";

class WorkbookTest : public testing::Test {
protected:
    void SetUp() override { std::filesystem::create_directories(folder_); }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    SavedPackage Save()
    {
        const auto target = folder_ / "saved.xlsx";
        workbook_.SaveAs(target, AccessMode::NoChange);
        return SavedPackage(target);
    }

    book::Worksheet& Named(std::string_view name)
    {
        auto* sheet = workbook_.FindWorksheet(name);
        EXPECT_NE(sheet, nullptr) << name;
        return *sheet;
    }

    /// Renames "Model" and copies it once.
    SavedPackage SaveWithCopy()
    {
        auto& model = Named("Model");
        model.SetName("January");
        model.CopyAfter(model);
        model.Next()->SetName("February");
        return Save();
    }

    std::filesystem::path folder_ =
        std::filesystem::path(testing::TempDir()) /
        ("workbook_" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
    Workbook workbook_{kEverything};
};

TEST_F(WorkbookTest, SavesUnchangedPartsBitForBit)
{
    const auto saved = Save();
    const SavedPackage original(kEverything);
    EXPECT_EQ(saved.Names(), original.Names());
    for (const auto& name : original.Names())
        EXPECT_EQ(saved.Bytes(name), original.Bytes(name)) << name;
}

TEST_F(WorkbookTest, LeavesTheTemplateAlone)
{
    const SavedPackage before(kEverything);
    SaveWithCopy();
    const SavedPackage after(kEverything);
    for (const auto& name : before.Names())
        EXPECT_EQ(after.Bytes(name), before.Bytes(name)) << name;
}

TEST_F(WorkbookTest, WritingOneSheetLeavesOtherPartsUnchanged)
{
    Named("Third Sheet").SetCell(9, 1, CellValue(std::int16_t{7}), CellMember::Value);
    const auto saved = Save();
    const SavedPackage original(kEverything);
    for (const auto& name : original.Names()) {
        if (name.find("worksheets/sheet") == std::string::npos && name != "xl/workbook.xml") {
            EXPECT_EQ(saved.Bytes(name), original.Bytes(name)) << name;
        }
    }
}

TEST_F(WorkbookTest, FindsWorksheetsWithoutRegardToCase)
{
    EXPECT_EQ(workbook_.FindWorksheet("mODEL"), workbook_.FindWorksheet("Model"));
    EXPECT_EQ(workbook_.FindWorksheet("Missing"), nullptr);
}

TEST_F(WorkbookTest, RenameChecksTheRules)
{
    struct Case {
        std::string name;
        util::AnyErrorKind kind;
    };
    for (const auto& [name, kind] :
         {Case{"", ErrorKind::InvalidSheetName}, Case{"a/b", ErrorKind::InvalidSheetName},
          Case{"'a", ErrorKind::InvalidSheetName}, Case{"history", ErrorKind::InvalidSheetName},
          Case{"oTHER", ErrorKind::SheetNameTaken}}) {
        try {
            Named("Model").SetName(name);
            ADD_FAILURE() << name;
        }
        catch (const Error& error) {
            EXPECT_EQ(error.Kind(), kind) << name;
        }
        EXPECT_EQ(Named("Model").Name(), "Model");
    }
    Named("Model").SetName("MODEL");
    EXPECT_EQ(Named("model").Name(), "MODEL");
}

TEST_F(WorkbookTest, RenameIsFollowedEverywhere)
{
    Named("Model").SetName("It's new");
    const auto saved = Save();
    EXPECT_THAT(saved.Values("xl/worksheets/sheet1.xml", "//c[@r='D1']/f"),
                ElementsAre("SUM('It''s new'!B1:B10)"));
    EXPECT_THAT(saved.Values("xl/worksheets/sheet1.xml", "//c[@r='D4']/f"),
                ElementsAre("IF(D1>0,\"Model!A1\",\"\")"));
    EXPECT_THAT(saved.Values("xl/worksheets/sheet2.xml", "//c[@r='B1']/f"),
                ElementsAre("'It''s new'!B1*2"));
    EXPECT_THAT(saved.Values("xl/worksheets/sheet1.xml", "//cfRule/formula"),
                Contains("'It''s new'!$A1>5"));
    EXPECT_THAT(saved.Values("xl/worksheets/sheet1.xml", "//dataValidation/formula1"),
                Contains("'It''s new'!$A$1:$A$5"));
    EXPECT_THAT(saved.Values("xl/worksheets/sheet1.xml", "//hyperlink/@location"),
                ElementsAre("'It''s new'!B5"));
    EXPECT_THAT(saved.Values("xl/workbook.xml", "//definedName[@name='WorkbookName']"),
                ElementsAre("'It''s new'!$A$10"));
    EXPECT_THAT(saved.Values("xl/charts/chart1.xml", "//c:val/c:numRef/c:f"),
                ElementsAre("'It''s new'!$B$1:$B$10", "Other!$A$1:$A$3"));
    EXPECT_THAT(saved.Values("xl/ctrlProps/ctrlProp1.xml", "//@fmlaLink"),
                ElementsAre("'It''s new'!$C$1"));
    EXPECT_THAT(saved.Values("docProps/app.xml", "//vt:lpstr"), Contains("It's new"));
    EXPECT_THAT(saved.Bytes("xl/drawings/vmlDrawing1.vml"), HasSubstr("'It''s new'!$C$1"));
    for (const auto& name : saved.Names()) {
        if (!name.ends_with(".rels") && name != "xl/worksheets/sheet1.xml" &&
            name != "xl/sharedStrings.xml") {
            EXPECT_THAT(saved.Bytes(name), Not(HasSubstr("Model!"))) << name;
        }
    }
}

TEST_F(WorkbookTest, CopyIsNamedAndPlacedAsInExcel)
{
    auto& model = Named("Model");
    model.CopyAfter(model);
    model.CopyAfter(*model.Next());
    EXPECT_EQ(model.Next()->Name(), "Model (2)");
    EXPECT_EQ(model.Next()->Next()->Name(), "Model (3)");
    EXPECT_EQ(model.Next()->Next()->Next()->Name(), "Other");
    EXPECT_THAT(Save().Values("xl/workbook.xml", "//sheet/@name"),
                ElementsAre("Model", "Model (2)", "Model (3)", "Other", "Third Sheet"));
}

struct OwnedCase {
    const char* name;
    const char* xpath; // counted in the sheet's own part
};
class CopyOwnsTest : public WorkbookTest, public testing::WithParamInterface<OwnedCase> {};

TEST_P(CopyOwnsTest, AsMuchAsItsModel)
{
    const auto saved = SaveWithCopy();
    const auto model = saved.Values("xl/worksheets/sheet1.xml", GetParam().xpath).size();
    EXPECT_GT(model, 0U);
    EXPECT_EQ(saved.Values(saved.SheetPart("February"), GetParam().xpath).size(), model);
}

INSTANTIATE_TEST_SUITE_P(
    Features, CopyOwnsTest,
    testing::Values(
        OwnedCase{"Cells", "//sheetData/row/c"}, OwnedCase{"Styles", "//sheetData/row/c/@s"},
        OwnedCase{"Widths", "//cols/col"}, OwnedCase{"Heights", "//row/@ht"},
        OwnedCase{"Outline", "//col/@outlineLevel"}, OwnedCase{"Merges", "//mergeCell"},
        OwnedCase{"ConditionalFormats", "//cfRule"},
        OwnedCase{"ExtendedConditionalFormats", "//x14:cfRule"},
        OwnedCase{"Validations", "//dataValidation"},
        OwnedCase{"ExtendedValidations", "//x14:dataValidation"},
        OwnedCase{"Sparklines", "//x14:sparkline"}, OwnedCase{"Hyperlinks", "//hyperlink"},
        OwnedCase{"Tables", "//tablePart"}, OwnedCase{"Filter", "//autoFilter"},
        OwnedCase{"Controls", "//control"}, OwnedCase{"Views", "//sheetView/pane"},
        OwnedCase{"CustomViews", "//customSheetView"}, OwnedCase{"PrintSetup", "//pageSetup"},
        OwnedCase{"RowBreaks", "//rowBreaks/brk"}, OwnedCase{"ColumnBreaks", "//colBreaks/brk"},
        OwnedCase{"Header", "//oddHeader"}, OwnedCase{"Background", "//picture"},
        OwnedCase{"TabColour", "//tabColor"}, OwnedCase{"Drawing", "//drawing"},
        OwnedCase{"CommentShapes", "//legacyDrawing"},
        OwnedCase{"HeaderPictures", "//legacyDrawingHF"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(WorkbookTest, CopyOwnsItsOwnParts)
{
    const auto saved = SaveWithCopy();
    const auto model = saved.Targets("xl/worksheets/sheet1.xml");
    const auto copy = saved.Targets(saved.SheetPart("February"));
    ASSERT_EQ(copy.size(), model.size());
    for (std::size_t i = 0; i < model.size(); ++i) {
        EXPECT_EQ(copy[i].id, model[i].id);
        EXPECT_EQ(copy[i].type, model[i].type);
        const bool shared = model[i].external || model[i].type.ends_with("/image");
        EXPECT_EQ(copy[i].target == model[i].target, shared) << model[i].type;
        EXPECT_TRUE(model[i].external || saved.Has(copy[i].target)) << copy[i].target;
    }
}

TEST_F(WorkbookTest, PicturesAreSharedNotDoubled)
{
    const auto saved = SaveWithCopy();
    const SavedPackage original(kEverything);
    EXPECT_EQ(saved.NamesWith("xl/media/"), original.NamesWith("xl/media/"));
    EXPECT_EQ(saved.NamesWith("xl/charts/").size(), 2U);
}

TEST_F(WorkbookTest, CopyRefersToItself)
{
    const auto saved = SaveWithCopy();
    const auto sheet = saved.SheetPart("February");
    EXPECT_THAT(saved.Values(sheet, "//c[@r='D1']/f"), ElementsAre("SUM(February!B1:B10)"));
    EXPECT_THAT(saved.Values(sheet, "//c[@r='D2']/f"), ElementsAre("Other!A1+'Third Sheet'!A1"));
    EXPECT_THAT(saved.Values(sheet, "//cfRule/formula"), Contains("February!$A1>5"));
    EXPECT_THAT(saved.Values(sheet, "//dataValidation/formula1"), Contains("February!$A$1:$A$5"));
    EXPECT_THAT(saved.Values(sheet, "//x14:formula1/xm:f"), Contains("February!$A$1:$A$3"));
    EXPECT_THAT(saved.Values(sheet, "//x14:sparkline/xm:f"), ElementsAre("February!B1:B10"));
    EXPECT_THAT(saved.Values("xl/charts/chart2.xml", "//c:cat/c:numRef/c:f"),
                ElementsAre("February!$A$1:$A$10"));
    EXPECT_THAT(saved.Values("xl/drawings/drawing2.xml", "//xdr:sp/@textlink"),
                ElementsAre("February!$A$12"));
    EXPECT_THAT(saved.Values("xl/ctrlProps/ctrlProp2.xml", "//@fmlaLink"),
                ElementsAre("February!$C$1"));
    EXPECT_THAT(saved.Bytes("xl/drawings/_rels/drawing2.xml.rels"), HasSubstr("#February!A1"));
    EXPECT_THAT(saved.Bytes("xl/drawings/vmlDrawing3.vml") +
                    saved.Bytes("xl/drawings/vmlDrawing4.vml"),
                HasSubstr("<x:FmlaLink>February!$C$1"));
    EXPECT_THAT(saved.Values("xl/worksheets/sheet1.xml", "//c[@r='D1']/f"),
                ElementsAre("SUM(January!B1:B10)"));
}

TEST_F(WorkbookTest, RangeOfSheetsStillNamesTheModel)
{
    const auto saved = SaveWithCopy();
    for (const auto* sheet : {"January", "February"})
        EXPECT_THAT(saved.Values(saved.SheetPart(sheet), "//c[@r='D6']/f"),
                    ElementsAre("SUM(January:Other!A1)"))
            << sheet;
}

TEST_F(WorkbookTest, CopyHasItsOwnNames)
{
    const auto saved = SaveWithCopy();
    const auto named = [&](const std::string& name, int scope) {
        return saved.Values("xl/workbook.xml",
                            ("//definedName[@name='" + name + "' and @localSheetId='" +
                             std::to_string(scope) + "']")
                                .c_str());
    };
    EXPECT_THAT(named("_xlnm.Print_Area", 0), ElementsAre("January!$A$1:$L$40"));
    EXPECT_THAT(named("_xlnm.Print_Area", 1), ElementsAre("February!$A$1:$L$40"));
    EXPECT_THAT(named("_xlnm.Print_Titles", 1), ElementsAre("February!$1:$1"));
    EXPECT_THAT(named("_xlnm._FilterDatabase", 1), ElementsAre("February!$A$1:$B$10"));
    EXPECT_THAT(named("OwnName", 1), ElementsAre("February!$B$1:$B$10"));
    EXPECT_THAT(named("WorkbookName", 1), ElementsAre("February!$A$10"));
    EXPECT_THAT(named("Elsewhere", 1), IsEmpty());
    EXPECT_THAT(named("_xlnm.Print_Area", 3), ElementsAre("'Third Sheet'!$A$1:$B$2"))
        << "the index of a sheet behind the copy moves along";
    EXPECT_THAT(saved.Values("xl/workbook.xml",
                             "//definedName[@name='WorkbookName' and not(@localSheetId)]"),
                ElementsAre("January!$A$10"));
}

TEST_F(WorkbookTest, CopyHasItsOwnIdentity)
{
    const auto saved = SaveWithCopy();
    EXPECT_THAT(saved.Values("xl/tables/table2.xml", "/table/@displayName"), ElementsAre("Plan_2"));
    EXPECT_THAT(saved.Values("xl/tables/table2.xml", "/table/@name"), ElementsAre("Plan_2"));
    EXPECT_THAT(saved.Values("xl/tables/table2.xml", "/table/@id"), ElementsAre("2"));
    const auto sheet = saved.SheetPart("February");
    EXPECT_THAT(saved.Values(sheet, "//c[@r='D5']/f"), ElementsAre("SUM(Plan_2[Day])"));
    EXPECT_THAT(saved.Values(sheet, "//sheetPr/@codeName"), IsEmpty());
    EXPECT_THAT(saved.Values("xl/worksheets/sheet1.xml", "//sheetPr/@codeName"),
                ElementsAre("Sheet1"));
    EXPECT_THAT(saved.Values(sheet, "//sheetView/@tabSelected"), IsEmpty());
    EXPECT_THAT(saved.Values("xl/worksheets/sheet1.xml", "//sheetView/@tabSelected"),
                ElementsAre("1"));
}

TEST_F(WorkbookTest, HeaderCellsOfATableNameItsColumns)
{
    auto& model = Named("Model");
    model.SetCell(1, 10, CellValue(std::string("Sun")), CellMember::Value);
    model.CopyAfter(model);
    model.Next()->SetCell(1, 11, CellValue(std::string("sun")), CellMember::Value);
    model.Next()->SetCell(1, 10, CellValue(std::int16_t{7}), CellMember::Value);
    const auto saved = Save();
    const auto copy = saved.SheetPart("Model (2)");
    EXPECT_THAT(saved.Values("xl/tables/table1.xml", "//tableColumn/@name"),
                ElementsAre("Sun", "Work"));
    EXPECT_THAT(saved.Values("xl/tables/table2.xml", "//tableColumn/@name"),
                ElementsAre("7", "sun2"))
        << "unique when it was written, without regard to case";
    EXPECT_THAT(saved.Values("xl/worksheets/sheet1.xml", "//c[@r='D5']/f"),
                ElementsAre("SUM(Plan[Sun])"));
    EXPECT_THAT(saved.Values(copy, "//c[@r='D5']/f"), ElementsAre("SUM(Plan_2[7])"));
    EXPECT_THAT(saved.Values(copy, "//c[@r='J1']/@t"), ElementsAre("s")) << "always a text";
    const auto texts = saved.Values("xl/sharedStrings.xml", "//si/t");
    const auto shown = [&](const std::string& part, const char* cell) {
        return texts.at(std::stoul(saved.Values(part, cell).at(0)));
    };
    EXPECT_EQ(shown(copy, "//c[@r='J1']/v"), "7");
    EXPECT_EQ(shown(copy, "//c[@r='K1']/v"), "sun2");
}

TEST_F(WorkbookTest, TableStaysWhenItsHeadersStay)
{
    Named("Model").SetCell(1, 10, CellValue(std::string("Day")), CellMember::Value);
    Named("Model").SetCell(2, 10, CellValue(std::string("Sun")), CellMember::Value);
    EXPECT_EQ(Save().Bytes("xl/tables/table1.xml"),
              SavedPackage(kEverything).Bytes("xl/tables/table1.xml"));
}

TEST_F(WorkbookTest, ThreadedCommentsOfACopyAreItsOwn)
{
    const auto saved = SaveWithCopy();
    const auto ids =
        saved.Values("xl/threadedComments/threadedComment2.xml", "//threadedComment/@id");
    ASSERT_EQ(ids.size(), 2U);
    EXPECT_THAT(saved.Values("xl/threadedComments/threadedComment1.xml", "//threadedComment/@id"),
                Not(Contains(ids[0])));
    EXPECT_THAT(
        saved.Values("xl/threadedComments/threadedComment2.xml", "//threadedComment/@parentId"),
        ElementsAre(ids[0]));
    EXPECT_THAT(saved.Values("xl/comments2.xml", "//author"), ElementsAre("tc=" + ids[0]));
    EXPECT_EQ(saved.NamesWith("xl/persons/").size(), 1U);
}

TEST_F(WorkbookTest, CopyIncludesCellsWrittenBefore)
{
    auto& model = Named("Model");
    model.SetCell(30, 1, CellValue(std::string("=1+1")), CellMember::Value);
    model.CopyAfter(model);
    model.SetCell(31, 1, CellValue(std::int16_t{5}), CellMember::Value);
    const auto saved = Save();
    const auto copy = saved.SheetPart("Model (2)");
    EXPECT_EQ(saved.Values(copy, "//c[@r='A30']/v").size(), 1U);
    EXPECT_THAT(saved.Values(copy, "//c[@r='A31']"), IsEmpty());
}

TEST_F(WorkbookTest, NoStoredResultOutlivesAWrite)
{
    Named("Model").SetCell(1, 1, CellValue(std::int16_t{100}), CellMember::Value);
    const auto saved = Save();
    EXPECT_THAT(saved.Values("xl/worksheets/sheet1.xml", "//c[f]/v"), IsEmpty());
    EXPECT_THAT(saved.Values("xl/worksheets/sheet2.xml", "//c[f]/v"), IsEmpty())
        << "it reads the sheet that was written";
    EXPECT_THAT(saved.Values("xl/worksheets/sheet3.xml", "//c[f]/v"), ElementsAre("3"))
        << "it reads only itself";
    EXPECT_THAT(saved.Values("xl/workbook.xml", "//calcPr/@fullCalcOnLoad"), ElementsAre("1"));
}

TEST_F(WorkbookTest, SavesMoreThanOnce)
{
    auto& model = Named("Model");
    model.SetName("January");
    model.CopyAfter(model);
    Save();
    model.SetName("Model");
    model.Next()->SetName("Twin");
    model.Next()->CopyAfter(*model.Next());
    const auto saved = Save();
    EXPECT_THAT(saved.Values("xl/workbook.xml", "//sheet/@name"),
                ElementsAre("Model", "Twin", "Twin (2)", "Other", "Third Sheet"));
    EXPECT_THAT(saved.Values(saved.SheetPart("Twin (2)"), "//c[@r='D1']/f"),
                ElementsAre("SUM('Twin (2)'!B1:B10)"));
    EXPECT_THAT(saved.Values("xl/worksheets/sheet2.xml", "//c[@r='B1']/f"),
                ElementsAre("Model!B1*2"));
}

TEST_F(WorkbookTest, RenamedBackIsTheTemplateAgain)
{
    Named("Model").SetName("January");
    Save();
    Named("January").SetName("Model");
    const auto saved = Save();
    const SavedPackage original(kEverything);
    for (const auto& name : original.Names()) {
        if (!name.ends_with(".rels")) {
            EXPECT_EQ(saved.Bytes(name), original.Bytes(name)) << name;
        }
    }
    EXPECT_THAT(saved.Bytes("xl/drawings/_rels/drawing1.xml.rels"), HasSubstr("#Model!A1"));
}

TEST_F(WorkbookTest, EveryPartHasATypeAndEveryTargetAPart)
{
    const auto saved = SaveWithCopy();
    for (const auto& name : saved.Names()) {
        if (name.ends_with(".rels"))
            continue;
        EXPECT_TRUE(name == "[Content_Types].xml" || saved.HasType(name)) << name;
        for (const auto& target : saved.Targets(name)) {
            const bool leadsToAPart = !target.external && !target.target.starts_with("#");
            EXPECT_TRUE(!leadsToAPart || saved.Has(target.target))
                << name << " -> " << target.target;
        }
    }
}

} // namespace
} // namespace orrery::xlsx
