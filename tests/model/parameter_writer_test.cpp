#include "model/parameter_file.h"
#include "parameter_samples.h"
#include "util/error.h"
#include "util/file_replace.h"
#include "util/paths.h"
#include "util/scratch_folder.h"
#include "util/text.h"

#include <gtest/gtest.h>

namespace orrery::model {
namespace {

using namespace samples;
using testing_support::BytesOf;
using testing_support::ScratchFolder;

TEST(WriteParameterFile, WritesEveryLineInOrder)
{
    const ScratchFolder scratch;
    WriteParameterFile(scratch / "a.ini", SomeNames(), FullSets());
    const std::string cells = "ColIntervalOfDay=2\r\n"
                              "RowIntervalOfDay=3\r\n"
                              "OutWeekday=Y\r\n"
                              "FirstCellOfWeekday=Z11\r\n"
                              "WeekdayName=Sun,Mon,Tue,Wed,Thu,Fri,Sat\r\n"
                              "OutMonth=Y\r\n"
                              "FirstCellOfMonth=AA12\r\n"
                              "MonthName=Jan,Feb,Mar,Apr,May,Jun,Jul,Aug,Sep,Oct,Nov,Dec\r\n"
                              "OutYear=Y\r\n"
                              "FirstCellOfYear=IV13\r\n"
                              "OutHoliday=Y\r\n"
                              "FirstCellOfHoliday=D65536\r\n"
                              "MultiHolidays=2\r\n";
    EXPECT_EQ(util::DecodeTextFile(BytesOf(scratch / "a.ini")),
              "[Monthly Calendar]\r\n"
              "Output=N\r\n"
              "SheetName=Month \xC3\xA4\r\n"
              "FirstDayOfWeek=1\r\n"
              "FirstCellOfDay=A10\r\n" +
                  cells +
                  "Holiday1=0704,, Independence Day\r\n"
                  "Holiday2=0005,Saturday,x, y\r\n"
                  "Holiday3=-2,Easter,Good Friday\r\n"
                  "\r\n"
                  "[Yearly Calendar]\r\n"
                  "Output=N\r\n"
                  "SheetName=Year\r\n"
                  "FirstDayOfWeek=1\r\n"
                  "MonthLayout=4\r\n"
                  "ColIntervalOfMonth=9\r\n"
                  "RowIntervalOfMonth=10\r\n"
                  "FirstCellOfDay=A10\r\n" +
                  cells +
                  "Holiday1=1250,Sunday,1\r\n"
                  "Holiday2=1250,Monday,2\r\n"
                  "Holiday3=1250,Tuesday,3\r\n"
                  "Holiday4=1250,Wednesday,4\r\n"
                  "Holiday5=1250,Thursday,5\r\n"
                  "Holiday6=1250,Friday,6\r\n");
}

TEST(WriteParameterFile, RoundTripsOverOtherDefaults)
{
    const ScratchFolder scratch;
    WriteParameterFile(scratch / "a.ini", SomeNames(), FullSets());
    ParameterSets sets = SomeDefaults();
    NameTables names = SomeNames();
    ReadParameterFile(scratch / "a.ini", names, sets);
    ExpectSets(sets, FullSets());
    EXPECT_EQ(names.Weekdays.Count(), 2);
}

TEST(WriteParameterFile, LosesOnlyASundayOverADefaultMonday)
{
    const ScratchFolder scratch;
    ParameterSets sunday = FullSets();
    sunday.Monthly.FirstDayOfWeek = 0;
    WriteParameterFile(scratch / "a.ini", SomeNames(), sunday);
    ParameterSets sets = SomeDefaults();
    sets.Monthly.FirstDayOfWeek = 1;
    NameTables names = SomeNames();
    ReadParameterFile(scratch / "a.ini", names, sets);
    ExpectSets(sets, FullSets());
}

TEST(WriteParameterFile, NumbersAFullList)
{
    ParameterSets sets = FullSets();
    sets.Yearly.Holidays.Clear();
    for (int i = 0; i < 1025; ++i)
        sets.Yearly.Holidays.Append({101, 0, std::to_string(i)});
    const ScratchFolder scratch;
    WriteParameterFile(scratch / "a.ini", SomeNames(), sets);
    EXPECT_TRUE(BytesOf(scratch / "a.ini").ends_with("\r\nHoliday1025=0101,,1024\r\n"));
    ParameterSets back = SomeDefaults();
    NameTables names = SomeNames();
    ReadParameterFile(scratch / "a.ini", names, back);
    ExpectSets(back, sets);
}

TEST(WriteParameterFile, WritesNegativeCodesWithFourDigits)
{
    ParameterSets sets = FullSets();
    sets.Monthly.Holidays.Clear();
    sets.Monthly.Holidays.Append({-5, 0, "a"});
    sets.Monthly.Holidays.Append({-5, 8, "b"});
    sets.Monthly.Holidays.Append({12345, 1, "c"});
    const ScratchFolder scratch;
    WriteParameterFile(scratch / "a.ini", SomeNames(), sets);
    EXPECT_NE(BytesOf(scratch / "a.ini")
                  .find("Holiday1=-0005,,a\r\nHoliday2=-5,Easter,b\r\nHoliday3=12345,Sunday,c\r\n"),
              std::string::npos);
}

TEST(WriteParameterFile, ReplacesTheWholeFile)
{
    const ScratchFolder scratch;
    const auto file = scratch.Write("a.ini", "; own comment\r\n" + std::string(5000, 'x'));
    WriteParameterFile(file, SomeNames(), FullSets());
    EXPECT_TRUE(BytesOf(file).starts_with("[Monthly Calendar]\r\n"));
    EXPECT_EQ(BytesOf(file).find("xxx"), std::string::npos);
}

TEST(WriteParameterFile, KeepsOtherSectionsAfterBoth)
{
    const ScratchFolder scratch;
    const auto plain = scratch / "plain.ini";
    WriteParameterFile(plain, SomeNames(), FullSets());
    const std::string first = "[Weekly Calendar]\nOutput=Y\n; mine\n\n";
    const std::string last = "[monthly calendar]\r\nHoliday1=never\r\n[]\r\nend";
    const auto file = scratch.Write("a.ini", "[Monthly Calendar]\r\nOutput=N\r\n" + first +
                                                 "[Yearly Calendar]\r\nOutput=N\r\n" + last);
    for (int i = 0; i < 3; ++i) {
        WriteParameterFile(file, SomeNames(), FullSets());
        EXPECT_EQ(BytesOf(file), BytesOf(plain) + "\r\n" + first + last);
    }
}

TEST(WriteParameterFile, KeepsUnknownRulesAfterItsOwn)
{
    const ScratchFolder scratch;
    ParameterSets sets = FullSets();
    sets.Monthly.Holidays.Clear();
    sets.Monthly.Holidays.Append({101, 0, "a"});
    sets.Yearly.Holidays = sets.Monthly.Holidays;
    const auto file = scratch.Write("a.ini", "[Monthly Calendar]\r\n"
                                             "Holiday1=0704,,known\r\n"
                                             "  Holiday2 = 0704, LUNAR, newer\r\n"
                                             "[Yearly Calendar]\r\n"
                                             "holidays=?\r\n");
    for (int i = 0; i < 3; ++i) {
        WriteParameterFile(file, SomeNames(), sets);
        const std::string text = BytesOf(file);
        EXPECT_NE(text.find("Holiday1=0101,,a\r\n  Holiday2 = 0704, LUNAR, newer\r\n\r\n[Yearly"),
                  std::string::npos)
            << text;
        EXPECT_TRUE(text.ends_with("Holiday1=0101,,a\r\nholidays=?\r\n")) << text;
        EXPECT_EQ(text.find("known"), std::string::npos);
    }
}

TEST(WriteParameterFile, KeepsWhatIsBehindALineThatEndsTheReading)
{
    const ScratchFolder scratch;
    const std::string unread = "Holiday2=99999,EASTER,typo\r\n"
                               "Holiday3=0303,,mine\r\n"
                               "SheetName=mine, too\r\n"
                               "[Yearly Calendar]\r\n"
                               "Output=N\r\n";
    const auto file = scratch.Write("a.ini", "[Monthly Calendar]\r\n"
                                             "Holiday1=0101,,a\r\n" +
                                                 unread + "[Other]\r\nkey=1\r\n");
    for (int i = 0; i < 3; ++i) {
        NameTables names = SomeNames();
        ParameterSets sets = FullSets();
        const auto reading = ReadParameterFile(file, names, sets);
        ASSERT_EQ(reading.monthlyProblems.size(), 1U);
        EXPECT_EQ(sets.Monthly.Holidays.Count(), 1);
        EXPECT_NE(sets.Monthly.SheetName, "mine, too") << "reading ends where it did";
        YearlyParameters yearly = FullSets().Yearly;
        yearly.Holidays.Clear();
        EXPECT_EQ(sets.Yearly, yearly);
        WriteParameterFile(file, names, sets);
        EXPECT_TRUE(BytesOf(file).ends_with(
            "\r\n\r\n[Other]\r\nkey=1\r\n\r\n[Monthly Calendar]\r\n" + unread))
            << BytesOf(file);
    }
}

TEST(WriteParameterFile, KeepsRulesBeyondAFullList)
{
    const ScratchFolder scratch;
    std::string text = "[Yearly Calendar]\r\n";
    for (int i = 1; i <= 1027; ++i)
        text += "Holiday" + std::to_string(i) + "=0101,," + std::to_string(i) + "\r\n";
    const auto file = scratch.Write("a.ini", text);
    NameTables names = SomeNames();
    ParameterSets sets = FullSets();
    ReadParameterFile(file, names, sets);
    WriteParameterFile(file, names, sets);
    EXPECT_TRUE(BytesOf(file).ends_with(
        "Holiday1025=0101,,1025\r\nHoliday1026=0101,,1026\r\nHoliday1027=0101,,1027\r\n"));
}

TEST(WriteParameterFile, KeepsRefinementsBetweenTheRules)
{
    const ScratchFolder scratch;
    ParameterSets sets = FullSets();
    holidays::HolidayList& list = sets.Monthly.Holidays;
    list.Clear();
    list.AppendExtra("# Weekend: Fri Sat");
    list.AppendExtra(">> if Fri also next workday");
    list.Append({101, holidays::kFixedDay, "New Year"});
    list.AppendExtra("> years 2006-; name de Neujahr");
    list.AppendExtra("1 Shawwal,ISLAMIC,Eid, the feast");
    list.Append({704, holidays::kFixedDay, "July"});
    list.AppendExtra("> days 2");
    WriteParameterFile(scratch / "a.ini", SomeNames(), sets);
    EXPECT_NE(util::DecodeTextFile(BytesOf(scratch / "a.ini"))
                  .find("Holiday1= # Weekend: Fri Sat\r\n"
                        "Holiday2= >> if Fri also next workday\r\n"
                        "Holiday3=0101,,New Year\r\n"
                        "Holiday4= > years 2006-; name de Neujahr\r\n"
                        "Holiday5= 1 Shawwal,ISLAMIC,Eid, the feast\r\n"
                        "Holiday6=0704,,July\r\n"
                        "Holiday7= > days 2\r\n"),
              std::string::npos);
    ParameterSets read;
    NameTables names = SomeNames();
    ReadParameterFile(scratch / "a.ini", names, read);
    EXPECT_EQ(read.Monthly.Holidays, list);
}

TEST(WriteParameterFile, KeepsWhichHolidaysAreShown)
{
    const ScratchFolder scratch;
    ParameterSets sets = FullSets();
    sets.Monthly.ShownHolidays = {
        "BY", {holidays::Category::Public, holidays::Category::Bank}, "de"};
    sets.Yearly.ShownHolidays.region = "SN";
    util::ReplaceFile(scratch / "a.ini", "[Holidays]\r\n\r\nYearlyColour=red\r\n"
                                         "MonthlyKinds=green\r\n[Extras]\r\nx=1\r\n");
    WriteParameterFile(scratch / "a.ini", SomeNames(), sets);
    EXPECT_TRUE(util::DecodeTextFile(BytesOf(scratch / "a.ini"))
                    .ends_with("\r\n"
                               "[Holidays]\r\n"
                               "MonthlyRegion=BY\r\n"
                               "MonthlyKinds=public bank\r\n"
                               "MonthlyLanguage=de\r\n"
                               "YearlyRegion=SN\r\n"
                               "YearlyColour=red\r\n"
                               "MonthlyKinds=green\r\n"
                               "\r\n"
                               "[Extras]\r\nx=1\r\n"));
    ParameterSets read;
    NameTables names = SomeNames();
    ReadParameterFile(scratch / "a.ini", names, read);
    EXPECT_EQ(read.Monthly.ShownHolidays, sets.Monthly.ShownHolidays);
    EXPECT_EQ(read.Yearly.ShownHolidays, sets.Yearly.ShownHolidays);
}

TEST(WriteParameterFile, SaysWhyItFailed)
{
    const ScratchFolder scratch;
    try {
        WriteParameterFile(scratch / "missing/a.ini", SomeNames(), FullSets());
        ADD_FAILURE() << "there is no such folder";
    }
    catch (const util::Error& error) {
        EXPECT_TRUE(error.Kind() == util::ErrorKind::FileNotWritable);
        EXPECT_NE(error.Cause(), "");
    }
    const auto file = scratch.Write("a.ini", "old");
    ParameterSets sets = FullSets();
    sets.Yearly.MonthName = 257;
    EXPECT_THROW(WriteParameterFile(file, SomeNames(), sets), util::OutOfRangeError)
        << "no such list";
    EXPECT_EQ(BytesOf(file), "old");
    EXPECT_EQ(scratch.Entries(), 1);
}

TEST(ParameterFilePath, IsBesideTheTemplate)
{
    EXPECT_EQ(ParameterFilePath(R"(C:\t\)", "Year.xls"), R"(C:\t\Year.ini)");
    EXPECT_EQ(ParameterFilePath(R"(C:\t\)", R"(D:\other\My.Cal.xlsx)"), R"(C:\t\My.Cal.ini)");
    EXPECT_EQ(ParameterFilePath(R"(C:\t\)", "Year"), R"(C:\t\Year.ini)");
    EXPECT_EQ(ParameterFilePath("t", "Year.xls"), std::string("t") + util::kSeparator + "Year.ini");
}

} // namespace
} // namespace orrery::model
