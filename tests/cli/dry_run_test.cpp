#include "cli/dry_run.h"

#include "generate/fake_spreadsheet.h"
#include "generate/run_support.h"

#include <gtest/gtest.h>

#include <limits>

namespace orrery::cli {
namespace {

using Texts = std::vector<std::string>;

class DryRunTest : public testing::Test {
protected:
    DryRunTest() : names_(fake::TestNames())
    {
        sets_.Monthly = fake::DaysOnly();
        sets_.Yearly = fake::YearOfDays();
    }

    Texts Run(const Texts& sheets, SheetLimits limits = {65536, 256}, int year = 2023)
    {
        fake::WorkbookContent content;
        for (const std::string& sheet : sheets)
            content.push_back({sheet, {}});
        fake::Workbook workbook(log_, content);
        const auto findings = DryRun(workbook, limits, static_cast<std::int16_t>(year), sets_,
                                     names_, holidays::EasterDate(static_cast<std::int16_t>(year)));
        EXPECT_EQ(workbook.Content(), content) << "nothing is ever written";
        return findings;
    }

    fake::CallLog log_;
    model::NameTables names_;
    model::ParameterSets sets_;
};

TEST_F(DryRunTest, FindsNothingWhereEverythingIsThere)
{
    EXPECT_EQ(Run({"Sheet1", "Sheet2"}), Texts{});
    for (const std::string& call : log_.Calls())
        EXPECT_TRUE(call.starts_with("Worksheets(")) << call;
}

TEST_F(DryRunTest, FindsMissingSheets)
{
    EXPECT_EQ(Run({"Other"}), (Texts{"Monthly calendar: The sheet Sheet2 does not exist.",
                                     "Yearly calendar: The sheet Sheet1 does not exist."}));
}

TEST_F(DryRunTest, LooksOnlyAtCalendarsThatAreMade)
{
    sets_.Monthly.Output = sets_.Yearly.Output = false;
    EXPECT_EQ(Run({"Other"}), Texts{});
}

TEST_F(DryRunTest, FindsTheSheetThatTheMonthlyCalendarTookAway)
{
    sets_.Yearly.SheetName = "sheet2";
    EXPECT_EQ(Run({"Sheet2"}), (Texts{"Yearly calendar: The sheet sheet2 does not exist."}));
}

TEST_F(DryRunTest, CountsTheCellsOutsideMonthByMonth)
{
    sets_.Monthly.Output = false;
    sets_.Yearly.MonthLayout = 12;
    sets_.Yearly.ColIntervalOfMonth = 23; // November begins in column 232, December in 255
    EXPECT_EQ(Run({"Sheet1"}),
              (Texts{"Yearly calendar: in 2023-12, 22 cells lie outside the sheet, which has 65536 "
                     "rows and 256 columns; the first is row 5, column 260."}));
    EXPECT_EQ(Run({"Sheet1"}, {1048576, 16384}), Texts{});
}

TEST_F(DryRunTest, LooksAtEveryKindOfCell)
{
    sets_.Yearly.Output = false;
    sets_.Monthly.OutYear = true;
    sets_.Monthly.FirstCellOfYear = {70000, 1};
    const auto findings = Run({"Sheet2"});
    ASSERT_EQ(findings.size(), 12U);
    EXPECT_EQ(findings[0], "Monthly calendar: in 2023-1, 1 cell lies outside the sheet, which has "
                           "65536 rows and 256 columns; the first is row 70000, column 1.");
}

TEST_F(DryRunTest, LooksAtTheHolidaysOfTheYearWithTheirPolicy)
{
    sets_.Yearly.Output = false;
    sets_.Monthly.OutHoliday = true;
    sets_.Monthly.MultiHolidays = 1;
    sets_.Monthly.FirstCellOfHoliday = {65535, 2};
    sets_.Monthly.RowIntervalOfDay = 1;
    sets_.Monthly.Holidays = fake::FixedDays({{101, "A"}, {101, "B"}, {101, "C"}});
    EXPECT_EQ(Run({"Sheet2"}),
              (Texts{"Monthly calendar: in 2023-1, 1 cell lies outside the sheet, which has 65536 "
                     "rows and 256 columns; the first is row 65537, column 2."}));
}

TEST_F(DryRunTest, PutsWhatARunWouldReportOnOneLine)
{
    sets_.Monthly.Output = false;
    sets_.Yearly.MonthLayout = 1;
    sets_.Yearly.RowIntervalOfMonth = std::numeric_limits<std::int32_t>::max();
    const auto findings = Run({"Sheet1"});
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_TRUE(findings[0].starts_with("Yearly calendar: Error in making yearly calendar. "));
    EXPECT_EQ(findings[0].find_first_of("\r\n"), std::string::npos);
}

TEST_F(DryRunTest, EndsWithTheLossOfTheApplication)
{
    log_.LoseAt("Worksheets(Sheet2)");
    EXPECT_EQ(Run({"Sheet1", "Sheet2"}),
              (Texts{"Monthly calendar: Error in making monthly calendar. \"Fake\" does not answer "
                     "any more: it has ended. Generate the calendar again."}));
    EXPECT_EQ(log_.Calls(), (Texts{"Worksheets(Sheet2)"}));
}

TEST(LimitsOfTest, FollowTheFileType)
{
    EXPECT_EQ(LimitsOf("Desk.xls").rows, 65536);
    EXPECT_EQ(LimitsOf("DESK.XLS").columns, 256);
    EXPECT_EQ(LimitsOf("Desk.xlsx").rows, 1048576);
    EXPECT_EQ(LimitsOf("Desk.xls.xlsx").columns, 16384);
}

} // namespace
} // namespace orrery::cli
