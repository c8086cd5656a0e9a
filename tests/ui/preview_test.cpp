#include "ui/preview.h"

#include "app/settings.h"
#include "app/working_sets.h"
#include "engines/engine_choice.h"
#include "places/places.h"
#include "util/file_replace.h"
#include "util/paths.h"
#include "util/scratch_folder_test.h"

#include <chrono>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orrery::ui {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A preview of a copy of a shipped template.
class PreviewTest : public testing_support::ScratchFolderTest {
protected:
    PreviewTest()
    {
        const fs::path shipped = places::SourceFolder() / "data";
        for (const char* const folder : {"template", "holiday"})
            fs::copy(shipped / folder, folder_ / folder);
        fs::copy(shipped / "orrery.ini", folder_ / "orrery.ini");
        settings_ = app::LoadSettings(app::LocationsBeside(At("orrery.ini")));
        Choose("Desk.xlsx");
    }

    void Choose(const std::string& templateFile)
    {
        choice_.templatePath = folder_ / "template" / templateFile;
        choice_.changed = fs::last_write_time(choice_.templatePath);
        choice_.sets = app::LoadWorkingSets(settings_, templateFile).sets;
        choice_.yearText = "2027";
    }
    void Show() { preview_.Show(choice_, settings_.names, 46000); }
    std::vector<std::string> Titles() const
    {
        std::vector<std::string> titles;
        for (const PreviewPage& page : preview_.Pages())
            titles.push_back(page.title);
        return titles;
    }
    /// The only holiday is on January 1.
    void NameNewYear(const std::string& name)
    {
        choice_.sets.Monthly.Holidays.Clear();
        choice_.sets.Monthly.Holidays.Append({101, holidays::kFixedDay, name});
    }

    app::Settings settings_;
    engines::InstalledEngines engines_;
    Preview preview_{"pvwPages", engines_};
    PreviewChoice choice_;
};

TEST_F(PreviewTest, HasTwelveMonthsThenTheYear)
{
    Choose("Year.xlsx");
    choice_.sets.Monthly = [this] {
        auto monthly = app::LoadWorkingSets(settings_, "Desk.xlsx").sets.Monthly;
        monthly.SheetName = choice_.sets.Yearly.SheetName; // a sheet that exists
        return monthly;
    }();
    choice_.sets.Yearly.Output = false;
    Show();
    EXPECT_THAT(Titles(),
                ElementsAre("January", "February", "March", "April", "May", "June", "July",
                            "August", "September", "October", "November", "December"));
    choice_.sets = app::LoadWorkingSets(settings_, "Year.xlsx").sets;
    Show();
    ASSERT_EQ(preview_.Pages().size(), 1U);
    EXPECT_EQ(preview_.Pages().front().month, 0);
    EXPECT_EQ(preview_.Sentence(), "");
}

TEST_F(PreviewTest, ShowsThePageThatTheRunWouldMake)
{
    Show();
    preview_.Select(4);
    look::SheetPicture* const picture = preview_.Picture(4);
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->Name(), "May");
    const auto isDay = [](const std::string& text) {
        return testing::Field(&look::CellBox::display,
                              testing::Field(&look::CellDisplay::text, text));
    };
    EXPECT_THAT(picture->Layout().cells, Contains(isDay("31")));
    EXPECT_THAT(picture->Layout().cells, Contains(isDay("2027")));
    EXPECT_EQ(picture->Layout().pages.size(), 1U);
    EXPECT_EQ(preview_.Description(), "May, page 5 of 13");
}

TEST_F(PreviewTest, KeepsTheMonthWhenTheYearChanges)
{
    Show();
    preview_.Select(8);
    const auto version = preview_.Version();
    choice_.yearText = "2028";
    Show();
    EXPECT_GT(preview_.Version(), version);
    EXPECT_EQ(preview_.Pages()[preview_.Selected()].month, 9);
    Show();
    EXPECT_EQ(preview_.Version(), version + 1) << "nothing has changed";
}

TEST_F(PreviewTest, ATemplateThatWasSavedAgainIsReadAgain)
{
    Show();
    const auto version = preview_.Version();
    choice_.changed += std::chrono::seconds(2);
    Show();
    EXPECT_EQ(preview_.Version(), version + 1);
}

TEST_F(PreviewTest, PagesBeyondTheEndsAreTheLastOnes)
{
    Show();
    preview_.Select(-3);
    EXPECT_EQ(preview_.Selected(), 0U);
    preview_.Select(99);
    EXPECT_EQ(preview_.Selected(), 12U);
}

TEST_F(PreviewTest, AYearThatIsNoneHasASentence)
{
    choice_.yearText = "twenty";
    Show();
    EXPECT_EQ(preview_.Sentence(), "Please inupt a year.");
    EXPECT_THAT(preview_.Pages(), IsEmpty());
    EXPECT_EQ(preview_.Description(), preview_.Sentence());
    choice_.yearText = "40000";
    Show();
    EXPECT_NE(preview_.Sentence(), "");
    choice_.yearText = "2027";
    Show();
    EXPECT_EQ(preview_.Sentence(), "");
}

TEST_F(PreviewTest, ATemplateThatCannotBeReadHasASentenceInOneLine)
{
    util::ReplaceFile(choice_.templatePath, "no workbook");
    Show();
    EXPECT_THAT(preview_.Sentence(), HasSubstr("Desk.xlsx"));
    EXPECT_EQ(preview_.Sentence().find_first_of("\r\n"), std::string::npos);
}

TEST_F(PreviewTest, AModelThatIsMissingHasASentence)
{
    choice_.sets.Monthly.SheetName = "Gone";
    choice_.sets.Yearly.Output = false;
    Show();
    EXPECT_EQ(preview_.Sentence(), "Monthly calendar: The sheet Gone does not exist.");
}

TEST_F(PreviewTest, CalendarsThatAreSwitchedOffHaveASentence)
{
    choice_.sets.Monthly.Output = choice_.sets.Yearly.Output = false;
    Show();
    EXPECT_EQ(preview_.Sentence(), "The parameters of this template make no calendar.");
}

TEST_F(PreviewTest, ANameThatDoesNotFitIsNotedWithItsDay)
{
    std::string name = "The day on which";
    for (int i = 0; i < 40; ++i)
        name += " everybody sleeps until noon";
    NameNewYear(name);
    Show();
    preview_.Picture(0);
    ASSERT_EQ(preview_.Notes().size(), 1U);
    EXPECT_THAT(preview_.Notes().front(),
                testing::AllOf(testing::StartsWith("January: 2027-1-1: \"The day on which"),
                               HasSubstr("\" does not fit into ")));
}

TEST_F(PreviewTest, ANameOutsideOfThePrintedPageIsNoted)
{
    NameNewYear("New Year");
    choice_.sets.Monthly.FirstCellOfHoliday = {300, 40};
    Show();
    preview_.Picture(0);
    ASSERT_EQ(preview_.Notes().size(), 1U);
    EXPECT_THAT(preview_.Notes().front(),
                testing::StartsWith("January: 2027-1-1: \"New Year\" is on no printed page, in "));
}

TEST_F(PreviewTest, ANameUnderMergedCellsIsNoted)
{
    NameNewYear("New Year"); // a Friday
    choice_.sets.Monthly.FirstCellOfHoliday = {2, 3};
    Show();
    preview_.Picture(0);
    EXPECT_THAT(preview_.Notes(),
                ElementsAre("January: 2027-1-1: \"New Year\" is hidden by merged cells in H2."));
}

TEST_F(PreviewTest, MoreSheetsOfPaperThanAreShownAreNoted)
{
    fs::copy_file(places::SourceFolder() / "tests/engines/builtin/xlsx/data/contract.xlsx",
                  folder_ / "template/Long.xlsx");
    Choose("Long.xlsx");
    choice_.sets.Monthly.SheetName = "Sheet1";
    choice_.sets.Monthly.RowIntervalOfDay = 400; // some eight papers a week
    choice_.sets.Yearly.Output = false;
    Show();
    const look::SheetPicture* const picture = preview_.Picture(0);
    ASSERT_NE(picture, nullptr);
    const std::size_t papers = picture->Layout().pages.size();
    ASSERT_GT(papers, Preview::kMostPapers);
    EXPECT_THAT(preview_.Notes(), ElementsAre("January: prints on " + std::to_string(papers) +
                                              " sheets of paper; the first 20 are shown."));
}

TEST_F(PreviewTest, ShippedTemplatesHaveNoNotes)
{
    for (const char* const file :
         {"Desk.xlsx", "Notes.xls", "Wall.xlsx", "Family.xls", "Year.xls"}) {
        Choose(file);
        Show();
        while (const auto next = preview_.NextUnseen())
            preview_.Picture(*next);
        EXPECT_THAT(preview_.Notes(), IsEmpty()) << file;
    }
}

TEST_F(PreviewTest, ASentenceReplacesThePages)
{
    Show();
    preview_.ShowSentence("There is no template to show.");
    EXPECT_THAT(preview_.Pages(), IsEmpty());
    EXPECT_EQ(preview_.Sentence(), "There is no template to show.");
    EXPECT_FALSE(preview_.NextUnseen());
    const auto version = preview_.Version();
    preview_.ShowSentence("There is no template to show.");
    EXPECT_EQ(preview_.Version(), version);
}

} // namespace
} // namespace orrery::ui
