#include "ui/parameter_tab.h"

#include "ui/parameter_test.h"

#include <set>

namespace orrery::ui {
namespace {

using model::CalendarParameters;

class ParameterTabTest : public ParameterTest {
protected:
    std::vector<ParameterTab*> BothTabs() { return {&form().monthly, &form().yearly}; }
};

// ---- names and captions

struct NamedControl {
    const Control* control;
    const char* name; ///< "#" stands for the letter
    const char* caption;
};

std::vector<NamedControl> CommonControls(const ParameterTab& tab)
{
    return {
        {&tab.lblSheetName, "lbl#SheetName", "&Sheet Name:"},
        {&tab.txtSheetName, "txt#SheetName", ""},
        {&tab.lblFirstDayofWeek, "lbl#FirstDayofWeek", "First Day of Week:"},
        {&tab.cboFirstDayofWeek, "cbo#FirstDayofWeek", ""},
        {&tab.lblFirstCellofDay, "lbl#FirstCellofDay", "First Cell of &Day:"},
        {&tab.txtFirstCellofDay, "txt#FirstCellofDay", ""},
        {&tab.lblColInterval, "lbl#ColInterval", "Col &Interval of Day:"},
        {&tab.txtColInterval, "txt#ColInterval", ""},
        {&tab.updColInterval, "upd#ColInterval", ""},
        {&tab.lblRowInterval, "lbl#RowInterval", "&Row Interval of Day:"},
        {&tab.txtRowInterval, "txt#RowInterval", ""},
        {&tab.updRowInterval, "upd#RowInterval", ""},
        {&tab.chkOutWeekday, "chk#OutWeekday", "Output Name of &Weekday"},
        {&tab.lblFirstCellofWeekday, "lbl#FirstCellofWeekday", "First Cell of Weekday:"},
        {&tab.txtFirstCellofWeekday, "txt#FirstCellofWeekday", ""},
        {&tab.lblWeekdayName, "lbl#WeekdayName", "Weekday Name:"},
        {&tab.cboWeekdayName, "cbo#WeekdayName", ""},
        {&tab.chkOutMonth, "chk#OutMonth", "Output Mo&nth"},
        {&tab.lblFirstCellofMonth, "lbl#FirstCellofMonth", "First Cell of Month:"},
        {&tab.txtFirstCellofMonth, "txt#FirstCellofMonth", ""},
        {&tab.lblMonthName, "lbl#MonthName", "Month Name:"},
        {&tab.cboMonthName, "cbo#MonthName", ""},
        {&tab.chkOutYear, "chk#OutYear", "Output Y&ear"},
        {&tab.lblFirstCellofYear, "lbl#FirstCellofYear", "First Cell of Year:"},
        {&tab.txtFirstCellofYear, "txt#FirstCellofYear", ""},
        {&tab.chkOutHoliday, "chk#OutHoliday", "Output &Holiday"},
        {&tab.lblFirstCellofHoliday, "lbl#FirstCellofHoliday", "First Cell of Holiday:"},
        {&tab.txtFirstCellofHoliday, "txt#FirstCellofHoliday", ""},
        {&tab.lblMultiHolidays, "lbl#MultiHolidays", "Multiple Holidays on the Same Day:"},
        {&tab.cboMultiHolidays, "cbo#MultiHolidays", ""},
        {&tab.lblHolidaySLabel, "lbl#HolidaySLabel", "Holiday Sample:"},
        {&tab.cmdChangeHoliday, "cmd#ChangeHoliday", "Chan&ge"},
    };
}

void ExpectNames(const std::vector<NamedControl>& controls, char letter)
{
    for (const NamedControl& each : controls) {
        std::string name = each.name;
        if (const auto mark = name.find('#'); mark != std::string::npos)
            name[mark] = letter;
        EXPECT_EQ(each.control->name, name);
        EXPECT_EQ(each.control->caption, each.caption) << name;
    }
}

TEST_F(ParameterTabTest, ControlsHaveTheirNamesAndCaptions)
{
    Open();
    ExpectNames(CommonControls(form().monthly), 'M');
    ExpectNames(CommonControls(form().yearly), 'Y');
    ExpectNames({{&form().monthly.chkOutCalendar, "chk#OutCalendar", "Output &Monthly Calendar"},
                 {&form().monthly.lblHolidaySample, "lbl#HolidaySample", " New Year"}},
                'M');
    const YearlyTab& yearly = form().yearly;
    ExpectNames(
        {{&yearly.chkOutCalendar, "chk#OutCalendar", "Output &Yearly Calendar"},
         {&yearly.lblHolidaySample, "lbl#HolidaySample", " New Year"},
         {&yearly.lblLayoutofMonths, "lblLayoutofMonths", "&Layout of Months:"},
         {&yearly.cboLayoutofMonths, "cboLayoutofMonths", ""},
         {&yearly.lblColIntervalofMonth, "lbl#ColIntervalofMonth", "Col &Interval of Month:"},
         {&yearly.txtColIntervalofMonth, "txt#ColIntervalofMonth", ""},
         {&yearly.updColIntervalofMonth, "upd#ColIntervalofMonth", ""},
         {&yearly.lblRowIntervalofMonth, "lbl#RowIntervalofMonth", "&Row Interval of Month:"},
         {&yearly.txtRowIntervalofMonth, "txt#RowIntervalofMonth", ""},
         {&yearly.updRowIntervalofMonth, "upd#RowIntervalofMonth", ""}},
        'Y');
    EXPECT_EQ(form().monthly.key, "MCalendar");
    EXPECT_EQ(form().yearly.key, "YCalendar");
}

TEST_F(ParameterTabTest, ListsHaveTheirEntries)
{
    Open();
    for (const ParameterTab* tab : BothTabs()) {
        EXPECT_EQ(tab->cboFirstDayofWeek.entries, (std::vector<std::string>{"Sunday", "Monday"}));
        EXPECT_EQ(tab->cboMultiHolidays.entries,
                  (std::vector<std::string>{"Overwrite", "Next Row", "Next Column"}));
        EXPECT_EQ(tab->cboWeekdayName.entries,
                  (std::vector<std::string>{
                      "Sunday, Monday, Tuesday, Wednesday, Thursday, Friday, Saturday",
                      "Sun, Mon, Tue, Wed, Thu, Fri, Sat"}));
        EXPECT_EQ(tab->cboMonthName.entries,
                  (std::vector<std::string>{
                      "January, February, March, April, May, June, July, August, September, "
                      "October, November, December",
                      "Jan, Feb, Mar, Apr, May, Jun, Jul, Aug, Sep, Oct, Nov, Dec"}));
    }
    EXPECT_EQ(form().yearly.cboLayoutofMonths.entries,
              (std::vector<std::string>{"1 x 12 Months", "2 x 6 Months", "3 x 4 Months",
                                        "4 x 3 Months", "6 x 2 Months", "12 x 1 Months"}));
}

TEST_F(ParameterTabTest, ATitleStandsBeforeItsNames)
{
    names.Months.SetTitle(1, "English, short");
    working.sets.Yearly.MonthName = 1;
    const YearlyTab& yearly = Open().yearly;
    EXPECT_EQ(yearly.cboMonthName.entries[1],
              "English, short: Jan, Feb, Mar, Apr, May, Jun, Jul, Aug, Sep, Oct, Nov, Dec");
    EXPECT_EQ(yearly.cboMonthName.selected, 1);
}

TEST_F(ParameterTabTest, ArrowsStayInTheRangeOfTheChecks)
{
    YearlyTab& yearly = Open().yearly;
    struct ArrowCase {
        UpDown& arrows;
        const char* most;
    };
    for (const ArrowCase& each : {ArrowCase{form().monthly.updColInterval, "36"},
                                  {form().monthly.updRowInterval, "10000"},
                                  {yearly.updColInterval, "36"},
                                  {yearly.updRowInterval, "10000"},
                                  {yearly.updColIntervalofMonth, "36"},
                                  {yearly.updRowIntervalofMonth, "36"}}) {
        each.arrows.buddy.text = "9";
        each.arrows.Step(1);
        EXPECT_EQ(each.arrows.buddy.text, "10") << each.arrows.name;
        each.arrows.Step(100000);
        EXPECT_EQ(each.arrows.buddy.text, each.most) << each.arrows.name;
        each.arrows.Step(-100000);
        EXPECT_EQ(each.arrows.buddy.text, "1") << each.arrows.name;
        EXPECT_EQ(each.arrows.buddy.name.substr(3), each.arrows.name.substr(3));
    }
}

// ---- enabled states

using Names = std::set<std::string>;

/// Names of the enabled controls, without the calendar's letter.
Names EnabledOf(const ParameterTab& tab)
{
    auto controls = CommonControls(tab);
    controls.push_back({&tab.lblHolidaySample, "lbl#HolidaySample", ""});
    if (const auto* yearly = dynamic_cast<const YearlyTab*>(&tab)) {
        controls.insert(controls.end(), {{&yearly->lblLayoutofMonths, "lblLayoutofMonths", ""},
                                         {&yearly->cboLayoutofMonths, "cboLayoutofMonths", ""},
                                         {&yearly->lblColIntervalofMonth, "lbl#ColofMonth", ""},
                                         {&yearly->txtColIntervalofMonth, "txt#ColofMonth", ""},
                                         {&yearly->updColIntervalofMonth, "upd#ColofMonth", ""},
                                         {&yearly->lblRowIntervalofMonth, "lbl#RowofMonth", ""},
                                         {&yearly->txtRowIntervalofMonth, "txt#RowofMonth", ""},
                                         {&yearly->updRowIntervalofMonth, "upd#RowofMonth", ""}});
    }
    Names enabled;
    for (const NamedControl& each : controls) {
        if (each.control->enabled)
            enabled.insert(each.name);
    }
    return enabled;
}

const Names kCalendar{
    "lbl#SheetName",      "txt#SheetName",      "lbl#FirstDayofWeek", "cbo#FirstDayofWeek",
    "lbl#FirstCellofDay", "txt#FirstCellofDay", "lbl#ColInterval",    "txt#ColInterval",
    "upd#ColInterval",    "lbl#RowInterval",    "txt#RowInterval",    "upd#RowInterval",
    "chk#OutWeekday",     "chk#OutMonth",       "chk#OutYear",        "chk#OutHoliday"};
const Names kWeekday{"lbl#FirstCellofWeekday", "txt#FirstCellofWeekday", "lbl#WeekdayName",
                     "cbo#WeekdayName"};
const Names kMonth{"lbl#FirstCellofMonth", "txt#FirstCellofMonth", "lbl#MonthName",
                   "cbo#MonthName"};
const Names kYear{"lbl#FirstCellofYear", "txt#FirstCellofYear"};
const Names kHoliday{"lbl#FirstCellofHoliday", "txt#FirstCellofHoliday", "lbl#MultiHolidays",
                     "cbo#MultiHolidays",      "lbl#HolidaySLabel",      "cmd#ChangeHoliday",
                     "lbl#HolidaySample"};
const Names kLayout{"lblLayoutofMonths", "cboLayoutofMonths"};
const Names kColOfMonth{"lbl#ColofMonth", "txt#ColofMonth", "upd#ColofMonth"};
const Names kRowOfMonth{"lbl#RowofMonth", "txt#RowofMonth", "upd#RowofMonth"};

Names United(const std::vector<Names>& groups)
{
    Names all;
    for (const Names& group : groups)
        all.insert(group.begin(), group.end());
    return all;
}

/// Every combination of the five check boxes, one bit each.
class EnablingTest : public ParameterTabTest, public testing::WithParamInterface<int> {
protected:
    bool Bit(int bit) const { return (GetParam() >> bit & 1) != 0; }
    /// The control groups that the boxes enable.
    Names Expected(const Names& grid) const
    {
        if (!Bit(0))
            return {};
        return United({kCalendar, grid, Bit(1) ? kWeekday : Names(), Bit(2) ? kMonth : Names(),
                       Bit(3) ? kYear : Names(), Bit(4) ? kHoliday : Names()});
    }
    void SetRecord(CalendarParameters& record) const
    {
        record.Output = Bit(0);
        record.OutWeekday = Bit(1);
        record.OutMonth = Bit(2);
        record.OutYear = Bit(3);
        record.OutHoliday = Bit(4);
    }
    void ExpectBoxes(const ParameterTab& tab) const
    {
        EXPECT_EQ(tab.chkOutWeekday.checked, Bit(1));
        EXPECT_EQ(tab.chkOutMonth.checked, Bit(2));
        EXPECT_EQ(tab.chkOutYear.checked, Bit(3));
        EXPECT_EQ(tab.chkOutHoliday.checked, Bit(4));
    }
};

TEST_P(EnablingTest, FollowsTheBoxesOnLoad)
{
    SetRecord(working.sets.Monthly);
    SetRecord(working.sets.Yearly);
    Open();
    EXPECT_EQ(EnabledOf(form().monthly), Expected({}));
    EXPECT_EQ(EnabledOf(form().yearly), Expected(United({kLayout, kColOfMonth, kRowOfMonth})));
    for (const ParameterTab* tab : BothTabs()) {
        EXPECT_TRUE(tab->chkOutCalendar.enabled);
        EXPECT_EQ(tab->chkOutCalendar.checked, Bit(0));
        ExpectBoxes(*tab);
    }
}

TEST_P(EnablingTest, FollowsClicks)
{
    Open();
    for (ParameterTab* tab : BothTabs()) {
        const auto click = [](CheckBox& box, bool on) {
            if (box.checked != on)
                box.Toggle();
        };
        click(tab->chkOutWeekday, Bit(1));
        tab->chkOutWeekday_Click();
        click(tab->chkOutMonth, Bit(2));
        tab->chkOutMonth_Click();
        click(tab->chkOutYear, Bit(3));
        tab->chkOutYear_Click();
        click(tab->chkOutHoliday, Bit(4));
        tab->chkOutHoliday_Click();
        click(tab->chkOutCalendar, Bit(0));
        tab->chkOutCalendar_Click();
        ExpectBoxes(*tab);
    }
    EXPECT_EQ(EnabledOf(form().monthly), Expected({}));
    EXPECT_EQ(EnabledOf(form().yearly), Expected(United({kLayout, kColOfMonth, kRowOfMonth})));
}

TEST_P(EnablingTest, IsRestoredWithTheCalendar)
{
    SetRecord(working.sets.Monthly);
    SetRecord(working.sets.Yearly);
    Open();
    for (ParameterTab* tab : BothTabs()) {
        const Names before = EnabledOf(*tab);
        for (int i = 0; i < 2; ++i) {
            tab->chkOutCalendar.Toggle();
            tab->chkOutCalendar_Click();
        }
        EXPECT_EQ(EnabledOf(*tab), before) << tab->key;
    }
}

INSTANTIATE_TEST_SUITE_P(Boxes, EnablingTest, testing::Range(0, 32));

struct LayoutEnabling {
    int index;
    bool col;
    bool row;
};

TEST_F(ParameterTabTest, ALayoutEnablesItsIntervals)
{
    YearlyTab& tab = Open().yearly;
    for (const LayoutEnabling& each : {LayoutEnabling{0, false, true},
                                       {1, true, true},
                                       {2, true, true},
                                       {3, true, true},
                                       {4, true, true},
                                       {5, true, false}}) {
        const Names expected =
            United({kCalendar, kWeekday, kMonth, kYear, kHoliday, kLayout,
                    each.col ? kColOfMonth : Names(), each.row ? kRowOfMonth : Names()});
        tab.cboLayoutofMonths.Select(each.index);
        tab.cboLayoutofMonths_Click();
        EXPECT_EQ(EnabledOf(tab), expected) << each.index;
        for (int i = 0; i < 2; ++i) { // the calendar off and on again
            tab.chkOutCalendar.Toggle();
            tab.chkOutCalendar_Click();
        }
        EXPECT_EQ(EnabledOf(tab), expected) << each.index;
    }
}

TEST_F(ParameterTabTest, WithoutALayoutTheIntervalsAreUnchanged)
{
    working.sets.Yearly.MonthLayout = 5;
    YearlyTab& tab = Open().yearly;
    EXPECT_TRUE(tab.txtColIntervalofMonth.enabled);
    EXPECT_TRUE(tab.txtRowIntervalofMonth.enabled);
}

// ---- marks of change

TEST_F(ParameterTabTest, NothingIsChangedAfterLoading)
{
    Open();
    for (const ParameterTab* tab : BothTabs())
        EXPECT_FALSE(tab->Changed());
}

TEST_F(ParameterTabTest, FillingATabClearsItsMarks)
{
    Open().yearly.txtSheetName.Type("x");
    form().yearly.cboLayoutofMonths.Select(1);
    form().SetYHolidayChanged();
    form().yearly.Show(working.sets.Yearly);
    EXPECT_FALSE(form().yearly.Changed());
    EXPECT_EQ(form().yearly.txtSheetName.text, "Sheet1");
}

TEST_F(ParameterTabTest, EveryFieldOfATabCounts)
{
    using Edit = void (*)(ParameterTab & tab);
    const std::vector<Edit> edits{
        [](ParameterTab& tab) { tab.chkOutCalendar.Toggle(); },
        [](ParameterTab& tab) { tab.txtSheetName.Type("x"); },
        [](ParameterTab& tab) { tab.cboFirstDayofWeek.Select(0); },
        [](ParameterTab& tab) { tab.txtFirstCellofDay.Type("C6"); },
        [](ParameterTab& tab) { tab.txtColInterval.Type("2"); },
        [](ParameterTab& tab) { tab.updColInterval.Step(1); },
        [](ParameterTab& tab) { tab.txtRowInterval.Type("2"); },
        [](ParameterTab& tab) { tab.updRowInterval.Step(1); },
        [](ParameterTab& tab) { tab.chkOutWeekday.Toggle(); },
        [](ParameterTab& tab) { tab.txtFirstCellofWeekday.Type("C6"); },
        [](ParameterTab& tab) { tab.cboWeekdayName.Select(0); },
        [](ParameterTab& tab) { tab.chkOutMonth.Toggle(); },
        [](ParameterTab& tab) { tab.txtFirstCellofMonth.Type("C6"); },
        [](ParameterTab& tab) { tab.cboMonthName.Select(0); },
        [](ParameterTab& tab) { tab.chkOutYear.Toggle(); },
        [](ParameterTab& tab) { tab.txtFirstCellofYear.Type("C6"); },
        [](ParameterTab& tab) { tab.chkOutHoliday.Toggle(); },
        [](ParameterTab& tab) { tab.txtFirstCellofHoliday.Type("C6"); },
        [](ParameterTab& tab) { tab.cboMultiHolidays.Select(0); },
        [](ParameterTab& tab) { tab.holidaysChanged = true; },
        [](ParameterTab& tab) { dynamic_cast<YearlyTab&>(tab).cboLayoutofMonths.Select(1); },
        [](ParameterTab& tab) { dynamic_cast<YearlyTab&>(tab).txtColIntervalofMonth.Type("9"); },
        [](ParameterTab& tab) { dynamic_cast<YearlyTab&>(tab).txtRowIntervalofMonth.Type("9"); },
    };
    constexpr std::size_t common = 20;
    for (std::size_t i = 0; i < edits.size(); ++i) {
        edits[i](Open().yearly);
        EXPECT_TRUE(form().yearly.Changed()) << i;
        EXPECT_FALSE(form().monthly.Changed()) << i;
        form().yearly.ClearChanged();
        EXPECT_FALSE(form().yearly.Changed()) << i;
        if (i < common) {
            edits[i](form().monthly);
            EXPECT_TRUE(form().monthly.Changed()) << i;
        }
    }
}

} // namespace
} // namespace orrery::ui
