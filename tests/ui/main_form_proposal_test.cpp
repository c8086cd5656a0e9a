#include "ui/main/main_form.h"
#include "ui/parameter_form.h"

#include "engines/engine_choice.h"
#include "places/places.h"
#include "ui/fake_desktop.h"
#include "util/file_replace.h"
#include "util/scratch_folder_test.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orrery::ui {
namespace {

namespace fs = std::filesystem;

/// An installation whose template folder has Desk.xlsx with its parameters, and
/// workbooks without: Mine.xlsx, which is the same, Wall.xlsx and Year.xlsx.
class InstallationTest : public testing_support::ScratchFolderTest {
protected:
    InstallationTest()
    {
        const fs::path shipped = places::SourceFolder() / "data";
        fs::copy(shipped / "orrery.ini", folder_ / "orrery.ini");
        fs::create_directories(folder_ / "template");
        CopyTemplate("Desk.xlsx", "template/Desk.xlsx");
        CopyTemplate("Desk.ini", "template/Desk.ini");
        CopyTemplate("Desk.xlsx", "template/Mine.xlsx");
        CopyTemplate("Wall.xlsx", "template/Wall.xlsx");
        CopyTemplate("Year.xlsx", "template/Year.xlsx");
        system_.executable = At("");
    }

    void CopyTemplate(const std::string& shipped, const std::string& name) const
    {
        fs::copy_file(places::SourceFolder() / "data/template" / shipped, folder_ / name,
                      fs::copy_options::overwrite_existing);
    }

    app::SystemFolders system_;
    engines::InstalledEngines engines_;
    FakeDesktop desktop_;
};

/// Its main window.
class ProposalTest : public InstallationTest {
protected:
    ProposalTest() { form_.Form_Load({2026, 11}); }

    void Choose(const std::string& templateFile)
    {
        const auto& entries = form_.cboTemplateFile.entries;
        const auto found = std::find(entries.begin(), entries.end(), templateFile);
        ASSERT_NE(found, entries.end()) << templateFile;
        form_.cboTemplateFile.Select(static_cast<int>(found - entries.begin()));
        Leave();
        form_.RefreshPreview();
    }
    /// Chooses the selected template and does not save what was changed before.
    void Leave()
    {
        if (form_.working.Changed())
            desktop_.answers.push_back(false);
        form_.cboTemplateFile_Click();
    }
    bool IsShown() const
    {
        EXPECT_EQ(form_.lblProposal.visible, form_.cmdUseProposal.visible);
        EXPECT_EQ(form_.lblProposal.visible, form_.cmdLookFirst.visible);
        return form_.lblProposal.visible;
    }
    static std::string CellOfDay(const app::WorkingSets& working)
    {
        return model::FormatCellRef(working.sets.Monthly.FirstCellOfDay);
    }

    MainForm form_{system_, engines_, desktop_};
};

TEST_F(ProposalTest, SaysWhatWasFoundInATemplateWithoutParameters)
{
    EXPECT_FALSE(IsShown());
    Choose("Mine.xlsx");
    ASSERT_TRUE(IsShown());
    EXPECT_EQ(form_.lblProposal.caption,
              "Orrery found a month grid on 'Month' and a year page on 'Year'. The sheets do not "
              "tell the names of the weekdays or the names of the months.");
    EXPECT_TRUE(form_.lblProposal.isLiteral);
    Choose("Year.xlsx");
    ASSERT_TRUE(IsShown());
    EXPECT_THAT(form_.lblProposal.caption,
                testing::StartsWith("Orrery found a year page on 'Year'."));
}

TEST_F(ProposalTest, ShowsThePagesOfTheProposalAsAnExample)
{
    Choose("Mine.xlsx");
    EXPECT_TRUE(form_.pvwPages.IsExample());
    EXPECT_EQ(form_.pvwPages.Pages().size(), 13U);
    EXPECT_EQ(form_.lblNotes.caption, "These pages come with the parameters that were found.");
    form_.cmdUseProposal_Click();
    form_.RefreshPreview();
    EXPECT_FALSE(form_.pvwPages.IsExample());
    EXPECT_EQ(form_.pvwPages.Pages().size(), 13U);
    EXPECT_NE(form_.lblNotes.caption, "These pages come with the parameters that were found.");
}

TEST_F(ProposalTest, IsHiddenWithParameters)
{
    Choose("Mine.xlsx");
    Choose("Desk.xlsx");
    EXPECT_FALSE(IsShown());
}

TEST_F(ProposalTest, IsHiddenUntilTheNextTemplateWasLookedAt)
{
    Choose("Mine.xlsx");
    form_.cboTemplateFile.Select(2);
    Leave();
    EXPECT_FALSE(IsShown());
}

TEST_F(ProposalTest, UseThisTakesTheParametersAndStoresNothing)
{
    Choose("Mine.xlsx");
    form_.cmdUseProposal_Click();
    EXPECT_FALSE(IsShown());
    EXPECT_EQ(form_.focus, &form_.cmdGenerate);
    EXPECT_TRUE(form_.working.sets.Monthly.Output);
    EXPECT_EQ(form_.working.sets.Monthly.SheetName, "Month");
    EXPECT_EQ(CellOfDay(form_.working), "B6");
    EXPECT_EQ(form_.working.sets.Yearly.SheetName, "Year");
    EXPECT_TRUE(form_.cmdSave.enabled);
    EXPECT_FALSE(fs::exists(folder_ / "template/Mine.ini"));
    form_.RefreshPreview();
    EXPECT_EQ(form_.pvwPages.Pages().size(), 13U);
    EXPECT_FALSE(IsShown());
    form_.cmdSave_Click();
    EXPECT_TRUE(fs::exists(folder_ / "template/Mine.ini"));
    EXPECT_FALSE(IsShown());
}

TEST_F(ProposalTest, LookFirstShowsTheParametersInTheDialog)
{
    Choose("Wall.xlsx");
    const std::string before = CellOfDay(form_.working);
    desktop_.onParameter = [&](ParameterForm& dialog) {
        EXPECT_EQ(dialog.monthly.txtSheetName.text, "Month");
        EXPECT_TRUE(dialog.monthly.chkOutCalendar.checked);
        EXPECT_EQ(dialog.monthly.txtFirstCellofDay.text, "B17");
        EXPECT_FALSE(dialog.yearly.chkOutCalendar.checked);
        EXPECT_EQ(CellOfDay(form_.working), before) << "nothing is stored";
        dialog.cmdCancel_Click();
    };
    form_.cmdLookFirst_Click();
    EXPECT_TRUE(IsShown()) << "after Cancel";
    EXPECT_EQ(CellOfDay(form_.working), before);
    desktop_.onParameter = [](ParameterForm& dialog) { dialog.cmdOK_Click(); };
    form_.cmdLookFirst_Click();
    EXPECT_FALSE(IsShown()) << "after OK";
    EXPECT_EQ(form_.focus, &form_.cmdGenerate);
    EXPECT_EQ(form_.working.sets.Monthly.SheetName, "Month");
    EXPECT_TRUE(form_.cmdSave.enabled);
}

TEST_F(ProposalTest, IsHiddenAfterOtherParametersWereTyped)
{
    Choose("Mine.xlsx");
    form_.working.sets.Monthly.SheetName = "Other";
    form_.RefreshTemplates();
    EXPECT_FALSE(IsShown());
}

TEST_F(ProposalTest, FollowsTheTemplateWhenItIsSavedAgain)
{
    Choose("Mine.xlsx");
    CopyTemplate("Year.xlsx", "template/Mine.xlsx");
    fs::last_write_time(folder_ / "template/Mine.xlsx",
                        fs::file_time_type::clock::now() + std::chrono::seconds(5));
    form_.RefreshPreview();
    ASSERT_TRUE(IsShown());
    EXPECT_THAT(form_.lblProposal.caption, testing::HasSubstr("a year page on 'Year'"));
}

TEST_F(ProposalTest, NothingIsProposedForWhatCannotBeRead)
{
    Write("template/Notes.xlsx", "no workbook");
    form_.RefreshTemplates();
    Choose("Notes.xlsx");
    EXPECT_FALSE(IsShown());
    EXPECT_TRUE(desktop_.TakeCalls().empty());
}

TEST_F(ProposalTest, ADroppedWorkbookEndsInAProposal)
{
    CopyTemplate("Desk.xlsx", "Own.xlsx");
    form_.DropFiles({At("Own.xlsx")});
    form_.RefreshPreview();
    EXPECT_EQ(form_.CurrentTemplate(), "Own.xlsx");
    EXPECT_TRUE(IsShown());
}

} // namespace
} // namespace orrery::ui
