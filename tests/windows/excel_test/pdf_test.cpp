// PDF files of calendars through Excel.
#include "book/error.h"
#include "engines/builtin/application.h"
#include "excel_test/expected_run.h"
#include "excel_test/run_test.h"
#include "util/file_replace.h"
#include "xlsx/built_book.h"

using namespace orrery;
using namespace orrery::excel_test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

const std::string kMonthNames = "January\nFebruary\nMarch\nApril\nMay\nJune\nJuly\nAugust\n"
                                "September\nOctober\nNovember\nDecember\n";

class ExcelPdfTest : public RunTest {
protected:
    std::filesystem::path Pdf() const { return folder_.Path() / "out" / "2024Desk.pdf"; }
    std::string PdfText() const { return util::ReadFile(Pdf()).value_or("no file"); }

    /// Makes the workbook with the built-in engine, and its PDF.
    std::optional<std::string> RunWithPdf()
    {
        return RunFor([](const auto& /*job*/) { return builtin::CreateApplication({}); }, &maker_);
    }

    engines::InstalledEngines engines_;
    generate::PdfMaker maker_{engines_, book::PdfBy::Office};
};

TEST_F(ExcelPdfTest, CanBeMadeWhereExcelIsInstalled)
{
    EXPECT_TRUE(engines_.CanPrintPdf(book::PdfBy::Any));
    TestServer::Unregister();
    EXPECT_FALSE(engines_.CanPrintPdf(book::PdfBy::Any));
}

TEST_F(ExcelPdfTest, HasTheCalendarSheetsAloneWhoeverWroteThem)
{
    EXPECT_EQ(RunWithPdf(), util::FromPath(Target()));
    EXPECT_THAT(observer_.reports, IsEmpty());
    EXPECT_EQ(PdfText(), "%PDF-1.7\n2024\n" + kMonthNames);
}

TEST_F(ExcelPdfTest, MakesNoOtherCalls)
{
    const auto workbook = folder_ / "Desk.xlsx";
    engines_.StartPdfPrinter(book::PdfBy::Any, nullptr)
        ->Print(workbook, {"Third", "Sheet1"}, folder_ / "Desk.pdf");
    ASSERT_TRUE(TestServer::WaitForProcesses(0));
    std::vector<std::string> expected;
    for (const char* const name : {"DisplayAlerts", "Visible", "Interactive", "ScreenUpdating"})
        expected.push_back(std::string("Application#1.") + name + " put (VT_BOOL false)");
    for (const std::string& call : {
             std::string("Application#1.Workbooks get () -> VT_DISPATCH Workbooks#1"),
             std::string("Application#1.AutomationSecurity put (VT_I4 3)"),
             "Workbooks#1.Open call (" + LoggedText(util::FromPath(workbook)) +
                 ", omitted, VT_BOOL true) -> VT_DISPATCH Workbook#1",
             std::string("Application#1.AutomationSecurity put (VT_I4 1)"),
             std::string("Workbook#1.Worksheets get () -> VT_DISPATCH Sheets#1"),
             std::string(
                 "Sheets#1._Default get|call (VT_BSTR \"Third\") -> VT_DISPATCH Worksheet#1"),
             std::string("Worksheet#1.Visible get () -> VT_I4 -1"),
             std::string("Worksheet#1.Select call (VT_BOOL true)"),
             std::string(
                 "Sheets#1._Default get|call (VT_BSTR \"Sheet1\") -> VT_DISPATCH Worksheet#2"),
             std::string("Worksheet#2.Visible get () -> VT_I4 -1"),
             std::string("Worksheet#2.Select call (VT_BOOL false)"),
             std::string("Workbook#1.ActiveSheet get () -> VT_DISPATCH Worksheet#1"),
         })
        expected.push_back(call);
    auto calls = server_.Calls();
    ASSERT_GT(calls.size(), expected.size());
    const auto rest = calls.begin() + static_cast<std::ptrdiff_t>(expected.size());
    EXPECT_EQ(std::vector<std::string>(calls.begin(), rest), expected);
    EXPECT_THAT(std::vector<std::string>(rest, calls.end()),
                ElementsAre(testing::AllOf(
                                testing::StartsWith(
                                    "Worksheet#1.ExportAsFixedFormat call (VT_I4 0, VT_BSTR \""),
                                testing::EndsWith(".pdf\", VT_I4 0, VT_BOOL true, VT_BOOL false, "
                                                  "omitted, omitted, VT_BOOL false)")),
                            "Workbook#1.Close call (VT_BOOL false)",
                            "Application#1.Workbooks get () -> VT_DISPATCH Workbooks#1",
                            "Workbooks#1.Count get () -> VT_I4 0", "Application#1.Quit call ()"));
    EXPECT_EQ(util::ReadFile(folder_ / "Desk.pdf"), "%PDF-1.7\nSheet1\nThird\n")
        << "in the order of the workbook";
}

TEST_F(ExcelPdfTest, OneExcelPrintsForSeveralYearsAndIsGoneAfterwards)
{
    {
        generate::PdfMaker maker(engines_, book::PdfBy::Office);
        RunWithPdf();
        EXPECT_TRUE(maker.Make(util::FromPath(Target()), {"2024"}, context_));
        EXPECT_EQ(PdfText(), "%PDF-1.7\n2024\n");
        EXPECT_TRUE(maker.Make(util::FromPath(Target()), {"January"}, context_));
        EXPECT_EQ(PdfText(), "%PDF-1.7\nJanuary\n");
        EXPECT_EQ(server_.Count("Application begins"), 2) << "the other one printed for the run";
        EXPECT_EQ(TestServer::Processes().size(), 2U);
    }
    EXPECT_TRUE(TestServer::WaitForProcesses(1));
}

/// A workbook of one sheet.
std::string OneSheet(const std::string& state)
{
    test::BuiltBook book;
    book.Put("xl/workbook.xml",
             test::BuiltBook::Workbook("<sheets><sheet name=\"First\" sheetId=\"1\" state=\"" +
                                       state + "\" r:id=\"rId1\"/></sheets>"));
    return book.Bytes();
}

TEST_F(ExcelPdfTest, LeavesHiddenSheetsOut)
{
    const auto printer = engines_.StartPdfPrinter(book::PdfBy::Any, nullptr);
    const auto workbook = folder_.Write("Hidden.xlsx", OneSheet("hidden"));
    try {
        printer->Print(workbook, {"First"}, folder_ / "Hidden.pdf");
        ADD_FAILURE() << "nothing was thrown";
    }
    catch (const Error& error) {
        EXPECT_EQ(error.Kind(), book::ErrorKind::NothingToPrint);
    }
    EXPECT_FALSE(std::filesystem::exists(folder_ / "Hidden.pdf"));
    folder_.Write("Hidden.xlsx", OneSheet("visible"));
    printer->Print(workbook, {"First", "Missing"}, folder_ / "Hidden.pdf");
    EXPECT_EQ(util::ReadFile(folder_ / "Hidden.pdf"), "%PDF-1.7\nFirst\n");
}

TEST_F(ExcelPdfTest, FailureIsReportedAndWorkbookAndOldPdfStay)
{
    std::filesystem::create_directory(folder_ / "out");
    folder_.Write("out/2024Desk.pdf", "last year's");
    TestServer::SetFaults({"fail Worksheet.ExportAsFixedFormat 1 Document not saved."});
    EXPECT_EQ(RunWithPdf(), util::FromPath(Target()));
    EXPECT_THAT(observer_.reports,
                ElementsAre("Failed to make the PDF file.\r\nDocument not saved."));
    EXPECT_EQ(PdfText(), "last year's");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_ / "out"), {}), 2);
}

TEST_F(ExcelPdfTest, ExcelThatDiesIsReplacedForTheNextWorkbook)
{
    TestServer::SetFaults({"die Worksheet.ExportAsFixedFormat 1"});
    EXPECT_EQ(RunWithPdf(), util::FromPath(Target()));
    EXPECT_THAT(observer_.reports, ElementsAre(HasSubstr("does not answer any more")));
    TestServer::SetFaults({});
    EXPECT_TRUE(maker_.Make(util::FromPath(Target()), {"2024"}, context_));
    EXPECT_EQ(TestServer::Processes().size(), 1U);
}

TEST_F(ExcelPdfTest, PrintsTheCalendarThatExcelShows)
{
    EXPECT_EQ(RunFor([](const auto& /*job*/) { return StartExcel(); }, &maker_),
              util::FromPath(Target()));
    EXPECT_THAT(observer_.reports, IsEmpty());
    EXPECT_EQ(PdfText(), "%PDF-1.7\n2024\n" + kMonthNames);
    EXPECT_EQ(TestServer::Processes().size(), 2U) << "one shows it, one printed it";
    TestServer::CloseAll();
}

} // namespace
