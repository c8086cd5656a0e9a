#include "look/advisor/known_names.h"

#include <gtest/gtest.h>

namespace orrery::look {
namespace {

model::NameTables Tables()
{
    model::NameTables names;
    names.Weekdays.Store(
        0, {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"});
    names.Weekdays.Store(1, {"So", "Mo", "Di", "Mi", "Do", "Fr", "Sa"});
    names.Weekdays.SetTitle(1, "Deutsch, short");
    names.Months.Store(0, {"January", "February", "March", "April", "May", "June", "July", "August",
                           "September", "October", "November", "December"});
    names.Months.Store(1, {"Januar", "Februar", "März", "April", "Mai", "Juni", "Juli", "August",
                           "September", "Oktober", "November", "Dezember"});
    names.Months.SetTitle(1, "Deutsch");
    return names;
}

class KnownNamesTest : public testing::Test {
protected:
    model::NameTables tables_ = Tables();
    KnownNames names_{tables_};
};

TEST_F(KnownNamesTest, FindsWeekdaysFromSundayOrMonday)
{
    const auto monday = names_.FindWeekdays({"MO", "di.", "Mi", "Do", "Fr", "Sa", "So"});
    ASSERT_TRUE(monday);
    EXPECT_EQ(monday->list, 1);
    EXPECT_EQ(monday->firstDay, 1);
    const auto sunday = names_.FindWeekdays(
        {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"});
    ASSERT_TRUE(sunday);
    EXPECT_EQ(sunday->list, 0);
    EXPECT_EQ(sunday->firstDay, 0);
    EXPECT_FALSE(names_.FindWeekdays({"Sa", "So", "Mo", "Di", "Mi", "Do", "Fr"}));
}

TEST_F(KnownNamesTest, FindsTheFirstDayOfBeginnings)
{
    EXPECT_EQ(names_.FindFirstDay({"S", "M", "T", "W", "T", "F", "S"}), 0);
    EXPECT_EQ(names_.FindFirstDay({"mo", "tu", "we", "th", "fr", "sa", "su"}), 1);
    EXPECT_FALSE(names_.FindFirstDay({"a", "b", "c", "d", "e", "f", "g"}));
    EXPECT_FALSE(names_.FindFirstDay({"", "", "", "", "", "", ""}));
    EXPECT_TRUE(names_.BeginsWeekday("wEd"));
    EXPECT_FALSE(names_.BeginsWeekday("Wednesdays"));
}

TEST_F(KnownNamesTest, FindsMonthsBesideAYear)
{
    EXPECT_EQ(names_.MonthOf("MÄRZ 2027"), 3);
    EXPECT_EQ(names_.MonthOf("Marches"), 0);
    EXPECT_EQ(names_.ListsWithMonth("August"), (std::vector<std::int16_t>{0, 1}));
    EXPECT_EQ(names_.InLanguage({0, 1}, 1), 1);
    EXPECT_FALSE(names_.InLanguage({0}, 1));
}

TEST(FindYearTest, TakesFourDigitsAlone)
{
    EXPECT_EQ(FindYear("Calendar 2027"), 2027);
    EXPECT_EQ(FindYear("1999"), 1999);
    EXPECT_FALSE(FindYear("12027"));
    EXPECT_FALSE(FindYear("3027"));
    EXPECT_FALSE(FindYear("No. 7"));
}

} // namespace
} // namespace orrery::look
