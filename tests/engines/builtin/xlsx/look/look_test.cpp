#include "engines/builtin/xlsx/look/look.h"

#include "book/error.h"
#include "util/error.h"
#include "xlsx/built_book.h"

#include <gtest/gtest.h>
#include <string>

namespace orrery::xlsx {
namespace {

using book::ErrorKind;
using book::SheetKind;
using test::BuiltBook;

constexpr const char* kSheet = "xl/worksheets/sheet1.xml";
constexpr const char* kBookLinks = "xl/_rels/workbook.xml.rels";

class LookTest : public testing::Test {
protected:
    std::unique_ptr<book::WorkbookView> Open(BuiltBook& book)
    {
        return OpenLook(book.WriteTo(scratch_));
    }

    testing_support::ScratchFolder scratch_;
};

TEST_F(LookTest, ReadsASheetWithItsStylesTextsAndNames)
{
    BuiltBook book;
    book.Put("xl/workbook.xml",
             BuiltBook::Workbook("<sheets>" + BuiltBook::Sheet("Model", "1", "rId1") +
                                 "</sheets><definedNames><definedName name=\"_xlnm.Print_Area\" "
                                 "localSheetId=\"0\">Model!$A$1:$B$2</definedName></definedNames>"))
        .Put(kBookLinks, BuiltBook::Links({{"worksheet", "worksheets/sheet1.xml"},
                                           {"styles", "styles.xml"},
                                           {"sharedStrings", "sharedStrings.xml"},
                                           {"theme", "theme.xml"}}))
        .Put("xl/styles.xml",
             "<styleSheet><fonts><font><sz val=\"9\"/><color theme=\"4\"/></font></fonts>"
             "</styleSheet>",
             "styles")
        .Put("xl/theme.xml", "<a:theme xmlns:a=\"urn:a\"><a:themeElements><a:clrScheme><a:accent1>"
                             "<a:srgbClr val=\"010203\"/></a:accent1></a:clrScheme>"
                             "</a:themeElements></a:theme>")
        .Put("xl/sharedStrings.xml", BuiltBook::Strings({"one", "two"}), "sharedStrings")
        .Put(kSheet, BuiltBook::Worksheet("<sheetData><row r=\"1\"><c r=\"A1\" t=\"s\"><v>1</v>"
                                          "</c></row></sheetData>"));
    const auto view = Open(book);
    EXPECT_EQ(view->FindSheet("model"), 0U);
    EXPECT_EQ(view->Workbook().normalFont.size, 9);
    const book::SheetLook& sheet = view->Sheet(0);
    EXPECT_EQ(sheet.name, "Model");
    EXPECT_EQ(sheet.styles.at(0).font.color, (book::Color{1, 2, 3}));
    ASSERT_EQ(sheet.cells.size(), 1U);
    EXPECT_EQ(std::get<std::string>(sheet.cells[0].content), "two");
    EXPECT_EQ(sheet.page.printAreas.size(), 1U);
    EXPECT_TRUE(sheet.leftOut.empty());
    EXPECT_EQ(&view->Sheet(0), &sheet);
}

TEST_F(LookTest, ReadsStrictWorkbooks)
{
    BuiltBook book;
    book.Put(kSheet, BuiltBook::Worksheet("<sheetData><row><c><v>4</v></c></row></sheetData>"))
        .MakeStrict();
    EXPECT_EQ(std::get<double>(Open(book)->Sheet(0).cells.at(0).content), 4);
}

TEST_F(LookTest, ReadsTablesOfTheSheet)
{
    BuiltBook book;
    book.Put("xl/worksheets/_rels/sheet1.xml.rels",
             BuiltBook::Links({{"table", "../tables/table1.xml"}, {"table", "../tables/no.xml"}}))
        .Put("xl/tables/table1.xml", "<table ref=\"A1:B2\" displayName=\"T\"/>", "table");
    const auto view = Open(book);
    ASSERT_EQ(view->Sheet(0).tables.size(), 1U);
    EXPECT_EQ(view->Sheet(0).tables[0].name, "T");
    ASSERT_EQ(view->Sheet(0).leftOut.size(), 1U);
    EXPECT_EQ(view->Sheet(0).leftOut[0].what, "table");
}

TEST_F(LookTest, TellsKindsOfSheets)
{
    BuiltBook book;
    book.Put("xl/workbook.xml",
             BuiltBook::Workbook("<sheets>" + BuiltBook::Sheet("Chart", "1", "rId1") +
                                 BuiltBook::Sheet("Macro", "2", "rId2") +
                                 BuiltBook::Sheet("Lost", "3", "rId9") + "</sheets>"))
        .Put(kBookLinks, BuiltBook::Links({{"chartsheet", "worksheets/sheet1.xml"},
                                           {"xlMacrosheet", "worksheets/sheet1.xml"}}));
    const auto view = Open(book);
    EXPECT_EQ(view->Workbook().sheets[0].kind, SheetKind::ChartSheet);
    EXPECT_EQ(view->Workbook().sheets[1].kind, SheetKind::MacroSheet);
    EXPECT_TRUE(view->Sheet(0).cells.empty());
    EXPECT_EQ(view->Sheet(0).styles.size(), 1U);
    try {
        view->Sheet(2);
        FAIL() << "the sheet is not there";
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Cause(), "the sheet Lost has no part");
    }
}

TEST_F(LookTest, GoesOnWithoutDamagedStylesAndTexts)
{
    BuiltBook book;
    book.Put(kBookLinks, BuiltBook::Links({{"worksheet", "worksheets/sheet1.xml"},
                                           {"styles", "styles.xml"},
                                           {"sharedStrings", "strings.xml"}}))
        .Put("xl/styles.xml", "<styleSheet><fonts>")
        .Put("xl/strings.xml", "no XML")
        .Put(kSheet, BuiltBook::Worksheet("<sheetData><row><c s=\"3\"><v>4</v></c></row>"
                                          "</sheetData>"));
    const auto view = Open(book);
    const book::SheetLook& sheet = view->Sheet(0);
    EXPECT_EQ(sheet.cells.size(), 1U);
    ASSERT_EQ(sheet.leftOut.size(), 2U);
    EXPECT_EQ(sheet.leftOut[0], (book::LeftOut{"styles", "/xl/styles.xml", "the part is damaged"}));
    EXPECT_EQ(sheet.leftOut[1].what, "texts");
}

TEST_F(LookTest, RefusesDamagedSheetsOnly)
{
    BuiltBook book;
    book.Put(kSheet, "<worksheet><sheetData>");
    const auto view = Open(book);
    EXPECT_EQ(view->Workbook().sheets.size(), 1U);
    try {
        view->Sheet(0);
        FAIL() << "it was read";
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), ErrorKind::DamagedWorkbook);
        EXPECT_FALSE(error.Subject().empty());
    }
}

} // namespace
} // namespace orrery::xlsx
