// Workbooks that are damaged, or unusual, in one place. Damage in a part that a calendar touches is
// refused, and the workbook stays as it was; damage elsewhere stays as it is.

#include "book/error.h"
#include "engines/builtin/xlsx/workbook.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/paths.h"
#include "xlsx/built_book.h"
#include "xlsx/saved_package.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>

namespace orrery::xlsx {
namespace {

using book::AccessMode;
using book::CellMember;
using book::CellValue;
using book::ErrorKind;
using test::BuiltBook;
using test::SavedPackage;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr const char* kSheet = "xl/worksheets/sheet1.xml";
constexpr const char* kSheetLinks = "xl/worksheets/_rels/sheet1.xml.rels";

class DamagedBookTest : public testing::Test {
protected:
    /// Opens the current workbook.
    Workbook& Open()
    {
        workbook_.reset();
        workbook_ = std::make_unique<Workbook>(book.WriteTo(folder_));
        return *workbook_;
    }
    book::Worksheet& Model() { return *workbook_->FindWorksheet("Model"); }
    void Write(book::Worksheet& sheet, std::int32_t row = 2)
    {
        sheet.SetCell(row, 2, CellValue(std::string("text")), CellMember::Default);
        sheet.SetCell(row, 3, CellValue(std::int16_t{7}), CellMember::Value);
    }
    void CopyModel() { Model().CopyAfter(Model()); }
    SavedPackage Save()
    {
        workbook_->SaveAs(folder_ / "saved.xlsx", AccessMode::NoChange);
        return SavedPackage(folder_ / "saved.xlsx");
    }
    /// The error of an action, which must name the template.
    util::Error ErrorOf(const std::function<void()>& action)
    {
        try {
            action();
        }
        catch (const util::Error& error) {
            EXPECT_THAT(error.Subject(), HasSubstr("template.xlsx"));
            return error;
        }
        throw std::logic_error("no error");
    }
    void GiveTheModel(const std::string& type, const std::string& target)
    {
        book.Put(kSheetLinks, BuiltBook::Links({{type, target}}));
    }
    void GiveAString()
    {
        book.Put("xl/strings.xml", BuiltBook::Strings({"only"}), "sharedStrings");
        book.Put("xl/_rels/workbook.xml.rels",
                 BuiltBook::Links(
                     {{"worksheet", "worksheets/sheet1.xml"}, {"sharedStrings", "strings.xml"}}));
    }

    const testing_support::ScratchFolder& Folder() const { return folder_; }

    BuiltBook book;

private:
    testing_support::ScratchFolder folder_;
    std::unique_ptr<Workbook> workbook_;
};

TEST_F(DamagedBookTest, ACopyThatFailsChangesNothing)
{
    book.Put("xl/drawings/drawing1.xml", "<a><b></a>", "drawing");
    book.Put("xl/printer1.bin", "settings");
    book.Put(kSheetLinks, BuiltBook::Links({{"printerSettings", "../printer1.bin"},
                                            {"drawing", "../drawings/drawing1.xml"}}));
    Open();
    for (int i = 0; i < 2; ++i) {
        const auto error = ErrorOf([this] { CopyModel(); });
        EXPECT_EQ(error.Kind(), ErrorKind::DamagedWorkbook);
        EXPECT_THAT(error.Cause(), HasSubstr("/xl/drawings/drawing1.xml"));
    }
    EXPECT_EQ(Model().Next(), nullptr);
    Model().SetName("January");
    Write(*Open().FindWorksheet("Model"));
    const auto saved = Save();
    EXPECT_THAT(saved.NamesWith("xl/worksheets/"), ElementsAre(kSheet));
    EXPECT_THAT(saved.NamesWith("xl/printer"), SizeIs(1));
    EXPECT_EQ(saved.Bytes("xl/drawings/drawing1.xml"), "<a><b></a>");
    EXPECT_THAT(saved.Cells(kSheet), SizeIs(2));
}

TEST_F(DamagedBookTest, TheRunContinuesAfterACopyThatFailed)
{
    book.Put("xl/drawings/drawing1.xml", "<a><b></a>", "drawing");
    GiveTheModel("drawing", "../drawings/drawing1.xml");
    Open();
    ErrorOf([this] { CopyModel(); });
    Write(Model());
    EXPECT_THAT(Save().Cells(kSheet), SizeIs(2));
}

TEST_F(DamagedBookTest, APartIsCopiedOnceHoweverItIsSpelled)
{
    book.Put("xl/printer1.bin", "settings");
    std::vector<std::pair<std::string, std::string>> links;
    for (const char* spelled : {"../printer1.bin", "../PRINTER1.bin", "../%70rinter1.bin",
                                ".././printer1.bin", "/xl//printer1.bin", "..\\printer1.bin"})
        links.emplace_back("printerSettings", spelled);
    book.Put(kSheetLinks, BuiltBook::Links(links));
    Open();
    CopyModel();
    EXPECT_THAT(Save().NamesWith("xl/printer"), SizeIs(2));
}

TEST_F(DamagedBookTest, PartsMayOwnEachOtherInARing)
{
    const auto ring = BuiltBook::Links({{"oleObject", "part2.bin"}, {"x", "part1.bin"}});
    book.Put("xl/part1.bin", "1").Put("xl/part2.bin", "2");
    book.Put("xl/_rels/part1.bin.rels", ring).Put("xl/_rels/part2.bin.rels", ring);
    GiveTheModel("oleObject", "../part1.bin");
    Open();
    CopyModel();
    const auto saved = Save();
    EXPECT_THAT(saved.NamesWith("xl/part"), SizeIs(4));
    std::vector<std::string> targets;
    for (const auto& target : saved.Targets("xl/part3.bin"))
        targets.push_back(target.target);
    EXPECT_THAT(targets, ElementsAre("xl/part4.bin", "xl/part3.bin"));
}

TEST_F(DamagedBookTest, AChainOfPartsIsFollowedToAnyLength)
{
    constexpr int kParts = 12000;
    for (int i = 1; i <= kParts; ++i) {
        const auto number = std::to_string(i);
        book.Part("xl/chain" + number + ".bin").content = "x";
        if (i < kParts)
            book.Part("xl/_rels/chain" + number + ".bin.rels").content =
                BuiltBook::Links({{"x", "chain" + std::to_string(i + 1) + ".bin"}});
    }
    GiveTheModel("x", "../chain1.bin");
    Open();
    CopyModel();
    EXPECT_THAT(Save().NamesWith("xl/chain"), SizeIs(2 * kParts));
    // A second copy would need more parts than a container can list.
    const auto error = ErrorOf([this] { CopyModel(); });
    EXPECT_EQ(error.Kind(), ErrorKind::TooLargeOutput);
    EXPECT_THAT(error.Cause(), HasSubstr("65,535 parts"));
}

TEST_F(DamagedBookTest, NeitherTheWorkbookNorRelationshipsBelongToASheet)
{
    book.Put(kSheetLinks, BuiltBook::Links({{"x", "../workbook.xml"},
                                            {"x", "../_rels/workbook.xml.rels"},
                                            {"x", "/[Content_Types].xml"}}));
    Open();
    CopyModel();
    EXPECT_THAT(Save().NamesWith("xl/workbook"), ElementsAre("xl/workbook.xml"));
}

TEST_F(DamagedBookTest, ASheetIsNotCopiedWithARelationshipThatIsThereTwice)
{
    auto links =
        BuiltBook::Links({{"printerSettings", "../a.bin"}, {"printerSettings", "../b.bin"}});
    links.replace(links.find("rId2"), 4, "rId1");
    book.Put("xl/a.bin", "a").Put("xl/b.bin", "b").Put(kSheetLinks, links);
    Open();
    EXPECT_THAT(ErrorOf([this] { CopyModel(); }).Cause(), HasSubstr("\"rId1\" is there twice"));
}

TEST_F(DamagedBookTest, ASheetIsNotCopiedWithTwoTablesOfOneName)
{
    const std::string table =
        "<table xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" id=\"1\" "
        "name=\"T\" displayName=\"T\" ref=\"A1:A2\"/>";
    book.Put("xl/table1.xml", table, "table").Put("xl/table2.xml", table, "table");
    book.Put(kSheetLinks,
             BuiltBook::Links({{"table", "../table1.xml"}, {"table", "../table2.xml"}}));
    Open();
    EXPECT_THAT(ErrorOf([this] { CopyModel(); }).Cause(), HasSubstr("\"T\""));
}

TEST_F(DamagedBookTest, ATableIsCopiedWhateverKindOfLinkLeadsToIt)
{
    book.Put("xl/table1.xml",
             "<table xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" id=\"1\" "
             "name=\"T\" displayName=\"T\" ref=\"A1:A2\"/>",
             "table");
    GiveTheModel("image", "../table1.xml");
    Open();
    CopyModel();
    const auto saved = Save();
    ASSERT_TRUE(saved.Has("xl/table2.xml"));
    EXPECT_THAT(saved.Values("xl/table2.xml", "/table/@displayName"), ElementsAre("T_2"));
}

TEST_F(DamagedBookTest, AnEmptyReferenceIsCalledEmpty)
{
    book.Put(kSheet, BuiltBook::Worksheet("<sheetData><row r=\"\"/></sheetData>"));
    Open();
    EXPECT_THAT(ErrorOf([this] { Write(Model()); }).Cause(),
                HasSubstr("a row with an empty number"));
}

TEST_F(DamagedBookTest, ASentenceAboutADamagedSheetNamesTheWorkbookAndThePart)
{
    book.Put(kSheet, "<worksheet><sheetData></worksheet>");
    Open();
    for (const auto& step : {std::function<void()>([this] { Write(Model()); }),
                             std::function<void()>([this] { CopyModel(); })}) {
        EXPECT_THAT(util::ErrorText(ErrorOf(step)),
                    testing::StartsWith("\"" + util::FromPath(Folder() / "template.xlsx") +
                                        "\" is damaged: /xl/worksheets/sheet1.xml"));
    }
}

TEST_F(DamagedBookTest, PartsThatNoCalendarTouchesStayAsTheyAre)
{
    const std::string sheet = BuiltBook::Worksheet("<sheetData><row r=\"1\"></sheetData>");
    book.Put("xl/worksheets/sheet2.xml", sheet, "worksheet");
    book.Put("xl/charts/chart1.xml", "<c:chart/>", "drawing");
    book.Put("docProps/app.xml", "<Properties><", "extended-properties");
    book.Put("_rels/.rels", BuiltBook::Links({{"officeDocument", "xl/workbook.xml"},
                                              {"extended-properties", "docProps/app.xml"}}));
    book.Put("xl/workbook.xml",
             BuiltBook::Workbook("<sheets>" + BuiltBook::Sheet("Model", "1", "rId1") +
                                 BuiltBook::Sheet("Other", "2", "rId2") + "</sheets>"));
    book.Put("xl/_rels/workbook.xml.rels",
             BuiltBook::Links(
                 {{"worksheet", "worksheets/sheet1.xml"}, {"worksheet", "worksheets/sheet2.xml"}}));
    Open();
    Write(Model());
    CopyModel();
    Model().SetName("January");
    const auto saved = Save();
    EXPECT_EQ(saved.Bytes("xl/worksheets/sheet2.xml"), sheet);
    EXPECT_EQ(saved.Bytes("xl/charts/chart1.xml"), "<c:chart/>");
    EXPECT_EQ(saved.Bytes("docProps/app.xml"), "<Properties><");
}

TEST_F(DamagedBookTest, AWrongChecksumIsFoundBeforeTheOutputIsTouched)
{
    book.Put("xl/media/image1.png", "picture");
    book.Part("xl/media/image1.png").declaredChecksum = 1;
    Open();
    Write(Model());
    const auto error = ErrorOf([this] { Save(); });
    EXPECT_EQ(error.Kind(), ErrorKind::DamagedWorkbook);
    EXPECT_THAT(error.Cause(), HasSubstr("xl/media/image1.png"));
}

TEST_F(DamagedBookTest, ATemplateOverwrittenMeanwhileGivesNoOutput)
{
    Open();
    Write(Model());
    const auto path = book.WriteTo(Folder()); // the same bytes, but the engine cannot know that
    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) +
                                               std::chrono::seconds(2));
    const auto error = ErrorOf([this] { Save(); });
    EXPECT_EQ(error.Kind(), util::ErrorKind::FileNotReadable);
    EXPECT_FALSE(std::filesystem::exists(Folder() / "saved.xlsx"));
}

TEST_F(DamagedBookTest, MissingStringsAreNotReplacedByNewOnes)
{
    book.Put("xl/_rels/workbook.xml.rels", BuiltBook::Links({{"worksheet", "worksheets/sheet1.xml"},
                                                             {"sharedStrings", "strings.xml"}}));
    Open();
    for (int i = 0; i < 2; ++i)
        EXPECT_THAT(ErrorOf([this] { Write(Model()); }).Cause(), HasSubstr("/xl/strings.xml"));
    EXPECT_THAT(Save().NamesWith("xl/strings"), IsEmpty());
}

TEST_F(DamagedBookTest, CellsWithMissingStringsDoNotGetNewOnes)
{
    const auto useString = [this](const std::string& index) {
        book.Put(kSheet, BuiltBook::Worksheet("<sheetData><row r=\"9\"><c r=\"A9\" t=\"s\"><v>" +
                                              index + "</v></c></row></sheetData>"));
        Open();
    };
    const auto writeAndSave = [this] {
        Write(Model());
        Save();
    };
    GiveAString();
    useString("0");
    EXPECT_NO_THROW(writeAndSave());
    for (const std::string index : {"1", "4294967295"}) {
        useString(index);
        EXPECT_THAT(ErrorOf(writeAndSave).Cause(),
                    HasSubstr("/xl/worksheets/sheet1.xml uses the shared text"));
    }
    useString("1");
    Model().SetName("January"); // which adds no string
    EXPECT_NO_THROW(Save());
}

TEST_F(DamagedBookTest, StringsAreOnlyAddedToAPartOfStrings)
{
    for (const std::string target :
         {"workbook.xml", "/[Content_Types].xml", "_rels/workbook.xml.rels"}) {
        book.Put(
            "xl/_rels/workbook.xml.rels",
            BuiltBook::Links({{"worksheet", "worksheets/sheet1.xml"}, {"sharedStrings", target}}));
        Open();
        for (int i = 0; i < 2; ++i) {
            EXPECT_THAT(ErrorOf([this] { Write(Model()); }).Cause(),
                        HasSubstr("holds no shared texts"));
        }
        EXPECT_THAT(Save().NamesWith("xl/"), ElementsAre("xl/workbook.xml", kSheet));
    }
}

TEST_F(DamagedBookTest, StringsWithoutARelationshipAreNotReplacedByNewOnes)
{
    book.Put("xl/texts.xml", "<sst/>", "sharedStrings");
    Open();
    for (int i = 0; i < 2; ++i)
        EXPECT_THAT(ErrorOf([this] { Write(Model()); }).Cause(), HasSubstr("/xl/texts.xml"));
    EXPECT_EQ(Save().Bytes("xl/texts.xml"), "<sst/>");
}

TEST_F(DamagedBookTest, NewPartsTakeNoNameThatHasAnotherMeaning)
{
    book.Put("xl/worksheets/sheet2.xml/", "").Put("xl/worksheets/SHEET3.xml/file.txt", "text");
    book.Put("xl/./worksheets/sheet4.xml", "<other/>");
    book.Put("xl/worksheets/_rels/sheet5.xml.rels", BuiltBook::Links({{"x", "nothing.bin"}}));
    Open();
    CopyModel();
    EXPECT_THAT(Save().NamesWith("xl/worksheets/sheet"),
                ElementsAre(kSheet, "xl/worksheets/sheet2.xml/", "xl/worksheets/sheet6.xml"));
}

TEST_F(DamagedBookTest, IdsOfTablesThatOnlySomeReadersFindAreNotGivenAgain)
{
    const auto table = [](const std::string& name, const std::string& id) {
        return "<table xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" id=\"" +
               id + "\" name=\"" + name + "\" displayName=\"" + name + "\" ref=\"A1:A2\"/>";
    };
    book.Put("xl/tables/table1.xml", table("First", "1"), "table");
    book.Put("./xl/tables/table2.xml", table("Second", "2"));
    book.Type("/xl/tables/table2.xml", "table");
    GiveTheModel("table", "../tables/table1.xml");
    Open();
    CopyModel();
    const auto saved = Save();
    ASSERT_THAT(saved.NamesWith("xl/tables/"), SizeIs(2));
    EXPECT_THAT(saved.Values(saved.NamesWith("xl/tables/").back(), "/table/@id"), ElementsAre("3"));
}

TEST_F(DamagedBookTest, TwoSheetsCannotBeOnePart)
{
    book.Put("xl/workbook.xml",
             BuiltBook::Workbook("<sheets>" + BuiltBook::Sheet("Model", "1", "rId1") +
                                 BuiltBook::Sheet("Twin", "2", "rId1") + "</sheets>"));
    EXPECT_THAT(ErrorOf([this] { Open(); }).Cause(), HasSubstr("\"Model\" and \"Twin\""));
}

TEST_F(DamagedBookTest, ASheetCannotBeThePartOfRelationships)
{
    book.Put("xl/_rels/workbook.xml.rels",
             BuiltBook::Links({{"worksheet", "_rels/workbook.xml.rels"}}));
    EXPECT_THAT(ErrorOf([this] { Open(); }).Cause(), HasSubstr("\"Model\" is missing"));
}

TEST_F(DamagedBookTest, APartIsNotThereTwiceUnderAnotherSpelling)
{
    book.Put("./xl/workbook.xml", "<other/>");
    EXPECT_THAT(ErrorOf([this] { Open(); }).Cause(), HasSubstr("/xl/workbook.xml is there twice"));
}

struct ChainCase {
    const char* name;
    const char* owner;
    bool stays;
};
class CalculationChainTest : public DamagedBookTest,
                             public testing::WithParamInterface<ChainCase> {};
TEST_P(CalculationChainTest, IsRemovedUnlessSomethingElseRefersToIt)
{
    book.Put(kSheet, BuiltBook::Worksheet("<sheetData><row r=\"2\"><c r=\"B2\"><f>1</f></c></row>"
                                          "</sheetData>"));
    book.Put("xl/calcChain.xml", "<calcChain/>", "calcChain");
    book.Put("xl/_rels/workbook.xml.rels", BuiltBook::Links({{"worksheet", "worksheets/sheet1.xml"},
                                                             {"calcChain", "calcChain.xml"}}));
    if (*GetParam().owner != '\0')
        book.Put(GetParam().owner, BuiltBook::Links({{"theme", "/xl/calcChain.xml"}}));
    Open();
    Write(Model());
    const auto saved = Save();
    EXPECT_EQ(saved.Has("xl/calcChain.xml"), GetParam().stays);
    EXPECT_THAT(saved.Bytes("xl/_rels/workbook.xml.rels"), Not(HasSubstr("calcChain")));
}
INSTANTIATE_TEST_SUITE_P(
    Owners, CalculationChainTest,
    testing::Values(ChainCase{"NothingElse", "", false}, ChainCase{"TheSheet", kSheetLinks, true},
                    ChainCase{"RelationshipsOfNoPart", "docProps/_rels/core.xml.rels", true}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(DamagedBookTest, APartOfAnotherTypeIsNotRemovedAsTheChain)
{
    book.Put(kSheet, BuiltBook::Worksheet("<sheetData><row r=\"2\"><c r=\"B2\"><f>1</f></c></row>"
                                          "</sheetData>"));
    book.Put("xl/_rels/workbook.xml.rels",
             BuiltBook::Links({{"worksheet", "worksheets/sheet1.xml"},
                               {"calcChain", "worksheets\\sheet1.xml"}}));
    Open();
    Write(Model());
    EXPECT_TRUE(Save().Has(kSheet));
}

struct SheetIdCase {
    const char* name;
    const char* id;
    const char* copy;
};
class SheetIdTest : public DamagedBookTest, public testing::WithParamInterface<SheetIdCase> {};
TEST_P(SheetIdTest, OfACopyIsFreeAndInRange)
{
    book.Put("xl/workbook.xml",
             BuiltBook::Workbook("<sheets>" + BuiltBook::Sheet("Model", GetParam().id, "rId1") +
                                 "</sheets>"));
    Open();
    CopyModel();
    EXPECT_THAT(Save().Values("xl/workbook.xml", "//sheet[@name='Model (2)']/@sheetId"),
                ElementsAre(GetParam().copy));
}
INSTANTIATE_TEST_SUITE_P(Ids, SheetIdTest,
                         testing::Values(SheetIdCase{"Next", "7", "8"},
                                         SheetIdCase{"Reference", "&#49;", "2"},
                                         SheetIdCase{"LastThatIsTaken", "65533", "65534"},
                                         SheetIdCase{"BeyondTheLast", "65534", "1"},
                                         SheetIdCase{"LargestNumber", "4294967295", "1"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(DamagedBookTest, PlacesMayBeWrittenWithReferences)
{
    GiveAString();
    book.Put(kSheet,
             BuiltBook::Worksheet(
                 "<sheetData><row r=\"&#x32;\"><c r=\"&#66;&#x32;\" t=\"&#115;\"><v>0</v></c>"
                 "</row></sheetData><mergeCells><mergeCell ref=\"C2&#58;D2\"/></mergeCells>"));
    Open();
    Write(Model());
    Model().SetCell(2, 4, CellValue(std::int16_t{9}), CellMember::Value);
    const auto cells = Save().Cells(kSheet);
    ASSERT_THAT(cells, SizeIs(2)) << "D2 lies in the merged area";
    EXPECT_EQ(cells[1].reference, "C2");
    EXPECT_EQ(cells[1].value, "7");
}

TEST_F(DamagedBookTest, ARowThatIsCountedGetsItsNumberOnce)
{
    book.Put(kSheet, BuiltBook::Worksheet("<sheetData><row><c r=\"A40\"/></row></sheetData>"));
    Open();
    Write(Model(), 38);
    Write(Model(), 39);
    EXPECT_THAT(Save().Values(kSheet, "//row/@r"), ElementsAre("38", "39", "40"));
}

} // namespace
} // namespace orrery::xlsx
