#include "ui/pointing/marks.h"

#include "ui/pointing/pointing_test.h"

#include <gmock/gmock.h>

namespace orrery::ui {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class MarksTest : public PointingTest {};

TEST_F(MarksTest, AMonthHasSixWeeksOfSevenDays)
{
    const auto marks = Marks(monthly);
    const auto days = CellsOf(marks, Field::Day);
    ASSERT_THAT(days, SizeIs(42));
    EXPECT_EQ(days[0], "B5");
    EXPECT_EQ(days[1], "C5");
    EXPECT_EQ(days[7], "B10");
    EXPECT_EQ(days[41], "H30");
    EXPECT_THAT(CellsOf(marks, Field::Holiday), SizeIs(42));
    EXPECT_THAT(CellsOf(marks, Field::Weekday),
                ElementsAre("C4", "D4", "E4", "F4", "G4", "H4", "I4"));
    EXPECT_THAT(CellsOf(marks, Field::Month), ElementsAre("D3"));
    EXPECT_THAT(CellsOf(marks, Field::Year), ElementsAre("AA1"));
}

TEST_F(MarksTest, TheSampleIsMay2027)
{
    const auto marks = Marks(monthly);
    EXPECT_EQ(SampleAt(marks, Field::Day, "G5"), "1"); // a Saturday, in weeks from Monday
    EXPECT_EQ(SampleAt(marks, Field::Day, "F5"), "");
    EXPECT_EQ(SampleAt(marks, Field::Day, "B10"), "3");
    EXPECT_EQ(SampleAt(marks, Field::Day, "B30"), "31");
    EXPECT_EQ(SampleAt(marks, Field::Day, "C30"), "");
    EXPECT_EQ(SampleAt(marks, Field::Weekday, "C4"), "Mon");
    EXPECT_EQ(SampleAt(marks, Field::Weekday, "I4"), "Sun");
    EXPECT_EQ(SampleAt(marks, Field::Month, "D3"), "May");
    EXPECT_EQ(SampleAt(marks, Field::Year, "AA1"), "2027");
    EXPECT_EQ(SampleAt(marks, Field::Holiday, "G6"), "New Year");
}

TEST_F(MarksTest, WeeksMayBeginOnSunday)
{
    monthly.cboFirstDayofWeek.selected = 0;
    const auto marks = Marks(monthly);
    EXPECT_EQ(SampleAt(marks, Field::Day, "H5"), "1");
    EXPECT_EQ(SampleAt(marks, Field::Day, "B10"), "2");
    EXPECT_EQ(SampleAt(marks, Field::Weekday, "C4"), "Sun");
}

TEST_F(MarksTest, AYearHasTwelveBlocks)
{
    const auto marks = Marks(yearly);
    EXPECT_EQ(CellsOf(marks, Field::Day, 1).front(), "B5");
    EXPECT_EQ(CellsOf(marks, Field::Day, 2).front(), "J5");
    EXPECT_EQ(CellsOf(marks, Field::Day, 3).front(), "R5");
    EXPECT_EQ(CellsOf(marks, Field::Day, 4).front(), "B14");
    EXPECT_EQ(CellsOf(marks, Field::Day, 12).front(), "R32");
    EXPECT_EQ(CellsOf(marks, Field::Weekday, 12).front(), "S31");
    EXPECT_THAT(CellsOf(marks, Field::Month, 12), ElementsAre("T30"));
    EXPECT_EQ(SampleAt(marks, Field::Month, "T30"), "Dec");
    // The year is written once; the 1st of February 2027 is a Monday.
    EXPECT_THAT(CellsOf(marks, Field::Year, 1), ElementsAre("AA1"));
    EXPECT_THAT(CellsOf(marks, Field::Year, 2), IsEmpty());
    EXPECT_EQ(SampleAt(marks, Field::Day, "J5"), "1");
}

TEST_F(MarksTest, OneColumnOfMonthsNeedsNoIntervalOfColumns)
{
    yearly.cboLayoutofMonths.selected = 0;
    yearly.txtColIntervalofMonth.text = "";
    EXPECT_EQ(CellsOf(Marks(yearly), Field::Day, 12).front(), "B104");
}

TEST_F(MarksTest, WithoutLayoutOrIntervalThereIsOneBlock)
{
    yearly.txtRowIntervalofMonth.text = "x";
    EXPECT_THAT(CellsOf(Marks(yearly), Field::Day, 1), SizeIs(42));
    EXPECT_THAT(CellsOf(Marks(yearly), Field::Day, 2), IsEmpty());
    yearly.txtRowIntervalofMonth.text = "9";
    yearly.cboLayoutofMonths.selected = -1;
    EXPECT_THAT(CellsOf(Marks(yearly), Field::Day, 1), SizeIs(42));
    EXPECT_THAT(CellsOf(Marks(yearly), Field::Day, 2), IsEmpty());
}

TEST_F(MarksTest, WhatCannotBeReadIsNotMarked)
{
    yearly.txtFirstCellofDay.text = "5B";
    monthly.txtFirstCellofDay.text = "";
    for (const std::int16_t month : std::initializer_list<std::int16_t>{1, 2, 12})
        EXPECT_THAT(CellsOf(Marks(yearly), Field::Day, month), IsEmpty());
    EXPECT_THAT(CellsOf(Marks(monthly), Field::Day), IsEmpty());
    EXPECT_THAT(CellsOf(Marks(monthly), Field::Weekday), SizeIs(7));
    monthly.txtFirstCellofDay.text = " b5 ";
    monthly.txtRowInterval.text = "0";
    EXPECT_THAT(CellsOf(Marks(monthly), Field::Day), SizeIs(7));
    monthly.txtColInterval.text = "many";
    EXPECT_THAT(CellsOf(Marks(monthly), Field::Day), ElementsAre("B5"));
}

TEST_F(MarksTest, OnlyWhatIsOutputIsMarked)
{
    for (CheckBox* const box : {&monthly.chkOutWeekday, &monthly.chkOutMonth, &monthly.chkOutYear,
                                &monthly.chkOutHoliday})
        box->checked = false;
    EXPECT_THAT(Marks(monthly), SizeIs(42));
    monthly.chkOutCalendar.checked = false;
    EXPECT_THAT(Marks(monthly), IsEmpty());
}

TEST_F(MarksTest, CellsOutsideOfTheSheetAreLeftOut)
{
    monthly.txtFirstCellofDay.text = "IU65536";
    EXPECT_THAT(CellsOf(Marks(monthly), Field::Day), ElementsAre("IU65536", "IV65536"));
}

TEST_F(MarksTest, ANameListThatIsNotThereHasNoSamples)
{
    monthly.cboMonthName.selected = -1;
    monthly.cboWeekdayName.selected = 2;
    EXPECT_EQ(SampleAt(Marks(monthly), Field::Month, "D3"), "");
    EXPECT_EQ(SampleAt(Marks(monthly), Field::Weekday, "C4"), "");
}

} // namespace
} // namespace orrery::ui
