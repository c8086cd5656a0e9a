#include "holidays/calendars/month_names.h"

#include <gtest/gtest.h>

namespace orrery::holidays::calendars {
namespace {

TEST(FindMonth, ReadsUsualSpellings)
{
    for (const auto& [name, number] :
         {std::pair{"Muharram", 1}, std::pair{"SAFAR", 2}, std::pair{"Rabi' al-Awwal", 3},
          std::pair{"Rabi I", 3}, std::pair{"Rabi ul-Awwal", 3}, std::pair{"Rabi II", 4},
          std::pair{"Rabi al-Thani", 4}, std::pair{"Jumada al-Ula", 5}, std::pair{"Jumada II", 6},
          std::pair{"Rajab", 7}, std::pair{"Sha'ban", 8}, std::pair{"Ramadan", 9},
          std::pair{"Ramazan", 9}, std::pair{"shawwal", 10}, std::pair{"Dhul Qadah", 11},
          std::pair{"Dhu al-Hijja", 12}, std::pair{"Dhul-Hijjah", 12}}) {
        EXPECT_EQ(FindMonth(Calendar::UmmAlQura, name), MonthNumber{number}) << name;
        EXPECT_EQ(FindMonth(Calendar::IslamicCivil, name), MonthNumber{number}) << name;
    }
    for (const auto& [name, number] :
         {std::pair{"Nisan", 1}, std::pair{"Iyyar", 2}, std::pair{"Sivan", 3},
          std::pair{"Tammuz", 4}, std::pair{"Av", 5}, std::pair{"Elul", 6}, std::pair{"Tishrei", 7},
          std::pair{"Tishri", 7}, std::pair{"Heshvan", 8}, std::pair{"Kislev", 9},
          std::pair{"Tevet", 10}, std::pair{"Sh'vat", 11}, std::pair{"Adar", 12},
          std::pair{"Adar II", 12}})
        EXPECT_EQ(FindMonth(Calendar::Hebrew, name), MonthNumber{number}) << name;
    EXPECT_EQ(FindMonth(Calendar::Hebrew, "Adar I"), (MonthNumber{12, true}));
}

TEST(FindMonth, RefusesOtherNames)
{
    for (const char* name : {"", " ", "Shaw", "Shawwals", "Rabi", "Nisan", "10", "Rabi III"})
        EXPECT_EQ(FindMonth(Calendar::UmmAlQura, name), std::nullopt) << name;
    EXPECT_EQ(FindMonth(Calendar::Chinese, "Shawwal"), std::nullopt);
    EXPECT_EQ(FindMonth(Calendar::Hebrew, "Shawwal"), std::nullopt);
}

TEST(MonthName, IsReadAgain)
{
    for (const Calendar calendar : {Calendar::UmmAlQura, Calendar::Hebrew})
        for (int number = 1; number <= 12; ++number)
            EXPECT_EQ(FindMonth(calendar, MonthName(calendar, {number})), MonthNumber{number});
    EXPECT_EQ(MonthName(Calendar::Hebrew, {12, true}), "Adar I");
    EXPECT_EQ(MonthName(Calendar::UmmAlQura, {13}), "");
    EXPECT_EQ(MonthName(Calendar::Persian, {1}), "");
}

} // namespace
} // namespace orrery::holidays::calendars
