#include "generate/pdf.h"

#include "book/fake_engines.h"
#include "generate/run.h"
#include "generate/run_support.h"
#include "util/file_replace.h"
#include "util/paths.h"
#include "util/scratch_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using namespace orrery;
using Texts = std::vector<std::string>;

namespace fs = std::filesystem;

namespace {

struct PathCase {
    const char* name;
    const char* workbook;
    const char* expected;
};

class PdfPathTest : public testing::TestWithParam<PathCase> {};

TEST_P(PdfPathTest, IsBesideTheWorkbook)
{
    EXPECT_EQ(generate::PdfPath(GetParam().workbook), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Workbooks, PdfPathTest,
    testing::Values(PathCase{"Xls", "o/2027Desk.xls", "o/2027Desk.pdf"},
                    PathCase{"Xlsx", "o/2027Desk.xlsx", "o/2027Desk.pdf"},
                    PathCase{"DotInTheName", "o/2027My.Desk.xls", "o/2027My.Desk.pdf"},
                    PathCase{"DotInTheFolder", R"(o.d\2027Desk)", R"(o.d\2027Desk.pdf)"},
                    PathCase{"InTheRoot", "/2027Desk.xls", "/2027Desk.pdf"},
                    PathCase{"NoFolder", "2027Desk.xls", "2027Desk.pdf"},
                    PathCase{"NeverTheWorkbookItself", "o/2027Desk.PDF", "o/2027Desk.PDF.pdf"}),
    [](const auto& each) { return std::string(each.param.name); });

/// Records whether the hourglass is shown while a PDF is printed.
class PrintingObserver : public fake::ListObserver {
public:
    void Printing(const std::string& path) override
    {
        EXPECT_TRUE(!isInRun || hourglass);
        ListObserver::Printing(path);
    }
    bool isInRun = true;
};

/// Runs with a template of two model sheets and one other sheet.
class PdfTest : public testing::Test {
protected:
    PdfTest()
    {
        fake::WriteWorkbookFile(folder_ / "Desk.fake",
                                {{"Cover", {}}, {"Sheet1", {}}, {"Sheet2", {}}});
        sets_.Monthly = fake::DaysOnly();
        sets_.Yearly = fake::YearOfDays();
    }

    std::optional<generate::SavedCalendar> Run(const std::string& year)
    {
        const std::string folder = util::WithTrailingSeparator(util::FromPath(folder_));
        return generate::RunGenerate(
            {year, "Desk.fake", folder, folder}, sets_,
            [this](const auto& /*job*/) { return engines_.Start("fake", {}); }, context_, &maker_);
    }
    std::string At(const std::string& name) const { return util::FromPath(folder_ / name); }
    std::string Content(const std::string& name) const
    {
        return util::ReadFile(folder_ / name).value_or("no file");
    }

    testing_support::ScratchFolder scratch_;
    const fs::path folder_ = scratch_.Path();
    fake::Engines engines_;
    PrintingObserver observer_;
    model::NameTables names_ = fake::TestNames();
    generate::Context context_{names_, observer_};
    model::ParameterSets sets_;
    generate::PdfMaker maker_{engines_, book::PdfBy::BuiltIn};
};

constexpr const char* kMonths = "January\nFebruary\nMarch\nApril\nMay\nJune\nJuly\nAugust\n"
                                "September\nOctober\nNovember\nDecember\n";

TEST_F(PdfTest, HasOnlyTheFilledSheets)
{
    const auto saved = Run("2027");
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->workbook, At("2027Desk.fake"));
    EXPECT_EQ(saved->pdf, At("2027Desk.pdf"));
    EXPECT_EQ(Content("2027Desk.pdf"), std::string("2027\n") + kMonths);
    EXPECT_EQ(observer_.printed, Texts{At("2027Desk.pdf")});
    EXPECT_EQ(observer_.reports, Texts());
    EXPECT_FALSE(observer_.hourglass);
}

TEST_F(PdfTest, IsMadeAfterTheApplicationIsReleased)
{
    Run("2027");
    const Texts& calls = engines_.log.Calls();
    ASSERT_GE(calls.size(), 3U);
    EXPECT_EQ(Texts(calls.end() - 3, calls.end()),
              (Texts{"Release application", "Start PDF printer",
                     "Print 2027Desk.fake into 2027Desk.pdf"}));
}

TEST_F(PdfTest, OnePrinterServesAllYears)
{
    Run("2027");
    sets_.Monthly.Output = false;
    Run("2028");
    EXPECT_EQ(Content("2028Desk.pdf"), "2028\n");
    EXPECT_EQ(engines_.log.CallsWith("PDF printer"), Texts{"Start PDF printer"});
    EXPECT_EQ(engines_.printsBy, std::vector{book::PdfBy::BuiltIn});
}

TEST_F(PdfTest, AWorkbookWithoutACalendarHasNone)
{
    sets_.Monthly.Output = sets_.Yearly.Output = false;
    const auto saved = Run("2027");
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->pdf, std::nullopt);
    EXPECT_EQ(
        observer_.reports,
        Texts{"Failed to make the PDF file.\r\nThe workbook has no calendar sheet that can be "
              "seen. Switch a calendar on in the parameters, and do not hide its sheet in the "
              "template."});
    EXPECT_EQ(engines_.log.CallsWith("PDF"), Texts()) << "for nothing nobody is started";
    EXPECT_FALSE(fs::exists(folder_ / "2027Desk.pdf"));
}

TEST_F(PdfTest, ARunThatSavedNothingHasNone)
{
    engines_.log.FailAt("SaveAs 2027Desk.fake", "The disk is full.");
    EXPECT_FALSE(Run("2027"));
    EXPECT_EQ(observer_.reports.size(), 1U);
    EXPECT_EQ(engines_.log.CallsWith("PDF"), Texts());
}

TEST_F(PdfTest, AFailureIsReportedAndTheWorkbookStays)
{
    std::ofstream(folder_ / "2027Desk.pdf") << "an earlier one";
    engines_.log.FailAt("Print 2027Desk.fake into 2027Desk.pdf", "Out of paper.");
    const auto saved = Run("2027");
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->pdf, std::nullopt);
    EXPECT_EQ(observer_.reports, Texts{"Failed to make the PDF file.\r\nOut of paper."});
    EXPECT_EQ(fake::ReadWorkbookFile(folder_ / "2027Desk.fake").size(), 14U);
    EXPECT_EQ(Content("2027Desk.pdf"), "an earlier one");
    EXPECT_EQ(Run("2028")->pdf, At("2028Desk.pdf")) << "the same printer goes on";
    EXPECT_EQ(engines_.log.CallsWith("PDF printer"), Texts{"Start PDF printer"});
}

TEST_F(PdfTest, APrinterThatDoesNotStartIsReported)
{
    engines_.log.FailAt("Start PDF printer", "It is not there.");
    EXPECT_EQ(Run("2027")->pdf, std::nullopt);
    EXPECT_EQ(observer_.reports, Texts{"Failed to make the PDF file.\r\nIt is not there."});
    EXPECT_FALSE(observer_.hourglass);
}

TEST_F(PdfTest, ALostPrinterIsReplaced)
{
    Run("2027");
    observer_.isInRun = false;
    engines_.log.LoseAt("Print 2027Desk.fake into 2027Desk.pdf");
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(maker_.Make(At("2027Desk.fake"), {"2027"}, context_), std::nullopt);
    EXPECT_EQ(observer_.reports.size(), 2U);
    EXPECT_EQ(engines_.log.CallsWith("PDF printer"),
              (Texts{"Start PDF printer", "Release PDF printer", "Start PDF printer",
                     "Release PDF printer"}));
}

TEST_F(PdfTest, SheetNamesAreNotReadWithoutAPdf)
{
    Run("2027");
    EXPECT_EQ(context_.filledSheets, nullptr);
    engines_.log.FailAt("Open Desk.fake read-only", "No.");
    Run("2027");
    EXPECT_EQ(context_.filledSheets, nullptr);
}

} // namespace
