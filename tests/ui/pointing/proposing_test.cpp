#include "app/settings.h"
#include "engines/engine_choice.h"
#include "places/places.h"
#include "ui/pointing/pointing_test.h"
#include "ui/pointing/sheet_guide.h"
#include "util/scratch_folder_test.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace orrery::ui {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

/// A shipped template whose parameter file is not there, so that the dialog shows the defaults.
class ProposingTest : public testing_support::ScratchFolderTest {
protected:
    SheetGuide& Open(const std::string& templateFile)
    {
        const fs::path shipped = places::SourceFolder() / "data";
        fs::create_directory(folder_ / "template");
        fs::copy(shipped / "template" / templateFile, folder_ / "template" / templateFile);
        fs::copy(shipped / "holiday", folder_ / "holiday");
        fs::copy(shipped / "orrery.ini", folder_ / "orrery.ini");
        settings_ = app::LoadSettings(app::LocationsBeside(At("orrery.ini")));
        working_ = app::LoadWorkingSets(settings_, templateFile);
        form_.emplace(working_, settings_.names,
                      app::TemplateLocation{At("template/"), At("holiday/"), templateFile},
                      engines_, desktop_);
        guide_.emplace(*form_, 46000);
        guide_->Refresh();
        return *guide_;
    }
    ParameterForm& form() { return *form_; }

    FakeDesktop desktop_;

private:
    engines::InstalledEngines engines_;
    app::Settings settings_;
    app::WorkingSets working_;
    std::optional<ParameterForm> form_;
    std::optional<SheetGuide> guide_;
};

TEST_F(ProposingTest, FillsTheTabInFront)
{
    SheetGuide& guide = Open("Desk.xlsx");
    ASSERT_EQ(form().monthly.txtSheetName.text, "Sheet2");
    EXPECT_FALSE(guide.txtReasons.visible);
    guide.cmdPropose_Click();
    guide.Refresh();
    EXPECT_EQ(form().monthly.txtSheetName.text, "Month");
    EXPECT_EQ(form().monthly.txtFirstCellofDay.text, "B6");
    EXPECT_EQ(form().monthly.txtRowInterval.text, "4");
    EXPECT_EQ(guide.Sheets().Picture()->Name(), "Month");
    EXPECT_TRUE(guide.txtReasons.visible);
    EXPECT_THAT(guide.txtReasons.text, HasSubstr("First Cell of Day is B6: "));
    EXPECT_NE(form().yearly.txtFirstCellofDay.text, "C5");
    form().tabOrrery_Click(2);
    guide.Refresh();
    EXPECT_FALSE(guide.txtReasons.visible);
    guide.cmdPropose_Click();
    guide.Refresh();
    EXPECT_EQ(form().yearly.txtFirstCellofDay.text, "C5");
    EXPECT_EQ(form().yearly.txtColIntervalofMonth.text, "9");
}

TEST_F(ProposingTest, NothingIsStoredBeforeOk)
{
    Open("Desk.xlsx").ProposeAll();
    EXPECT_EQ(form().Sets().Monthly.SheetName, "Sheet2");
    form().cmdOK_Click();
    EXPECT_TRUE(form().isAccepted);
    EXPECT_EQ(form().Sets().Monthly.SheetName, "Month");
    EXPECT_EQ(form().Sets().Yearly.SheetName, "Year");
}

TEST_F(ProposingTest, OfAYearPageAloneTheMonthsAreNotOutput)
{
    SheetGuide& guide = Open("Year.xlsx");
    ASSERT_TRUE(form().monthly.chkOutCalendar.checked);
    guide.ProposeAll();
    guide.Refresh();
    EXPECT_FALSE(form().monthly.chkOutCalendar.checked);
    EXPECT_FALSE(form().monthly.txtFirstCellofDay.enabled);
    EXPECT_TRUE(form().yearly.chkOutCalendar.checked);
    EXPECT_EQ(form().tabOrrery.selected, 2);
    EXPECT_EQ(guide.Sheets().Picture()->Name(), form().yearly.txtSheetName.text);
    form().tabOrrery_Click(1);
    guide.Refresh();
    EXPECT_THAT(guide.txtReasons.text, StartsWith("No monthly calendar was found"));
}

} // namespace
} // namespace orrery::ui
