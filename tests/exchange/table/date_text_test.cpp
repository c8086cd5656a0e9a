#include "exchange/table/date_text.h"

#include "calendar_text.h"
#include "exchange/table/date_words.h"
#include "look/number_format/locale_names.h"

#include <gmock/gmock.h>

namespace orrery::exchange {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string DateIn(std::string_view text, DateOrder order = DateOrder::DayMonthYear,
                   std::string_view language = "en")
{
    const auto parts = SplitDate(text);
    const auto date = parts ? DateOf(*parts, {order, look::LanguageOfTag(language)}) : std::nullopt;
    return date ? sample::TextOf(*date) : "none";
}

TEST(DateText, ReadsNumbersInEachOrder)
{
    EXPECT_EQ(DateIn("3.4.2027"), "2027-04-03");
    EXPECT_EQ(DateIn("03/04/2027", DateOrder::MonthDayYear), "2027-03-04");
    EXPECT_EQ(DateIn("2027-04-03", DateOrder::YearMonthDay), "2027-04-03");
    EXPECT_EQ(DateIn("20270403", DateOrder::YearMonthDay), "2027-04-03");
    EXPECT_EQ(DateIn("3 4 2027"), "2027-04-03");
    EXPECT_EQ(DateIn(" 3. 4. 2027 "), "2027-04-03");
    EXPECT_EQ(DateIn("2027年4月3日", DateOrder::YearMonthDay), "2027-04-03");
    EXPECT_EQ(DateIn("2027. 4. 3.", DateOrder::YearMonthDay), "2027-04-03");
}

TEST(DateText, KnowsYearsOfTwoDigits)
{
    EXPECT_EQ(DateIn("3.4.27"), "2027-04-03");
    EXPECT_EQ(DateIn("3.4.69"), "2069-04-03");
    EXPECT_EQ(DateIn("3.4.70"), "1970-04-03");
    EXPECT_EQ(DateIn("3-Apr-27"), "2027-04-03");
}

TEST(DateText, ReadsMonthsOfManyLanguages)
{
    EXPECT_EQ(DateIn("1 May 2027"), "2027-05-01");
    EXPECT_EQ(DateIn("May 1, 2027"), "2027-05-01");
    EXPECT_EQ(DateIn("Sat, 1st of May 2027"), "2027-05-01");
    EXPECT_EQ(DateIn("2027 May 1"), "2027-05-01");
    EXPECT_EQ(DateIn("Sonntag, 3. Oktober 2027"), "2027-10-03");
    EXPECT_EQ(DateIn("1er août 2027"), "2027-08-01");
    EXPECT_EQ(DateIn("1 de mayo de 2027"), "2027-05-01");
    EXPECT_EQ(DateIn("1 мая 2027 г."), "2027-05-01");
    EXPECT_EQ(DateIn("3. MÄRZ 2027"), "2027-03-03");
    EXPECT_EQ(DateIn("1 listopadu 2027", DateOrder::DayMonthYear, "cs"), "2027-11-01");
    EXPECT_EQ(DateIn("1 listopada 2027", DateOrder::DayMonthYear, "hr"), "2027-10-01");
    EXPECT_EQ(DateIn("1 listopada 2027", DateOrder::DayMonthYear, "pl"), "2027-11-01");
}

TEST(DateText, LeavesTheTimeOut)
{
    EXPECT_EQ(DateIn("2027-05-01T00:00:00Z", DateOrder::YearMonthDay), "2027-05-01");
    EXPECT_EQ(DateIn("5/1/2027 12:00:00 AM", DateOrder::MonthDayYear), "2027-05-01");
    EXPECT_EQ(DateIn("1.5.2027 8:30"), "2027-05-01");
}

TEST(DateText, RefusesOtherTexts)
{
    for (const char* const text : {"",
                                   "46508",
                                   "1.5.",
                                   "May 2027",
                                   "1 Foo 2027",
                                   "1.5.2027.6",
                                   "1.5.20270",
                                   "31.2.2027",
                                   "29.2.2027",
                                   "0.5.2027",
                                   "1.13.2027",
                                   "1.5.0000",
                                   "270501",
                                   "202705011",
                                   "1/5",
                                   "May May 2027 1",
                                   "1.5.2027 and more",
                                   "2027:05:01",
                                   "1.5.2027:",
                                   "٣/٤/٢٠٢٧"})
        EXPECT_EQ(DateIn(text), "none") << text;
    EXPECT_EQ(DateIn(std::string(100, '1')), "none");
}

TEST(DateText, TellsPossibleOrders)
{
    const auto orders = [](std::string_view text) { return OrdersOf(SplitDate(text).value()); };
    EXPECT_THAT(orders("3/4/2027"), ElementsAre(DateOrder::DayMonthYear, DateOrder::MonthDayYear));
    EXPECT_THAT(orders("13/4/2027"), ElementsAre(DateOrder::DayMonthYear));
    EXPECT_THAT(orders("4/13/2027"), ElementsAre(DateOrder::MonthDayYear));
    EXPECT_THAT(orders("3.4.2027"), ElementsAre(DateOrder::DayMonthYear));
    EXPECT_THAT(orders("2027-05-01"), ElementsAre(DateOrder::YearMonthDay));
    EXPECT_THAT(orders("03-04-05"), ElementsAre(DateOrder::DayMonthYear, DateOrder::MonthDayYear,
                                                DateOrder::YearMonthDay));
    EXPECT_THAT(orders("3.4.27"), ElementsAre(DateOrder::DayMonthYear));
    EXPECT_THAT(orders("3 May 2027"), IsEmpty());
}

/// Every day of some years, written with the names of a language, is read again.
TEST(DateText, ReadsEveryDayInEveryLanguage)
{
    for (const char* const tag : {"en", "de", "fr", "es", "it", "pl", "cs", "hr", "ru", "el", "tr",
                                  "fi", "hu", "nl", "sv", "pt", "ro", "uk"}) {
        const look::LocaleNames names = look::NamesOf(look::LanguageOfTag(tag));
        for (std::size_t month = 0; month < 12; ++month) {
            for (const auto name :
                 {names.Month(month), names.ShortMonth(month), names.MonthOfDate(month)}) {
                const std::string number = std::to_string(month + 1);
                const std::string expected =
                    "2028-" + std::string(2 - number.size(), '0') + number + "-09";
                EXPECT_EQ(DateIn("9. " + std::string(name) + " 2028", DateOrder::DayMonthYear, tag),
                          expected)
                    << tag << ' ' << name;
            }
        }
    }
    for (holidays::Date day = std::chrono::sys_days(std::chrono::year(1990) / 1 / 1);
         day < std::chrono::sys_days(std::chrono::year(2050) / 1 / 1);
         day += std::chrono::days(1)) {
        const std::chrono::year_month_day date(day);
        const int year = static_cast<int>(date.year());
        const auto month = static_cast<unsigned>(date.month());
        const auto number = static_cast<unsigned>(date.day());
        char text[32];
        std::snprintf(text, sizeof text, "%u.%u.%d", number, month, year);
        ASSERT_EQ(DateIn(text), sample::TextOf(day));
        std::snprintf(text, sizeof text, "%02u/%02u/%04d", month, number, year);
        ASSERT_EQ(DateIn(text, DateOrder::MonthDayYear), sample::TextOf(day));
        ASSERT_EQ(DateIn(sample::TextOf(day), DateOrder::YearMonthDay), sample::TextOf(day));
    }
}

TEST(DateWords, AreComparedWithoutCapitals)
{
    EXPECT_EQ(FoldWord("MÄRZ."), "märz");
    EXPECT_TRUE(IsFillWord("montag"));
    EXPECT_FALSE(IsFillWord("mai"));
    EXPECT_THAT(MonthsOf("nothing"), IsEmpty());
    EXPECT_EQ(MonthsOf("may").front().language, kEnglishWords);
}

} // namespace
} // namespace orrery::exchange
