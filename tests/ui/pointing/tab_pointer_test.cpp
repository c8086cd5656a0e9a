#include "ui/pointing/tab_pointer.h"

#include "ui/pointing/pointing_test.h"

namespace orrery::ui {
namespace {

class TabPointerTest : public PointingTest {
protected:
    void Drag(TabPointer& pointer, const std::string& from, const std::string& to)
    {
        ASSERT_TRUE(pointer.BeginDrag(At(from))) << from;
        pointer.DragTo(At(to));
        pointer.EndDrag();
    }

    TabPointer month{monthly, names};
    TabPointer year{yearly, names};
};

// ---- fields

TEST_F(TabPointerTest, FindsFieldsByTheirControls)
{
    EXPECT_EQ(FieldNamed(monthly, "txtMFirstCellofDay"), Field::Day);
    EXPECT_EQ(FieldNamed(monthly, "txtMRowInterval"), Field::RowInterval);
    EXPECT_EQ(FieldNamed(yearly, "txtYColIntervalofMonth"), Field::ColIntervalOfMonth);
    EXPECT_EQ(FieldNamed(monthly, "txtYColIntervalofMonth"), std::nullopt);
    EXPECT_EQ(FieldNamed(monthly, "txtMSheetName"), std::nullopt);
    EXPECT_EQ(&(yearly.*PartsOf(Field::Holiday).label), &yearly.lblFirstCellofHoliday);
}

TEST_F(TabPointerTest, UpdatesOnlyWhenSomethingShownHasChanged)
{
    EXPECT_FALSE(month.Update());
    monthly.txtSheetName.Type("Other");
    EXPECT_FALSE(month.Update());
    monthly.txtFirstCellofDay.Type("C5");
    EXPECT_TRUE(month.Update());
    EXPECT_EQ(month.FieldAt(At("H5")), Field::Day);
    EXPECT_FALSE(month.Update());
    monthly.txtFirstCellofDay.Type("?");
    EXPECT_TRUE(month.Update());
}

// ---- pointing

TEST_F(TabPointerTest, TheActiveFieldTakesTheCell)
{
    month.Activate(Field::Month);
    EXPECT_TRUE(month.Point(At("F2")));
    EXPECT_EQ(monthly.txtFirstCellofMonth.text, "F2");
    EXPECT_TRUE(monthly.txtFirstCellofMonth.changed);
    EXPECT_EQ(month.FieldAt(At("F2")), Field::Month);
}

TEST_F(TabPointerTest, WithoutAnActiveFieldNothingIsTaken)
{
    EXPECT_FALSE(month.Point(At("F2")));
    EXPECT_FALSE(monthly.Changed());
    EXPECT_EQ(month.FieldAt(At("D3")), Field::Month);
    EXPECT_EQ(month.FieldAt(At("F2")), std::nullopt);
}

TEST_F(TabPointerTest, ADisabledFieldIsNotActive)
{
    monthly.chkOutMonth.checked = false;
    monthly.chkOutMonth_Click();
    month.Activate(Field::Month);
    EXPECT_EQ(month.Active(), std::nullopt);
    month.Activate(Field::ColIntervalOfMonth); // which the tab has not
    EXPECT_EQ(month.Active(), std::nullopt);
    month.Activate(Field::Day);
    monthly.chkOutCalendar.checked = false;
    monthly.chkOutCalendar_Click();
    month.Update();
    EXPECT_EQ(month.Active(), std::nullopt);
}

TEST_F(TabPointerTest, AnIntervalIsTheWayFromTheFirstDay)
{
    month.Activate(Field::ColInterval);
    month.Point(At("E20"));
    EXPECT_EQ(monthly.txtColInterval.text, "3");
    month.Activate(Field::RowInterval);
    month.Point(At("A9"));
    EXPECT_EQ(monthly.txtRowInterval.text, "4");
    month.Point(At("A5")); // not below the first day
    EXPECT_EQ(monthly.txtRowInterval.text, "4");
    year.Activate(Field::ColIntervalOfMonth);
    year.Point(At("L5"));
    EXPECT_EQ(yearly.txtColIntervalofMonth.text, "10");
    year.Activate(Field::RowIntervalOfMonth);
    year.Point(At("L60")); // 55 rows below, of which the dialog accepts 36
    EXPECT_EQ(yearly.txtRowIntervalofMonth.text, "36");
}

TEST_F(TabPointerTest, KeysMoveTheCellOfTheActiveField)
{
    month.Activate(Field::Year);
    EXPECT_TRUE(month.Move(1, 0));
    EXPECT_EQ(monthly.txtFirstCellofYear.text, "AA2");
    month.Move(0, -1);
    EXPECT_EQ(monthly.txtFirstCellofYear.text, "Z2");
    month.Move(-5, 0); // not beyond the sheet
    EXPECT_EQ(monthly.txtFirstCellofYear.text, "Z1");
    monthly.txtFirstCellofYear.Type("");
    month.Update();
    month.Move(0, 1);
    EXPECT_EQ(monthly.txtFirstCellofYear.text, "A1");
    month.Activate(Field::ColInterval);
    EXPECT_FALSE(month.Move(0, 1));
}

TEST_F(TabPointerTest, WhereMarksOverlapTheActiveOneCounts)
{
    monthly.txtFirstCellofHoliday.Type("B5");
    month.Update();
    EXPECT_EQ(month.FieldAt(At("B5")), Field::Day);
    month.Activate(Field::Holiday);
    EXPECT_EQ(month.FieldAt(At("B5")), Field::Holiday);
    monthly.txtFirstCellofMonth.Type("C5");
    month.Update();
    month.Activate(std::nullopt);
    EXPECT_EQ(month.FieldAt(At("C5")), Field::Month);
}

// ---- dragging

TEST_F(TabPointerTest, TheFirstCellMovesTheOutline)
{
    Drag(month, "B5", "D7");
    EXPECT_EQ(monthly.txtFirstCellofDay.text, "D7");
    EXPECT_EQ(monthly.txtColInterval.text, "1");
    EXPECT_EQ(monthly.txtFirstCellofWeekday.text, "C4");
}

TEST_F(TabPointerTest, AnyOtherCellMovesItByTheSameWay)
{
    Drag(month, "E15", "G14");
    EXPECT_EQ(monthly.txtFirstCellofDay.text, "D4");
    Drag(month, "I4", "A1"); // from the last weekday: not beyond the sheet
    EXPECT_EQ(monthly.txtFirstCellofWeekday.text, "A1");
}

TEST_F(TabPointerTest, TheSecondColumnAndRowChangeTheIntervals)
{
    Drag(month, "C5", "E6");
    EXPECT_EQ(monthly.txtColInterval.text, "3");
    EXPECT_EQ(monthly.txtFirstCellofDay.text, "B5");
    Drag(month, "B10", "C9");
    EXPECT_EQ(monthly.txtRowInterval.text, "4");
    Drag(month, "E5", "A1"); // before the first: the smallest interval
    EXPECT_EQ(monthly.txtColInterval.text, "1");
    EXPECT_EQ(monthly.txtFirstCellofDay.text, "B5");
}

TEST_F(TabPointerTest, TheSecondWeekdayMovesTheWeekdays)
{
    Drag(month, "D4", "E4");
    EXPECT_EQ(monthly.txtFirstCellofWeekday.text, "D4");
    EXPECT_EQ(monthly.txtColInterval.text, "1");
}

TEST_F(TabPointerTest, AnotherBlockChangesTheIntervalsOfMonths)
{
    Drag(year, "J5", "L6"); // February, two columns to the right
    EXPECT_EQ(yearly.txtColIntervalofMonth.text, "10");
    EXPECT_EQ(yearly.txtRowIntervalofMonth.text, "9");
    Drag(year, "B14", "D15"); // April, one row down
    EXPECT_EQ(yearly.txtColIntervalofMonth.text, "10");
    EXPECT_EQ(yearly.txtRowIntervalofMonth.text, "10");
    Drag(year, "V35", "R32"); // December, third in its row and fourth in its column
    EXPECT_EQ(yearly.txtColIntervalofMonth.text, "8");
    EXPECT_EQ(yearly.txtRowIntervalofMonth.text, "9");
    EXPECT_EQ(yearly.txtFirstCellofDay.text, "B5");
}

TEST_F(TabPointerTest, DraggingFollowsThePointerAndIsTakenBack)
{
    ASSERT_TRUE(month.BeginDrag(At("B5")));
    month.DragTo(At("C6"));
    EXPECT_EQ(monthly.txtFirstCellofDay.text, "C6");
    month.DragTo(At("D9"));
    EXPECT_EQ(monthly.txtFirstCellofDay.text, "D9");
    month.CancelDrag();
    EXPECT_EQ(monthly.txtFirstCellofDay.text, "B5");
    EXPECT_FALSE(monthly.Changed());
    EXPECT_FALSE(month.IsDragging());
    month.DragTo(At("H9")); // nothing is held any more
    EXPECT_EQ(monthly.txtFirstCellofDay.text, "B5");
}

TEST_F(TabPointerTest, NothingIsHeldBesideTheOutlines)
{
    EXPECT_FALSE(month.BeginDrag(At("A1")));
    EXPECT_FALSE(month.IsDragging());
}

// ---- what is wrong

TEST_F(TabPointerTest, TellsWhatOkWouldReport)
{
    EXPECT_EQ(month.Problem(), "");
    monthly.txtFirstCellofWeekday.Type("4C");
    month.Update();
    EXPECT_EQ(month.Problem(), "The first cell of weekday is not valid.");
    EXPECT_TRUE(month.IsWrong(Field::Weekday));
    EXPECT_FALSE(month.IsWrong(Field::Day));
    monthly.txtFirstCellofDay.Type("IQ5"); // the last day would be in column 257
    month.Update();
    EXPECT_EQ(month.Problem(), "The max col of day is greater than 256, please change the first "
                               "cell of day or col interval of day.");
    EXPECT_TRUE(month.IsWrong(Field::Day));
    monthly.chkOutCalendar.checked = false;
    month.Update();
    EXPECT_EQ(month.Problem(), "");
}

TEST_F(TabPointerTest, TellsAlsoWhatOkWouldFailWith)
{
    yearly.cboLayoutofMonths.selected = 0;
    yearly.txtColIntervalofMonth.Type("many"); // not checked in this layout, but read
    year.Update();
    EXPECT_NE(year.Problem(), "");
    EXPECT_FALSE(year.IsWrong(Field::ColIntervalOfMonth));
}

// ---- what is told

TEST_F(TabPointerTest, DescribesACell)
{
    EXPECT_EQ(month.Describe(At("A1"), "Notes"), "A1, Notes");
    EXPECT_EQ(month.Describe(At("B5"), ""), "B5, empty, first cell of day");
    EXPECT_EQ(month.Describe(At("C5"), ""), "C5, empty, second column of days");
    EXPECT_EQ(month.Describe(At("B10"), ""), "B10, empty, second row of days");
    EXPECT_EQ(month.Describe(At("G5"), "x"), "G5, x, cell of day 1");
    EXPECT_EQ(month.Describe(At("H30"), ""), "H30, empty, cell of day");
    EXPECT_EQ(month.Describe(At("E4"), ""), "E4, empty, cell of weekday");
    EXPECT_EQ(year.Describe(At("L3"), ""), "L3, empty, first cell of month in block 2");
    monthly.txtFirstCellofHoliday.Type("B5");
    month.Update();
    EXPECT_EQ(month.Describe(At("B5"), ""), "B5, empty, first cell of day, first cell of holiday");
}

TEST_F(TabPointerTest, HintsAtWhatCanBeDone)
{
    EXPECT_EQ(month.Hint(), "Drag an outline, or choose a field and click its cell.");
    month.Activate(Field::Weekday);
    EXPECT_EQ(month.Hint(),
              "Click the first cell of weekday, or move it by Ctrl and the arrow keys.");
    month.Activate(Field::RowInterval);
    EXPECT_EQ(month.Hint(), "Click the second row of days.");
    monthly.chkOutCalendar.checked = false;
    EXPECT_EQ(month.Hint(), "This calendar is not output.");
}

} // namespace
} // namespace orrery::ui
