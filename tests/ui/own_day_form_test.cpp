#include "ui/own_day_form.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace orrery::ui {
namespace {

using holidays::OwnDay;

class OwnDayFormTest : public testing::Test {
protected:
    void Type(TextBox& box, const std::string& text)
    {
        box.Type(text);
        form_.ShowDate();
    }
    void Choose(ComboBox& list, const std::string& entry)
    {
        const auto found = std::find(list.entries.begin(), list.entries.end(), entry);
        ASSERT_NE(found, list.entries.end()) << entry;
        list.Select(static_cast<int>(found - list.entries.begin()));
        if (&list == &form_.cboKind)
            form_.cboKind_Click();
        else
            form_.ShowDate();
    }

    OwnDayForm form_{std::nullopt, 2027};
};

TEST_F(OwnDayFormTest, BeginsWithAYearlyDateAndTellsItsNextDay)
{
    EXPECT_EQ(form_.caption, "Add Own Day");
    EXPECT_EQ(form_.focus, &form_.txtName);
    EXPECT_EQ(form_.lblDate.caption, "Next: Fri 1 January 2027");
    EXPECT_FALSE(form_.txtYear.visible);
    EXPECT_FALSE(form_.cboOrdinal.visible);
    EXPECT_FALSE(form_.txtLastDay.visible);
}

TEST_F(OwnDayFormTest, TellsTheDateWhileItIsTyped)
{
    Type(form_.txtDay, "14");
    Choose(form_.cboMonth, "May");
    EXPECT_EQ(form_.lblDate.caption, "Next: Fri 14 May 2027");
    Type(form_.txtDay, "32");
    EXPECT_EQ(form_.lblDate.caption, "May has no day 32.");
    Type(form_.txtDay, "x");
    EXPECT_EQ(form_.lblDate.caption, "Type the day as a number, such as 14.");
    Type(form_.txtDay, "");
    EXPECT_EQ(form_.lblDate.caption, "Type the day as a number, such as 14.");
}

TEST_F(OwnDayFormTest, ABirthdayTellsTheAge)
{
    Choose(form_.cboKind, "Birthday");
    EXPECT_EQ(form_.lblYear.caption, "&Year of Birth:");
    EXPECT_EQ(form_.txtYear.text, "") << "the calendar's year is no year of birth";
    Choose(form_.cboMonth, "August");
    Type(form_.txtDay, "30");
    EXPECT_EQ(form_.lblDate.caption, "Next: Mon 30 August 2027");
    Type(form_.txtYear, "1984");
    EXPECT_EQ(form_.lblDate.caption, "Next: Mon 30 August 2027: 43 years");
    Type(form_.txtYear, "2026");
    EXPECT_EQ(form_.lblDate.caption, "Next: Mon 30 August 2027: 1 year");
    Type(form_.txtYear, "84x");
    EXPECT_EQ(form_.lblDate.caption, "Type the year as a number, such as 2027.");
}

TEST_F(OwnDayFormTest, AWeekdayNeedsNoDay)
{
    Choose(form_.cboKind, "Every year on a weekday");
    EXPECT_FALSE(form_.txtDay.visible);
    Choose(form_.cboOrdinal, "Last");
    Choose(form_.cboWeekday, "Sunday");
    Choose(form_.cboMonth, "May");
    EXPECT_EQ(form_.lblDate.caption, "Next: Sun 30 May 2027");
    Choose(form_.cboWeekday, "Monday");
    EXPECT_EQ(form_.lblDate.caption, "Next: Mon 31 May 2027");
    EXPECT_EQ(form_.Day().weekday, 2);
    EXPECT_EQ(form_.Day().ordinal, 5);
}

TEST_F(OwnDayFormTest, SeveralDaysHaveALastOne)
{
    Choose(form_.cboKind, "Several days in a row");
    EXPECT_EQ(form_.txtYear.text, "2027");
    EXPECT_EQ(form_.txtLastYear.text, "2027");
    Choose(form_.cboMonth, "May");
    Type(form_.txtDay, "14");
    EXPECT_EQ(form_.lblDate.caption, "The last day is before the first one.");
    Choose(form_.cboLastMonth, "May");
    Type(form_.txtLastDay, "17");
    EXPECT_EQ(form_.lblDate.caption, "14 May 2027 to 17 May 2027");
    Type(form_.txtLastDay, "32");
    Type(form_.txtName, "Tournament");
    form_.cmdOK_Click();
    EXPECT_TRUE(form_.isOpen);
    EXPECT_EQ(form_.focus, &form_.txtLastDay);
}

TEST_F(OwnDayFormTest, OkSaysWhatIsMissing)
{
    Choose(form_.cboKind, "One date");
    form_.cmdOK_Click();
    EXPECT_TRUE(form_.isOpen);
    EXPECT_EQ(form_.lblDate.caption, "Type the name of the day.");
    EXPECT_EQ(form_.focus, &form_.txtName);
    Type(form_.txtName, " Exam ");
    EXPECT_EQ(form_.lblDate.caption, "Fri 1 January 2027");
    Type(form_.txtYear, "");
    EXPECT_EQ(form_.lblDate.caption, "Type the year, such as 2027.");
    Type(form_.txtYear, "2028");
    form_.cmdOK_Click();
    EXPECT_TRUE(form_.isAccepted);
    EXPECT_EQ(form_.Day().name, "Exam");
    EXPECT_EQ(form_.Day().year, 2028);
}

TEST(OwnDayForm, ShowsTheDayThatIsChanged)
{
    OwnDay day;
    day.kind = OwnDay::Kind::Birthday;
    day.name = " Ben";
    day.day = {8, 30};
    day.year = 1984;
    const OwnDayForm form(day, 2027);
    EXPECT_EQ(form.caption, "Change Own Day");
    EXPECT_EQ(form.txtName.text, "Ben");
    EXPECT_EQ(form.txtYear.text, "1984");
    EXPECT_EQ(form.lblDate.caption, "Next: Mon 30 August 2027: 43 years");
    day.name = "Ben";
    EXPECT_EQ(form.Day(), day);
}

TEST(OwnDayForm, WithoutAYearTellsWhereInTheYearItIs)
{
    OwnDayForm form(std::nullopt, std::nullopt);
    EXPECT_EQ(form.lblDate.caption, "1 January");
}

} // namespace
} // namespace orrery::ui
