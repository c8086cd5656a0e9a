#include "ui/import_form.h"

#include "fake_desktop.h"
#include "ui/holiday_form.h"
#include "util/scratch_folder_test.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <memory>

namespace orrery::ui {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ImportFormTest : public testing_support::ScratchFolderTest {
protected:
    /// Opens the form of a text of the clipboard, or of a file with a name.
    ImportForm& Open(const std::string& text, const std::string& name = "")
    {
        source_ = name.empty() ? std::make_unique<app::ImportSource>(text) : nullptr;
        if (!source_) {
            Write(name, text);
            source_ = std::make_unique<app::ImportSource>(util::ToPath(At(name)));
        }
        form_ = std::make_unique<ImportForm>(
            ImportTask{*source_, name, util::WithTrailingSeparator(At("holiday/own")), 2027});
        return *form_;
    }

private:
    std::unique_ptr<app::ImportSource> source_;
    std::unique_ptr<ImportForm> form_;
};

TEST_F(ImportFormTest, TellsWhatWasFound)
{
    ImportForm& form =
        Open("Date;Name;Place\n01.05.2027;Fair;x\nsoon;Party;y\n03.10.2027;Fest;z\n", "Club.csv");
    EXPECT_EQ(form.lblKind.caption,
              "Club.csv: table, separator semicolon, dates in \"Date\", names "
              "in \"Name\"; ignored: Place");
    EXPECT_EQ(form.lblCounts.caption, "0 rules, 2 dated days");
    EXPECT_EQ(form.txtEvents.text, "1 May 2027  Fair\n3 October 2027  Fest");
    EXPECT_TRUE(form.txtPassedOver.visible);
    EXPECT_EQ(form.txtPassedOver.text, "Line 3: \"soon\" is not a date.");
    EXPECT_EQ(form.txtTarget.text, "Club");
    EXPECT_FALSE(form.cboDateOrder.visible);
    EXPECT_EQ(form.lblProblem.caption, "");
    form.cmdOK_Click();
    EXPECT_TRUE(form.isAccepted);
    EXPECT_FALSE(form.isOpen);
}

TEST_F(ImportFormTest, ShowsTheFirstTenEvents)
{
    std::string text;
    for (int day = 1; day <= 12; ++day)
        text += std::to_string(day) + ".5.2027 Day " + std::to_string(day) + "\n";
    const ImportForm& form = Open(text);
    EXPECT_EQ(form.lblKind.caption, "Clipboard: table, a date and a name in each line");
    EXPECT_THAT(form.txtEvents.text, HasSubstr("10 May 2027  Day 10"));
    EXPECT_EQ(form.txtEvents.text.find("Day 11"), std::string::npos);
    EXPECT_EQ(form.txtTarget.text, "Imported days");
    EXPECT_FALSE(form.txtPassedOver.visible);
}

TEST_F(ImportFormTest, AsksForTheOrderOfDates)
{
    ImportForm& form = Open("3/4/2027\tFair\n5/6/2027\tFest\n");
    EXPECT_TRUE(form.cboDateOrder.visible);
    EXPECT_EQ(form.focus, &form.cboDateOrder);
    EXPECT_THAT(form.cboDateOrder.entries, ElementsAre("Day, month, year", "Month, day, year"));
    EXPECT_THAT(form.txtEvents.text, HasSubstr("3 April 2027  Fair"));
    form.cboDateOrder.Select(1);
    form.cboDateOrder_Click();
    EXPECT_THAT(form.txtEvents.text, HasSubstr("4 March 2027  Fair"));
}

TEST_F(ImportFormTest, TakesCertainYears)
{
    ImportForm& form = Open("1.5.2027 Fair\n1.5.2028 Fair\n");
    form.txtYears.Type("2028 - 2030");
    form.ShowYears();
    EXPECT_EQ(form.lblCounts.caption, "0 rules, 1 dated day, 1 event without a day in the years");
    for (const char* const wrong : {"next", "2028-", "2030-2028", "0", "2027-10000", "-"}) {
        form.txtYears.Type(wrong);
        form.ShowYears();
        EXPECT_EQ(form.lblProblem.caption, "Type years such as 2027 or 2027-2030.") << wrong;
        form.cmdOK_Click();
        EXPECT_TRUE(form.isOpen);
        EXPECT_EQ(form.focus, &form.txtYears);
    }
    form.txtYears.Type("2031");
    form.ShowYears();
    EXPECT_EQ(form.lblProblem.caption, "There are no events that can be holidays.");
    form.txtYears.Type(" ");
    form.ShowYears();
    EXPECT_EQ(form.lblCounts.caption, "0 rules, 2 dated days");
    EXPECT_EQ(form.lblProblem.caption, "");
}

TEST_F(ImportFormTest, SaysThatAListHasNoRoom)
{
    std::string text = "2028-01-01,One more\n";
    for (int i = 0; i < 1025; ++i)
        text += "2027-05-01,Day " + std::to_string(i) + "\n";
    ImportForm& form = Open(text);
    EXPECT_THAT(form.lblProblem.caption, HasSubstr("would become 1026 rules"));
    form.cmdOK_Click();
    EXPECT_TRUE(form.isOpen);
    form.txtYears.Type("2027");
    form.ShowYears();
    EXPECT_EQ(form.lblProblem.caption, "");
    EXPECT_EQ(form.Rules().entries.size(), 1025U);
}

TEST_F(ImportFormTest, ChecksTheName)
{
    Write("holiday/own/Club.txt", "precious");
    ImportForm& form = Open("1.5.2027 Fair\n");
    const auto problemOf = [&form](const char* name) {
        form.txtTarget.Type(name);
        form.ShowTarget();
        return form.lblProblem.caption;
    };
    EXPECT_EQ(problemOf(" "), "Type a name for the list.");
    EXPECT_THAT(problemOf("../Club"), HasSubstr("type it without"));
    EXPECT_THAT(problemOf("a?"), HasSubstr("type it without"));
    EXPECT_EQ(problemOf("Club"), "There is a list of that name. Type another one, or replace it.");
    EXPECT_TRUE(form.chkReplace.enabled);
    form.cmdOK_Click();
    EXPECT_TRUE(form.isOpen);
    EXPECT_EQ(form.focus, &form.txtTarget);
    form.chkReplace.Toggle();
    form.ShowTarget();
    EXPECT_EQ(form.lblProblem.caption, "");
    EXPECT_EQ(problemOf("Other"), "");
    EXPECT_FALSE(form.chkReplace.enabled);
    EXPECT_EQ(problemOf("Club"), "There is a list of that name. Type another one, or replace it.")
        << "the consent was for another moment";
}

class ImportTest : public testing_support::ScratchFolderTest {
protected:
    ImportTest()
    {
        Write("holiday/Land.txt", "0101,DAY,New Year\n");
        dialog_ = std::make_unique<HolidayForm>(
            holidays::CalendarKind::Monthly,
            app::TemplateLocation{At("template/"), util::WithTrailingSeparator(At("holiday")),
                                  "Desk.xls"},
            false, EditedHolidays{edited_, choice_}, 2027, desktop_, [] {});
        desktop_.onImport = [](ImportForm& form) { form.cmdOK_Click(); };
    }
    /// The names of the rules that are shown.
    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const auto& row : dialog_->rules.lstRules.lines)
            names.push_back(row.substr(0, row.find('\t')));
        return names;
    }

    FakeDesktop desktop_;
    holidays::HolidayList edited_;
    holidays::HolidayChoice choice_;
    std::unique_ptr<HolidayForm> dialog_;
};

TEST_F(ImportTest, WritesAnOwnFileAndAddsIt)
{
    Write("Club.csv", "2027-05-01,Fair\n2027-10-03,Fest\n");
    dialog_->additions.Import(At("Club.csv"));
    EXPECT_EQ(testing_support::BytesOf(util::ToPath(At("holiday/own/Club.txt"))),
              "# Club: days from Club.csv\r\n20270501,DATE,Fair\r\n20271003,DATE,Fest\r\n");
    EXPECT_THAT(Names(), ElementsAre("Fair", "Fest"));
    EXPECT_TRUE(dialog_->additions.HasChanged());
    EXPECT_TRUE(dialog_->additions.Files().front().isAdded);
}

TEST_F(ImportTest, ReplacesAnOlderOneInTheList)
{
    dialog_->additions.ImportText("1.5.2027 Fair\n");
    desktop_.onImport = [](ImportForm& form) {
        EXPECT_TRUE(form.chkReplace.enabled);
        form.chkReplace.Toggle();
        form.ShowTarget();
        form.cmdOK_Click();
    };
    dialog_->additions.ImportText("2.5.2027 Fest\n");
    EXPECT_THAT(Names(), ElementsAre("Fest"));
    EXPECT_EQ(testing_support::BytesOf(util::ToPath(At("holiday/own/Imported days.txt"))),
              "# Imported days: days from the clipboard\r\n20270502,DATE,Fest\r\n");
}

TEST_F(ImportTest, ChangesNothingWhenTheUserCancels)
{
    desktop_.onImport = [](ImportForm& form) { form.cmdCancel_Click(); };
    dialog_->additions.ImportText("1.5.2027 Fair\n");
    EXPECT_THAT(Names(), IsEmpty());
    EXPECT_FALSE(dialog_->additions.HasChanged());
    EXPECT_FALSE(fs::exists(util::ToPath(At("holiday/own"))));
}

TEST_F(ImportTest, ThrowsForWhatCannotBeRead)
{
    EXPECT_THROW(dialog_->additions.ImportText("nothing"), Error);
    EXPECT_THROW(dialog_->additions.Import(At("missing.csv")), Error);
    EXPECT_THAT(desktop_.calls, ElementsAre("Hourglass on", "Hourglass off"));
}

} // namespace
} // namespace orrery::ui
