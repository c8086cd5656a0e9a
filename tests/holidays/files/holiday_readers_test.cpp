#include "holidays/files/holiday_readers.h"
#include "util/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orrery::holidays {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::ScratchFolder;

std::vector<std::string> NamesOf(const HolidayList& list)
{
    std::vector<std::string> names;
    for (const HolidayDef& rule : list)
        names.push_back(rule.Name);
    return names;
}

/// The names of the rules that are read from a holiday file with this content.
std::vector<std::string> ReadRuleNames(std::string_view bytes)
{
    const ScratchFolder scratch;
    HolidayList list;
    list.Append({101, 0, "dropped"});
    ReadHolidayFile(scratch.Write("holiday.txt", bytes), list);
    return NamesOf(list);
}

std::vector<std::string> ReadSectionNames(CalendarKind calendar, std::string_view bytes)
{
    const ScratchFolder scratch;
    HolidayList list;
    list.Append({101, 0, "dropped"});
    ReadTemplateHolidays(calendar, scratch.Write("Desk.ini", bytes), list);
    return NamesOf(list);
}

std::string ManyRules(int count, std::string_view before)
{
    std::string text;
    for (int i = 1; i <= count; ++i)
        text += std::string(before) + "0101,," + std::to_string(i) + "\n";
    return text;
}

TEST(ReadHolidayFile, KeepsFileOrder)
{
    EXPECT_THAT(ReadRuleNames("1225,DAY,b\r\n  0101,DAY, a  \r\n\r\n/* comment */\r\n,EASTER,c"),
                ElementsAre("b", " a", "c"));
}

TEST(ReadHolidayFile, SkipsInvalidLines)
{
    EXPECT_THAT(
        ReadRuleNames("1232, DAY, x\n0229, DAY, x\n1300, MON, x\n2, HOLIDAY, x\n0101\n0101,,y"),
        ElementsAre("y"));
}

TEST(ReadHolidayFile, LeavesNoTraceOfAFailedLine)
{
    const ScratchFolder scratch;
    HolidayList list;
    ReadHolidayFile(scratch.Write("h", "1232,DAY,bad\n0505,MON,good\n"), list);
    ASSERT_EQ(list.Count(), 1);
    EXPECT_EQ(list[0], (HolidayDef{505, 2, "good"}));
}

TEST(ReadHolidayFile, StopsAtARuleThatThrows)
{
    EXPECT_THAT(ReadRuleNames("0101,,a\n0001,DAY,x\n0102,,b"), ElementsAre("a"));
    EXPECT_THAT(ReadRuleNames("0101,,a\n40000,EASTER,x\n0102,,b"), ElementsAre("a"));
    EXPECT_THAT(ReadRuleNames("0101,,a\n99999999999,DAY,x\n0102,,b"), ElementsAre("a"));
}

TEST(ReadHolidayFile, IsEmptyWithoutAFile)
{
    const ScratchFolder scratch;
    HolidayList list;
    list.Append({101, 0, "dropped"});
    ReadHolidayFile(scratch / "missing.txt", list);
    EXPECT_EQ(list.Count(), 0);
    list.Append({101, 0, "dropped"});
    ReadHolidayFile(scratch.Path(), list);
    EXPECT_EQ(list.Count(), 0) << "a folder";
}

TEST(ReadHolidayFile, StopsWhenTheListIsFull)
{
    EXPECT_EQ(ReadRuleNames(ManyRules(1025, "")).size(), 1025U);
    const auto names = ReadRuleNames(ManyRules(1030, ""));
    ASSERT_EQ(names.size(), 1025U);
    EXPECT_EQ(names.back(), "1025");
    // The first line too many ends the reading, even if its rule would throw.
    EXPECT_EQ(ReadRuleNames(ManyRules(1025, "") + "0001,DAY,x\n").size(), 1025U);
}

TEST(ReadHolidayFile, ReadsBothEncodings)
{
    EXPECT_THAT(ReadRuleNames("0101,,Neuj\xC3\xA4hr"), ElementsAre("Neuj\xC3\xA4hr"));
    EXPECT_THAT(ReadRuleNames("0101,,Neuj\xE4hr"), ElementsAre("Neuj\xC3\xA4hr"));
    EXPECT_THAT(ReadRuleNames("\xEF\xBB\xBF"
                              "0101,,a"),
                ElementsAre("a"));
}

constexpr std::string_view kParameterFile = "Holiday1=0101,,outside\r\n"
                                            "[Monthly Calendar]\r\n"
                                            "Output=Y\r\n"
                                            "OutHoliday=Y\r\n"
                                            "Holiday1=0101,DAY,one\r\n"
                                            " HOLIDAY2 = 0102,DAY, two \r\n"
                                            "holiday_3=0103,DAY,three\r\n"
                                            "Holiday=0104,DAY,four\r\n"
                                            "Holiday5=\r\n"
                                            "Holiday6 0106,DAY,six\r\n"
                                            "Holiday7==0107,DAY,seven\r\n"
                                            "Holiday 8=0108,DAY,eight\r\n"
                                            "Holiday9=1399,DAY,nine\r\n"
                                            "\r\n"
                                            "[Yearly Calendar]\r\n"
                                            "Holiday1=,EASTER,yearly\r\n"
                                            "[Monthly Calendar]\r\n"
                                            "Holiday10=0110,DAY,ten\r\n";

TEST(ReadTemplateHolidays, ReadsOnlyItsSection)
{
    EXPECT_THAT(ReadSectionNames(CalendarKind::Monthly, kParameterFile),
                ElementsAre("one", " two", "three", "four"));
    EXPECT_THAT(ReadSectionNames(CalendarKind::Yearly, kParameterFile), ElementsAre("yearly"));
}

TEST(ReadTemplateHolidays, RequiresItsExactHeader)
{
    EXPECT_THAT(ReadSectionNames(CalendarKind::Monthly, "[MONTHLY CALENDAR]\nHoliday1=0101,,a\n"),
                IsEmpty());
    EXPECT_THAT(
        ReadSectionNames(CalendarKind::Monthly, "  [Monthly Calendar]\t\nHoliday1=0101,,a\n"),
        ElementsAre("a"));
    EXPECT_THAT(ReadSectionNames(CalendarKind::Yearly, "[Monthly Calendar]\nHoliday1=0101,,a\n"),
                IsEmpty());
}

TEST(ReadTemplateHolidays, StopsAtAnyOtherHeader)
{
    EXPECT_THAT(ReadSectionNames(CalendarKind::Monthly,
                                 "[Monthly Calendar]\nHoliday1=0101,,a\n [x\nHoliday2=0102,,b\n"),
                ElementsAre("a"));
}

TEST(ReadTemplateHolidays, StopsAtARuleThatThrows)
{
    EXPECT_THAT(
        ReadSectionNames(
            CalendarKind::Monthly,
            "[Monthly Calendar]\nHoliday1=0101,,a\nHoliday2=0001,DAY,x\nHoliday3=0102,,b\n"),
        ElementsAre("a"));
}

TEST(ReadTemplateHolidays, StopsWhenTheListIsFull)
{
    const std::string text = "[Yearly Calendar]\n" + ManyRules(1027, "Holiday=");
    EXPECT_EQ(ReadSectionNames(CalendarKind::Yearly, text).size(), 1025U);
}

TEST(ReadTemplateHolidays, IsEmptyWithoutAFile)
{
    const ScratchFolder scratch;
    HolidayList list;
    list.Append({101, 0, "dropped"});
    ReadTemplateHolidays(CalendarKind::Monthly, scratch / "missing.ini", list);
    EXPECT_EQ(list.Count(), 0);
}

/// "3 The number ..." for each problem.
std::vector<std::string> TextsOf(const std::vector<LineProblem>& problems)
{
    std::vector<std::string> texts;
    for (const LineProblem& problem : problems)
        texts.push_back(DescribeProblem(problem));
    return texts;
}

TEST(ReadHolidayFile, TellsWhichLinesAreMeantAsRulesButAreNotRead)
{
    const ScratchFolder scratch;
    HolidayList list;
    const auto problems =
        ReadHolidayFile(scratch.Write("h", "# Left out: Monday, Tuesday and so on\n"
                                           "\n"
                                           "0101, DAY, a\n"
                                           "0102, b\n"
                                           "2027: nothing new\n"
                                           "0704, off, switched off\n"
                                           "1 May, DAY, c\n"
                                           "May 1, Monday, d\n"
                                           "Some words, and more, as a comment\n"
                                           "0505, MONDAI, e\r\n"
                                           "99999, EASTER, f\n"
                                           "1399, DAY, not reached\n"),
                        list);
    EXPECT_EQ(list.Count(), 1);
    EXPECT_THAT(
        TextsOf(problems),
        ElementsAre(
            "Line 4: \"0102, b\" is not a holiday. Write the date, the kind and the name "
            "with commas between them, such as 1225,DAY,Christmas Day.",
            "Line 7: The date \"1 May\" is not a number. Write the month and the day, such "
            "as 1225.",
            "Line 8: The date \"May 1\" is not a number. Write the month and the day, such "
            "as 1225.",
            "Line 10: The kind \"MONDAI\" is not known. Write DAY, a weekday or EASTER.",
            "Line 11: The number \"99999\" is too large. Nothing after this line is read."));
}

TEST(ReadHolidayFile, ShowsTheBeginningOfALongLineThatIsNotRead)
{
    const ScratchFolder scratch;
    HolidayList list;
    const auto problems =
        ReadHolidayFile(scratch.Write("h", "1," + std::string(1000000, 'x') + "\n"), list);
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_LT(DescribeProblem(problems[0]).size(), 300U);
}

TEST(ReadHolidayFile, TellsOnceWhereTheListIsFull)
{
    const ScratchFolder scratch;
    HolidayList list;
    EXPECT_TRUE(
        ReadHolidayFile(scratch.Write("h", ManyRules(1025, "") + "\n# end\n"), list).empty());
    const auto problems =
        ReadHolidayFile(scratch.Write("h", ManyRules(1027, "") + "0001,DAY,x\n"), list);
    EXPECT_THAT(TextsOf(problems), ElementsAre("Line 1026: There are more than 1,025 holidays. "
                                               "Those from this line on are not read."));
}

TEST(ReadTemplateHolidays, TellsWhichRulesOfTheSectionAreNotRead)
{
    const ScratchFolder scratch;
    HolidayList list;
    const auto file = scratch.Write("a.ini", kParameterFile);
    EXPECT_THAT(TextsOf(ReadTemplateHolidays(CalendarKind::Monthly, file, list)),
                ElementsAre("Line 13: The date \"1399\" does not exist. Write the month and the "
                            "day, such as 1225."));
    EXPECT_THAT(TextsOf(ReadTemplateHolidays(CalendarKind::Yearly, file, list)), IsEmpty());
}

} // namespace
} // namespace orrery::holidays
