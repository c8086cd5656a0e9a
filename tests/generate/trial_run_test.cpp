#include "generate/trial_run.h"

#include "book/fake_spreadsheet.h"
#include "generate/run_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <utility>

namespace orrery::generate {
namespace {

using Texts = std::vector<std::string>;

class TrialRunTest : public testing::Test {
protected:
    TrialRunTest() : names_(fake::TestNames())
    {
        sets_.Monthly = fake::DaysOnly();
        sets_.Yearly = fake::YearOfDays();
    }

    Texts Run(const Texts& sheets, int year = 2023)
    {
        fake::WorkbookContent content;
        for (const std::string& sheet : sheets)
            content.push_back({sheet, {}});
        fake::Workbook workbook(log_, content);
        trial_ = TryCalendars(workbook, static_cast<std::int16_t>(year), sets_, names_);
        return TextsOf(trial_.findings);
    }

    fake::CallLog log_;
    model::NameTables names_;
    model::ParameterSets sets_;
    Trial trial_;
};

using CellTexts = std::map<std::pair<std::int32_t, std::int32_t>, std::string>;

/// What a trial leaves in the cells of a sheet.
CellTexts TextsOf(const TrialSheet& sheet)
{
    CellTexts texts;
    for (const RecordedCell& cell : sheet.cells) {
        const auto* const number = std::get_if<std::int16_t>(&cell.value);
        texts[{cell.cell.row, cell.cell.column}] =
            number != nullptr ? std::to_string(*number) : std::get<std::string>(cell.value);
    }
    return texts;
}

TEST_F(TrialRunTest, FindsNothingInAGoodTemplateAndSavesNothing)
{
    EXPECT_EQ(Run({"Sheet1", "Sheet2"}), Texts{});
    EXPECT_EQ(log_.CallsWith("SaveAs"), Texts{});
    EXPECT_EQ(log_.CallsWith("December(").size(), 31U) << "it is the real generation";
}

TEST_F(TrialRunTest, TellsTheSheetsAndWhatIsWrittenOnThem)
{
    sets_.Monthly.OutMonth = true;
    sets_.Monthly.FirstCellOfMonth = {1, 30};
    Run({"Sheet1", "Sheet2"});
    ASSERT_EQ(trial_.sheets.size(), 13U);
    EXPECT_EQ(trial_.sheets[1].name, "February");
    EXPECT_EQ(trial_.sheets[1].model, "Sheet2");
    EXPECT_EQ(trial_.sheets[1].month, 2);
    EXPECT_EQ(trial_.sheets[12].name, "2023");
    EXPECT_EQ(trial_.sheets[12].model, "Sheet1");
    EXPECT_EQ(trial_.sheets[12].month, 0);
    const auto february = TextsOf(trial_.sheets[1]);
    const auto days = std::count_if(february.begin(), february.end(), [](const auto& cell) {
        return cell.second.size() <= 2 && !cell.second.empty();
    });
    EXPECT_EQ(days, 28) << "of 2023";
    EXPECT_EQ(february.at({1, 30}), "February");
    std::size_t daysOfYear = 0;
    for (const auto& [cell, text] : TextsOf(trial_.sheets[12]))
        daysOfYear += text.empty() ? 0U : 1U;
    EXPECT_EQ(daysOfYear, 365U) << "all blocks are on one sheet";
}

TEST_F(TrialRunTest, TellsNoSheetsOfACalendarThatIsNotMade)
{
    Run({"Sheet1"});
    ASSERT_EQ(trial_.sheets.size(), 1U);
    EXPECT_EQ(trial_.sheets[0].month, 0);
}

TEST_F(TrialRunTest, FindsMissingSheets)
{
    EXPECT_EQ(Run({"Other"}), (Texts{"Monthly calendar: The sheet Sheet2 does not exist.",
                                     "Yearly calendar: The sheet Sheet1 does not exist."}));
}

TEST_F(TrialRunTest, ChecksOnlyEnabledCalendars)
{
    sets_.Monthly.Output = sets_.Yearly.Output = false;
    EXPECT_EQ(Run({"Other"}), Texts{});
}

TEST_F(TrialRunTest, FindsAModelSheetThatTheMonthlyCalendarRenamed)
{
    sets_.Yearly.SheetName = "sheet2";
    EXPECT_EQ(Run({"Sheet2"}), (Texts{"Yearly calendar: The sheet sheet2 does not exist."}));
}

TEST_F(TrialRunTest, FindsASheetNamedLikeTheYear)
{
    const auto findings = Run({"Sheet1", "Sheet2", "2023"});
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0],
              "Yearly calendar: Error in making yearly calendar. Another sheet is named "
              "\"2023\" already. Rename that sheet in the template.");
}

TEST_F(TrialRunTest, FindsMonthsWhoseSheetsKeepTheirNames)
{
    const auto findings = Run({"Sheet1", "Sheet2", "May"});
    ASSERT_FALSE(findings.empty());
    for (const std::string& finding : findings)
        EXPECT_TRUE(finding.starts_with(
            "Monthly calendar: The sheet of month 5 is not named after it. Another sheet is named "
            "\"May\" already."))
            << finding;
}

TEST_F(TrialRunTest, FindsMonthsWithNamesThatAreAlike)
{
    names_.Months.Store(2, {"a", "März", "c", "d", "MÄRZ", "f", "g", "h", "A", "j", "k", "l"});
    sets_.Monthly.MonthName = 2;
    EXPECT_EQ(Run({"Sheet1", "Sheet2"}),
              (Texts{"Monthly calendar: The sheet of month 5 is not named after it. Another sheet "
                     "is named \"MÄRZ\" already. Rename that sheet in the template.",
                     "Monthly calendar: The sheet of month 9 is not named after it. Another sheet "
                     "is named \"A\" already. Rename that sheet in the template."}));
}

TEST_F(TrialRunTest, TheMonthlyCalendarTakesItsNamesBeforeTheYearlyOne)
{
    names_.Months.Store(2, {"a", "b", "c", "2023", "e", "f", "g", "h", "i", "j", "k", "l"});
    sets_.Monthly.MonthName = 2;
    EXPECT_EQ(Run({"Sheet1", "Sheet2"}),
              (Texts{"Yearly calendar: Error in making yearly calendar. Another sheet is named "
                     "\"2023\" already. Rename that sheet in the template."}));
}

TEST_F(TrialRunTest, FindsSheetsThatAreNotCopied)
{
    log_.FailAt("February.Copy after February", "It is full.");
    const auto findings = Run({"Sheet1", "Sheet2"});
    ASSERT_FALSE(findings.empty());
    EXPECT_EQ(findings[0], "Monthly calendar: The sheet of a month is not made. It is full.");
}

TEST_F(TrialRunTest, CountsTheCellsThatCannotBeWrittenMonthByMonth)
{
    sets_.Monthly.Output = false;
    sets_.Yearly.MonthLayout = 12;
    sets_.Yearly.ColIntervalOfMonth = 1489; // December begins in column 16381 of 16384
    const auto findings = Run({"Sheet1"});
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_TRUE(findings[0].starts_with(
        "Yearly calendar: in 2023-12, 14 cells cannot be written. The cell "))
        << findings[0];
    EXPECT_NE(findings[0].find("(5,16386)"), std::string::npos);
    EXPECT_NE(findings[0].find("lies outside the sheet"), std::string::npos);
}

TEST_F(TrialRunTest, ChecksEveryKindOfCell)
{
    sets_.Yearly.Output = false;
    sets_.Monthly.OutYear = true;
    sets_.Monthly.FirstCellOfYear = {1048577, 1};
    const auto findings = Run({"Sheet2"});
    ASSERT_EQ(findings.size(), 12U);
    EXPECT_TRUE(findings[0].starts_with("Monthly calendar: in 2023-1, 1 cell cannot be written. "));
}

TEST_F(TrialRunTest, TheLastCellOfASheetIsInsideAndItsNeighboursAreNot)
{
    sets_.Yearly.Output = false;
    sets_.Monthly.OutYear = true;
    struct LimitCase {
        model::CellPosition cell;
        std::size_t findings; // one for each month
    };
    for (const auto& [cell, findings] :
         {LimitCase{{1048576, 16384}, 0}, {{1048577, 16384}, 12}, {{1048576, 16385}, 12}}) {
        sets_.Monthly.FirstCellOfYear = cell;
        EXPECT_EQ(Run({"Sheet2"}).size(), findings) << cell.row << ' ' << cell.column;
    }
}

TEST_F(TrialRunTest, ChecksTheHolidaysOfTheYearWithTheirPlacement)
{
    sets_.Yearly.Output = false;
    sets_.Monthly.OutHoliday = true;
    sets_.Monthly.MultiHolidays = 1;
    sets_.Monthly.FirstCellOfHoliday = {1048575, 2};
    sets_.Monthly.RowIntervalOfDay = 1;
    sets_.Monthly.Holidays = fake::FixedDays({{101, "A"}, {101, "B"}, {101, "C"}});
    const auto findings = Run({"Sheet2"});
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_NE(findings[0].find("in 2023-1, 1 cell cannot be written."), std::string::npos);
    EXPECT_NE(findings[0].find("(1048577,2)"), std::string::npos);
}

TEST_F(TrialRunTest, PutsEachReportOnOneLine)
{
    sets_.Monthly.Output = false;
    sets_.Yearly.MonthLayout = 1;
    sets_.Yearly.RowIntervalOfMonth = std::numeric_limits<std::int32_t>::max();
    const auto findings = Run({"Sheet1"});
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_TRUE(findings[0].starts_with("Yearly calendar: Error in making yearly calendar. "));
    EXPECT_EQ(findings[0].find_first_of("\r\n"), std::string::npos);
}

TEST_F(TrialRunTest, EndsWhenTheApplicationIsLost)
{
    log_.LoseAt("Worksheets(Sheet2)");
    EXPECT_EQ(Run({"Sheet1", "Sheet2"}),
              (Texts{"Monthly calendar: Error in making monthly calendar. \"Fake\" does not answer "
                     "any more: it has ended. Generate the calendar again."}));
    EXPECT_EQ(log_.Calls(), (Texts{"Worksheets(Sheet2)"}));
}

} // namespace
} // namespace orrery::generate
