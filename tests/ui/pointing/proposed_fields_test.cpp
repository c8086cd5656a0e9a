#include "ui/pointing/proposed_fields.h"

#include "ui/pointing/pointing_test.h"

#include <gmock/gmock.h>

namespace orrery::ui {
namespace {

using testing::ElementsAre;

class ProposedFieldsTest : public PointingTest {
protected:
    ProposedFieldsTest()
    {
        proposal.sets = ValidSets();
        proposal.sets.Monthly.FirstCellOfDay = {8, 3};
        proposal.sets.Monthly.OutYear = false;
    }

    look::Proposal proposal;
};

TEST_F(ProposedFieldsTest, FillsLikeAUser)
{
    FillWithProposal(monthly, proposal);
    EXPECT_EQ(monthly.txtFirstCellofDay.text, "C8");
    EXPECT_TRUE(monthly.txtFirstCellofDay.changed);
    EXPECT_FALSE(monthly.chkOutYear.checked);
    EXPECT_FALSE(monthly.txtFirstCellofYear.enabled);
    EXPECT_FALSE(monthly.txtFirstCellofMonth.changed);
    EXPECT_FALSE(monthly.holidaysChanged);
}

TEST_F(ProposedFieldsTest, EqualFieldsLeaveNothingToSave)
{
    FillWithProposal(yearly, proposal);
    EXPECT_FALSE(yearly.Changed());
    yearly.txtSheetName.Type("Other");
    FillWithProposal(yearly, proposal);
    EXPECT_EQ(yearly.txtSheetName.text, "Sheet1");
    EXPECT_TRUE(yearly.Changed()) << "the user had typed";
}

TEST_F(ProposedFieldsTest, KeepsTheHolidays)
{
    proposal.sets.Monthly.Holidays.Clear();
    FillWithProposal(monthly, proposal);
    EXPECT_EQ(monthly.holidays.Count(), 2);
}

TEST_F(ProposedFieldsTest, TellsWhyWithWhatIsMissingFirst)
{
    proposal.reasons = {
        {"monthly.Output", "seven equal cells recur in six weeks"},
        {"monthly.FirstCellOfDay", "its font is the largest of the week"},
        {"monthly.MonthName", "no names of a known list stand there"},
        {"yearly.FirstCellOfDay", "it is another calendar's"},
        {"monthly.OutYear", "no cell shows a year alone"},
        {"monthly.FirstCellOfYear", "its box is not checked"},
    };
    proposal.unknown = {"monthly.MonthName"};
    const ProposedFields fields = FillWithProposal(monthly, proposal);
    EXPECT_THAT(fields.sentences,
                ElementsAre("Please choose Month Name: no names of a known list stand there.",
                            "Output Monthly Calendar is on: seven equal cells recur in six weeks.",
                            "First Cell of Day is C8: its font is the largest of the week.",
                            "Output Year is off: no cell shows a year alone."));
    EXPECT_EQ(fields.missing, &monthly.cboMonthName);
}

TEST_F(ProposedFieldsTest, TellsOfTheGridOfMonths)
{
    proposal.sets.Yearly.MonthLayout = 4;
    proposal.reasons = {{"yearly.MonthLayout", "so many grids stand side by side"},
                        {"yearly.FirstCellOfMonth", "unsure"}};
    proposal.unknown = {"yearly.FirstCellOfMonth"};
    const ProposedFields fields = FillWithProposal(yearly, proposal);
    EXPECT_THAT(fields.sentences,
                ElementsAre("Please click First Cell of Month: unsure.",
                            "Layout of Months is 4 x 3 Months: so many grids stand side by side."));
    EXPECT_EQ(fields.missing, &yearly.txtFirstCellofMonth);
}

TEST_F(ProposedFieldsTest, WithoutACalendarTheFieldsStay)
{
    proposal.sets.Yearly.Output = false;
    proposal.sets.Yearly.SheetName = "Other";
    const ProposedFields fields = FillWithProposal(yearly, proposal);
    EXPECT_THAT(fields.sentences, ElementsAre("No yearly calendar was found on the sheets. Please "
                                              "click the first cell of day."));
    EXPECT_EQ(fields.missing, &yearly.txtFirstCellofDay);
    EXPECT_FALSE(yearly.Changed());
    EXPECT_TRUE(yearly.chkOutCalendar.checked);
}

} // namespace
} // namespace orrery::ui
