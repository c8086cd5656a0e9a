#include "app/settings.h"

#include "util/file_replace.h"
#include "util/paths.h"
#include "util/scratch_folder_test.h"

#include <functional>

namespace orrery::app {
namespace {

namespace fs = std::filesystem;
using model::CellPosition;

class SettingsTest : public testing_support::ScratchFolderTest {
protected:
    Locations Here() const { return {At("orrery.ini"), At(""), At("tips.txt")}; }
    Settings Load(const std::string& text, const FolderOverrides& overrides = {})
    {
        Write("orrery.ini", text);
        return LoadSettings(Here(), overrides);
    }
};

// ---- folders

TEST_F(SettingsTest, WithoutASettingsFileEverythingHasItsDefault)
{
    const Settings settings = LoadSettings(Here());
    EXPECT_EQ(settings.TemplatePath, At("template/"));
    EXPECT_EQ(settings.OutputPath, At("output/"));
    EXPECT_EQ(settings.HolidayFilePath, At("holiday/"));
    EXPECT_TRUE(settings.ShowTips);
    EXPECT_EQ(settings.Engine, "auto");
    EXPECT_FALSE(settings.Pdf);
    EXPECT_TRUE(fs::is_directory(At("template")));
    EXPECT_TRUE(fs::is_directory(At("holiday")));
    EXPECT_FALSE(fs::exists(At("output"))) << "made only when a workbook is generated";
    EXPECT_FALSE(fs::exists(At("orrery.ini")));
}

TEST_F(SettingsTest, ConfiguredFoldersAreTrimmedAndEndInASeparator)
{
    const Settings settings = Load("[Environment]\nTemplatePath =  " + At("Cal") +
                                   "  \nOutputPath=" + At("Out/") + "\nHolidayFilePath=\n");
    EXPECT_EQ(settings.TemplatePath, At("Cal/"));
    EXPECT_EQ(settings.OutputPath, At("Out/"));
    EXPECT_EQ(settings.HolidayFilePath, At("holiday/"));
    EXPECT_TRUE(fs::is_directory(At("Cal")));
    EXPECT_FALSE(fs::exists(At("template")));
}

TEST_F(SettingsTest, MissingFoldersAreCreatedWithTheirParents)
{
    Load("[Environment]\nTemplatePath=" + At("a/b/c") + "\n");
    EXPECT_TRUE(fs::is_directory(At("a/b/c")));
}

TEST_F(SettingsTest, AFolderThatCannotBeCreatedIsIgnored)
{
    Write("taken", "a file");
    EXPECT_EQ(Load("[Environment]\nTemplatePath=" + At("taken") + "\n").TemplatePath, At("taken/"));
}

TEST_F(SettingsTest, OverriddenFoldersAreUsedAndNotCreated)
{
    FolderOverrides overrides;
    overrides.templateFolder = At("t");
    overrides.outputFolder = At("o/");
    overrides.holidayFolder = At("h");
    const Settings settings = Load("[Environment]\nTemplatePath=" + At("x") + "\n", overrides);
    EXPECT_EQ(settings.TemplatePath, At("t/"));
    EXPECT_EQ(settings.OutputPath, At("o/"));
    EXPECT_EQ(settings.HolidayFilePath, At("h/"));
    for (const char* name : {"t", "h", "x", "holiday"})
        EXPECT_FALSE(fs::exists(At(name))) << name;
}

// ---- simple values

struct TipsCase {
    const char* name;
    const char* line;
    bool expected;
};

class ShowTipsTest : public SettingsTest, public testing::WithParamInterface<TipsCase> {};

TEST_P(ShowTipsTest, IsOffOnlyForNo)
{
    EXPECT_EQ(Load(std::string("[Environment]\n") + GetParam().line).ShowTips, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Values, ShowTipsTest,
    testing::Values(TipsCase{"Missing", "", true}, TipsCase{"Empty", "ShowTips=", true},
                    TipsCase{"No", "ShowTips=N", false}, TipsCase{"SmallNo", "ShowTips= n ", false},
                    TipsCase{"Word", "ShowTips=No", true}, TipsCase{"Yes", "showtips=Y", true}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(SettingsTest, TheEngineIsRead)
{
    EXPECT_EQ(Load("[environment]\nengine = builtin \n").Engine, "builtin");
}

class PdfSettingTest : public SettingsTest, public testing::WithParamInterface<TipsCase> {};

TEST_P(PdfSettingTest, IsOnOnlyForYes)
{
    EXPECT_EQ(Load(std::string("[Environment]\n") + GetParam().line).Pdf, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Values, PdfSettingTest,
    testing::Values(TipsCase{"Missing", "", false}, TipsCase{"Empty", "Pdf=", false},
                    TipsCase{"Yes", "Pdf=Y", true}, TipsCase{"SmallYes", "pdf= y ", true},
                    TipsCase{"Word", "Pdf=Yes", false}, TipsCase{"No", "Pdf=N", false}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(SettingsTest, ThePdfChoiceIsSavedAmongTheOthers)
{
    Write("orrery.ini", "; mine\n[Environment]\nEngine=builtin\n[Windows]\n");
    EXPECT_TRUE(SavePdfSetting(Here(), true));
    std::string text = util::ReadFile(At("orrery.ini")).value();
    std::erase(text, '\r'); // written on Windows
    EXPECT_EQ(text, "; mine\n[Environment]\nEngine=builtin\nPdf=Y\n[Windows]\n");
    EXPECT_TRUE(SavePdfSetting(Here(), false));
    EXPECT_FALSE(LoadSettings(Here()).Pdf);
    EXPECT_EQ(LoadSettings(Here()).Engine, "builtin");
}

struct FirstYearRow {
    int year;
    int month;
    int expected;
};

TEST(InitialYearTest, IsNextYearFromJulyOn)
{
    for (const FirstYearRow& row :
         {FirstYearRow{2026, 1, 2026}, {2026, 6, 2026}, {2026, 7, 2027}, {2026, 12, 2027}}) {
        EXPECT_EQ(
            InitialYear(static_cast<std::int16_t>(row.year), static_cast<std::int16_t>(row.month)),
            row.expected)
            << row.month;
    }
}

// ---- name lists

constexpr const char* kGerman = "Januar, Februar ,M\xC3\xA4rz,April,Mai,Juni,Juli,August,September,"
                                "Oktober,November,Dezember";
constexpr const char* kShort = "1,2,3,4,5,6,7,8,9,10,11,12,thirteenth";

TEST_F(SettingsTest, EnglishNamesAreTheDefault)
{
    const Settings settings = LoadSettings(Here());
    ASSERT_EQ(settings.names.Months.Count(), 1);
    ASSERT_EQ(settings.names.Weekdays.Count(), 1);
    EXPECT_EQ(settings.names.Months.At(0).front(), "January");
    EXPECT_EQ(settings.names.Months.At(0).back(), "December");
    EXPECT_EQ(settings.names.Weekdays.At(0).front(), "Sunday");
    EXPECT_EQ(settings.names.Weekdays.At(0).back(), "Saturday");
}

TEST_F(SettingsTest, ListsAreCountedTrimmedAndTruncated)
{
    const Settings settings = Load(std::string("[MonthName]\nCount=2\n1Name=") + kGerman +
                                   "\n2Name=" + kShort + "\n3Name=" + kShort + "\n");
    EXPECT_EQ(settings.names.Months.Count(), 2);
    EXPECT_EQ(settings.names.Months.At(0)[1], "Februar");
    EXPECT_EQ(settings.names.Months.At(0)[2], "M\xC3\xA4rz");
    EXPECT_EQ(settings.names.Months.At(1).back(), "12");
    EXPECT_EQ(settings.names.Weekdays.Count(), 1);
}

TEST_F(SettingsTest, AListCanHaveATitle)
{
    const Settings settings = Load(std::string("[MonthName]\nCount=2\n1Language=Deutsch\n1Name=") +
                                   kGerman + "\n2Name=" + kShort + "\n");
    EXPECT_EQ(settings.names.Months.Title(0), "Deutsch");
    EXPECT_EQ(settings.names.Months.Title(1), "");
}

TEST_F(SettingsTest, AShortListIsSkippedWithoutMovingTheLaterOnes)
{
    const Settings settings = Load("[WeekdayName]\nCount=3\n1Name=a,b,c,d,e,f\n"
                                   "2Name=So,Mo,Di,Mi,Do,Fr,Sa\n3Name=\n");
    EXPECT_EQ(settings.names.Weekdays.Count(), 1);
    EXPECT_EQ(settings.names.Weekdays.At(0).front(), "");
    EXPECT_EQ(settings.names.Weekdays.At(1).front(), "So");
}

TEST_F(SettingsTest, FiveListsAreReadWithoutACount)
{
    std::string text = "[MonthName]\n";
    for (int i = 1; i <= 7; ++i)
        text += std::to_string(i) + "Name=" + kShort + "\n";
    EXPECT_EQ(Load(text).names.Months.Count(), 5);
}

struct CountCase {
    const char* name;
    const char* count;
    int expected;
};

class ListCountTest : public SettingsTest, public testing::WithParamInterface<CountCase> {};

TEST_P(ListCountTest, LimitsTheLists)
{
    std::string text = std::string("[MonthName]\nCount=") + GetParam().count + '\n';
    for (int i = 1; i <= 150; ++i)
        text += std::to_string(i) + "Name=" + kShort + "\n";
    const Settings settings = Load(text);
    EXPECT_EQ(settings.names.Months.Count(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Counts, ListCountTest,
                         testing::Values(CountCase{"LimitedToAHundred", "150", 100},
                                         CountCase{"BeyondSixteenBits", "40000", 100},
                                         CountCase{"Hundred", "100", 100},
                                         CountCase{"Three", "3", 3},
                                         CountCase{"ZeroLeavesTheEnglishOnes", "0", 1},
                                         CountCase{"NegativeToo", "-2", 1},
                                         CountCase{"NoNumberMeansTheDefault", "many", 5}),
                         [](const auto& each) { return std::string(each.param.name); });

// ---- default sets

TEST_F(SettingsTest, MonthlyDefaultsOfAnEmptyFile)
{
    const auto set = LoadSettings(Here()).defaults.Monthly;
    model::MonthlyParameters expected;
    expected.Output = true;
    expected.SheetName = "Sheet2";
    expected.FirstCellOfDay = {5, 2};
    expected.ColIntervalOfDay = 1;
    expected.RowIntervalOfDay = 5;
    expected.FirstCellOfWeekday = {4, 2};
    expected.FirstCellOfMonth = {3, 2};
    expected.FirstCellOfYear = {1, 2};
    expected.FirstCellOfHoliday = {6, 2};
    EXPECT_EQ(set, expected);
}

TEST_F(SettingsTest, YearlyDefaultsOfAnEmptyFile)
{
    const auto set = LoadSettings(Here()).defaults.Yearly;
    model::YearlyParameters expected;
    expected.Output = false;
    expected.SheetName = "Sheet1";
    expected.FirstCellOfDay = {5, 2};
    expected.ColIntervalOfDay = 1;
    expected.RowIntervalOfDay = 1;
    expected.FirstCellOfWeekday = {4, 2};
    expected.FirstCellOfMonth = {3, 2};
    expected.FirstCellOfYear = {1, 2};
    expected.FirstCellOfHoliday = {6, 2};
    expected.MonthLayout = 3;
    expected.ColIntervalOfMonth = 8;
    expected.RowIntervalOfMonth = 9;
    EXPECT_EQ(set, expected);
}

/// A line of a section and the resulting value in the set of that section.
struct DefaultCase {
    const char* name;
    const char* lines;
    std::function<long(const model::YearlyParameters&)> field;
    long monthly; ///< expected in each calendar
    long yearly;
};

class DefaultsTest : public SettingsTest, public testing::WithParamInterface<DefaultCase> {};

TEST_P(DefaultsTest, ReadTheKeyOfEitherCalendar)
{
    const std::string lines = std::string("\n") + GetParam().lines + '\n';
    const auto defaults = Load("[Monthly Calendar]" + lines + "[YEARLY CALENDAR]" + lines).defaults;
    model::YearlyParameters monthly;
    static_cast<model::CalendarParameters&>(monthly) = defaults.Monthly;
    EXPECT_EQ(GetParam().field(monthly), GetParam().monthly) << "monthly";
    EXPECT_EQ(GetParam().field(defaults.Yearly), GetParam().yearly) << "yearly";
}

/// Row times a thousand plus column.
long Code(CellPosition cell)
{
    return cell.row * 1000L + cell.column;
}

INSTANTIATE_TEST_SUITE_P(
    Keys, DefaultsTest,
    testing::Values(
        DefaultCase{"OutputYes", "Output=y", [](const auto& s) { return s.Output; }, 1, 1},
        DefaultCase{"OutputNo", "Output= n ", [](const auto& s) { return s.Output; }, 0, 0},
        DefaultCase{"OutputOther", "Output=maybe", [](const auto& s) { return s.Output; }, 1, 0},
        DefaultCase{"OutputEmpty", "Output=", [](const auto& s) { return s.Output; }, 1, 0},
        DefaultCase{"SheetNameTrimmed", "SheetName=  A b  ",
                    [](const auto& s) { return s.SheetName == "A b"; }, 1, 1},
        DefaultCase{"SheetNameEmpty",
                    "SheetName=", [](const auto& s) { return s.SheetName.empty(); }, 1, 1},
        DefaultCase{"Monday", "FirstDayOfWeek=mOnDay",
                    [](const auto& s) { return s.FirstDayOfWeek; }, 1, 1},
        DefaultCase{"MondayAsOne", "FirstDayOfWeek=1",
                    [](const auto& s) { return s.FirstDayOfWeek; }, 1, 1},
        DefaultCase{"Sunday", "FirstDayOfWeek=Sunday",
                    [](const auto& s) { return s.FirstDayOfWeek; }, 0, 0},
        DefaultCase{"SundayAsZero", "FirstDayOfWeek=0",
                    [](const auto& s) { return s.FirstDayOfWeek; }, 0, 0},
        DefaultCase{"NoSuchFirstDay", "FirstDayOfWeek=2",
                    [](const auto& s) { return s.FirstDayOfWeek; }, 0, 0},
        DefaultCase{"EmptyFirstDay",
                    "FirstDayOfWeek=", [](const auto& s) { return s.FirstDayOfWeek; }, 0, 0},
        DefaultCase{"ColIntervalLargest", "ColIntervalOfDay=36",
                    [](const auto& s) { return s.ColIntervalOfDay; }, 36, 36},
        DefaultCase{"ColIntervalTooLarge", "ColIntervalOfDay=37",
                    [](const auto& s) { return s.ColIntervalOfDay; }, 1, 1},
        DefaultCase{"ColIntervalTooLargeBeforeRounding", "ColIntervalOfDay=36.2",
                    [](const auto& s) { return s.ColIntervalOfDay; }, 1, 1},
        DefaultCase{"ColIntervalHalfToEven", "ColIntervalOfDay=2.5",
                    [](const auto& s) { return s.ColIntervalOfDay; }, 2, 2},
        DefaultCase{"ColIntervalZero", "ColIntervalOfDay=0",
                    [](const auto& s) { return s.ColIntervalOfDay; }, 1, 1},
        DefaultCase{"RowIntervalLargest", "RowIntervalOfDay=10000",
                    [](const auto& s) { return s.RowIntervalOfDay; }, 10000, 10000},
        DefaultCase{"RowIntervalTooLarge", "RowIntervalOfDay=10001",
                    [](const auto& s) { return s.RowIntervalOfDay; }, 5, 1},
        DefaultCase{"RowIntervalWord", "RowIntervalOfDay=six",
                    [](const auto& s) { return s.RowIntervalOfDay; }, 5, 1},
        DefaultCase{"FirstDayCell", "FirstCellOfDay= c10 ",
                    [](const auto& s) { return Code(s.FirstCellOfDay); }, 10003, 10003},
        DefaultCase{"FirstDayCellInvalid", "FirstCellOfDay=C",
                    [](const auto& s) { return Code(s.FirstCellOfDay); }, 5002, 5002},
        DefaultCase{"FirstDayCellOutside", "FirstCellOfDay=IW1",
                    [](const auto& s) { return Code(s.FirstCellOfDay); }, 5002, 5002},
        DefaultCase{"FirstDayCellRowOverflows", "FirstCellOfDay=A99999999999",
                    [](const auto& s) { return Code(s.FirstCellOfDay); }, 5002, 5002},
        DefaultCase{"WeekdayCellFollowsTheFirstDay", "FirstCellOfDay=D20",
                    [](const auto& s) { return Code(s.FirstCellOfWeekday); }, 19004, 4002},
        DefaultCase{"WeekdayCellInvalid", "FirstCellOfDay=D20\nFirstCellOfWeekday=?",
                    [](const auto& s) { return Code(s.FirstCellOfWeekday); }, 19004, 19004},
        DefaultCase{"WeekdayCellEmpty", "FirstCellOfDay=D20\nFirstCellOfWeekday=",
                    [](const auto& s) { return Code(s.FirstCellOfWeekday); }, 19004, 19004},
        DefaultCase{"WeekdayCellInTheFirstRow", "FirstCellOfDay=D1\nFirstCellOfWeekday=?",
                    [](const auto& s) { return Code(s.FirstCellOfWeekday); }, 1004, 1004},
        DefaultCase{"WeekdayCellGiven", "FirstCellOfDay=D20\nFirstCellOfWeekday=E7",
                    [](const auto& s) { return Code(s.FirstCellOfWeekday); }, 7005, 7005},
        DefaultCase{"MonthCellFollowsTheFirstDay", "FirstCellOfDay=D20",
                    [](const auto& s) { return Code(s.FirstCellOfMonth); }, 18004, 18004},
        DefaultCase{"MonthCellAboveTheSheet", "FirstCellOfDay=D2",
                    [](const auto& s) { return Code(s.FirstCellOfMonth); }, 1004, 1004},
        DefaultCase{"MonthCellInTheThirdRow", "FirstCellOfDay=D3",
                    [](const auto& s) { return Code(s.FirstCellOfMonth); }, 1004, 1004},
        DefaultCase{"YearCellFollowsTheFirstDay", "FirstCellOfDay=D20",
                    [](const auto& s) { return Code(s.FirstCellOfYear); }, 1004, 1002},
        DefaultCase{"YearCellInvalid", "FirstCellOfDay=D20\nFirstCellOfYear=$A$1",
                    [](const auto& s) { return Code(s.FirstCellOfYear); }, 1004, 1004},
        DefaultCase{"HolidayCellFollowsTheFirstDay", "FirstCellOfDay=D20",
                    [](const auto& s) { return Code(s.FirstCellOfHoliday); }, 21004, 6002},
        DefaultCase{"HolidayCellInvalid", "FirstCellOfDay=D20\nFirstCellOfHoliday=0",
                    [](const auto& s) { return Code(s.FirstCellOfHoliday); }, 21004, 21004},
        DefaultCase{"WeekdaysOn", "OutWeekday=y", [](const auto& s) { return s.OutWeekday; }, 1, 1},
        DefaultCase{"MonthOn", "OutMonth=Y", [](const auto& s) { return s.OutMonth; }, 1, 1},
        DefaultCase{"YearOnOnlyForY", "OutYear=Yes", [](const auto& s) { return s.OutYear; }, 0, 0},
        DefaultCase{"HolidaysOn", "OutHoliday=Y", [](const auto& s) { return s.OutHoliday; }, 1, 1},
        DefaultCase{"PolicyLargest", "MultiHolidays=2",
                    [](const auto& s) { return s.MultiHolidays; }, 2, 2},
        DefaultCase{"PolicyTooLarge", "MultiHolidays=3",
                    [](const auto& s) { return s.MultiHolidays; }, 0, 0},
        DefaultCase{"LayoutOfTheYearlyOnly", "MonthLayout=12",
                    [](const auto& s) { return s.MonthLayout; }, 3, 12},
        DefaultCase{"LayoutTooLarge", "MonthLayout=13", [](const auto& s) { return s.MonthLayout; },
                    3, 3},
        DefaultCase{"MonthColumns", "ColIntervalOfMonth=256",
                    [](const auto& s) { return s.ColIntervalOfMonth; }, 8, 256},
        DefaultCase{"MonthColumnsTooMany", "ColIntervalOfMonth=257",
                    [](const auto& s) { return s.ColIntervalOfMonth; }, 8, 8},
        DefaultCase{"MonthRows", "RowIntervalOfMonth=10000",
                    [](const auto& s) { return s.RowIntervalOfMonth; }, 9, 10000},
        DefaultCase{"RowIntervalSmallest", "RowIntervalOfDay=1",
                    [](const auto& s) { return s.RowIntervalOfDay; }, 1, 1},
        DefaultCase{"RowIntervalZero", "RowIntervalOfDay=0",
                    [](const auto& s) { return s.RowIntervalOfDay; }, 5, 1},
        DefaultCase{"RowIntervalBelowOneBeforeRounding", "RowIntervalOfDay=0.9",
                    [](const auto& s) { return s.RowIntervalOfDay; }, 5, 1},
        DefaultCase{"PolicyNegative", "MultiHolidays=-1",
                    [](const auto& s) { return s.MultiHolidays; }, 0, 0},
        DefaultCase{"LayoutSmallest", "MonthLayout=1", [](const auto& s) { return s.MonthLayout; },
                    3, 1},
        DefaultCase{"LayoutZero", "MonthLayout=0", [](const auto& s) { return s.MonthLayout; }, 3,
                    3},
        DefaultCase{"MonthColumnsSmallest", "ColIntervalOfMonth=1",
                    [](const auto& s) { return s.ColIntervalOfMonth; }, 8, 1},
        DefaultCase{"MonthColumnsZero", "ColIntervalOfMonth=0",
                    [](const auto& s) { return s.ColIntervalOfMonth; }, 8, 8},
        DefaultCase{"MonthRowsSmallest", "RowIntervalOfMonth=1",
                    [](const auto& s) { return s.RowIntervalOfMonth; }, 9, 1},
        DefaultCase{"MonthRowsZero", "RowIntervalOfMonth=0",
                    [](const auto& s) { return s.RowIntervalOfMonth; }, 9, 9},
        DefaultCase{"MonthRowsTooMany", "RowIntervalOfMonth=10000.4",
                    [](const auto& s) { return s.RowIntervalOfMonth; }, 9, 9}),
    [](const auto& each) { return std::string(each.param.name); });

TEST_F(SettingsTest, NameListsAreFoundByTheirNames)
{
    const std::string lists = std::string("[MonthName]\nCount=2\n1Name=") + kGerman +
                              "\n2Name=" + kShort +
                              "\n[WeekdayName]\nCount=3\n1Name=x\n"
                              "2Name=S,M,T,W,T,F,S\n3Name=So,Mo,Di,Mi,Do,Fr,Sa\n";
    const auto defaults =
        Load(lists + "[Monthly Calendar]\nMonthName=1, 2,3,4,5,6,7,8,9,10,11,12\n"
                     "WeekdayName=So,Mo,Di,Mi,Do,Fr,Sa\n"
                     "[Yearly Calendar]\nMonthName=1,2,3\nWeekdayName=A,B,C,D,E,F,G\n")
            .defaults;
    EXPECT_EQ(defaults.Monthly.MonthName, 1);
    EXPECT_EQ(defaults.Monthly.WeekdayName, 2);
    EXPECT_EQ(defaults.Yearly.MonthName, 0);
    EXPECT_EQ(defaults.Yearly.WeekdayName, 0);
}

// ---- default holidays

TEST_F(SettingsTest, TheHolidayFileIsFoundInTheHolidayFolder)
{
    Write("holiday/A.txt", "0101, DAY, First\n");
    Write("holiday/B.txt", "0102, DAY, Second\n0103, DAY, Third\n");
    const auto defaults = Load("[Monthly Calendar]\nHolidayFile=B.txt\n"
                               "[Yearly Calendar]\nHolidayFile=" +
                               At("holiday/A.txt") + "\n")
                              .defaults;
    EXPECT_EQ(defaults.MonthlyHolidayFile, At("holiday/B.txt"));
    ASSERT_EQ(defaults.Monthly.Holidays.Count(), 2);
    EXPECT_EQ(defaults.Monthly.Holidays[0].Name, " Second");
    ASSERT_EQ(defaults.Yearly.Holidays.Count(), 1);
    EXPECT_EQ(defaults.Yearly.Holidays[0].DateCode, 101);
}

TEST_F(SettingsTest, TheFirstHolidayFileReplacesAMissingOne)
{
    Write("holiday/B.txt", "0102, DAY, Second\n");
    Write("holiday/A.txt", "0101, DAY, First\n");
    const auto defaults = Load("[Monthly Calendar]\nHolidayFile=Missing.txt\n").defaults;
    EXPECT_EQ(defaults.MonthlyHolidayFile, At("holiday/A.txt"));
    EXPECT_EQ(defaults.Monthly.Holidays[0].Name, " First");
    EXPECT_EQ(defaults.Yearly.Holidays, defaults.Monthly.Holidays);
}

TEST_F(SettingsTest, UnreadableHolidayFilesAreReported)
{
    Write("holiday/Here.txt", "0101, DAY, New Year");
    std::filesystem::create_directory(folder_ / "holiday/Own.txt");
    const Settings settings = Load("[Monthly Calendar]\nHolidayFile=Own.txt\n"
                                   "[Yearly Calendar]\nHolidayFile=missing.txt\n");
    ASSERT_EQ(settings.holidayFileErrors.size(), 1U);
    EXPECT_EQ(settings.holidayFileErrors[0].Subject(), At("holiday/Own.txt"));
    EXPECT_EQ(settings.defaults.MonthlyHolidayFile, At("holiday/Here.txt"));
}

TEST_F(SettingsTest, AnEmptyHolidayFolderLeavesTheDefaultsWithoutHolidays)
{
    const auto defaults = LoadSettings(Here()).defaults;
    EXPECT_EQ(defaults.MonthlyHolidayFile, "");
    EXPECT_EQ(defaults.Monthly.Holidays.Count(), 0);
    EXPECT_EQ(defaults.Yearly.Holidays.Count(), 0);
}

TEST_F(SettingsTest, CopyingTheDefaultsTakesTheFirstDayRowAsMonthlyInterval)
{
    const auto settings = Load("[Monthly Calendar]\nFirstCellOfDay=B7\nRowIntervalOfDay=3\n"
                               "[Yearly Calendar]\nFirstCellOfDay=B7\nRowIntervalOfDay=3\n");
    const auto sets = model::CopyDefaults(settings.defaults);
    EXPECT_EQ(sets.Monthly.RowIntervalOfDay, 7);
    EXPECT_EQ(sets.Yearly.RowIntervalOfDay, 3);
}

} // namespace
} // namespace orrery::app
