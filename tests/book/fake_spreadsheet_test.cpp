#include "book/fake_spreadsheet.h"
#include "util/error.h"

#include <gtest/gtest.h>

using namespace orrery;
using testing::Test;

// What other tests rely on beyond the contract: the call log and failures on demand.

TEST(FakeSpreadsheetTest, LogsEveryCallInOrder)
{
    fake::CallLog log;
    {
        fake::Application application(log);
        application.SetDisplayAlerts(false);
        fake::Workbook workbook(log, {{"Sheet1", {}}});
        auto* const sheet = workbook.FindWorksheet("sheet1");
        sheet->SetName("January");
        sheet->CopyAfter(*sheet);
        sheet->Next();
        sheet->SetCell(1, 2, std::int16_t{2027}, book::CellMember::Default);
        sheet->SetCell(1, 3, std::string("x"), book::CellMember::Value);
        application.Visible();
    }
    EXPECT_EQ(log.Calls(),
              (std::vector<std::string>{
                  "DisplayAlerts = false", "Worksheets(sheet1)", "Sheet1.Name = January",
                  "January.Copy after January", "January.Next", "January(1,2) = 2027",
                  "January(1,3) = \"x\" Value", "Visible?", "Release application"}));
}

TEST(FakeSpreadsheetTest, FailsOnDemandWithoutAnyEffect)
{
    fake::CallLog log;
    log.FailAt("Sheet1(1,1) = 1 Value", "the cell is broken");
    fake::Workbook workbook(log, {{"Sheet1", {}}});
    auto* const sheet = workbook.FindWorksheet("Sheet1");
    try {
        sheet->SetCell(1, 1, std::int16_t{1}, book::CellMember::Value);
        FAIL() << "nothing was thrown";
    }
    catch (const Error& error) {
        EXPECT_EQ(error.Cause(), "the cell is broken");
    }
    EXPECT_TRUE(workbook.CellsOf("Sheet1").empty());
    EXPECT_EQ(log.CallsWith("(1,1)").size(), 1U);
}
