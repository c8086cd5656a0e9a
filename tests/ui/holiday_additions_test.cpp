#include "ui/holiday_additions.h"

#include "fake_desktop.h"
#include "holidays/language/evaluation.h"
#include "ui/holiday_form.h"
#include "ui/own_day_form.h"
#include "util/file_read.h"
#include "util/scratch_folder_test.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <memory>

namespace orrery::ui {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class HolidayAdditionsTest : public testing_support::ScratchFolderTest {
protected:
    HolidayAdditionsTest()
    {
        Write("holiday/Land.txt", "# Observed: {name} instead\n>> if Fri also next workday\n"
                                  "0101,DAY,New Year\n");
        Write("holiday/own/Club.txt", "0102,DAY,Party\n0103,DAY,Match\n");
        edited_.Append({1231, 0, "Mine"});
        form_ = std::make_unique<HolidayForm>(
            holidays::CalendarKind::Monthly,
            app::TemplateLocation{At("template/"), util::WithTrailingSeparator(At("holiday")),
                                  "Desk.xls"},
            false, EditedHolidays{edited_, choice_}, 2027, desktop_, [this] { ++changes_; });
    }

    HolidayAdditions& Additions() { return form_->additions; }
    /// What the user enters in the next dialog of an own day.
    void Enter(const std::string& name, const std::string& day, int month)
    {
        desktop_.onOwnDay = [=](OwnDayForm& form) {
            form.txtName.Type(name);
            form.txtDay.Type(day);
            form.cboMonth.Select(month - 1);
            form.cmdOK_Click();
        };
    }
    void Add(const std::string& name, const std::string& day, int month)
    {
        Enter(name, day, month);
        Additions().cmdAddDay_Click();
    }
    void Choose(const std::string& name)
    {
        const auto files = Additions().Files();
        const auto found = std::find_if(files.begin(), files.end(),
                                        [&](const auto& file) { return file.file.name == name; });
        ASSERT_NE(found, files.end()) << name;
        Additions().ToggleFile(*found);
    }
    void SelectLine(int line)
    {
        form_->rules.lstRules.Select(line);
        form_->rules.lstRules_Click();
        Additions().ShowSelection();
    }
    /// The names of the rules that are shown.
    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const std::string& line : form_->rules.lstRules.lines)
            names.push_back(line.substr(0, line.find('\t')));
        return names;
    }
    int Selected() const { return form_->rules.lstRules.selected; }

    holidays::HolidayList edited_;
    holidays::HolidayChoice choice_;
    int changes_ = 0;
    FakeDesktop desktop_;
    std::unique_ptr<HolidayForm> form_;
};

TEST_F(HolidayAdditionsTest, AnAddedDayIsShownSelectedAndStoredByOk)
{
    Add("Ben", "30", 8);
    EXPECT_THAT(Names(), ElementsAre("Mine", "Ben"));
    EXPECT_EQ(Selected(), 1);
    EXPECT_THAT(form_->lstHoliday.lines, ElementsAre("1231\t\tMine", "0830\t\tBen"));
    EXPECT_EQ(edited_.Count(), 1) << "before OK";
    form_->cmdOK_Click();
    EXPECT_EQ(changes_, 1);
    ASSERT_EQ(edited_.Count(), 2);
    EXPECT_EQ(edited_[1], (holidays::HolidayDef{830, 0, "Ben"}));
    EXPECT_THAT(edited_.Extras(), ElementsAre(holidays::ExtraLine{1, "# Further file: Own days"}));
}

TEST_F(HolidayAdditionsTest, ACancelledDayChangesNothing)
{
    desktop_.onOwnDay = [](OwnDayForm& form) { form.cmdCancel_Click(); };
    Additions().cmdAddDay_Click();
    EXPECT_THAT(Names(), ElementsAre("Mine"));
    form_->cmdOK_Click();
    EXPECT_EQ(changes_, 0);
}

TEST_F(HolidayAdditionsTest, OwnDaysStayWhenAnotherFileIsChosen)
{
    Add("Ben", "1", 1);
    form_->cboHolidayFile.Select(0);
    form_->cboHolidayFile_Click();
    EXPECT_THAT(Names(), ElementsAre("New Year", "Ben"));
    form_->cmdOK_Click();
    const auto days = holidays::HolidaysOf(holidays::RulesOf(edited_), 2027, {});
    ASSERT_EQ(days.size(), 3U) << "Ben has no substitute on the workday after Friday";
    EXPECT_EQ(days[2].name, "New Year instead");
}

TEST_F(HolidayAdditionsTest, ASelectedDayIsChangedInItsPlace)
{
    Add("Ben", "30", 8);
    Add("Eva", "3", 3);
    SelectLine(1);
    EXPECT_TRUE(Additions().cmdEditDay.enabled);
    desktop_.onOwnDay = [](OwnDayForm& form) {
        EXPECT_EQ(form.txtName.text, "Ben");
        EXPECT_EQ(form.txtDay.text, "30");
        EXPECT_EQ(form.cboMonth.selected, 7);
        form.txtDay.Type("31");
        form.cmdOK_Click();
    };
    Additions().cmdEditDay_Click();
    EXPECT_THAT(form_->lstHoliday.lines, ElementsAre("1231\t\tMine", "0831\t\tBen", "0303\t\tEva"));
    EXPECT_EQ(Selected(), 1);
}

TEST_F(HolidayAdditionsTest, ARuleThatSaysMoreIsNotChangedButRemoved)
{
    form_->cboHolidayFile.Select(0);
    form_->cboHolidayFile_Click();
    EXPECT_FALSE(Additions().cmdEditDay.enabled);
    EXPECT_TRUE(Additions().cmdRemove.enabled);
    Additions().cmdEditDay_Click();
    EXPECT_THAT(desktop_.TakeCalls(), IsEmpty());
    Additions().cmdRemove_Click();
    EXPECT_THAT(Names(), IsEmpty());
    EXPECT_FALSE(Additions().cmdRemove.enabled);
    Additions().cmdRemove_Click();
}

TEST_F(HolidayAdditionsTest, FilesAreAddedAndTakenAway)
{
    auto files = Additions().Files();
    ASSERT_EQ(files.size(), 2U);
    EXPECT_EQ(files[0].file.name, "Club");
    EXPECT_TRUE(files[0].file.isOwn);
    EXPECT_FALSE(files[0].isAdded);
    Choose("Club");
    Choose("Land");
    EXPECT_THAT(Names(), ElementsAre("Mine", "Party", "Match", "New Year"));
    EXPECT_TRUE(Additions().Files()[0].isAdded);
    fs::remove(folder_ / "holiday/own/Club.txt");
    files = Additions().Files();
    ASSERT_EQ(files.size(), 2U) << "an added file can be taken away when it is gone";
    EXPECT_TRUE(files[0].isAdded);
    Choose("Club");
    EXPECT_THAT(Names(), ElementsAre("Mine", "New Year"));
    EXPECT_EQ(Additions().Files().size(), 1U);
}

TEST_F(HolidayAdditionsTest, AFileNamedLikeTheOwnDaysLeavesThemAlone)
{
    Write("holiday/own/Own days.txt", "0303,DAY,Feast\n");
    Add("Ben", "30", 8);
    Choose("Own days (file)");
    EXPECT_THAT(Names(), ElementsAre("Mine", "Ben", "Feast"));
    Choose("Own days (file)");
    EXPECT_THAT(Names(), ElementsAre("Mine", "Ben"));
}

TEST_F(HolidayAdditionsTest, AFileWithoutHolidaysIsNotAdded)
{
    Write("holiday/own/Empty.txt", "nothing here\n");
    Choose("Empty");
    EXPECT_THAT(desktop_.TakeCalls(), ElementsAre("ShowMessage: " + At("holiday/own/Empty.txt") +
                                                  " has no holidays, or cannot be read."));
    form_->cmdOK_Click();
    EXPECT_EQ(changes_, 0);
}

TEST_F(HolidayAdditionsTest, AFullListSaysSo)
{
    std::string rules;
    for (int i = 0; i < holidays::HolidayList::kCapacity; ++i)
        rules += "0101,DAY,x\n";
    Write("holiday/Land.txt", rules);
    form_->cboHolidayFile.Select(0);
    form_->cboHolidayFile_Click();
    Add("Ben", "30", 8);
    EXPECT_EQ(desktop_.TakeCalls().back(), "ShowMessage: The list is full: it has room for 1025 "
                                           "holidays. Remove some first.");
    EXPECT_EQ(form_->lstHoliday.lines.size(), 1025U);
}

TEST_F(HolidayAdditionsTest, UnreadLinesOfAnAddedFileAreTold)
{
    Write("holiday/own/Choir.txt", "0104,DAY,Concert\n0230,DAY,Rehearsal\n");
    Choose("Choir");
    EXPECT_EQ(
        form_->lblProblems.caption,
        "Choir: Line 2: The date \"0230\" does not exist. Write the month and the day, such as "
        "1225.");
    Choose("Club");
    EXPECT_EQ(form_->lblProblems.caption, "");
}

TEST_F(HolidayAdditionsTest, AFileThatHasNoRoomLeavesTheListAsItIs)
{
    std::string rules;
    for (int i = 0; i < holidays::HolidayList::kCapacity - 1; ++i)
        rules += "0101,DAY,x\n";
    Write("holiday/Land.txt", rules);
    Choose("Club");
    form_->cboHolidayFile.Select(0);
    form_->cboHolidayFile_Click();
    EXPECT_EQ(desktop_.TakeCalls().back(),
              "ShowMessage: The list has no room for Land.txt beside the days and files that were "
              "added. Remove some first.");
    EXPECT_THAT(Names(), ElementsAre("Mine", "Party", "Match"));
    EXPECT_FALSE(form_->cboHolidayFile.HasSelection());
    Choose("Club");
    form_->cboHolidayFile.Select(0);
    form_->cboHolidayFile_Click();
    EXPECT_EQ(form_->lstHoliday.lines.size(), 1024U);
}

TEST_F(HolidayAdditionsTest, OwnDaysAreKeptForOtherTemplates)
{
    EXPECT_FALSE(Additions().HasOwnDays());
    Add("Ben", "30", 8);
    EXPECT_TRUE(Additions().HasOwnDays());
    desktop_.TakeCalls();
    Additions().CollectOwnDays();
    EXPECT_EQ(util::ReadFile(util::ToPath(At("holiday/own/My days.txt"))), "0830,DAY,Ben\r\n");
    EXPECT_THAT(desktop_.TakeCalls(), ElementsAre(StartsWith("ShowMessage: The own days are in ")));
    EXPECT_EQ(Additions().Files()[1].file.name, "My days");
}

TEST_F(HolidayAdditionsTest, TheFolderOfOwnFilesIsMadeAndOpened)
{
    fs::remove_all(folder_ / "holiday/own");
    Additions().OpenOwnFolder();
    EXPECT_TRUE(fs::is_directory(folder_ / "holiday/own"));
    EXPECT_THAT(desktop_.TakeCalls(),
                ElementsAre("Open: " + util::WithTrailingSeparator(At("holiday/own"))));
}

} // namespace
} // namespace orrery::ui
