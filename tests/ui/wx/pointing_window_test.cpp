#include "parameter_dialog_support.h"
#include "screenshot.h"
#include "ui/wx/pointing/sheet_view.h"

#include <gmock/gmock.h>

namespace orrery::ui::wx {
namespace {

using testing::EndsWith;
using testing::StartsWith;

/// The model sheet beside the fields of the parameter dialog. Desk.xlsx has its days from B6 on the
/// sheet "Month", every 4 rows, and from C5 on the sheet "Year", three months side by side.
class PointingWindowTest : public ParameterDialogTest {
protected:
    void OpenSheet()
    {
        Open();
        WaitForSheet();
    }
    static void WaitForSheet()
    {
        WaitFor("the sheet",
                [] { return View().IsShownOnScreen() && View().Painted().bitmaps > 0; });
    }
    static SheetView& View() { return dynamic_cast<SheetView&>(FindControl("pvwSheet")); }
    static wxPoint PlaceOf(const std::string& cell)
    {
        const auto at = model::ReadCell(cell).value();
        return OnMain([at] { return View().ScreenPlaceOf({at.row, at.column}); });
    }
    void WaitForText(const std::string& control, const std::string& text)
    {
        WaitFor(control + " " + text, [&] {
            return dynamic_cast<wxTextCtrl&>(FindControl(control)).GetValue().utf8_string() == text;
        });
    }
};

TEST_F(PointingWindowTest, HeadingsAndSamplesHaveTheirText)
{
    OpenSheet();
    user_->MoveAway();
    const auto file = At("screen.png");
    CaptureScreen(file);
    const wxPoint inColumn = PlaceOf("C1");
    const wxRect view = OnMain([] { return View().GetScreenRect(); });
    const wxRect heading(inColumn.x - 10, view.y + 2, 20, 14);
    const wxRect sample(PlaceOf("C10") - wxPoint(10, 6), wxSize(20, 12));
    for (const wxRect& place : {heading, sample}) {
        const auto colours = OnMain([&] { return CountColours(file, 100, place); });
        EXPECT_GT(colours, 5U) << "letters have many shades";
    }
}

TEST_F(PointingWindowTest, AFieldTakesTheCellThatIsClicked)
{
    OpenSheet();
    user_->Click("txtMFirstCellofMonth");
    user_->ClickAt(PlaceOf("D3"));
    WaitForText("txtMFirstCellofMonth", "D3");
    EXPECT_EQ(user_->Focused(), "txtMFirstCellofMonth");
    user_->Click("txtMFirstCellofDay");
    user_->ClickAt(PlaceOf("C7"));
    WaitForText("txtMFirstCellofDay", "C7");
    WaitForText("txtMFirstCellofMonth", "D3");
}

TEST_F(PointingWindowTest, OutlinesAreDraggedAndCancelTakesItBack)
{
    OpenSheet();
    user_->Drag(PlaceOf("B6"), PlaceOf("C7"));
    WaitForText("txtMFirstCellofDay", "C7");
    user_->Drag(PlaceOf("D7"), PlaceOf("E7")); // the second column
    WaitForText("txtMColInterval", "2");
    user_->Drag(PlaceOf("C11"), PlaceOf("C9")); // the second row
    WaitForText("txtMRowInterval", "2");
    user_->Key(WXK_ESCAPE);
    user_->WaitForWindow("frmMain");
    EXPECT_FALSE(user_->IsEnabled("cmdSave"));
    user_->Click("cmdModify");
    user_->WaitForWindow("frmParameter");
    EXPECT_EQ(user_->TextOf("txtMFirstCellofDay"), "B6");
    EXPECT_EQ(user_->TextOf("txtMColInterval"), "1");
}

TEST_F(PointingWindowTest, EscapeDropsWhatIsDragged)
{
    OpenSheet();
    user_->BeginDrag(PlaceOf("B6"), PlaceOf("C7"));
    WaitForText("txtMFirstCellofDay", "C7");
    // Sent as an event, since the window manager keeps keys while a button is down.
    OnMain([] {
        wxKeyEvent key(wxEVT_CHAR_HOOK);
        key.m_keyCode = WXK_ESCAPE;
        key.SetEventObject(&View());
        return View().ProcessWindowEvent(key);
    });
    WaitForText("txtMFirstCellofDay", "B6");
    user_->ReleaseAt(PlaceOf("C7"));
    EXPECT_EQ(user_->Front(), "frmParameter");
    EXPECT_EQ(user_->TextOf("txtMFirstCellofDay"), "B6");
    user_->Click("cmdOK"); // Return would take a cell of the sheet
    user_->WaitForWindow("frmMain");
    EXPECT_FALSE(user_->IsEnabled("cmdSave"));
}

TEST_F(PointingWindowTest, ANeighbouringBlockChangesTheIntervalOfMonths)
{
    OpenSheet();
    GoToYearly();
    WaitFor("the other sheet", [] { return View().Painted().bitmaps > 1; });
    user_->Drag(PlaceOf("L5"), PlaceOf("M5"));
    WaitForText("txtYColIntervalofMonth", "10");
    EXPECT_EQ(user_->TextOf("txtYFirstCellofDay"), "C5");
}

TEST_F(PointingWindowTest, KeysAloneDoTheSame)
{
    OpenSheet();
    user_->Key('D', wxMOD_ALT);
    user_->WaitForFocus("txtMFirstCellofDay");
    user_->Key(WXK_DOWN, wxMOD_CONTROL);
    WaitForText("txtMFirstCellofDay", "B7");
    user_->Key(WXK_RIGHT, wxMOD_CONTROL);
    WaitForText("txtMFirstCellofDay", "C7");
    user_->Key(WXK_F6);
    user_->WaitForFocus("pvwSheet");
    user_->Key(WXK_DOWN);
    user_->Key(WXK_DOWN);
    user_->Key(WXK_RIGHT);
    user_->Key(WXK_RETURN);
    WaitForText("txtMFirstCellofDay", "B3");
    user_->Key(WXK_F6);
    user_->WaitForFocus("txtMFirstCellofDay");
    EXPECT_EQ(user_->Front(), "frmParameter");
}

TEST_F(PointingWindowTest, TellsWhatIsWrongWhileItIsTyped)
{
    OpenSheet();
    user_->Enter("txtMFirstCellofDay", "6B");
    EXPECT_EQ(user_->TextOf("lblSheet"), "The first cell of day is not valid.");
    user_->Enter("txtMFirstCellofDay", "B6");
    EXPECT_THAT(user_->TextOf("lblSheet"), StartsWith("Click the first cell of day"));
}

TEST_F(PointingWindowTest, DraggingDoesNotPaintTheSheetAgain)
{
    OpenSheet();
    const auto before = OnMain([] { return View().Painted(); });
    user_->Drag(PlaceOf("B6"), PlaceOf("D8"));
    WaitForText("txtMFirstCellofDay", "D8");
    const auto after = OnMain([] { return View().Painted(); });
    EXPECT_GT(after.paints, before.paints);
    EXPECT_EQ(after.bitmaps, before.bitmaps);
}

TEST_F(PointingWindowTest, CanBeHiddenAndIsRemembered)
{
    OpenSheet();
    const auto sizeOf = [](const char* name) {
        return OnMain([name] { return FindControl(name).GetSize(); });
    };
    const wxSize field = sizeOf("txtMFirstCellofDay");
    const int wide = OnMain([] { return FrontWindow()->GetSize().x; });
    user_->Key('V', wxMOD_ALT);
    WaitFor("the narrow dialog", [wide] { return FrontWindow()->GetSize().x < wide; });
    EXPECT_FALSE(user_->IsShown("pvwSheet"));
    EXPECT_EQ(sizeOf("txtMFirstCellofDay"), field);
    Accept();
    WaitFor("the place", [this] { return !Setting("Windows", "frmParameter.Preview").empty(); });
    EXPECT_THAT(Setting("Windows", "frmParameter.Preview"), EndsWith("hidden"));
    user_->Click("cmdModify");
    user_->WaitForWindow("frmParameter");
    EXPECT_FALSE(user_->IsShown("pvwSheet"));
    user_->Key('V', wxMOD_ALT);
    WaitForSheet();
}

TEST_F(PointingWindowTest, ASmallDialogShowsItsControlsAlone)
{
    OpenSheet();
    OnMain([] { FrontWindow()->SetClientSize(FrontWindow()->FromDIP(wxSize(700, 400))); });
    WaitFor("more room", [] { return !FindControl("pvwSheet").IsShownOnScreen(); });
    EXPECT_TRUE(user_->IsShown("cmdOK"));
    OnMain([] { FrontWindow()->SetClientSize(FrontWindow()->FromDIP(wxSize(1400, 500))); });
    WaitForSheet();
}

TEST_F(PointingWindowTest, ListsTheSheetsOfTheTemplate)
{
    OpenSheet();
    user_->Key('S', wxMOD_ALT);
    user_->WaitForFocus("txtMSheetName");
    user_->Key(WXK_DOWN, wxMOD_ALT);
    user_->Key(WXK_DOWN);
    user_->Key(WXK_DOWN);
    user_->Key(WXK_RETURN);
    WaitForText("txtMSheetName", "Year");
}

TEST_F(PointingWindowTest, ProposesWhatTheSheetsTell)
{
    std::filesystem::remove(At("template/Desk.ini"));
    Open();
    EXPECT_EQ(user_->TextOf("txtMSheetName"), "Sheet2");
    EXPECT_FALSE(user_->IsShown("txtReasons"));
    user_->Key('P', wxMOD_ALT);
    WaitForText("txtMSheetName", "Month");
    EXPECT_EQ(user_->TextOf("txtMFirstCellofDay"), "B6");
    EXPECT_TRUE(user_->IsShown("txtReasons"));
    EXPECT_THAT(user_->TextOf("txtReasons"), StartsWith("Please choose Weekday Name: "));
    WaitForSheet();
}

} // namespace
} // namespace orrery::ui::wx
