// A whole run, call by call, with the types of the arguments.
#include "excel_test/expected_run.h"
#include "excel_test/run_test.h"
#include "saved_sheets.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <set>

using namespace orrery;
using namespace orrery::excel_test;
using testing::IsEmpty;

namespace {

const std::vector<std::string> kMonths = {"January",   "February", "March",    "April",
                                          "May",       "June",     "July",     "August",
                                          "September", "October",  "November", "December"};

const Layout kMonthly = {{1, 2}, {2, 3}, {4, 2}, {5, 2}, {6, 2}, 2, 4, true, true};
const Layout kYearly = {{1, 1}, {3, 2}, {4, 2}, {5, 2}, {6, 2}, 1, 2, false, false};
constexpr int kBlocks = 5; // side by side
constexpr int kBlockColumns = 9;
constexpr int kBlockRows = 20;

// Easter Sunday of 2024 is 31 March.
const Holidays kHolidays = {{{1, 1}, {"New Year's Day"}},
                            {{2, 29}, {"Leap Day"}},
                            {{4, 1}, {"Easter Monday"}},
                            {{7, 4}, {"Independence Day", "Second of the day"}},
                            {{12, 31}, {"New Year's Eve"}}};

model::CellPosition At(std::pair<int, int> place)
{
    return {place.first, place.second};
}

void Apply(const Layout& layout, model::CalendarParameters& set)
{
    set.OutYear = set.OutMonth = set.OutWeekday = set.OutHoliday = true;
    set.FirstCellOfYear = At(layout.year);
    set.FirstCellOfMonth = At(layout.month);
    set.FirstCellOfWeekday = At(layout.weekdays);
    set.FirstCellOfDay = At(layout.days);
    set.FirstCellOfHoliday = At(layout.holidays);
    set.ColIntervalOfDay = layout.columnStep;
    set.RowIntervalOfDay = layout.rowStep;
    set.FirstDayOfWeek = layout.mondayFirst ? 1 : 0;
    set.MultiHolidays = layout.holidaysBelow ? 1 : 0;
    set.Holidays = fake::FixedDays({{1231, "New Year's Eve"},
                                    {704, "Independence Day"},
                                    {704, "Second of the day"},
                                    {229, "Leap Day"},
                                    {101, "New Year's Day"}});
    set.Holidays.Append({1, holidays::kEaster, "Easter Monday"});
}

std::string Sheet(int number)
{
    return "Worksheet#" + std::to_string(number);
}

void ExpectSwitches(ExpectedRun& run, const std::vector<std::string>& switches,
                    const std::string& value)
{
    for (const auto& name : switches)
        run.Call("Application#1." + name + " put (VT_BOOL " + value + ")");
}

void ExpectMonthly(ExpectedRun& run)
{
    run.Call("Workbook#1.Worksheets get () -> VT_DISPATCH Sheets#1");
    run.Call("Sheets#1._Default get|call (VT_BSTR \"Sheet2\") -> VT_DISPATCH Worksheet#1");
    run.Call("Worksheet#1.Name put (VT_BSTR \"January\")");
    for (int month = 2; month <= 12; ++month) {
        const std::string before = Sheet(month - 1);
        run.Call(before + ".Copy call (omitted, VT_DISPATCH " + before + ")");
        run.Call(before + ".Next get () -> VT_DISPATCH " + Sheet(month));
        run.Call(Sheet(month) + ".Name put (VT_BSTR \"" +
                 kMonths[static_cast<std::size_t>(month - 1)] + "\")");
    }
    for (int month = 1; month <= 12; ++month) {
        if (month > 1)
            run.Call(Sheet(month - 1) + ".Next get () -> VT_DISPATCH " + Sheet(month));
        run.Month(month, month, kMonthly, kHolidays);
    }
}

void ExpectYearly(ExpectedRun& run)
{
    run.Call("Sheets#1._Default get|call (VT_BSTR \"Sheet1\") -> VT_DISPATCH Worksheet#13");
    run.Call("Worksheet#13.Name put (VT_BSTR \"2024\")");
    for (int month = 1; month <= 12; ++month) {
        const int block = month - 1;
        run.Month(13, month, kYearly, kHolidays, block / kBlocks * kBlockRows,
                  block % kBlocks * kBlockColumns);
    }
}

/// The one run that the tests check: making it takes seconds.
class WholeRun : public RunTest {
public:
    WholeRun()
    {
        RunTest::SetUp();
        Apply(kMonthly, sets_.Monthly);
        Apply(kYearly, sets_.Yearly);
        sets_.Yearly.MonthLayout = kBlocks;
        sets_.Yearly.ColIntervalOfMonth = kBlockColumns;
        sets_.Yearly.RowIntervalOfMonth = kBlockRows;
        saved = Run(StartExcel).value_or("");
        reports = observer_.reports;
    }
    void TestBody() override {}

    std::string Template() const { return util::FromPath(folder_.Path() / "Desk.xlsx"); }
    const TestServer& Server() const { return server_; }
    using RunTest::Target;

    std::string saved;
    std::vector<std::string> reports;
};

class RunLogTest : public testing::Test {
protected:
    static void SetUpTestSuite() { run_ = std::make_unique<WholeRun>(); }
    static void TearDownTestSuite() { run_.reset(); }

    void SetUp() override
    {
        ASSERT_THAT(run_->reports, IsEmpty());
        ASSERT_EQ(run_->saved, util::FromPath(run_->Target()));
    }

    static ExpectedRun Expected()
    {
        ExpectedRun run;
        ExpectSwitches(run, {"DisplayAlerts", "Visible", "Interactive", "ScreenUpdating"}, "false");
        run.Call("Application#1.Workbooks get () -> VT_DISPATCH Workbooks#1");
        run.Call("Application#1.AutomationSecurity put (VT_I4 3)");
        run.Call("Workbooks#1.Open call (" + LoggedText(run_->Template()) +
                 ", omitted, VT_BOOL true) -> VT_DISPATCH Workbook#1");
        run.Call("Application#1.AutomationSecurity put (VT_I4 1)");
        ExpectMonthly(run);
        ExpectYearly(run);
        run.Call("Workbook#1.SaveAs call (" + LoggedText(run_->saved) +
                 ", omitted, omitted, omitted, omitted, omitted, VT_I4 1)");
        ExpectSwitches(run, {"Interactive", "ScreenUpdating", "Visible", "DisplayAlerts"}, "true");
        run.Call("Application#1.Visible get () -> VT_BOOL true");
        return run;
    }

    static inline std::unique_ptr<WholeRun> run_;
};

TEST_F(RunLogTest, MakesTheCallsInOrderWithTheirTypes)
{
    const auto expected = Expected().Calls();
    const auto calls = run_->Server().Calls();
    for (std::size_t i = 0; i < std::min(calls.size(), expected.size()); ++i)
        ASSERT_EQ(calls[i], expected[i]) << "call " << i + 1;
    EXPECT_EQ(calls.size(), expected.size());
}

TEST_F(RunLogTest, MakesTwoRoundTripsForEachCellAndNoneThatCanBeAvoided)
{
    // Days, holidays by both policies, year, month and weekday names.
    const int cells = 2 * (366 + 6 + 12 * (1 + 1 + 7));
    EXPECT_EQ(Expected().CellCount(), cells);
    EXPECT_EQ(run_->Server().Count(".Cells get|call ("), cells);
    EXPECT_EQ(run_->Server().Count(" put (VT_I2 "), 2 * (366 + 12));
    const int sheets = 1 + 2 + 13 + 11 + 2 * 11; // collection, two found, names, copies, next ones
    const int others = 4 + 2 + 2 + 1 + 4 + 1;    // switches, macros, open, save, switches, visible
    EXPECT_EQ(run_->Server().Calls().size(), static_cast<std::size_t>(2 * cells + sheets + others));
}

TEST_F(RunLogTest, LooksUpEachMemberOncePerKindOfObject)
{
    const std::multiset<std::string> expected = {"Application looks up AutomationSecurity",
                                                 "Application looks up DisplayAlerts",
                                                 "Application looks up Interactive",
                                                 "Application looks up ScreenUpdating",
                                                 "Application looks up Visible",
                                                 "Application looks up Workbooks",
                                                 "Range looks up Value",
                                                 "Workbook looks up SaveAs",
                                                 "Workbook looks up Worksheets",
                                                 "Workbooks looks up Open",
                                                 "Worksheet looks up Cells",
                                                 "Worksheet looks up Copy",
                                                 "Worksheet looks up Name",
                                                 "Worksheet looks up Next"};
    std::multiset<std::string> lookups;
    for (const auto& line : run_->Server().Lines()) {
        if (line.find(" looks up ") != std::string::npos)
            lookups.insert(line);
    }
    EXPECT_EQ(lookups, expected);
}

TEST_F(RunLogTest, RunsNoMacros)
{
    EXPECT_EQ(run_->Server().Count("Macros of "), 0);
}

TEST_F(RunLogTest, KeepsNoReferenceAndLeavesTheApplicationToItsUser)
{
    std::set<std::string> expected = {"Application#1", "Workbooks#1", "Workbook#1", "Sheets#1"};
    for (int i = 1; i <= 13; ++i)
        expected.insert(Sheet(i));
    for (int i = 1; i <= Expected().CellCount(); ++i)
        expected.insert("Range#" + std::to_string(i));
    std::set<std::string> released;
    for (const auto& line : run_->Server().Lines()) {
        if (line.ends_with(" released"))
            released.insert(line.substr(0, line.find(' ')));
    }
    EXPECT_EQ(released, expected);
    EXPECT_EQ(run_->Server().Lines().back(), "Application#1 released");
    EXPECT_FALSE(TestServer::WaitForProcesses(0, std::chrono::milliseconds(500)));
    EXPECT_EQ(TestServer::Processes().size(), 1U);
    TestServer::CloseAll();
    EXPECT_EQ(run_->Server().Lines().back(), "Application ends: its user closed it");
}

TEST_F(RunLogTest, SavesWhatWasWritten)
{
    const auto sheets = test::ReadXlsx(run_->Target());
    std::vector<std::string> names = {"2024"};
    names.insert(names.end(), kMonths.begin(), kMonths.end());
    names.push_back("Third");
    ASSERT_EQ(sheets.size(), names.size());
    auto cells = Expected().Cells();
    for (int month = 1; month <= 12; ++month)
        cells[month][{1, 1}] = "second"; // copied from the model
    cells[13][{2, 2}] = 42.0;            // A1 has the year
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(sheets[i].name, names[i]);
        if (i == 13) { // not written to
            EXPECT_EQ(sheets[i].cells.size(), 1U);
            continue;
        }
        EXPECT_EQ(sheets[i].cells, cells[i == 0 ? 13 : static_cast<int>(i)]) << names[i];
    }
}

} // namespace
