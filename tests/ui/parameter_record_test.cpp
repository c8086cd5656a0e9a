#include "ui/parameter_tab.h"

#include "ui/parameter_test.h"
#include "util/error.h"

namespace orrery::ui {
namespace {

using model::CalendarParameters;
using model::CellPosition;

/// Copying a parameter set to the controls and back.
class ParameterRecordTest : public ParameterTest {
protected:
    std::vector<ParameterTab*> BothTabs() { return {&form().monthly, &form().yearly}; }
};

/// A field of a set: a value, and how its control shows it.
struct FieldCase {
    const char* name;
    void (*set)(CalendarParameters& record);
    std::string (*shown)(const ParameterTab& tab);
    const char* expected;
};

std::string Text(const CheckBox& box)
{
    return box.checked ? "checked" : "unchecked";
}

std::string Text(const ComboBox& list)
{
    return list.HasSelection() ? list.entries.at(static_cast<std::size_t>(list.selected)) : "none";
}

const std::vector<FieldCase> kFields{
    {"Output", [](CalendarParameters& record) { record.Output = true; },
     [](const ParameterTab& tab) { return Text(tab.chkOutCalendar); }, "checked"},
    {"SheetName", [](CalendarParameters& record) { record.SheetName = " Plan "; },
     [](const ParameterTab& tab) { return tab.txtSheetName.text; }, " Plan "},
    {"FirstDayOfWeekSunday", [](CalendarParameters& record) { record.FirstDayOfWeek = 0; },
     [](const ParameterTab& tab) { return Text(tab.cboFirstDayofWeek); }, "Sunday"},
    {"FirstDayOfWeekMonday", [](CalendarParameters& record) { record.FirstDayOfWeek = 1; },
     [](const ParameterTab& tab) { return Text(tab.cboFirstDayofWeek); }, "Monday"},
    {"FirstCellOfDay",
     [](CalendarParameters& record) {
         record.FirstCellOfDay = {12, 27};
     },
     [](const ParameterTab& tab) { return tab.txtFirstCellofDay.text; }, "AA12"},
    {"ColIntervalOfDay", [](CalendarParameters& record) { record.ColIntervalOfDay = 4; },
     [](const ParameterTab& tab) { return tab.txtColInterval.text; }, "4"},
    {"RowIntervalOfDay", [](CalendarParameters& record) { record.RowIntervalOfDay = 1234; },
     [](const ParameterTab& tab) { return tab.txtRowInterval.text; }, "1234"},
    {"NoWeekday", [](CalendarParameters& record) { record.OutWeekday = false; },
     [](const ParameterTab& tab) { return Text(tab.chkOutWeekday); }, "unchecked"},
    {"Weekday", [](CalendarParameters& record) { record.OutWeekday = true; },
     [](const ParameterTab& tab) { return Text(tab.chkOutWeekday); }, "checked"},
    {"FirstCellOfWeekday",
     [](CalendarParameters& record) {
         record.FirstCellOfWeekday = {7, 3};
     },
     [](const ParameterTab& tab) { return tab.txtFirstCellofWeekday.text; }, "C7"},
    {"WeekdayName", [](CalendarParameters& record) { record.WeekdayName = 1; },
     [](const ParameterTab& tab) { return Text(tab.cboWeekdayName); },
     "Sun, Mon, Tue, Wed, Thu, Fri, Sat"},
    {"NoMonth", [](CalendarParameters& record) { record.OutMonth = false; },
     [](const ParameterTab& tab) { return Text(tab.chkOutMonth); }, "unchecked"},
    {"Month", [](CalendarParameters& record) { record.OutMonth = true; },
     [](const ParameterTab& tab) { return Text(tab.chkOutMonth); }, "checked"},
    {"FirstCellOfMonth",
     [](CalendarParameters& record) {
         record.FirstCellOfMonth = {9, 256};
     },
     [](const ParameterTab& tab) { return tab.txtFirstCellofMonth.text; }, "IV9"},
    {"MonthName", [](CalendarParameters& record) { record.MonthName = 1; },
     [](const ParameterTab& tab) { return Text(tab.cboMonthName); },
     "Jan, Feb, Mar, Apr, May, Jun, Jul, Aug, Sep, Oct, Nov, Dec"},
    {"NoYear", [](CalendarParameters& record) { record.OutYear = false; },
     [](const ParameterTab& tab) { return Text(tab.chkOutYear); }, "unchecked"},
    {"Year", [](CalendarParameters& record) { record.OutYear = true; },
     [](const ParameterTab& tab) { return Text(tab.chkOutYear); }, "checked"},
    {"FirstCellOfYear",
     [](CalendarParameters& record) {
         record.FirstCellOfYear = {65536, 1};
     },
     [](const ParameterTab& tab) { return tab.txtFirstCellofYear.text; }, "A65536"},
    {"NoHoliday", [](CalendarParameters& record) { record.OutHoliday = false; },
     [](const ParameterTab& tab) { return Text(tab.chkOutHoliday); }, "unchecked"},
    {"Holiday", [](CalendarParameters& record) { record.OutHoliday = true; },
     [](const ParameterTab& tab) { return Text(tab.chkOutHoliday); }, "checked"},
    {"FirstCellOfHoliday",
     [](CalendarParameters& record) {
         record.FirstCellOfHoliday = {8, 2};
     },
     [](const ParameterTab& tab) { return tab.txtFirstCellofHoliday.text; }, "B8"},
    {"Overwrite", [](CalendarParameters& record) { record.MultiHolidays = 0; },
     [](const ParameterTab& tab) { return Text(tab.cboMultiHolidays); }, "Overwrite"},
    {"NextRow", [](CalendarParameters& record) { record.MultiHolidays = 1; },
     [](const ParameterTab& tab) { return Text(tab.cboMultiHolidays); }, "Next Row"},
    {"NextColumn", [](CalendarParameters& record) { record.MultiHolidays = 2; },
     [](const ParameterTab& tab) { return Text(tab.cboMultiHolidays); }, "Next Column"},
    {"NoHolidays", [](CalendarParameters& record) { record.Holidays.Clear(); },
     [](const ParameterTab& tab) { return tab.lblHolidaySample.caption; }, ""},
    {"Holidays",
     [](CalendarParameters& record) {
         record.Holidays.Clear();
         record.Holidays.Append({704, 0, " Fish & Chips Day"});
     },
     [](const ParameterTab& tab) { return tab.lblHolidaySample.caption; }, " Fish & Chips Day"},
};

class FieldTest : public ParameterRecordTest, public testing::WithParamInterface<FieldCase> {};

TEST_P(FieldTest, IsShown)
{
    GetParam().set(working.sets.Monthly);
    GetParam().set(working.sets.Yearly);
    Open();
    for (const ParameterTab* tab : BothTabs())
        EXPECT_EQ(GetParam().shown(*tab), GetParam().expected) << tab->key;
}

/// What was shown is stored unchanged in another set, each field alone and all together.
TEST_P(FieldTest, IsReadBack)
{
    GetParam().set(working.sets.Monthly);
    GetParam().set(working.sets.Yearly);
    Open();
    model::MonthlyParameters monthly;
    form().monthly.Save(monthly);
    EXPECT_EQ(monthly, working.sets.Monthly);
    model::YearlyParameters yearly;
    form().yearly.Save(yearly);
    EXPECT_EQ(yearly, working.sets.Yearly);
}

INSTANTIATE_TEST_SUITE_P(Fields, FieldTest, testing::ValuesIn(kFields),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(ParameterRecordTest, TheSampleIsShownUnchanged)
{
    Open();
    EXPECT_TRUE(form().monthly.lblHolidaySample.isLiteral);
}

/// What the user types is stored in the fields of the set.
TEST_F(ParameterRecordTest, TypedValuesAreSaved)
{
    Open();
    for (ParameterTab* tab : BothTabs()) {
        tab->txtSheetName.Type(" Plan ");
        tab->cboFirstDayofWeek.Select(0);
        tab->txtFirstCellofDay.Type(" aa12 ");
        tab->txtColInterval.Type("2.5");
        tab->txtRowInterval.Type(" 3.5 ");
        tab->chkOutWeekday.Toggle();
        tab->txtFirstCellofWeekday.Type("C7");
        tab->cboWeekdayName.Select(0);
        tab->chkOutMonth.Toggle();
        tab->txtFirstCellofMonth.Type("IV9");
        tab->cboMonthName.Select(0);
        tab->chkOutYear.Toggle();
        tab->txtFirstCellofYear.Type("A007");
        tab->chkOutHoliday.Toggle();
        tab->txtFirstCellofHoliday.Type("B8");
        tab->cboMultiHolidays.Select(1);
        tab->holidays.Clear();
        tab->holidays.Append({704, 0, " Independence Day"});
    }
    form().SaveMParameters();
    form().SaveYParameters();
    for (const CalendarParameters* record :
         {static_cast<CalendarParameters*>(&working.sets.Monthly),
          static_cast<CalendarParameters*>(&working.sets.Yearly)}) {
        EXPECT_TRUE(record->Output);
        EXPECT_EQ(record->SheetName, " Plan ");
        EXPECT_EQ(record->FirstDayOfWeek, 0);
        EXPECT_EQ(record->FirstCellOfDay, (CellPosition{12, 27}));
        EXPECT_EQ(record->ColIntervalOfDay, 2);
        EXPECT_EQ(record->RowIntervalOfDay, 4);
        EXPECT_FALSE(record->OutWeekday);
        EXPECT_EQ(record->FirstCellOfWeekday, (CellPosition{7, 3}));
        EXPECT_EQ(record->WeekdayName, 0);
        EXPECT_FALSE(record->OutMonth);
        EXPECT_EQ(record->FirstCellOfMonth, (CellPosition{9, 256}));
        EXPECT_EQ(record->MonthName, 0);
        EXPECT_FALSE(record->OutYear);
        EXPECT_EQ(record->FirstCellOfYear, (CellPosition{7, 1}));
        EXPECT_FALSE(record->OutHoliday);
        EXPECT_EQ(record->FirstCellOfHoliday, (CellPosition{8, 2}));
        EXPECT_EQ(record->MultiHolidays, 1);
        ASSERT_EQ(record->Holidays.Count(), 1);
        EXPECT_EQ(record->Holidays[0], (holidays::HolidayDef{704, 0, " Independence Day"}));
    }
}

TEST_F(ParameterRecordTest, WithoutOutputOnlyTheFlagIsSaved)
{
    Open();
    for (ParameterTab* tab : BothTabs()) {
        tab->chkOutCalendar.Toggle();
        tab->txtSheetName.Type("Other");
        tab->txtColInterval.Type("no number");
        tab->holidays.Clear();
    }
    form().yearly.cboLayoutofMonths.Select(0);
    form().yearly.txtRowIntervalofMonth.Type("no number");
    auto expected = working.sets;
    expected.Monthly.Output = expected.Yearly.Output = false;
    form().SaveMParameters();
    form().SaveYParameters();
    EXPECT_EQ(working.sets.Monthly, expected.Monthly);
    EXPECT_EQ(working.sets.Yearly, expected.Yearly);
}

struct CellCase {
    const char* text;
    CellPosition expected;
};

TEST_F(ParameterRecordTest, AnUncheckedCellIsStoredAsParsed)
{
    for (const CellCase& each : {CellCase{"", {0, 0}},
                                 {" b ", {0, 2}},
                                 {"12", {12, 0}},
                                 {"IW1", {1, -1}},
                                 {"A65537", {-1, 1}},
                                 {"$B$6", {-1, -1}},
                                 {"B99999999999999999999", {-1, -1}}}) {
        working.sets = ValidSets();
        Open().monthly.chkOutYear.Toggle();
        form().monthly.txtFirstCellofYear.Type(each.text);
        form().cmdOK_Click();
        EXPECT_FALSE(form().isOpen);
        EXPECT_EQ(working.sets.Monthly.FirstCellOfYear, each.expected) << each.text;
    }
}

TEST_F(ParameterRecordTest, ACellOutsideTheSheetIsShownEmpty)
{
    working.sets.Monthly.FirstCellOfYear = {-1, -1};
    EXPECT_EQ(Open().monthly.txtFirstCellofYear.text, "");
}

TEST_F(ParameterRecordTest, ListsWithoutASelectionStoreTheFirst)
{
    Open();
    for (ComboBox* list : {&form().monthly.cboFirstDayofWeek, &form().monthly.cboMultiHolidays,
                           &form().monthly.cboWeekdayName, &form().monthly.cboMonthName})
        list->Select(-1);
    form().SaveMParameters();
    EXPECT_EQ(working.sets.Monthly.FirstDayOfWeek, 0);
    EXPECT_EQ(working.sets.Monthly.MultiHolidays, 0);
    EXPECT_EQ(working.sets.Monthly.WeekdayName, 0);
    EXPECT_EQ(working.sets.Monthly.MonthName, 0);
}

TEST_F(ParameterRecordTest, AnIntervalThatIsNoNumberIsNotSaved)
{
    Open().monthly.txtColInterval.Type("wide");
    EXPECT_THROW(form().SaveMParameters(), Error);
    Open().monthly.txtRowInterval.Type("99999999999");
    EXPECT_THROW(form().SaveMParameters(), util::OverflowError);
}

// ---- layouts

struct LayoutFieldCase {
    int stored;
    int shown;
};

TEST_F(ParameterRecordTest, LayoutsAreShownAndReadBack)
{
    for (const LayoutFieldCase& each :
         {LayoutFieldCase{1, 0}, {2, 1}, {3, 2}, {4, 3}, {6, 4}, {12, 5}}) {
        working.sets.Yearly.MonthLayout = static_cast<std::int16_t>(each.stored);
        EXPECT_EQ(Open().yearly.cboLayoutofMonths.selected, each.shown) << each.stored;
        working.sets.Yearly.MonthLayout = 0;
        form().SaveYParameters();
        EXPECT_EQ(working.sets.Yearly.MonthLayout, each.stored);
    }
}

TEST_F(ParameterRecordTest, OtherLayoutsAreShownAsNoneAndStoredAsThree)
{
    for (const int stored : {0, 5, 7, 8, 9, 10, 11, 13, -1}) {
        working.sets.Yearly.MonthLayout = static_cast<std::int16_t>(stored);
        EXPECT_EQ(Open().yearly.cboLayoutofMonths.selected, -1) << stored;
        form().SaveYParameters();
        EXPECT_EQ(working.sets.Yearly.MonthLayout, 3);
    }
}

TEST_F(ParameterRecordTest, IntervalsThatALayoutDoesNotHaveAreKept)
{
    for (int index = 0; index < 6; ++index) {
        working.sets = ValidSets();
        YearlyTab& tab = Open().yearly;
        EXPECT_EQ(tab.txtColIntervalofMonth.text, "8");
        EXPECT_EQ(tab.txtRowIntervalofMonth.text, "9");
        tab.cboLayoutofMonths.Select(index);
        tab.txtColIntervalofMonth.Type("21");
        tab.txtRowIntervalofMonth.Type("22");
        form().SaveYParameters();
        EXPECT_EQ(working.sets.Yearly.ColIntervalOfMonth, index == 0 ? 8 : 21) << index;
        EXPECT_EQ(working.sets.Yearly.RowIntervalOfMonth, index == 5 ? 9 : 22) << index;
    }
}

// ---- lists of names

TEST_F(ParameterRecordTest, NamesThatMatchNoEntrySelectTheFirst)
{
    working.sets.Monthly.WeekdayName = 7;
    working.sets.Yearly.MonthName = 256;
    Open();
    EXPECT_EQ(form().monthly.cboWeekdayName.selected, 0);
    EXPECT_EQ(form().yearly.cboMonthName.selected, 0);
}

TEST_F(ParameterRecordTest, EqualNamesSelectTheirFirstEntry)
{
    names.Weekdays.Add(kShortDays); // list 2 equals list 1
    working.sets.Monthly.WeekdayName = 2;
    EXPECT_EQ(Open().monthly.cboWeekdayName.selected, 1);
}

TEST_F(ParameterRecordTest, AGapHasAnEntryAndHidesTheLastList)
{
    names.Weekdays.Clear();
    names.Weekdays.Store(0, kEnglishDays);
    names.Weekdays.Store(2, kShortDays); // list 1 was skipped: two lists are counted
    working.sets.Monthly.WeekdayName = 2;
    working.sets.Yearly.WeekdayName = 1;
    Open();
    EXPECT_EQ(
        form().monthly.cboWeekdayName.entries,
        (std::vector<std::string>{"Sunday, Monday, Tuesday, Wednesday, Thursday, Friday, Saturday",
                                  ", , , , , , "}));
    EXPECT_EQ(form().monthly.cboWeekdayName.selected, 0);
    EXPECT_EQ(form().yearly.cboWeekdayName.selected, 1);
}

TEST_F(ParameterRecordTest, AFullTableHasAnEntryForEachList)
{
    while (names.Months.Count() < 257)
        names.Months.Add(kShortMonths);
    auto last = kShortMonths;
    last[11] = "Last";
    names.Months.Clear();
    for (int i = 0; i < 256; ++i)
        names.Months.Add(kShortMonths);
    names.Months.Add(last);
    working.sets.Monthly.MonthName = 256;
    Open();
    EXPECT_EQ(form().monthly.cboMonthName.entries.size(), 257U);
    EXPECT_EQ(form().monthly.cboMonthName.selected, 256);
    form().SaveMParameters();
    EXPECT_EQ(working.sets.Monthly.MonthName, 256);
}

} // namespace
} // namespace orrery::ui
