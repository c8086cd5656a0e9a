#include "engines/libreoffice/plugin/office_application.h"

#include "book/error.h"
#include "engines/builtin/saved_sheets.h"
#include "engines/builtin/xlsx/saved_package.h"
#include "engines/libreoffice/plugin/own_references.h"
#include "office.h"
#include "places/places.h"
#include "util/error.h"
#include "util/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <set>

namespace orrery::libreoffice {
namespace {

using book::CellMember;
using book::ErrorKind;
using Value = contract::Value;

const std::filesystem::path kData = places::SourceFolder() / "tests/engines/libreoffice/data";

/// Rules for cells and sheets that the contract leaves out; all of them are Excel's.
class WorksheetTest : public testing::Test {
protected:
    book::Worksheet& Sheet(const char* name)
    {
        if (workbook_ == nullptr)
            workbook_ = &application_.OpenWorkbook(kData / "guards.xlsx", true);
        return *workbook_->FindWorksheet(name);
    }

    static std::optional<util::AnyErrorKind> KindOf(const std::function<void()>& call)
    {
        try {
            call();
        }
        catch (const Error& error) {
            subject_ = error.Subject();
            return error.Kind();
        }
        return std::nullopt;
    }

    static std::optional<util::AnyErrorKind> Set(book::Worksheet& sheet, std::int32_t row,
                                                 std::int32_t column)
    {
        return KindOf([&] { sheet.SetCell(row, column, std::int16_t{7}, CellMember::Value); });
    }

    std::vector<contract::SavedSheet> SaveAndRead()
    {
        workbook_->SaveAs(folder_ / "saved.xlsx", book::AccessMode::NoChange);
        return orrery::test::ReadXlsx(folder_ / "saved.xlsx");
    }

    static inline std::string subject_;
    testing_support::ScratchFolder folder_;
    OfficeApplication application_{test::Options()};
    book::Workbook* workbook_ = nullptr;
};

TEST_F(WorksheetTest, OnlyTheFirstCellOfAMergedAreaTakesAValue)
{
    auto& model = Sheet("Merged");
    model.CopyAfter(model);
    for (auto* const sheet : {&model, model.Next()}) {
        for (const auto& [row, column] : {std::pair{2, 2},
                                          {2, 3},
                                          {3, 2},
                                          {3, 4},
                                          {3, 5},
                                          {10, 1},
                                          {12, 1},
                                          {13, 1},
                                          {20, 3},
                                          {20, 16384},
                                          {5, 6},
                                          {5, 7}})
            EXPECT_EQ(Set(*sheet, row, column), std::nullopt);
    }
    using Cells = decltype(contract::SavedSheet::cells);
    const Cells expected = {{{2, 2}, 7.0},  {{3, 5}, 7.0},  {{5, 6}, 7.0},
                            {{10, 1}, 7.0}, {{13, 1}, 7.0}, {{20, 3}, 7.0}};
    const auto saved = SaveAndRead();
    EXPECT_EQ(saved.at(0).cells, expected);
    EXPECT_EQ(saved.at(1).cells, expected);
}

TEST_F(WorksheetTest, CellsOfAnArrayCannotBeChangedAlone)
{
    auto& model = Sheet("Arrays");
    model.CopyAfter(model);
    for (auto* const sheet : {&model, model.Next()}) {
        EXPECT_EQ(Set(*sheet, 1, 5), ErrorKind::PartOfArray);
        EXPECT_EQ(Set(*sheet, 3, 5), ErrorKind::PartOfArray);
        EXPECT_EQ(subject_, "E3");
        EXPECT_EQ(Set(*sheet, 1, 6), std::nullopt) << "an array of one cell";
        EXPECT_EQ(Set(*sheet, 1, 7), std::nullopt) << "a formula";
        EXPECT_EQ(Set(*sheet, 4, 5), std::nullopt) << "below the array";
    }
    const auto saved = SaveAndRead();
    for (const std::size_t sheet : {1U, 2U}) {
        EXPECT_EQ(saved.at(sheet).cells.at({1, 5}), Value(2.0));
        EXPECT_EQ(saved.at(sheet).cells.at({1, 6}), Value(7.0));
        EXPECT_EQ(saved.at(sheet).cells.at({1, 7}), Value(7.0));
    }
}

TEST_F(WorksheetTest, LockedCellsOfAProtectedSheetStay)
{
    auto& model = Sheet("Locked");
    model.CopyAfter(model);
    for (auto* const sheet : {&model, model.Next()}) {
        EXPECT_EQ(Set(*sheet, 1, 1), ErrorKind::CellLocked);
        EXPECT_EQ(subject_, "A1");
        EXPECT_EQ(Set(*sheet, 1, 2), std::nullopt);
    }
    const auto saved = SaveAndRead();
    EXPECT_EQ(saved.at(3).cells.at({1, 1}), Value("locked"));
    EXPECT_EQ(saved.at(3).cells.at({1, 2}), Value(7.0));
}

class ProtectedStructureTest : public WorksheetTest,
                               public testing::WithParamInterface<const char*> {};

TEST_P(ProtectedStructureTest, SheetsAreNeitherRenamedNorCopied)
{
    const std::string extension = GetParam();
    workbook_ = &application_.OpenWorkbook(kData / ("structure" + extension), true);
    auto& sheet = Sheet("Month");
    EXPECT_EQ(KindOf([&] { sheet.SetName("January"); }), ErrorKind::StructureProtected);
    EXPECT_EQ(sheet.Name(), "Month");
    EXPECT_EQ(subject_, "Month");
    EXPECT_EQ(KindOf([&] { sheet.CopyAfter(sheet); }), ErrorKind::StructureProtected);
    EXPECT_EQ(KindOf([&] { sheet.SetName("Month"); }), std::nullopt) << "its own name";
    EXPECT_EQ(Set(sheet, 1, 1), std::nullopt);
    workbook_->SaveAs(folder_ / ("saved" + extension), book::AccessMode::NoChange);
    // Like Excel's, a protected .xls is encrypted, so LibreOffice reads it.
    auto& saved = application_.OpenWorkbook(folder_ / ("saved" + extension), true);
    ASSERT_NE(saved.FindWorksheet("Month"), nullptr);
    EXPECT_EQ(saved.FindWorksheet("Month")->Next(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Formats, ProtectedStructureTest, testing::Values(".xlsx", ".xls"),
                         [](const auto& format) { return std::string(format.param + 1); });

/// The values in the workbook's part for the saved sheets.
std::vector<std::string> ValuesOf(const std::filesystem::path& workbook, const std::string& part,
                                  const char* xpath)
{
    return orrery::test::SavedPackage(workbook).Values(part, xpath);
}

TEST_F(WorksheetTest, ScenariosDoNotTakeTheNamesOfLaterSheets)
{
    workbook_ = &application_.OpenWorkbook(kData / "scenario.xlsx", true);
    auto& month = Sheet("Month");
    EXPECT_EQ(month.Next()->Name(), "Year");
    month.CopyAfter(month);
    const auto saved = SaveAndRead();
    ASSERT_EQ(saved.size(), 3U);
    EXPECT_EQ(saved.at(0).cells.at({2, 2}), Value(7.0));
    EXPECT_EQ(ValuesOf(folder_ / "saved.xlsx", "xl/workbook.xml",
                       "//definedName[@name='_xlnm.Print_Area']/@localSheetId"),
              std::vector<std::string>{"2"});
}

TEST_F(WorksheetTest, FormulasAndChartsThatReferToTheirSheetReferToTheCopy)
{
    workbook_ = &application_.OpenWorkbook(kData / "own_references.xlsx", true);
    auto& may = Sheet("It's May");
    may.SetName("May");
    may.CopyAfter(may);
    may.Next()->SetName("Last June");
    may.Next()->CopyAfter(*may.Next());
    may.Next()->Next()->SetName("July");
    workbook_->SaveAs(folder_ / "saved.xlsx", book::AccessMode::NoChange);
    const auto formulas = [&](const char* sheet) {
        return ValuesOf(folder_ / "saved.xlsx", std::string("xl/worksheets/sheet") + sheet + ".xml",
                        "//f");
    };
    const auto expected = [](const std::string& name) {
        return std::vector<std::string>{name + "!A1:A3*2", name + "!A1*2",
                                        "SUM(" + name + "!$A$1:$A$2)+Other!A1",
                                        "\"$'It''s May'.A1\"&" + name + "!A1"};
    };
    EXPECT_EQ(formulas("1"), expected("May"));
    EXPECT_EQ(formulas("2"), expected("'Last June'"));
    EXPECT_EQ(formulas("3"), expected("July"));
    EXPECT_EQ(formulas("4"), std::vector<std::string>{"May!A1"});
    std::set<std::string> shown;
    for (const auto& chart :
         orrery::test::SavedPackage(folder_ / "saved.xlsx").NamesWith("xl/charts/chart"))
        for (const auto& range : ValuesOf(folder_ / "saved.xlsx", chart, "//c:f"))
            shown.insert(range);
    EXPECT_EQ(shown, (std::set<std::string>{"May!A1", "May!$A$2:$A$3", "'Last June'!$A$1",
                                            "'Last June'!$A$2:$A$3", "July!$A$1", "July!$A$2:$A$3",
                                            "Other!$A$1:$A$2"}));
}

TEST(ReplaceSheet, ReplacesNamesOfThatSheetAlone)
{
    const auto replaced = [](const char* text) {
        return FromUno(ReplaceSheet(ToUno("It's May"), "X.", ToUno(text)));
    };
    EXPECT_EQ(replaced("=$'It''s May'.A1+$'It''s May'.$B$2:$'It''s May'.C3"), "=X.A1+X.$B$2:X.C3");
    EXPECT_EQ(replaced("=\"$'It''s May'.A1\"&$'It''s May'.A1"), "=\"$'It''s May'.A1\"&X.A1");
    EXPECT_EQ(replaced("='file:///a.xlsx'#$'It''s May'.A1"), "='file:///a.xlsx'#$'It''s May'.A1");
    EXPECT_EQ(replaced("=$'It''s Maybe'.A1+$A$1"), "=$'It''s Maybe'.A1+$A$1");
    EXPECT_EQ(replaced("=$'$''It''''s May''.A1'.A1"), "=$'$''It''''s May''.A1'.A1");
    EXPECT_EQ(FromUno(ReplaceSheet("May", "X.", "{=$May.A1:A3*$Maya.A1}")), "{=X.A1:A3*$Maya.A1}");
    EXPECT_EQ(FromUno(SheetPrefix(ToUno("It's May"))), "'It''s May'.");
}

TEST_F(WorksheetTest, WholeRowsAndColumnsAreFormattedOnCopiesToo)
{
    workbook_ = &application_.OpenWorkbook(kData / "whole_formats.xlsx", true);
    auto& model = Sheet("Month");
    model.CopyAfter(model);
    model.Next()->CopyAfter(*model.Next());
    ASSERT_EQ(SaveAndRead().size(), 3U);
    for (const char* const sheet : {"1", "2", "3"})
        EXPECT_EQ(ValuesOf(folder_ / "saved.xlsx",
                           "xl/worksheets/sheet" + std::string(sheet) + ".xml",
                           "//cols/col[@style != '0'][last()]/@max"),
                  std::vector<std::string>{"16384"})
            << sheet;
}

TEST_F(WorksheetTest, LinksKeepTheirTargets)
{
    workbook_ = &application_.OpenWorkbook(kData / "links.xlsx", true);
    auto& month = Sheet("Month");
    month.CopyAfter(month);
    ASSERT_EQ(SaveAndRead().size(), 2U);
    for (const char* const sheet : {"1", "2"})
        EXPECT_THAT(ValuesOf(folder_ / "saved.xlsx",
                             "xl/worksheets/_rels/sheet" + std::string(sheet) + ".xml.rels",
                             "//Relationship[@TargetMode='External']/@Target"),
                    testing::UnorderedElementsAre("file://" + (kData / "notes.txt").string(),
                                                  "https://example.org/calendar"))
            << sheet;
}

/// Files from which new workbooks are created.
class TemplateFileTest : public WorksheetTest, public testing::WithParamInterface<const char*> {};

TEST_P(TemplateFileTest, IsSavedAsOne)
{
    const std::string extension = GetParam();
    const auto source = folder_ / ("book" + extension);
    const auto target = folder_ / ("saved" + extension);
    std::filesystem::copy_file(kData / ("template" + extension), source);
    const bool isBinary = extension == ".xlt";
    workbook_ = &application_.OpenWorkbook(source, true);
    auto& month = Sheet("Month");
    month.CopyAfter(month);
    EXPECT_EQ(Set(month, 1, 256), std::nullopt);
    EXPECT_EQ(Set(month, 1, isBinary ? 257 : 16385), ErrorKind::CellOutsideSheet);
    workbook_->SaveAs(target, book::AccessMode::NoChange);
    const auto saved = isBinary ? orrery::test::ReadXls(target) : orrery::test::ReadXlsx(target);
    ASSERT_EQ(saved.size(), 2U);
    EXPECT_EQ(saved.at(0).cells.at({1, 256}), Value(7.0));
    if (!isBinary) {
        EXPECT_THAT(ValuesOf(target, "[Content_Types].xml",
                             "//Override[@PartName='/xl/workbook.xml']/@ContentType"),
                    testing::ElementsAre("application/vnd.openxmlformats-officedocument."
                                         "spreadsheetml.template.main+xml"));
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, TemplateFileTest, testing::Values(".xltx", ".xlt"),
                         [](const auto& format) { return std::string(format.param + 1); });

TEST_F(WorksheetTest, CopiesKeepTheViewOfTheirModel)
{
    workbook_ = &application_.OpenWorkbook(kData / "view.xlsx", true);
    auto& model = Sheet("Month");
    model.CopyAfter(model);
    model.Next()->CopyAfter(*model.Next());
    ASSERT_EQ(SaveAndRead().size(), 4U);
    for (const char* const sheet : {"2", "3", "4"}) {
        const auto view = [&](const char* what) {
            return ValuesOf(folder_ / "saved.xlsx",
                            "xl/worksheets/sheet" + std::string(sheet) + ".xml", what);
        };
        using Values = std::vector<std::string>;
        EXPECT_EQ(view("//sheetView/@showGridLines"), Values{"false"}) << sheet;
        EXPECT_EQ(view("//sheetView/@zoomScale"), Values{"85"}) << sheet;
        EXPECT_EQ(view("//pane/@topLeftCell"), Values{"B3"}) << sheet;
        EXPECT_EQ(view("//pane/@state"), Values{"frozen"}) << sheet;
    }
}

TEST_F(WorksheetTest, RefusesFilesThatCannotBeTemplates)
{
    const auto text = folder_.Write("text.xlsx", "1,2,3\n");
    EXPECT_EQ(KindOf([&] { application_.OpenWorkbook(text, true); }), ErrorKind::NotAWorkbook);
    const auto old =
        folder_.Write("old.xls", std::string("\x09\x04\x06\x00\x00\x00\x10\x00\x00\x00", 10));
    EXPECT_EQ(KindOf([&] { application_.OpenWorkbook(old, true); }), ErrorKind::OldBinaryFormat);
    EXPECT_EQ(KindOf([&] { application_.OpenWorkbook(folder_ / "none.xlsx", true); }),
              util::ErrorKind::FileNotFound);
    EXPECT_EQ(KindOf([&] { application_.OpenWorkbook(kData / "password.xlsx", true); }),
              ErrorKind::PasswordProtected);
}

} // namespace
} // namespace orrery::libreoffice
