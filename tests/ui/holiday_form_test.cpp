#include "ui/holiday_form.h"

#include "fake_desktop.h"

#include "ui/country_form.h"
#include "util/file_read.h"
#include "util/scratch_folder_test.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <memory>

namespace orrery::ui {
namespace {

namespace fs = std::filesystem;
using holidays::CalendarKind;
using holidays::HolidayList;
using Texts = std::vector<std::string>;

HolidayList ListOf(const std::vector<holidays::HolidayDef>& rules)
{
    HolidayList list;
    for (const holidays::HolidayDef& rule : rules)
        list.Append(rule);
    return list;
}

class HolidayFormTest : public testing_support::ScratchFolderTest {
protected:
    HolidayFormTest()
    {
        Write("holiday/b.txt", "0101, DAY, New Year\n0505, MON, Memorial Day\n");
        Write("holiday/A", ", EASTER FRI, Good Friday\nno rule\n");
        Write("template/My.Desk.ini",
              "[Monthly Calendar]\nHoliday1=0202,,Month\n[Yearly Calendar]\nHoliday1=0303,,Year\n");
    }

    HolidayForm& Open(CalendarKind kind = CalendarKind::Monthly, bool templateHasFile = true)
    {
        form_ = std::make_unique<HolidayForm>(kind,
                                              app::TemplateLocation{At("template/"), At("holiday/"),
                                                                    "My.Desk.xls", installed_,
                                                                    At("orrery.ini")},
                                              templateHasFile, EditedHolidays{edited_, choice_},
                                              2027, desktop_, [this] { ++changes_; });
        return *form_;
    }
    void Choose(const std::string& entry)
    {
        const auto& entries = form_->cboHolidayFile.entries;
        const auto found = std::find(entries.begin(), entries.end(), entry);
        ASSERT_NE(found, entries.end()) << entry;
        form_->cboHolidayFile.Select(static_cast<int>(found - entries.begin()));
        form_->cboHolidayFile_Click();
    }

    /// Installs the files of two countries, which the holiday folder lacks.
    void Install()
    {
        Write("data/countries.tsv", "Austria.txt\tAT\tAustria\tÖsterreich\t\tde\t\n"
                                    "Germany.txt\tDE\tGermany\t\t\tde\tBY Bayern\n"
                                    "Gone.txt\tXX\tGone\t\t\ten\t\n");
        Write("data/holiday/Austria.txt", "1026,DAY,Nationalfeiertag\n");
        Write("data/holiday/Germany.txt",
              "# Regions: BY Bayern\n0106,FIXED,Drei Könige\n> only in BY\n");
        installed_ = At("data/");
    }

    std::string installed_;
    HolidayList edited_ = ListOf({{1231, 0, "Mine"}});
    holidays::HolidayChoice choice_;
    int changes_ = 0;
    FakeDesktop desktop_;
    std::unique_ptr<HolidayForm> form_;
};

TEST_F(HolidayFormTest, ControlsHaveTheirCaptions)
{
    const HolidayForm& form = Open();
    EXPECT_EQ(form.name, "frmHoliday");
    EXPECT_EQ(form.caption, "Holiday");
    EXPECT_EQ(form.helpPage, "holidays");
    EXPECT_EQ(form.lblHolidayFile.caption, "Holiday &File:");
    EXPECT_EQ(form.lblHolidays.caption, "Holidays &List:");
    EXPECT_EQ(form.lblHolidayList.caption, " Date        Weekday     Name");
    EXPECT_EQ(form.lblHolidayList.caption.size(), 29U);
    EXPECT_EQ(form.cmdOK.caption, "&OK");
    EXPECT_EQ(form.cmdCancel.caption, "&Cancel");
    EXPECT_EQ(form.tabStops, (std::vector<int>{32, 72}));
}

// ---- what is shown

TEST_F(HolidayFormTest, TellsWhichLinesOfTheChosenFileAreNotRead)
{
    Write("holiday/c.txt", "0101, DAY, New Year\n0230, DAY, x\n0231, DAY, y\n");
    Write("template/My.Desk.ini", "[Monthly Calendar]\nHoliday1=0202,,Month\nHoliday2=?\n");
    HolidayForm& form = Open();
    EXPECT_EQ(form.lblProblems.caption, "") << "the edited list is what it is";
    Choose("c.txt");
    EXPECT_EQ(form.lblProblems.caption,
              "2 lines are not read. Line 2: The date \"0230\" does not exist. Write the month and "
              "the day, such as 1225.");
    Choose("(Template)");
    EXPECT_TRUE(form.lblProblems.caption.starts_with("Line 3: \"?\" is not a holiday."));
    Choose("b.txt");
    EXPECT_EQ(form.lblProblems.caption, "");
}

TEST_F(HolidayFormTest, OpensWithTheEditedListAndNoFileChosen)
{
    const HolidayForm& form = Open();
    EXPECT_EQ(form.lstHoliday.lines, Texts{"1231\t\tMine"});
    EXPECT_FALSE(form.cboHolidayFile.HasSelection());
    EXPECT_FALSE(form.cboHolidayFile.changed);
}

TEST_F(HolidayFormTest, FilesOfAnyNameAreOfferedAfterTheTemplate)
{
    Write("holiday/.hidden", "");
    fs::create_directories(At("holiday/folder"));
    EXPECT_EQ(Open().cboHolidayFile.entries, (Texts{"(Template)", "A", "b.txt"}));
    EXPECT_EQ(Open(CalendarKind::Yearly, false).cboHolidayFile.entries, (Texts{"A", "b.txt"}));
}

struct LineCase {
    const char* name;
    holidays::HolidayDef rule;
    const char* expected;
};

class HolidayLineTest : public HolidayFormTest, public testing::WithParamInterface<LineCase> {};

TEST_P(HolidayLineTest, HasDateWeekdayAndName)
{
    edited_ = ListOf({GetParam().rule});
    EXPECT_EQ(Open().lstHoliday.lines, Texts{GetParam().expected});
}

INSTANTIATE_TEST_SUITE_P(
    Rules, HolidayLineTest,
    testing::Values(LineCase{"FixedDay", {101, 0, " New Year"}, "0101\t\t New Year"},
                    LineCase{"FourDigits", {1225, 0, "Christmas"}, "1225\t\tChristmas"},
                    LineCase{"Sunday", {501, 1, "S"}, "0501\tSunday\tS"},
                    LineCase{"Monday", {505, 2, " Memorial Day"}, "0505\tMonday\t Memorial Day"},
                    LineCase{"Tuesday", {501, 3, "T"}, "0501\tTuesday\tT"},
                    LineCase{"Wednesday", {501, 4, "W"}, "0501\tWednesday\tW"},
                    LineCase{"Thursday", {1104, 5, "T"}, "1104\tThursday\tT"},
                    LineCase{"Friday", {501, 6, "F"}, "0501\tFriday\tF"},
                    LineCase{"Saturday", {501, 7, "S"}, "0501\tSaturday\tS"},
                    LineCase{"BeforeEaster", {-2, 8, " Good Friday"}, "-2\tEaster\t Good Friday"},
                    LineCase{"AfterEaster", {1, 8, "Monday"}, "1\tEaster\tMonday"},
                    LineCase{"BeyondTheTable", {49, 9, "Kind 9"}, "49\t\tKind 9"},
                    LineCase{"TableEnd", {49, 12, "Kind 12"}, "49\t\tKind 12"},
                    LineCase{"NoKind", {7, -1, "Kind -1"}, "0007\t\tKind -1"},
                    LineCase{"NegativeDate", {-5, 0, "x"}, "-0005\t\tx"},
                    LineCase{"NoName", {101, 0, ""}, "0101\t\t"}),
    [](const auto& each) { return std::string(each.param.name); });

// ---- choosing

TEST_F(HolidayFormTest, AChosenFileIsReadAndShown)
{
    Open();
    Choose("b.txt");
    EXPECT_EQ(form_->lstHoliday.lines, (Texts{"0101\t\t New Year", "0505\tMonday\t Memorial Day"}));
    Choose("A");
    EXPECT_EQ(form_->lstHoliday.lines, Texts{"-2\tEaster\t Good Friday"});
    EXPECT_EQ(edited_.Count(), 1) << "nothing is handed over before OK";
    EXPECT_EQ(changes_, 0);
}

TEST_F(HolidayFormTest, TheTemplatesOwnHolidaysAreThoseOfTheCalendar)
{
    Open(CalendarKind::Monthly);
    Choose("(Template)");
    EXPECT_EQ(form_->lstHoliday.lines, Texts{"0202\t\tMonth"});
    Open(CalendarKind::Yearly);
    Choose("(Template)");
    EXPECT_EQ(form_->lstHoliday.lines, Texts{"0303\t\tYear"});
}

TEST_F(HolidayFormTest, AFileNamedLikeTheTemplateEntryIsAFile)
{
    Write("holiday/(Template)", "0404, DAY, File\n");
    Open(CalendarKind::Monthly, false);
    Choose("(Template)");
    EXPECT_EQ(form_->lstHoliday.lines, Texts{"0404\t\t File"});
}

TEST_F(HolidayFormTest, AnUnreadableFileIsAnEmptyList)
{
    Open();
    fs::remove(At("holiday/A"));
    fs::remove(At("template/My.Desk.ini"));
    Choose("A");
    EXPECT_EQ(form_->lstHoliday.lines, Texts());
    Choose("b.txt");
    EXPECT_EQ(form_->lstHoliday.lines.size(), 2U);
    Choose("(Template)");
    EXPECT_EQ(form_->lstHoliday.lines, Texts());
    form_->cmdOK_Click();
    EXPECT_EQ(edited_.Count(), 0);
    EXPECT_EQ(changes_, 1);
}

TEST_F(HolidayFormTest, AClickWithoutAChoiceReadsNothing)
{
    Open();
    form_->cboHolidayFile.changed = true; // no entry
    form_->cboHolidayFile_Click();
    form_->cboHolidayFile.changed = false; // an entry that the user did not choose
    form_->cboHolidayFile.selected = 1;
    form_->cboHolidayFile_Click();
    EXPECT_EQ(form_->lstHoliday.lines, Texts{"1231\t\tMine"});
}

// ---- the rules in words

TEST_F(HolidayFormTest, EveryRuleIsInWordsBesideThePlainOnes)
{
    Write("holiday/c.txt", "0101,DAY,New Year\n0106,FIXED,Epiphany\n> only in BY\n");
    Open();
    EXPECT_EQ(form_->rules.lstRules.lines,
              Texts{"Mine\t31 December\tFri 31 December 2027\tPublic"});
    Choose("c.txt");
    EXPECT_EQ(form_->lstHoliday.lines, Texts{"0101\t\tNew Year"});
    EXPECT_EQ(form_->rules.lstRules.lines,
              (Texts{"New Year\t1 January\tFri 1 January 2027\tPublic",
                     "Epiphany\t6 January; only in BY\tother region\tPublic"}));
}

TEST_F(HolidayFormTest, OkStoresTheChoiceWithTheListThatItBelongsTo)
{
    Write("holiday/c.txt", "# Regions: BY Bayern\n0106,FIXED,Epiphany\n> only in BY\n");
    Open();
    Choose("c.txt");
    form_->rules.cboRegion.Select(1);
    form_->rules.cboRegion_Click();
    EXPECT_EQ(choice_.region, "") << "nothing is handed over before OK";
    form_->cmdOK_Click();
    EXPECT_EQ(choice_.region, "BY");
    EXPECT_EQ(edited_.Extras().size(), 3U);
    EXPECT_EQ(changes_, 1);

    Open();
    EXPECT_EQ(form_->rules.cboRegion.selected, 1);
    form_->rules.cboRegion.Select(0);
    form_->rules.cboRegion_Click();
    form_->cmdOK_Click();
    EXPECT_EQ(choice_.region, "") << "also without a file";
    EXPECT_EQ(edited_.Extras().size(), 3U);
    EXPECT_EQ(changes_, 2);
}

TEST_F(HolidayFormTest, AnotherFileTakesTheRegionAway)
{
    choice_ = {"BY", {holidays::Category::Public}, ""};
    Open();
    form_->cmdOK_Click();
    EXPECT_EQ(choice_.region, "BY") << "without a choice nothing changes";
    Open();
    Choose("b.txt");
    form_->cmdOK_Click();
    EXPECT_EQ(choice_, holidays::HolidayChoice());
}

TEST_F(HolidayFormTest, TheTemplateBringsItsSavedChoiceBack)
{
    Write("template/My.Desk.ini",
          "[Monthly Calendar]\nHoliday1=0202,,Month\nHoliday2= > kind bank; name fr Mois\n"
          "Holiday3=0606,FIXED,x\nHoliday4= > only in BY SN\n"
          "[Yearly Calendar]\nHoliday1=0303,,Year\n"
          "[Holidays]\nMonthlyRegion=BY\nMonthlyKinds=bank\nMonthlyLanguage=fr\n");
    using holidays::Category;
    const holidays::HolidayChoice saved{"BY", {Category::Bank}, "fr"};
    Open();
    Choose("b.txt");
    EXPECT_EQ(form_->rules.Choice(), holidays::HolidayChoice());
    Choose("(Template)");
    EXPECT_EQ(form_->rules.Choice(), saved);
    EXPECT_THAT(form_->rules.lstRules.lines,
                testing::Contains("Mois\t2 February\tTue 2 February 2027\tBank"));
    form_->rules.cboRegion.Select(2);
    form_->rules.cboRegion_Click();
    EXPECT_EQ(form_->rules.Choice().region, "SN");
    Choose("(Template)");
    EXPECT_EQ(form_->rules.Choice(), saved) << "chosen again";
    form_->cmdOK_Click();
    EXPECT_EQ(choice_, saved);

    Open(CalendarKind::Yearly);
    EXPECT_EQ(form_->rules.Choice(), saved) << "the edited one";
    Choose("(Template)");
    EXPECT_EQ(form_->rules.Choice(), holidays::HolidayChoice()) << "of the other calendar";
}

// ---- closing

TEST_F(HolidayFormTest, OkStoresTheShownList)
{
    for (const CalendarKind kind : {CalendarKind::Monthly, CalendarKind::Yearly}) {
        changes_ = 0;
        Open(kind);
        Choose("b.txt");
        form_->cmdOK_Click();
        EXPECT_EQ(edited_, ListOf({{101, 0, " New Year"}, {505, 2, " Memorial Day"}}));
        EXPECT_EQ(changes_, 1);
        EXPECT_FALSE(form_->isOpen);
    }
}

TEST_F(HolidayFormTest, OkWithoutAChoiceKeepsTheList)
{
    Open().cmdOK_Click();
    EXPECT_EQ(edited_, ListOf({{1231, 0, "Mine"}}));
    EXPECT_EQ(changes_, 0);
    EXPECT_FALSE(form_->isOpen);
}

TEST_F(HolidayFormTest, CancelAndEscapeDiscardTheShownList)
{
    for (const bool escape : {false, true}) {
        Open();
        Choose("b.txt");
        if (escape)
            form_->Form_KeyPress(27);
        else
            form_->cmdCancel_Click();
        EXPECT_FALSE(form_->isOpen);
        EXPECT_EQ(edited_, ListOf({{1231, 0, "Mine"}}));
        EXPECT_EQ(changes_, 0);
    }
}

TEST_F(HolidayFormTest, AnUnknownCalendarReadsAndCopiesNothing)
{
    for (const int kind : {0, 3}) {
        Open(static_cast<CalendarKind>(kind));
        EXPECT_EQ(form_->lstHoliday.lines, Texts());
        Choose("b.txt"); // a file can still be viewed
        EXPECT_EQ(form_->lstHoliday.lines.size(), 2U);
        Choose("(Template)");
        EXPECT_EQ(form_->lstHoliday.lines.size(), 2U) << "the list on show stays";
        form_->cmdOK_Click();
        EXPECT_EQ(edited_, ListOf({{1231, 0, "Mine"}}));
        EXPECT_EQ(changes_, 0);
    }
}

TEST_F(HolidayFormTest, CountriesAreOfferedWhereTheyAreInstalled)
{
    EXPECT_FALSE(Open().cmdCountry.visible);
    Install();
    EXPECT_TRUE(Open().cmdCountry.visible);
}

TEST_F(HolidayFormTest, AFoundRegionChoosesItsFileAndIsRemembered)
{
    Install();
    HolidayForm& form = Open();
    desktop_.onCountry = [](CountryForm& dialog) {
        dialog.txtFind.text = "bayern";
        dialog.Find();
        dialog.cmdOK_Click();
    };
    form.cmdCountry_Click();
    EXPECT_EQ(form.cboHolidayFile.entries, (Texts{"(Template)", "A", "b.txt", "Germany.txt"}));
    EXPECT_EQ(form.cboHolidayFile.selected, 3);
    EXPECT_EQ(form.rules.Choice().region, "BY");
    EXPECT_TRUE(util::FileExists(At("holiday/Germany.txt")));
    form.cmdOK_Click();
    EXPECT_EQ(choice_.region, "BY");
    EXPECT_EQ(changes_, 1);

    desktop_.onCountry = [](const CountryForm& dialog) {
        EXPECT_THAT(dialog.lstPlaces.lines, testing::Contains("Germany: Bayern\t"));
    };
    Open().cmdCountry_Click();
}

TEST_F(HolidayFormTest, CancelOfACountryChangesNothing)
{
    Install();
    HolidayForm& form = Open();
    desktop_.onCountry = [](CountryForm& dialog) { dialog.cmdCancel_Click(); };
    form.cmdCountry_Click();
    EXPECT_FALSE(form.cboHolidayFile.HasSelection());
    EXPECT_FALSE(util::FileExists(At("orrery.ini")));
    EXPECT_FALSE(util::FileExists(At("holiday/Austria.txt")));
}

} // namespace
} // namespace orrery::ui
