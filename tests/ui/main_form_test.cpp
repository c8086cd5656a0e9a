#include "ui/about_form.h"
#include "ui/main_form_support.h"
#include "ui/parameter_form.h"
#include "ui/tip_form.h"
#include "util/text.h"

namespace orrery::ui {
namespace {

namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

constexpr const char* kQuestion = "Ask: The parameters for Plain.xlsx has been changed.\r\n"
                                  "Do you want to save the changes?";

TEST_F(MainFormTest, ControlsHaveTheirCaptions)
{
    const MainForm& form = Open();
    EXPECT_EQ(form.name, "frmMain");
    EXPECT_EQ(form.caption, "Orrery");
    EXPECT_EQ(form.lblTemplateFile.caption, "Template &File:");
    EXPECT_EQ(form.cmdOpenTemplate.caption, "O&pen");
    EXPECT_EQ(form.lblYear.caption, "&Year:");
    EXPECT_EQ(form.lblParameter.caption, "Parameters:");
    EXPECT_EQ(form.cmdModify.caption, "&Modify");
    EXPECT_EQ(form.cmdSave.caption, "&Save");
    EXPECT_EQ(form.cmdGenerate.caption, "&Generate");
    EXPECT_EQ(form.cmdHelp.caption, "&Help");
    EXPECT_EQ(form.cmdAbout.caption, "&About");
    EXPECT_EQ(form.cmdExit.caption, "E&xit");
}

// ---- start-up

TEST_F(MainFormTest, StartsWithTheTemplatesAndNoneChosen)
{
    const MainForm& form = Open();
    EXPECT_EQ(form.cboTemplateFile.entries, (Texts{"Desk.xls", "Plain.xlsx"}));
    EXPECT_EQ(Selected(), "none");
    EXPECT_EQ(form.CurrentTemplate(), "");
    EXPECT_FALSE(form.lblEmptyFolder.visible);
    EXPECT_FALSE(form.cmdCopyTemplates.visible);
    EXPECT_FALSE(form.prgRun.visible);
    EXPECT_FALSE(form.cmdOpenFolder.visible);
    EXPECT_EQ(desktop_.TakeCalls(), Texts());
}

struct YearCase {
    const char* name;
    app::YearAndMonth today;
    const char* expected;
};

class FirstYearTest : public MainFormTest, public testing::WithParamInterface<YearCase> {};

TEST_P(FirstYearTest, IsNextYearFromJulyOn)
{
    EXPECT_EQ(Open(GetParam().today).txtYear.text, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Days, FirstYearTest,
                         testing::Values(YearCase{"January", {2027, 1}, "2027"},
                                         YearCase{"June", {2027, 6}, "2027"},
                                         YearCase{"July", {2027, 7}, "2028"},
                                         YearCase{"December", {2027, 12}, "2028"}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(MainFormTest, TheYearStepsFrom1To6553)
{
    MainForm& form = Open();
    form.txtYear.text = "6553";
    form.updYear.Step(1);
    EXPECT_EQ(form.txtYear.text, "6553");
    form.txtYear.text = "1";
    form.updYear.Step(-1);
    EXPECT_EQ(form.txtYear.text, "1");
}

TEST_F(MainFormTest, TheFirstStartCopiesTheInstalledFiles)
{
    system_ = {At("bin/"), At("config/"), At("data/"), At("installed/")};
    Write("installed/orrery.ini", "[Environment]\nShowTips=N\n");
    Write("installed/template/Wall.xlsx", "workbook");
    const MainForm& form = Open();
    EXPECT_EQ(form.cboTemplateFile.entries, Texts{"Wall.xlsx"});
    EXPECT_EQ(form.CurrentLocations().settingsFile, At("config/orrery/orrery.ini"));
    EXPECT_EQ(form.CurrentSettings().TemplatePath, At("data/orrery/template/"));
    EXPECT_TRUE(fs::is_directory(At("data/orrery/holiday")));
    EXPECT_FALSE(form.CurrentSettings().ShowTips);
}

TEST_F(MainFormTest, UnreadableSettingsAreReportedWhenTheWindowIsVisible)
{
    system_ = {At("bin/"), At(""), At("data/"), ""};
    fs::create_directories(At("orrery/orrery.ini"));
    MainForm& form = Open();
    EXPECT_EQ(desktop_.TakeCalls(), Texts());
    form.ReportUnreadableSettings();
    EXPECT_EQ(desktop_.TakeCalls(),
              Texts{"Report: \"" + At("orrery/orrery.ini") +
                    "\" is not a regular file: it is a folder. Only regular files are read and "
                    "replaced: use another name, or put a file in its place."});
    fs::remove(At("orrery/orrery.ini"));
    form.ReportUnreadableSettings();
    EXPECT_EQ(desktop_.TakeCalls(), Texts()) << "settings may be missing";
}

TEST_F(MainFormTest, AParameterFileThatCannotBeReadIsReported)
{
    fs::remove(At("template/Desk.ini"));
    fs::create_directory(At("template/Desk.ini"));
    const MainForm& form = OpenWith("Desk.xls");
    EXPECT_EQ(desktop_.TakeCalls(),
              Texts{"Report: \"" + At("template/Desk.ini") +
                    "\" is not a regular file: it is a folder. Only regular files are read and "
                    "replaced: use another name, or put a file in its place."});
    EXPECT_FALSE(form.working.parameterFileExists);
    EXPECT_TRUE(form.working.Changed()) << "the sets are the defaults";
    EXPECT_EQ(form.CurrentTemplate(), "Desk.xls");
}

struct TipCase {
    const char* name;
    const char* setting;
    bool shown;
};

class TipAtStartupTest : public MainFormTest, public testing::WithParamInterface<TipCase> {};

TEST_P(TipAtStartupTest, IsShownUnlessTheSettingIsN)
{
    Write("orrery.ini", std::string("[Environment]\n") + GetParam().setting);
    Write("tips.txt", "The tip\n");
    std::string tip;
    desktop_.onTip = [&](TipForm& form) { tip = form.lblTipText.caption; };
    MainForm& form = Open();
    EXPECT_EQ(desktop_.TakeCalls(), Texts()) << "not before the window is on the screen";
    form.ShowTipAtStartup();
    EXPECT_EQ(desktop_.TakeCalls(), GetParam().shown ? Texts{"ShowModal: frmTip"} : Texts());
    EXPECT_EQ(tip, GetParam().shown ? "The tip" : "");
}

INSTANTIATE_TEST_SUITE_P(
    Settings, TipAtStartupTest,
    testing::Values(TipCase{"Missing", "", true}, TipCase{"Y", "ShowTips=Y\n", true},
                    TipCase{"N", "ShowTips=N\n", false}, TipCase{"SmallN", "ShowTips=n\n", false},
                    TipCase{"No", "ShowTips=No\n", true}, TipCase{"Empty", "ShowTips=\n", true}),
    [](const auto& each) { return std::string(each.param.name); });

// ---- which buttons are enabled

struct StateCase {
    const char* name;
    const char* templateFile; ///< nullptr if none is chosen
    bool edited;
    bool save;
    bool others; ///< Generate, Open, Modify
};

class ButtonsTest : public MainFormTest, public testing::WithParamInterface<StateCase> {};

TEST_P(ButtonsTest, FollowTheState)
{
    const StateCase& state = GetParam();
    const MainForm& form = Open();
    if (state.templateFile != nullptr)
        Choose(state.templateFile);
    if (state.edited)
        EditMonthlySheet("edited");
    EXPECT_EQ(form.cmdSave.enabled, state.save);
    EXPECT_EQ(form.cmdGenerate.enabled, state.others);
    EXPECT_EQ(form.cmdOpenTemplate.enabled, state.others);
    EXPECT_EQ(form.cmdModify.enabled, state.others);
    for (const Button* always : {&form.cmdHelp, &form.cmdAbout, &form.cmdExit})
        EXPECT_TRUE(always->enabled) << always->name;
}

INSTANTIATE_TEST_SUITE_P(States, ButtonsTest,
                         testing::Values(StateCase{"NoTemplate", nullptr, false, false, false},
                                         StateCase{"FileRead", "Desk.xls", false, false, true},
                                         StateCase{"NoFile", "Plain.xlsx", false, true, true},
                                         StateCase{"Edited", "Desk.xls", true, true, true}),
                         [](const auto& each) { return std::string(each.param.name); });

TEST_F(MainFormTest, EitherSetThatChangedEnablesSave)
{
    MainForm& form = OpenWith("Desk.xls");
    form.working.yearlyChanged = true;
    EXPECT_FALSE(form.cmdSave.enabled) << "not before the window is active again";
    form.RefreshTemplates();
    EXPECT_TRUE(form.cmdSave.enabled);
}

// ---- choosing a template

TEST_F(MainFormTest, AParameterFileIsReadOverTheDefaults)
{
    const MainForm& form = OpenWith("Desk.xls");
    EXPECT_EQ(form.CurrentTemplate(), "Desk.xls");
    EXPECT_TRUE(form.working.parameterFileExists);
    EXPECT_FALSE(form.working.Changed());
    EXPECT_EQ(form.working.sets.Monthly.FirstCellOfDay, (model::CellPosition{6, 3}));
    EXPECT_EQ(form.working.sets.Monthly.SheetName, "Sheet2");
}

TEST_F(MainFormTest, WithoutAParameterFileBothSetsCountAsChanged)
{
    const MainForm& form = OpenWith("Plain.xlsx");
    EXPECT_FALSE(form.working.parameterFileExists);
    EXPECT_TRUE(form.working.monthlyChanged);
    EXPECT_TRUE(form.working.yearlyChanged);
    EXPECT_EQ(form.working.sets.Monthly.FirstCellOfDay, (model::CellPosition{5, 2}));
}

TEST_F(MainFormTest, TheCurrentTemplateIsNotReadAgain)
{
    const MainForm& form = OpenWith("Desk.xls");
    EditMonthlySheet("edited");
    Choose("Desk.xls");
    EXPECT_EQ(desktop_.TakeCalls(), Texts());
    EXPECT_EQ(form.working.sets.Monthly.SheetName, "edited");
    EXPECT_TRUE(form.working.monthlyChanged);
}

TEST_F(MainFormTest, AClickWithoutAnEntryDoesNothing)
{
    MainForm& form = OpenWith("Plain.xlsx");
    form.cboTemplateFile.Select(-1);
    form.cboTemplateFile_Click();
    EXPECT_EQ(desktop_.TakeCalls(), Texts());
    EXPECT_EQ(form.CurrentTemplate(), "Plain.xlsx");
}

TEST_F(MainFormTest, UnchangedSetsAreLeftWithoutAQuestion)
{
    OpenWith("Desk.xls");
    Choose("Plain.xlsx");
    EXPECT_EQ(desktop_.TakeCalls(), Texts());
}

TEST_F(MainFormTest, OneChangedSetIsEnoughForTheQuestion)
{
    for (const bool yearly : {false, true}) {
        MainForm& form = OpenWith("Plain.xlsx");
        form.working.monthlyChanged = !yearly;
        form.working.yearlyChanged = yearly;
        desktop_.answers = {false};
        Choose("Desk.xls");
        EXPECT_EQ(desktop_.TakeCalls(), Texts{kQuestion}) << yearly;
    }
}

TEST_F(MainFormTest, AWindowThatIsActiveAgainAfterTheQuestionKeepsTheNewChoice)
{
    MainForm& form = OpenWith("Plain.xlsx");
    desktop_.answers = {false};
    desktop_.onAsk = [&form] { form.RefreshTemplates(); };
    Choose("Desk.xls");
    EXPECT_EQ(desktop_.TakeCalls(), Texts{kQuestion});
    EXPECT_EQ(form.CurrentTemplate(), "Desk.xls");
    EXPECT_EQ(Selected(), "Desk.xls");
}

TEST_F(MainFormTest, YesSavesTheOldTemplatesParametersFirst)
{
    const MainForm& form = OpenWith("Plain.xlsx");
    EditMonthlySheet("mine");
    desktop_.answers = {true};
    Choose("Desk.xls");
    EXPECT_EQ(desktop_.TakeCalls(), (Texts{kQuestion, "Hourglass on", "Hourglass off"}));
    EXPECT_NE(ContentOf("template/Plain.ini").find("SheetName=mine\r\n"), std::string::npos);
    EXPECT_EQ(ContentOf("template/Desk.ini"), "[Monthly Calendar]\nFirstCellOfDay=C6\n");
    EXPECT_EQ(form.CurrentTemplate(), "Desk.xls");
    EXPECT_EQ(form.working.sets.Monthly.SheetName, "Sheet2");
    EXPECT_FALSE(form.cmdSave.enabled);
}

TEST_F(MainFormTest, NoDropsTheChanges)
{
    const MainForm& form = OpenWith("Plain.xlsx");
    desktop_.answers = {false};
    Choose("Desk.xls");
    EXPECT_EQ(desktop_.TakeCalls(), Texts{kQuestion});
    EXPECT_FALSE(fs::exists(At("template/Plain.ini")));
    EXPECT_EQ(form.CurrentTemplate(), "Desk.xls");
    EXPECT_FALSE(form.working.Changed());
}

TEST_F(MainFormTest, AFailedSaveKeepsTheTemplate)
{
    const MainForm& form = OpenWith("Plain.xlsx");
    EditMonthlySheet("mine");
    fs::create_directories(At("template/Plain.ini")); // no file can be written there
    desktop_.answers = {true};
    Choose("Desk.xls");
    EXPECT_EQ(desktop_.TakeCalls().size(), 4U) << "question, hourglass, report";
    EXPECT_EQ(Selected(), "Plain.xlsx");
    EXPECT_EQ(form.CurrentTemplate(), "Plain.xlsx");
    EXPECT_EQ(form.working.sets.Monthly.SheetName, "mine");
    EXPECT_TRUE(form.cmdSave.enabled);
}

// ---- saving

TEST_F(MainFormTest, SaveWritesTheDefaultsAtOnce)
{
    MainForm& form = OpenWith("Plain.xlsx");
    form.cmdSave_Click();
    EXPECT_EQ(desktop_.TakeCalls(), (Texts{"Hourglass on", "Hourglass off"}));
    EXPECT_TRUE(ContentOf("template/Plain.ini").starts_with("[Monthly Calendar]\r\n"));
    EXPECT_TRUE(form.working.parameterFileExists);
    EXPECT_FALSE(form.working.Changed());
    EXPECT_FALSE(form.cmdSave.enabled);
}

TEST_F(MainFormTest, SavedParametersAreReadBack)
{
    MainForm& form = OpenWith("Plain.xlsx");
    EditMonthlySheet("mine");
    form.cmdSave_Click();
    const model::ParameterSets saved = form.working.sets;
    Choose("Desk.xls");
    Choose("Plain.xlsx");
    EXPECT_EQ(form.working.sets.Monthly, saved.Monthly);
    EXPECT_EQ(form.working.sets.Yearly, saved.Yearly);
    EXPECT_EQ(form.working.sets.Monthly.SheetName, "mine");
}

TEST_F(MainFormTest, AfterSavingTheLinesThatAreNotReadAreThoseOfTheNewFile)
{
    Write("template/Desk.ini", "[Monthly Calendar]\nHoliday1=?\nFirstCellOfDay=C6\n");
    MainForm& form = OpenWith("Desk.xls");
    const auto& problems = form.working.monthlyProblems;
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].line, 2U);
    form.cmdSave_Click();
    const std::string saved = ContentOf("template/Desk.ini");
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(util::SplitLines(saved).at(problems[0].line - 1), "Holiday1=?");
    EXPECT_TRUE(form.working.yearlyProblems.empty());
}

TEST_F(MainFormTest, AFailedSaveIsReportedAndKeepsTheFlags)
{
    MainForm& form = OpenWith("Plain.xlsx");
    fs::create_directories(At("template/Plain.ini"));
    form.cmdSave_Click();
    EXPECT_EQ(desktop_.TakeCalls(),
              (Texts{"Hourglass on", "Hourglass off",
                     "Report: \"" + At("template/Plain.ini") +
                         "\" is not a regular file: it is a folder. Only regular files are read "
                         "and replaced: use another name, or put a file in its place."}));
    EXPECT_FALSE(form.working.parameterFileExists);
    EXPECT_TRUE(form.working.monthlyChanged);
    EXPECT_TRUE(form.working.yearlyChanged);
    EXPECT_TRUE(form.cmdSave.enabled);
}

TEST_F(MainFormTest, WithoutATemplateNothingIsSavedOrOpened)
{
    MainForm& form = Open();
    form.working.monthlyChanged = true;
    form.cmdSave_Click();
    form.cmdOpenTemplate_Click();
    EXPECT_EQ(desktop_.TakeCalls(), Texts());
    EXPECT_TRUE(form.working.monthlyChanged);
}

// ---- the other commands

TEST_F(MainFormTest, OpenOpensTheTemplateItself)
{
    OpenWith("Desk.xls").cmdOpenTemplate_Click();
    EXPECT_EQ(desktop_.TakeCalls(), Texts{"Open: " + At("template/Desk.xls")});
}

TEST_F(MainFormTest, ModifyEditsTheWorkingSets)
{
    MainForm& form = OpenWith("Desk.xls");
    desktop_.onParameter = [](ParameterForm& dialog) {
        EXPECT_EQ(dialog.monthly.txtSheetName.text, "Sheet2");
        dialog.monthly.txtSheetName.Type("Sheet1");
        dialog.cmdOK_Click();
    };
    form.cmdModify_Click();
    EXPECT_EQ(desktop_.TakeCalls(), Texts{"ShowModal: frmParameter"});
    EXPECT_EQ(form.working.sets.Monthly.SheetName, "Sheet1");
    EXPECT_TRUE(form.working.monthlyChanged);
    EXPECT_FALSE(form.working.yearlyChanged);
    EXPECT_TRUE(form.cmdSave.enabled);
}

TEST_F(MainFormTest, HelpOpensTheWindowsPage)
{
    MainForm& form = Open();
    form.cmdHelp_Click();
    EXPECT_EQ(form.helpPage, "main");
    EXPECT_EQ(desktop_.TakeCalls(), Texts{"ShowHelp: main"});
}

TEST_F(MainFormTest, AboutShowsTheBuildsVersion)
{
    std::string version;
    desktop_.onAbout = [&](AboutForm& form) { version = form.lblSysVer.caption; };
    Open().cmdAbout_Click();
    EXPECT_EQ(desktop_.TakeCalls(), Texts{"ShowModal: frmAbout"});
    EXPECT_TRUE(version.starts_with("Version "));
}

TEST_F(MainFormTest, ExitClosesWithoutAQuestion)
{
    MainForm& form = OpenWith("Plain.xlsx");
    form.cmdExit_Click();
    EXPECT_FALSE(form.isOpen);
    EXPECT_EQ(desktop_.TakeCalls(), Texts());
    EXPECT_FALSE(fs::exists(At("template/Plain.ini")));
}

/// The looks of the two sheets of every template.
std::vector<book::SheetLook> TwoSheets()
{
    std::vector<book::SheetLook> sheets(2);
    sheets[0].name = "Sheet1";
    sheets[1].name = "Sheet2";
    for (book::SheetLook& sheet : sheets)
        sheet.styles.emplace_back();
    return sheets;
}

TEST_F(MainFormTest, ThePreviewShowsTheFirstTemplateAsAnExample)
{
    engines_.sheetsToSee = TwoSheets();
    MainForm& form = Open();
    form.RefreshPreview();
    EXPECT_TRUE(form.pvwPages.IsExample());
    EXPECT_EQ(form.pvwPages.Pages().size(), 13U);
    EXPECT_EQ(form.lblNotes.caption, "Choose a template.");
    EXPECT_EQ(Selected(), "none");
    EXPECT_TRUE(form.CurrentTemplate().empty());
}

TEST_F(MainFormTest, ThePreviewShowsTheChosenTemplateAndEdits)
{
    engines_.sheetsToSee = TwoSheets();
    MainForm& form = OpenWith("Desk.xls");
    form.RefreshPreview();
    EXPECT_FALSE(form.pvwPages.IsExample());
    EXPECT_EQ(form.pvwPages.Pages().size(), 13U);
    const auto version = form.pvwPages.Version();
    form.RefreshPreview();
    EXPECT_EQ(form.pvwPages.Version(), version);
    form.working.sets.Monthly.Output = false;
    form.RefreshPreview();
    EXPECT_EQ(form.pvwPages.Pages().size(), 1U);
    form.txtYear.Type("");
    form.RefreshPreview();
    EXPECT_EQ(form.pvwPages.Sentence(), "Please inupt a year.");
}

TEST_F(MainFormTest, AnEmptyFolderHasNoPreview)
{
    std::filesystem::remove_all(folder_ / "template");
    std::filesystem::create_directories(folder_ / "template");
    MainForm& form = Open();
    form.RefreshPreview();
    EXPECT_EQ(form.pvwPages.Sentence(), "There is no template to show.");
}

TEST_F(MainFormTest, WhatWillGoWrongIsSaidBelowThePreview)
{
    engines_.sheetsToSee = TwoSheets();
    MainForm& form = OpenWith("Desk.xls");
    form.working.sets.Yearly.SheetName = "Gone";
    form.RefreshPreview();
    EXPECT_EQ(form.lblNotes.caption, "Yearly calendar: The sheet Gone does not exist.");
}

} // namespace
} // namespace orrery::ui
