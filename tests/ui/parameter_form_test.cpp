#include "ui/parameter_form.h"

#include "ui/holiday_form.h"
#include "ui/parameter_test.h"
#include "util/error.h"
#include "util/paths.h"
#include "util/scratch_folder_test.h"

namespace orrery::ui {
namespace {

using Calls = std::vector<std::string>;

class ParameterFormTest : public ParameterTest {};

TEST_F(ParameterFormTest, HasItsNamesAndCaptions)
{
    Open();
    EXPECT_EQ(form().name, "frmParameter");
    EXPECT_EQ(form().caption, "Modify Parameters");
    EXPECT_EQ(form().helpPage, "parameters");
    EXPECT_EQ(form().tabOrrery.name, "tabOrrery");
    EXPECT_EQ(form().cmdOK.name, "cmdOK");
    EXPECT_EQ(form().cmdOK.caption, "OK");
    EXPECT_EQ(form().cmdCancel.name, "cmdCancel");
    EXPECT_EQ(form().cmdCancel.caption, "&Cancel");
    EXPECT_TRUE(form().isOpen);
}

TEST_F(ParameterFormTest, TellsWhichHolidaysOfTheFileAreNotRead)
{
    EXPECT_EQ(Open().monthly.lblHolidayProblems.caption, "");
    working.yearlyProblems = {{7, util::Error(holidays::ErrorKind::UnknownRuleKind, "MONDAI")}};
    Open();
    EXPECT_EQ(form().monthly.lblHolidayProblems.caption, "");
    EXPECT_EQ(form().yearly.lblHolidayProblems.caption,
              "Line 7: The kind \"MONDAI\" is not known. Write DAY, a weekday or EASTER.");
}

TEST_F(ParameterFormTest, KnowsItsTemplate)
{
    EXPECT_EQ(Open().TemplatePath(), util::ToPath("/t/Desk.xls"));
    EXPECT_EQ(&form().SelectedTab(), &form().monthly);
    form().tabOrrery_Click(2);
    EXPECT_EQ(&form().SelectedTab(), &form().yearly);
}

// ---- the tabs

struct FirstTabCase {
    bool monthly;
    bool yearly;
    int expected;
};

TEST_F(ParameterFormTest, TheYearlyTabIsFirstOnlyWhenItsCalendarIsTheOnlyOne)
{
    for (const FirstTabCase& each :
         {FirstTabCase{false, false, 1}, {false, true, 2}, {true, false, 1}, {true, true, 1}}) {
        working.sets.Monthly.Output = each.monthly;
        working.sets.Yearly.Output = each.yearly;
        EXPECT_EQ(Open().tabOrrery.selected, each.expected) << each.monthly << each.yearly;
    }
}

TEST_F(ParameterFormTest, TheSelectedTabHasNoMnemonic)
{
    Open().tabOrrery_Click(2);
    EXPECT_EQ(form().tabOrrery.selected, 2);
    EXPECT_EQ(form().tabOrrery.monthlyCaption, "&Monthly Calendar");
    EXPECT_EQ(form().tabOrrery.yearlyCaption, "Yearly Calendar");
    form().tabOrrery_Click(1);
    EXPECT_EQ(form().tabOrrery.selected, 1);
    EXPECT_EQ(form().tabOrrery.monthlyCaption, "Monthly Calendar");
    EXPECT_EQ(form().tabOrrery.yearlyCaption, "&Yearly Calendar");
}

// ---- OK

TEST_F(ParameterFormTest, OkStoresBothTabsAndCloses)
{
    Open().monthly.txtSheetName.Type("January plan");
    form().yearly.txtSheetName.Type("Year plan");
    form().cmdOK_Click();
    EXPECT_EQ(working.sets.Monthly.SheetName, "January plan");
    EXPECT_EQ(working.sets.Yearly.SheetName, "Year plan");
    EXPECT_TRUE(working.monthlyChanged);
    EXPECT_TRUE(working.yearlyChanged);
    EXPECT_FALSE(form().isOpen);
    EXPECT_TRUE(desktop.calls.empty());
}

TEST_F(ParameterFormTest, OkFlagsOnlyTheTabThatWasEdited)
{
    Open().yearly.txtSheetName.Type("Year plan");
    form().cmdOK_Click();
    EXPECT_FALSE(working.monthlyChanged);
    EXPECT_TRUE(working.yearlyChanged);
}

TEST_F(ParameterFormTest, OkWithoutAnEditClearsTheFlags)
{
    working.monthlyChanged = working.yearlyChanged = true;
    const auto before = working.sets;
    Open().cmdOK_Click();
    EXPECT_FALSE(working.monthlyChanged);
    EXPECT_FALSE(working.yearlyChanged);
    EXPECT_EQ(working.sets.Monthly, before.Monthly);
    EXPECT_EQ(working.sets.Yearly, before.Yearly);
}

TEST_F(ParameterFormTest, ChangedHolidaysAloneCountAndAreStored)
{
    Open().monthly.holidays.Clear();
    form().SetMHolidayChanged();
    form().cmdOK_Click();
    EXPECT_TRUE(working.monthlyChanged);
    EXPECT_FALSE(working.yearlyChanged);
    EXPECT_EQ(working.sets.Monthly.Holidays.Count(), 0);
    EXPECT_EQ(working.sets.Yearly.Holidays.Count(), 2);

    Open().SetYHolidayChanged();
    form().cmdOK_Click();
    EXPECT_FALSE(working.monthlyChanged);
    EXPECT_TRUE(working.yearlyChanged);
}

TEST_F(ParameterFormTest, AMonthlyFailureStoresNothing)
{
    const auto before = working.sets;
    Open().monthly.txtSheetName.Type("");
    form().yearly.txtSheetName.Type("Year plan");
    form().cmdOK_Click();
    EXPECT_TRUE(form().isOpen);
    EXPECT_EQ(working.sets.Monthly, before.Monthly);
    EXPECT_EQ(working.sets.Yearly, before.Yearly);
    EXPECT_FALSE(working.Changed());
    EXPECT_EQ(form().yearly.txtSheetName.text, "Year plan") << "what was typed stays";
}

TEST_F(ParameterFormTest, AYearlyFailureLeavesTheMonthlyTabStored)
{
    const auto before = working.sets;
    Open().monthly.txtSheetName.Type("January plan");
    form().yearly.txtSheetName.Type("");
    form().cmdOK_Click();
    EXPECT_TRUE(form().isOpen);
    EXPECT_EQ(working.sets.Monthly.SheetName, "January plan");
    EXPECT_TRUE(working.monthlyChanged);
    EXPECT_EQ(working.sets.Yearly, before.Yearly);
    EXPECT_FALSE(working.yearlyChanged);

    form().cmdCancel_Click();
    EXPECT_FALSE(form().isOpen);
    EXPECT_EQ(working.sets.Monthly.SheetName, "January plan") << "Cancel takes nothing back";
}

TEST_F(ParameterFormTest, TheMonthlyFlagStaysWhenOkIsTriedAgain)
{
    Open().monthly.txtSheetName.Type("January plan");
    form().yearly.txtSheetName.Type("");
    form().cmdOK_Click();
    form().yearly.txtSheetName.Type("Year plan");
    form().cmdOK_Click();
    EXPECT_FALSE(form().isOpen);
    EXPECT_TRUE(working.monthlyChanged);
    EXPECT_TRUE(working.yearlyChanged);
}

TEST_F(ParameterFormTest, BothWrongShowsOnlyTheMonthlyMessage)
{
    Open().monthly.txtSheetName.Type("");
    form().yearly.txtFirstCellofDay.Type("");
    form().cmdOK_Click();
    EXPECT_EQ(desktop.calls, Calls{"Report: Please input sheet name."});
    EXPECT_EQ(form().tabOrrery.selected, 1);
}

TEST_F(ParameterFormTest, OkWithoutAnyCalendarStoresThat)
{
    Open().monthly.chkOutCalendar.Toggle();
    form().yearly.chkOutCalendar.Toggle();
    form().monthly.txtSheetName.Type("");
    form().cmdOK_Click();
    EXPECT_FALSE(working.sets.Monthly.Output);
    EXPECT_FALSE(working.sets.Yearly.Output);
    EXPECT_EQ(working.sets.Monthly.SheetName, "Sheet2");
    EXPECT_TRUE(working.monthlyChanged);
    EXPECT_FALSE(form().isOpen);
    EXPECT_TRUE(desktop.calls.empty());
}

TEST_F(ParameterFormTest, AnUnknownLayoutHasToBeChosen)
{
    working.sets.Yearly.MonthLayout = 5;
    Open().cmdOK_Click();
    EXPECT_EQ(desktop.calls, Calls{"Report: Please select the layout of months."});
    EXPECT_EQ(form().tabOrrery.selected, 2);
    EXPECT_EQ(form().focus, &form().yearly.cboLayoutofMonths);
    EXPECT_EQ(working.sets.Yearly.MonthLayout, 5);
}

TEST_F(ParameterFormTest, AnInvalidIntervalThrowsAndTheDialogStaysOpen)
{
    Open().yearly.cboLayoutofMonths.Select(0);
    form().yearly.txtColIntervalofMonth.Type("");
    EXPECT_THROW(form().cmdOK_Click(), Error);
    EXPECT_TRUE(form().isOpen);
    EXPECT_EQ(working.sets.Yearly.MonthLayout, 3);
    EXPECT_TRUE(desktop.calls.empty());
}

/// Records what the dialog shows when a problem is reported.
class RecordingDesktop : public FakeDesktop {
public:
    void Report(const std::string& text) override
    {
        FakeDesktop::Report(text);
        tabAtReport = form->tabOrrery.selected;
        focusAtReport = form->focus;
    }

    const ParameterForm* form = nullptr;
    int tabAtReport = 0;
    const Control* focusAtReport = nullptr;
};

TEST_F(ParameterFormTest, AFailureIsReportedBeforeTheTabAndTheFocusMove)
{
    RecordingDesktop witness;
    ParameterForm dialog(working, names, app::TemplateLocation{}, engines, witness);
    witness.form = &dialog;
    dialog.yearly.txtSheetName.Type("");
    EXPECT_FALSE(dialog.ValidateYParameters());
    EXPECT_EQ(witness.tabAtReport, 1);
    EXPECT_EQ(witness.focusAtReport, nullptr);
    EXPECT_EQ(dialog.tabOrrery.selected, 2);
    EXPECT_EQ(dialog.focus, &dialog.yearly.txtSheetName);
    EXPECT_EQ(dialog.tabOrrery.yearlyCaption, "Yearly Calendar");
}

// ---- Cancel

TEST_F(ParameterFormTest, CancelAndEscapeStoreNothing)
{
    const auto before = working.sets;
    for (const bool escape : {false, true}) {
        Open().monthly.txtSheetName.Type("Other");
        form().monthly.chkOutCalendar.Toggle();
        form().yearly.cboLayoutofMonths.Select(0);
        form().yearly.holidays.Clear();
        form().SetYHolidayChanged();
        if (escape)
            form().Form_KeyPress(27);
        else
            form().cmdCancel_Click();
        EXPECT_FALSE(form().isOpen);
        EXPECT_EQ(working.sets.Monthly, before.Monthly);
        EXPECT_EQ(working.sets.Yearly, before.Yearly);
        EXPECT_FALSE(working.Changed());
    }
}

TEST_F(ParameterFormTest, OtherKeysDoNotClose)
{
    Open().Form_KeyPress('a');
    EXPECT_TRUE(form().isOpen);
}

// ---- the holiday dialog

class ChangeHolidayTest : public testing_support::ScratchFolderTest {
protected:
    void SetUp() override
    {
        Write("holiday/new.hol", "0704, DAY, Independence Day\n");
        Write("template/Desk.ini", "[Monthly Calendar]\nHoliday=0101, DAY, Monthly rule\n"
                                   "[Yearly Calendar]\nHoliday=0102, DAY, Yearly rule\n");
        form_.emplace(working_, names_,
                      app::TemplateLocation{At("template/"), At("holiday/"), "Desk.xls"}, engines_,
                      desktop_);
    }
    /// The user chooses an entry in the holiday dialog.
    static void Choose(HolidayForm& viewer, int index)
    {
        viewer.cboHolidayFile.Select(index);
        viewer.cboHolidayFile_Click();
    }

    const model::NameTables names_ = TwoNameLists();
    app::WorkingSets working_{ValidSets(), true, false, false};
    fake::Engines engines_;
    FakeDesktop desktop_;
    std::optional<ParameterForm> form_;
};

TEST_F(ChangeHolidayTest, AFileReplacesTheHolidaysOfItsCalendar)
{
    desktop_.onHoliday = [](HolidayForm& viewer) {
        Choose(viewer, 1);
        viewer.cmdOK_Click();
    };
    form_->cmdMChangeHoliday_Click();
    EXPECT_EQ(desktop_.calls, Calls{"ShowModal: frmHoliday"});
    EXPECT_EQ(form_->monthly.lblHolidaySample.caption, " Independence Day");
    EXPECT_TRUE(form_->monthly.holidaysChanged);
    EXPECT_EQ(form_->yearly.lblHolidaySample.caption, " New Year");
    EXPECT_FALSE(form_->yearly.holidaysChanged);
    EXPECT_EQ(working_.sets.Monthly.Holidays.Count(), 2) << "stored only by OK";

    form_->cmdOK_Click();
    ASSERT_EQ(working_.sets.Monthly.Holidays.Count(), 1);
    EXPECT_EQ(working_.sets.Monthly.Holidays[0].DateCode, 704);
    EXPECT_TRUE(working_.monthlyChanged);
    EXPECT_FALSE(working_.yearlyChanged);
}

TEST_F(ChangeHolidayTest, AChosenRegionIsStoredWithItsCalendar)
{
    Write("holiday/new.hol", "# Regions: BY Bayern\n0106,FIXED,Epiphany\n> only in BY\n");
    desktop_.onHoliday = [](HolidayForm& viewer) {
        Choose(viewer, 1);
        viewer.rules.cboRegion.Select(1);
        viewer.rules.cboRegion_Click();
        viewer.cmdOK_Click();
    };
    form_->cmdYChangeHoliday_Click();
    form_->cmdOK_Click();
    EXPECT_EQ(working_.sets.Yearly.ShownHolidays.region, "BY");
    EXPECT_EQ(working_.sets.Monthly.ShownHolidays.region, "");
    EXPECT_TRUE(working_.yearlyChanged);
    EXPECT_FALSE(working_.monthlyChanged);
}

TEST_F(ChangeHolidayTest, TheViewerTellsTheNextDaysFromTheYearOn)
{
    std::string title;
    desktop_.onHoliday = [&](HolidayForm& viewer) { title = viewer.rules.titles.at(2); };
    form_->cmdMChangeHoliday_Click();
    EXPECT_EQ(title, "Next");
    form_->SetYear(2027);
    form_->cmdMChangeHoliday_Click();
    EXPECT_EQ(title, "Next from 2027");
}

TEST_F(ChangeHolidayTest, EachCalendarHasItsOwnSectionOfTheTemplate)
{
    desktop_.onHoliday = [](HolidayForm& viewer) {
        Choose(viewer, 0);
        viewer.cmdOK_Click();
    };
    form_->cmdMChangeHoliday_Click();
    form_->cmdYChangeHoliday_Click();
    EXPECT_EQ(form_->monthly.lblHolidaySample.caption, " Monthly rule");
    EXPECT_EQ(form_->yearly.lblHolidaySample.caption, " Yearly rule");
    EXPECT_TRUE(form_->monthly.holidaysChanged);
    EXPECT_TRUE(form_->yearly.holidaysChanged);
}

TEST_F(ChangeHolidayTest, ACancelledViewerChangesNothing)
{
    desktop_.onHoliday = [](HolidayForm& viewer) {
        Choose(viewer, 1);
        viewer.cmdCancel_Click();
    };
    form_->cmdYChangeHoliday_Click();
    EXPECT_EQ(form_->yearly.lblHolidaySample.caption, " New Year");
    EXPECT_FALSE(form_->yearly.Changed());
}

TEST_F(ChangeHolidayTest, TheTemplateIsOfferedOnlyWithAParameterFile)
{
    std::vector<std::string> entries;
    desktop_.onHoliday = [&](HolidayForm& viewer) { entries = viewer.cboHolidayFile.entries; };
    form_->cmdMChangeHoliday_Click();
    EXPECT_EQ(entries, (Calls{"(Template)", "new.hol"}));
    working_.parameterFileExists = false;
    form_->cmdMChangeHoliday_Click();
    EXPECT_EQ(entries, Calls{"new.hol"});
}

} // namespace
} // namespace orrery::ui
