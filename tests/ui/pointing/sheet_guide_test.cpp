#include "ui/pointing/sheet_guide.h"

#include "ui/pointing/pointing_test.h"

#include <gmock/gmock.h>

namespace orrery::ui {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The model sheets of a template with the sheets "Sheet1" and "Sheet2"; on the second the cell
/// C3 says "Title" and D3:F3 are merged.
class SheetGuideTest : public ParameterTest {
protected:
    SheetGuideTest()
    {
        book::SheetLook first;
        first.name = "Sheet1";
        first.styles.resize(1);
        book::SheetLook second = first;
        second.name = "Sheet2";
        book::Cell title;
        title.address = {3, 3};
        title.content = std::string("Title");
        second.cells.push_back(title);
        second.merges.push_back({{3, 4}, {3, 6}});
        engines.sheetsToSee = {first, second};
        Open();
    }
    SheetGuide& Guide()
    {
        if (!guide_)
            guide_.emplace(form(), 46000);
        guide_->Refresh();
        return *guide_;
    }

private:
    std::optional<SheetGuide> guide_;
};

TEST_F(SheetGuideTest, ShowsTheSheetOfTheTabInFront)
{
    EXPECT_EQ(Guide().Sheets().Picture()->Name(), "Sheet2");
    form().tabOrrery_Click(2);
    EXPECT_EQ(Guide().Sheets().Picture()->Name(), "Sheet1");
    EXPECT_EQ(&Guide().Pointer().Tab(), &form().yearly);
    EXPECT_THAT(Guide().Sheets().Names(), ElementsAre("Sheet1", "Sheet2"));
}

TEST_F(SheetGuideTest, ShowsEveryMarkedCellAndSpareOnes)
{
    const auto range = Guide().Sheets().Picture()->Layout().range;
    EXPECT_TRUE(range.Contains(At("H31"))); // the last holiday
    EXPECT_TRUE(range.Contains(At("AE37")));
    const auto version = Guide().Sheets().Version();
    form().monthly.txtFirstCellofYear.Type("AZ40");
    EXPECT_TRUE(Guide().Sheets().Picture()->Layout().range.Contains(At("AZ40")));
    EXPECT_GT(Guide().Sheets().Version(), version);
}

TEST_F(SheetGuideTest, TheSheetStaysLaidOutWhileOutlinesMove)
{
    const auto version = Guide().Sheets().Version();
    form().monthly.txtFirstCellofDay.Type("C6");
    EXPECT_EQ(Guide().Sheets().Version(), version);
}

TEST_F(SheetGuideTest, ASheetThatIsNotThereHasASentence)
{
    form().monthly.txtSheetName.Type("Sheet3");
    EXPECT_EQ(Guide().Sheets().Picture(), nullptr);
    EXPECT_EQ(Guide().Description(), "The sheet Sheet3 does not exist.");
    form().monthly.txtSheetName.Type("");
    EXPECT_EQ(Guide().Description(), "Please input sheet name.");
    form().monthly.txtSheetName.Type("sheet2");
    EXPECT_NE(Guide().Sheets().Picture(), nullptr);
}

TEST_F(SheetGuideTest, ChoosesASheetOfTheList)
{
    Guide().ChooseSheet("Sheet1");
    EXPECT_EQ(form().monthly.txtSheetName.text, "Sheet1");
    EXPECT_TRUE(form().monthly.txtSheetName.changed);
    EXPECT_EQ(form().focus, &form().monthly.txtSheetName);
}

TEST_F(SheetGuideTest, TheFieldWithTheFocusTakesTheCell)
{
    Guide().FocusMoved("txtMFirstCellofMonth");
    Guide().Click(At("C2"));
    EXPECT_EQ(form().monthly.txtFirstCellofMonth.text, "C2");
    Guide().FocusMoved("pvwSheet"); // stays active while the sheet has the focus
    Guide().Click(At("C1"));
    EXPECT_EQ(form().monthly.txtFirstCellofMonth.text, "C1");
    Guide().FocusMoved("chkMOutYear");
    Guide().Click(At("C2"));
    EXPECT_EQ(form().monthly.txtFirstCellofMonth.text, "C1");
}

TEST_F(SheetGuideTest, OfMergedCellsTheFirstIsTaken)
{
    Guide().FocusMoved("txtMFirstCellofYear");
    Guide().Click(At("E3"));
    EXPECT_EQ(form().monthly.txtFirstCellofYear.text, "D3");
}

TEST_F(SheetGuideTest, AClickOnAnOutlineLeadsToItsField)
{
    Guide().Click(At("B10"));
    EXPECT_EQ(form().focus, &form().monthly.txtFirstCellofDay);
    EXPECT_EQ(form().monthly.txtFirstCellofDay.text, "B5");
    EXPECT_FALSE(form().monthly.Changed());
}

TEST_F(SheetGuideTest, TellsWhatIsWrongOrCanBeDone)
{
    EXPECT_EQ(Guide().lblSheet.caption, Guide().Pointer().Hint());
    form().monthly.txtFirstCellofDay.Type("");
    EXPECT_EQ(Guide().lblSheet.caption, "The first cell of day is not valid.");
}

TEST_F(SheetGuideTest, KeysMoveTheCursorOverMergedCells)
{
    Guide().SetCursor(At("C3"));
    EXPECT_EQ(Guide().Description(), "C3, Title");
    Guide().MoveCursor(0, 1);
    EXPECT_EQ(Guide().Description(), "D3, empty, first cell of month");
    Guide().MoveCursor(0, 1);
    EXPECT_EQ(Guide().Cursor(), At("G3"));
    Guide().MoveCursor(-5, 0);
    EXPECT_EQ(Guide().Cursor(), At("G1"));
    Guide().MoveCursor(0, -10);
    EXPECT_EQ(Guide().Cursor(), At("A1"));
}

TEST_F(SheetGuideTest, DraggingIsSeenAtOnce)
{
    Guide().BeginDrag(At("E3")); // the merged title
    const auto version = Guide().Version();
    Guide().DragTo(At("C2"));
    EXPECT_GT(Guide().Version(), version);
    EXPECT_EQ(form().monthly.txtFirstCellofMonth.text, "C2");
    Guide().CancelDrag();
    EXPECT_EQ(form().monthly.txtFirstCellofMonth.text, "D3");
}

TEST_F(SheetGuideTest, AWorkbookThatCannotBeReadHasASentence)
{
    engines.sheetsToSee.clear();
    EXPECT_EQ(Guide().Sheets().Picture(), nullptr);
    EXPECT_THAT(Guide().Sheets().Names(), IsEmpty());
    EXPECT_EQ(Guide().Description(), "The sheet Sheet2 does not exist.");
}

} // namespace
} // namespace orrery::ui
