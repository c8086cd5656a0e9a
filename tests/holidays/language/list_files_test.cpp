#include "holidays/language/list_files.h"

#include "holidays/files/rule_reader.h"
#include "holidays/language/next_days.h"
#include "rules_test.h"

#include <gmock/gmock.h>

namespace orrery::holidays {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::Text;

HolidayList ListOfLines(std::string_view text)
{
    HolidayList list;
    RuleReader reader(list);
    std::size_t line = 0;
    for (const std::string_view rule : util::SplitLines(text)) {
        if (!rule.empty()) {
            EXPECT_TRUE(reader.Read(++line, rule)) << rule;
        }
    }
    return list;
}

/// The lines of a list, as a parameter file would have them.
std::vector<std::string> LinesOf(const HolidayList& list)
{
    std::vector<std::string> lines;
    for (const ListEntry& entry : EntriesOf(list)) {
        const auto* const rule = std::get_if<HolidayDef>(&entry);
        lines.push_back(rule != nullptr ? FormatDateCode(*rule) + ',' + rule->Name
                                        : std::get<std::string>(entry));
    }
    return lines;
}

std::vector<std::string> DaysOfList(const HolidayList& list, int year,
                                    const HolidayChoice& choice = {})
{
    std::vector<std::string> days;
    for (const Holiday& day : HolidaysOf(RulesOf(list), year, choice))
        days.push_back(Text(day.date) + ' ' + day.name);
    return days;
}

HolidayList CountryAndClub()
{
    HolidayList list =
        ListOfLines("# Weekend: Fri Sat\n# Observed: {name} instead\n# Regions: N North\n"
                    ">> if Fri also next workday\n0101,DAY,New Year\n"
                    "0704,DAY,National Day\n> only in N\n");
    EXPECT_TRUE(
        PutFurtherFile(list, "Club", ListOfLines("0102,DAY,Party\n> born 1984\n0101,DAY,Start\n")));
    return list;
}

TEST(ListFiles, WhatOneFileSaysDoesNotHoldForAnother)
{
    // 1 January 2027 is a Friday. The party on Saturday is not moved, and takes no workday.
    EXPECT_THAT(DaysOfList(CountryAndClub(), 2027),
                ElementsAre("2027-01-01 New Year", "2027-01-01 Start", "2027-01-02 Party (43)",
                            "2027-01-03 New Year instead"));
}

TEST(ListFiles, ARegionOfOneFileLeavesTheOtherAsItIs)
{
    HolidayChoice north;
    north.region = "N";
    EXPECT_THAT(DaysOfList(CountryAndClub(), 2028, north),
                ElementsAre("2028-01-01 New Year", "2028-01-01 Start", "2028-01-02 Party (44)",
                            "2028-07-04 National Day"));
}

TEST(ListFiles, AFurtherFileIsALineOfTheList)
{
    const HolidayList list = CountryAndClub();
    EXPECT_THAT(FurtherFilesOf(list), ElementsAre("Club"));
    EXPECT_THAT(LinesOf(list),
                ElementsAre("# Weekend: Fri Sat", "# Observed: {name} instead",
                            "# Regions: N North", ">> if Fri also next workday", "0101,New Year",
                            "0704,National Day", "> only in N", "# Further file: Club",
                            "0102,Party", "> born 1984", "0101,Start"));
    EXPECT_THAT(LinesOf(FurtherFile(list, "Club")),
                ElementsAre("0102,Party", "> born 1984", "0101,Start"));
    EXPECT_THAT(LinesOf(FurtherFile(list, "Choir")), IsEmpty());
}

TEST(ListFiles, RulesOfAllFilesAreCountedThrough)
{
    const RuleSet rules = RulesOf(CountryAndClub());
    const auto days = HolidaysOf(rules, 2027, {});
    ASSERT_EQ(days.size(), 4U);
    EXPECT_EQ(RuleAt(rules, days[1].rule).name, "Start");
    EXPECT_EQ(RuleAt(rules, days[1].rule).line, 11U);
    EXPECT_EQ(RuleAt(rules, days[3].rule).name, "New Year");
    const auto next = NextDaysOf(rules, 2027, {});
    ASSERT_EQ(next.size(), 4U);
    EXPECT_EQ(next[1].state, NextDays::State::OtherRegion);
    EXPECT_EQ(Text(next[2].first), "2027-01-02");
}

TEST(ListFiles, AFileIsReplacedInItsPlaceAndAnEmptyOneRemoved)
{
    HolidayList list = ListOfLines("0101,DAY,New Year\n");
    ASSERT_TRUE(PutFurtherFile(list, "Club", ListOfLines("0102,DAY,Party\n")));
    ASSERT_TRUE(PutFurtherFile(list, "Choir", ListOfLines("0103,DAY,Concert\n")));
    ASSERT_TRUE(PutFurtherFile(list, "Club", ListOfLines("0104,DAY,Match\n")));
    ASSERT_TRUE(PutFirstFile(list, ListOfLines("1225,DAY,Christmas\n")));
    EXPECT_THAT(LinesOf(list), ElementsAre("1225,Christmas", "# Further file: Club", "0104,Match",
                                           "# Further file: Choir", "0103,Concert"));
    ASSERT_TRUE(PutFurtherFile(list, "Club", HolidayList()));
    ASSERT_TRUE(PutFurtherFile(list, "Nobody", HolidayList()));
    EXPECT_THAT(LinesOf(list),
                ElementsAre("1225,Christmas", "# Further file: Choir", "0103,Concert"));
}

TEST(ListFiles, AListWithoutRoomStaysAsItIs)
{
    HolidayList full;
    while (!full.IsFull())
        full.Append({101, kFixedDay, "x"});
    const HolidayList before = full;
    EXPECT_FALSE(PutFurtherFile(full, "Club", ListOfLines("0102,DAY,Party\n")));
    EXPECT_EQ(full, before);
    HolidayList club;
    ASSERT_TRUE(PutFurtherFile(club, "Club", ListOfLines("0102,DAY,Party\n")));
    EXPECT_FALSE(PutFirstFile(club, before));
    EXPECT_THAT(LinesOf(club), ElementsAre("# Further file: Club", "0102,Party"));
}

TEST(ListFiles, ARuleGoesWithItsRefinementsAndAFileWithItsLastRule)
{
    HolidayList list = CountryAndClub();
    ASSERT_TRUE(ReplaceRule(list, 6, {}));
    ASSERT_TRUE(ReplaceRule(list, 7, {}));
    EXPECT_THAT(LinesOf(list), ElementsAre("# Weekend: Fri Sat", "# Observed: {name} instead",
                                           "# Regions: N North", ">> if Fri also next workday",
                                           "0101,New Year", "# Further file: Club", "0101,Start"));
    ASSERT_TRUE(ReplaceRule(list, 7, {}));
    EXPECT_THAT(FurtherFilesOf(list), IsEmpty());
    ASSERT_TRUE(ReplaceRule(list, 5, {}));
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.Extras().size(), 4U) << "what is said of the file stays";
}

TEST(ListFiles, ARuleIsReplacedWithItsRefinements)
{
    HolidayList list = CountryAndClub();
    ASSERT_TRUE(ReplaceRule(list, 9, {HolidayDef{103, 0, "Feast"}, "> days 2"}));
    EXPECT_THAT(LinesOf(FurtherFile(list, "Club")),
                ElementsAre("0103,Feast", "> days 2", "0101,Start"));
}

} // namespace
} // namespace orrery::holidays
