#include "generate/calendar_sheets.h"

#include "book/fake_spreadsheet.h"
#include "generate/run_support.h"

#include <gtest/gtest.h>

#include <limits>

using namespace orrery;
using book::CellValue;
using std::int16_t;
using Texts = std::vector<std::string>;

namespace {

/// The value of this cell shows which month was written to a sheet.
constexpr model::CellPosition kMonthCell{3, 2};

class CalendarSheetsTest : public testing::Test {
protected:
    CalendarSheetsTest()
        : names_(fake::TestNames()), context_{names_, observer_}, monthly_(fake::DaysOnly()),
          yearly_(fake::YearOfDays())
    {
        monthly_.OutMonth = true;
        observer_.monthDone = [this](generate::CalendarKind kind, int16_t month) {
            progress_.push_back((kind == generate::CalendarKind::Monthly ? "monthly " : "yearly ") +
                                std::to_string(month));
        };
    }

    void MakeWorkbook(const Texts& sheets)
    {
        fake::WorkbookContent content;
        for (const std::string& name : sheets)
            content.push_back({name, {}});
        workbook_ = std::make_unique<fake::Workbook>(log_, std::move(content));
    }

    void MakeMonthly(int year = 2024)
    {
        generate::MakeMonthlyCalendar(*workbook_, static_cast<int16_t>(year), monthly_, context_);
    }

    void MakeYearly(int year = 2024)
    {
        generate::MakeYearlyCalendar(*workbook_, static_cast<int16_t>(year), yearly_, context_);
    }

    /// The month name written to each sheet; "" if none was.
    Texts WrittenMonths() const
    {
        Texts months;
        for (const auto& sheet : workbook_->Content()) {
            const auto cell = sheet.cells.find({kMonthCell.row, kMonthCell.column});
            months.push_back(cell == sheet.cells.end() ? "" : std::get<std::string>(cell->second));
        }
        return months;
    }

    fake::CallLog log_;
    fake::ListObserver observer_;
    model::NameTables names_;
    generate::Context context_;
    model::MonthlyParameters monthly_;
    model::YearlyParameters yearly_;
    std::unique_ptr<fake::Workbook> workbook_;
    Texts progress_;
};

const Texts kEnglish = {"January", "February", "March",     "April",   "May",      "June",
                        "July",    "August",   "September", "October", "November", "December"};

Texts Around(const Texts& before, const Texts& months, const Texts& after)
{
    Texts all = before;
    all.insert(all.end(), months.begin(), months.end());
    all.insert(all.end(), after.begin(), after.end());
    return all;
}

// ---- monthly

TEST_F(CalendarSheetsTest, MonthlyMakesTwelveSheetsInOrder)
{
    MakeWorkbook({"Notes", "Sheet2", "Last"});
    MakeMonthly();
    EXPECT_EQ(workbook_->SheetNames(), Around({"Notes"}, kEnglish, {"Last"}));
    EXPECT_EQ(WrittenMonths(), Around({""}, kEnglish, {""}));
    EXPECT_TRUE(observer_.reports.empty());
    Texts expected;
    for (int month = 1; month <= 12; ++month)
        expected.push_back("monthly " + std::to_string(month));
    EXPECT_EQ(progress_, expected);
}

TEST_F(CalendarSheetsTest, MonthlyCopiesEverySheetBeforeItFillsOne)
{
    MakeWorkbook({"Sheet2"});
    MakeMonthly();
    const auto& calls = log_.Calls();
    EXPECT_EQ((Texts{calls.begin(), calls.begin() + 5}),
              (Texts{"Worksheets(Sheet2)", "Sheet2.Name = January", "January.Copy after January",
                     "January.Next", "January (2).Name = February"}));
    EXPECT_EQ(calls[5], "February.Copy after February");
    const auto lastCopy = std::find(calls.begin(), calls.end(), "November.Copy after November");
    const auto firstCell = std::find(calls.begin(), calls.end(), "January(3,2) = \"January\"");
    EXPECT_LT(lastCopy, firstCell);
    EXPECT_NE(firstCell, calls.end());
    EXPECT_EQ(log_.CallsWith("Copy after").size(), 11U);
}

TEST_F(CalendarSheetsTest, MonthlyFindsTheModelSheetIgnoringCase)
{
    MakeWorkbook({"sHEET2"});
    MakeMonthly();
    EXPECT_EQ(workbook_->SheetNames(), kEnglish);
}

TEST_F(CalendarSheetsTest, NothingIsTouchedWithoutOutput)
{
    MakeWorkbook({"Sheet1", "Sheet2"});
    monthly_.Output = yearly_.Output = false;
    MakeMonthly();
    MakeYearly();
    EXPECT_TRUE(log_.Calls().empty());
    EXPECT_TRUE(progress_.empty());
}

TEST_F(CalendarSheetsTest, AMissingModelSheetIsReported)
{
    MakeWorkbook({"Other"});
    MakeMonthly();
    MakeYearly();
    EXPECT_EQ(observer_.reports,
              (Texts{"The sheet Sheet2 does not exist.", "The sheet Sheet1 does not exist."}));
    EXPECT_EQ(log_.Calls(), (Texts{"Worksheets(Sheet2)", "Worksheets(Sheet1)"}));
}

TEST_F(CalendarSheetsTest, ALookUpThatFailsIsReportedWithItsDescription)
{
    MakeWorkbook({"Sheet1", "Sheet2"});
    log_.FailAt("Worksheets(Sheet2)", "busy");
    log_.FailAt("Worksheets(Sheet1)", "busy too");
    MakeMonthly();
    MakeYearly();
    EXPECT_EQ(observer_.reports, (Texts{"Error in making monthly calendar.\r\nbusy",
                                        "Error in making yearly calendar.\r\nbusy too"}));
}

TEST_F(CalendarSheetsTest, TheFirstSheetKeepsItsNameWithoutReportOrFallback)
{
    MakeWorkbook({"Sheet2", "M1"});
    monthly_.MonthName = 1;
    MakeMonthly();
    EXPECT_EQ(log_.CallsWith("Sheet2.Name"), (Texts{"Sheet2.Name = M1"}));
    EXPECT_EQ(workbook_->SheetNames(), (Texts{"Sheet2", "M2", "M3", "M4", "M5", "M6", "M7", "M8",
                                              "M9", "M10", "M11", "M12", "M1"}));
    EXPECT_TRUE(observer_.reports.empty());
    EXPECT_EQ(WrittenMonths()[0], "M1");
}

TEST_F(CalendarSheetsTest, AModelSheetNamedAsTheFirstMonthIsRenamedToItself)
{
    MakeWorkbook({"January"});
    monthly_.SheetName = "January";
    MakeMonthly();
    EXPECT_EQ(log_.Calls()[1], "January.Name = January");
    EXPECT_EQ(workbook_->SheetNames(), kEnglish);
    EXPECT_TRUE(observer_.reports.empty());
}

TEST_F(CalendarSheetsTest, ACopyFallsBackToTheFirstList)
{
    MakeWorkbook({"Sheet2", "M5"});
    monthly_.MonthName = 1;
    MakeMonthly();
    EXPECT_EQ(workbook_->SheetNames(), (Texts{"M1", "M2", "M3", "M4", "May", "M6", "M7", "M8", "M9",
                                              "M10", "M11", "M12", "M5"}));
    EXPECT_EQ(WrittenMonths()[4], "M5"); // the cell has the name of the selected list
    EXPECT_TRUE(observer_.reports.empty());
}

TEST_F(CalendarSheetsTest, ACopyWhoseNameIsLikeThatOfAnotherMonthFallsBack)
{
    names_.Months.Store(2, {"a", "März", "c", "Май", "MÄRZ", "f", "мАЙ", "h", "A", "j", "k", "l"});
    MakeWorkbook({"Sheet2", "L"});
    monthly_.MonthName = 2;
    MakeMonthly();
    EXPECT_EQ(workbook_->SheetNames(), (Texts{"a", "März", "c", "Май", "May", "f", "July", "h",
                                              "September", "j", "k", "December", "L"}));
    EXPECT_EQ(WrittenMonths(),
              (Texts{"a", "März", "c", "Май", "MÄRZ", "f", "мАЙ", "h", "A", "j", "k", "l", ""}))
        << "the cells have the names of the selected list";
    EXPECT_TRUE(observer_.reports.empty());
}

TEST_F(CalendarSheetsTest, ACopyThatNeitherListNamesKeepsItsDefaultName)
{
    MakeWorkbook({"Sheet2", "M5", "May"});
    monthly_.MonthName = 1;
    MakeMonthly();
    EXPECT_EQ(workbook_->SheetNames()[4], "M4 (2)");
    EXPECT_EQ(workbook_->SheetNames()[5], "M6");
    EXPECT_TRUE(observer_.reports.empty());
}

TEST_F(CalendarSheetsTest, InvalidNamesFallBackWithoutAReport)
{
    names_.Months.Store(
        2, {"1/1", "2/1", "3/1", "4/1", "5/1", "6/1", "7/1", "8/1", "9/1", "10/1", "11/1", "12/1"});
    MakeWorkbook({"Sheet2"});
    monthly_.MonthName = 2;
    MakeMonthly();
    Texts expected = kEnglish;
    expected[0] = "Sheet2";
    EXPECT_EQ(workbook_->SheetNames(), expected);
    EXPECT_EQ(WrittenMonths()[11], "12/1");
    EXPECT_TRUE(observer_.reports.empty());
}

TEST_F(CalendarSheetsTest, AListBeyondTheTableNamesCopiesFromTheFirstList)
{
    MakeWorkbook({"Sheet2"});
    monthly_.MonthName = 300;
    monthly_.OutMonth = false;
    MakeMonthly();
    Texts expected = kEnglish;
    expected[0] = "Sheet2";
    EXPECT_EQ(workbook_->SheetNames(), expected);
    EXPECT_TRUE(observer_.reports.empty());
}

TEST_F(CalendarSheetsTest, FailedCopiesAreNotReportedAndMonthsUseExistingSheets)
{
    MakeWorkbook({"Sheet2", "A", "B"});
    log_.FailAt("January.Copy after January", "no room");
    MakeMonthly();
    EXPECT_EQ(workbook_->SheetNames(), (Texts{"January", "A", "B"}));
    EXPECT_EQ(WrittenMonths(), (Texts{"January", "February", "March"}));
    ASSERT_EQ(observer_.reports.size(), 1U);
    EXPECT_TRUE(observer_.reports[0].starts_with("Error in making monthly calendar.\r\n"));
    EXPECT_NE(observer_.reports[0].find("\"B\" cannot be copied: no room."), std::string::npos)
        << observer_.reports[0];
    EXPECT_EQ(log_.CallsWith("Copy after").size(), 11U);
}

TEST_F(CalendarSheetsTest, OneFailedCopyDoesNotStopTheOthers)
{
    MakeWorkbook({"Sheet2", "A"});
    log_.FailAt("November.Copy after November", "no room");
    MakeMonthly();
    Texts expected(kEnglish.begin(), kEnglish.end() - 1);
    expected.push_back("A");
    EXPECT_EQ(workbook_->SheetNames(), expected);
    EXPECT_EQ(WrittenMonths()[11], "December");
    EXPECT_TRUE(observer_.reports.empty());
}

TEST_F(CalendarSheetsTest, MonthlyErrorsOfOneMonthDoNotStopTheOthers)
{
    MakeWorkbook({"Sheet2"});
    log_.FailAt("March(3,2) = \"March\"", "locked");
    MakeMonthly();
    EXPECT_EQ(observer_.reports, (Texts{"Error in filling data(2024-3).\r\nlocked"}));
    Texts expected = kEnglish;
    expected[2] = "";
    EXPECT_EQ(WrittenMonths(), expected);
    EXPECT_EQ(progress_.size(), 12U);
}

TEST_F(CalendarSheetsTest, MonthlyBuildsTheHolidaysOfItsOwnSet)
{
    MakeWorkbook({"Sheet2"});
    monthly_.OutHoliday = true;
    monthly_.Holidays = fake::FixedDays({{1225, "Christmas"}, {101, "New Year"}});
    context_.holidayDates.Count = 7;
    context_.holidayDates.Cursor = 7;
    MakeMonthly();
    EXPECT_EQ(log_.CallsWith("Christmas"), (Texts{"December(12,5) = \"Christmas\" Value"}));
    EXPECT_EQ(log_.CallsWith("New Year"), (Texts{"January(6,3) = \"New Year\" Value"}));
    EXPECT_EQ(context_.holidayDates.Count, 2);
    EXPECT_EQ(context_.holidayDates.Cursor, 2);
}

TEST_F(CalendarSheetsTest, ARuleThatNeverHadADateWritesNothing)
{
    MakeWorkbook({"Sheet2"});
    monthly_.OutHoliday = true;
    monthly_.Holidays.Append({5, 2, "no month"}); // the last Monday of month 0
    MakeMonthly(1970);                            // where clocks begin to count
    EXPECT_EQ(context_.holidayDates.Count, 1);
    EXPECT_EQ(log_.CallsWith("\"\""), Texts());
    EXPECT_TRUE(observer_.reports.empty());
}

TEST_F(CalendarSheetsTest, TheHolidayListIsUnchangedWhenHolidaysAreOff)
{
    MakeWorkbook({"Sheet1", "Sheet2"});
    monthly_.Holidays = yearly_.Holidays = fake::FixedDays({{1225, "Christmas"}});
    context_.holidayDates.Count = 7;
    context_.holidayDates.Cursor = 5;
    MakeMonthly();
    MakeYearly();
    EXPECT_EQ(context_.holidayDates.Count, 7);
    EXPECT_EQ(context_.holidayDates.Cursor, 5);
    EXPECT_TRUE(log_.CallsWith("Christmas").empty());
}

TEST_F(CalendarSheetsTest, EasterRulesUseTheStoredEasterDate)
{
    MakeWorkbook({"Sheet2"});
    monthly_.OutHoliday = true;
    monthly_.Holidays.Append({1, holidays::kEaster, "Easter Monday"});
    context_.easter = holidays::MakeDate(2024, 3, 31);
    MakeMonthly();
    EXPECT_EQ(log_.CallsWith("Easter Monday"), (Texts{"April(6,3) = \"Easter Monday\" Value"}));
}

// ---- yearly

TEST_F(CalendarSheetsTest, YearlyRenamesTheSheetAndFillsTwelveBlocks)
{
    MakeWorkbook({"Sheet1", "Sheet2"});
    MakeYearly();
    EXPECT_EQ(workbook_->SheetNames(), (Texts{"2024", "Sheet2"}));
    EXPECT_EQ(workbook_->CellsOf("2024").size(), 366U);
    EXPECT_EQ(progress_.front(), "yearly 1");
    EXPECT_EQ(progress_.size(), 12U);
    EXPECT_TRUE(observer_.reports.empty());
}

struct LayoutCase {
    const char* name;
    int layout;
    int month;
    int row; ///< of the first day cell
    int column;
};

class MonthLayoutTest : public CalendarSheetsTest,
                        public testing::WithParamInterface<LayoutCase> {};

TEST_P(MonthLayoutTest, ShiftsTheBlockOfAMonth)
{
    MakeWorkbook({"Sheet1"});
    yearly_.MonthLayout = static_cast<int16_t>(GetParam().layout);
    yearly_.RowIntervalOfMonth = 10;
    yearly_.ColIntervalOfMonth = 9;
    yearly_.FirstCellOfDay = {4, 2};
    yearly_.FirstCellOfWeekday = {3, 2};
    yearly_.FirstCellOfMonth = {2, 2};
    yearly_.FirstCellOfHoliday = {5, 2};
    yearly_.FirstCellOfYear = {1, 1};
    yearly_.RowIntervalOfDay = 1;
    yearly_.OutMonth = yearly_.OutWeekday = yearly_.OutYear = yearly_.OutHoliday = true;
    yearly_.MonthName = yearly_.WeekdayName = 1;
    yearly_.Holidays = fake::FixedDays({{GetParam().month * 100 + 1, "The First"}});
    MakeYearly(2023);
    const std::string month = "\"M" + std::to_string(GetParam().month) + '"';
    const auto at = [&](int rowsBelow, int columns = 0) {
        return "2023(" + std::to_string(GetParam().row + rowsBelow) + ',' +
               std::to_string(GetParam().column + columns) + ") = ";
    };
    EXPECT_EQ(log_.CallsWith(" = " + month), (Texts{at(-2) + month}));
    EXPECT_EQ(log_.CallsWith(at(-1) + "\"W0\"").size(), 1U);
    const int weekday = static_cast<int>(
        holidays::WeekdayOf(holidays::MakeDate(2023, static_cast<int16_t>(GetParam().month), 1)));
    EXPECT_EQ(log_.CallsWith("The First"), (Texts{at(1, weekday - 1) + "\"The First\" Value"}));
    EXPECT_EQ(log_.CallsWith("(1,1) = 2023").size(), 12U); // the year: one cell, twelve times
}

INSTANTIATE_TEST_SUITE_P(Layouts, MonthLayoutTest,
                         testing::Values(LayoutCase{"JanuaryOfThree", 3, 1, 4, 2},
                                         LayoutCase{"MarchOfThree", 3, 3, 4, 20},
                                         LayoutCase{"AprilOfThree", 3, 4, 14, 2},
                                         LayoutCase{"DecemberOfThree", 3, 12, 34, 20},
                                         LayoutCase{"DecemberStacked", 1, 12, 114, 2},
                                         LayoutCase{"DecemberSideBySide", 12, 12, 4, 101},
                                         LayoutCase{"FifthOfFive", 5, 5, 4, 38},
                                         LayoutCase{"SixthOfFive", 5, 6, 14, 2},
                                         LayoutCase{"EleventhOfFive", 5, 11, 24, 2},
                                         LayoutCase{"TwelfthOfFive", 5, 12, 24, 11}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(CalendarSheetsTest, YearlyRestoresThePositionsAtTheEnd)
{
    MakeWorkbook({"Sheet1"});
    const auto before = yearly_;
    MakeYearly();
    EXPECT_EQ(yearly_, before);
}

TEST_F(CalendarSheetsTest, YearlyRestoresThePositionsAfterErrorsInMonths)
{
    MakeWorkbook({"Sheet1"});
    const auto before = yearly_;
    yearly_.FirstCellOfDay = {5, 16370}; // the third block is outside the sheet
    MakeYearly();
    EXPECT_EQ(observer_.reports.size(), 8U);
    EXPECT_EQ(yearly_.FirstCellOfDay, (model::CellPosition{5, 16370}));
    EXPECT_EQ(yearly_.FirstCellOfMonth, before.FirstCellOfMonth);
}

TEST_F(CalendarSheetsTest, YearlyThatStopsEarlyLeavesThePositionsShifted)
{
    MakeWorkbook({"Sheet1"});
    yearly_.MonthLayout = 1;
    yearly_.RowIntervalOfMonth = std::numeric_limits<std::int32_t>::max() / 2;
    yearly_.OutMonth = true;
    const auto before = yearly_;
    MakeYearly();
    ASSERT_EQ(observer_.reports.size(), 2U); // February is outside the sheet, March overflows
    EXPECT_TRUE(observer_.reports[0].starts_with("Error in filling data(2024-2)."));
    EXPECT_TRUE(observer_.reports[1].starts_with("Error in making yearly calendar.\r\n"));
    EXPECT_NE(yearly_.FirstCellOfDay, before.FirstCellOfDay);
    EXPECT_EQ(yearly_.FirstCellOfYear, before.FirstCellOfYear);
    EXPECT_EQ(progress_.size(), 2U);
}

TEST_F(CalendarSheetsTest, ASheetNamedLikeTheYearEndsTheYearlyRoutine)
{
    MakeWorkbook({"Sheet1", "2024"});
    const auto before = yearly_;
    MakeYearly();
    ASSERT_EQ(observer_.reports.size(), 1U);
    EXPECT_TRUE(observer_.reports[0].starts_with("Error in making yearly calendar.\r\n"));
    EXPECT_NE(observer_.reports[0].find("2024"), std::string::npos);
    EXPECT_TRUE(workbook_->CellsOf("Sheet1").empty());
    EXPECT_EQ(yearly_, before);
}

TEST_F(CalendarSheetsTest, ALayoutWithoutMonthsIsAnErrorAndNoCrash)
{
    MakeWorkbook({"Sheet1"});
    yearly_.MonthLayout = 0;
    MakeYearly();
    ASSERT_EQ(observer_.reports.size(), 1U);
    EXPECT_TRUE(observer_.reports[0].starts_with("Error in making yearly calendar.\r\n"));
}

TEST_F(CalendarSheetsTest, ModelSheetSharedByBothIsGoneForTheYearly)
{
    MakeWorkbook({"Sheet2"});
    yearly_.SheetName = "Sheet2";
    MakeMonthly();
    MakeYearly();
    EXPECT_EQ(observer_.reports, (Texts{"The sheet Sheet2 does not exist."}));
}

TEST_F(CalendarSheetsTest, EachRoutineRebuildsTheHolidayList)
{
    MakeWorkbook({"Sheet1", "Sheet2"});
    monthly_.OutHoliday = yearly_.OutHoliday = true;
    monthly_.Holidays = fake::FixedDays({{1225, "Monthly"}});
    yearly_.Holidays = fake::FixedDays({{101, "Yearly"}, {1226, "Yearly"}});
    MakeMonthly();
    EXPECT_EQ(context_.holidayDates.Count, 1);
    MakeYearly();
    EXPECT_EQ(context_.holidayDates.Count, 2);
    EXPECT_EQ(log_.CallsWith("\"Monthly\"").size(), 1U);
    EXPECT_EQ(log_.CallsWith("\"Yearly\"").size(), 2U);
}

// ---- the names of the filled sheets

/// Records the names of the filled sheets.
class FilledSheetsTest : public CalendarSheetsTest {
protected:
    FilledSheetsTest() { context_.filledSheets = &sheets_; }
    Texts sheets_;
};

TEST_F(FilledSheetsTest, AreTwelveMonthsAndTheYear)
{
    MakeWorkbook({"Before", "Sheet1", "Sheet2", "After"});
    MakeMonthly();
    EXPECT_EQ(sheets_, kEnglish);
    MakeYearly();
    EXPECT_EQ(sheets_, Around(kEnglish, {"2024"}, {}));
}

TEST_F(FilledSheetsTest, HaveTheirFinalNames)
{
    MakeWorkbook({"Sheet1", "Sheet2", "January", "May"}); // May is taken in both lists
    MakeMonthly();
    ASSERT_EQ(sheets_.size(), 12U);
    EXPECT_EQ(sheets_[0], "Sheet2");
    EXPECT_EQ(sheets_[4], "April (2)");
    EXPECT_EQ(sheets_[11], "December");
}

TEST_F(FilledSheetsTest, AreNoneWithoutOutputOrModelSheet)
{
    MakeWorkbook({"Sheet1"});
    MakeMonthly();
    yearly_.Output = false;
    MakeYearly();
    EXPECT_EQ(sheets_, Texts());
}

TEST_F(FilledSheetsTest, AreRecordedUntilTheRoutineStops)
{
    MakeWorkbook({"Sheet1", "2024"});
    MakeYearly(); // the name "2024" is taken
    EXPECT_EQ(sheets_, Texts());
    MakeWorkbook({"Sheet2"});
    for (const char* const model : {"Sheet2", "January"})
        log_.FailAt(std::string(model) + ".Copy after " + model, "No copies.");
    MakeMonthly(); // one sheet for twelve months
    EXPECT_EQ(sheets_, Texts{"January"});
}

} // namespace
