#pragma once

#include "main_thread.h"
#include "window_test.h"

namespace orrery::ui::wx {

/// The parameter dialog, as the user sees it.
class ParameterDialogTest : public WindowTest {
protected:
    void Open() { StartModifying("Desk.xlsx"); }
    /// Switches to the other tab by its mnemonic.
    void GoToYearly()
    {
        user_->Key('Y', wxMOD_ALT);
        WaitFor("the yearly tab", [] { return FindControl("fraOrrery2").IsShownOnScreen(); });
    }
    void GoToMonthly()
    {
        user_->Key('M', wxMOD_ALT);
        WaitFor("the monthly tab", [] { return FindControl("fraOrrery1").IsShownOnScreen(); });
    }
    bool IsMonthlyInFront() const { return user_->IsShown("fraOrrery1"); }
    /// Presses Return, because OK is the default button; the dialog closes.
    void Accept()
    {
        user_->Key(WXK_RETURN);
        user_->WaitForWindow("frmMain");
    }
};

} // namespace orrery::ui::wx
