#pragma once

#include "main_thread.h"
#include "ui/wx/native/text.h"
#include "window_test.h"

#include <wx/clipbrd.h>

namespace orrery::ui::wx {

/// The parameter dialog, as the user sees it.
class ParameterDialogTest : public WindowTest {
protected:
    void Open() { StartModifying("Desk.xlsx"); }
    /// Switches to the other tab by its mnemonic.
    void GoToYearly() { GoTo('Y', "fraOrrery2"); }
    void GoToMonthly() { GoTo('M', "fraOrrery1"); }
    bool IsMonthlyInFront() const { return user_->IsShown("fraOrrery1"); }
    /// Presses Return, because OK is the default button; the dialog closes.
    void Accept()
    {
        user_->Key(WXK_RETURN);
        user_->WaitForWindow("frmMain");
    }
    /// What the user copied in another program.
    static void PutOnClipboard(const std::string& text)
    {
        OnMain([text] {
            const wxClipboardLocker clipboard;
            wxTheClipboard->SetData(new wxTextDataObject(ToWx(text)));
        });
    }

private:
    void GoTo(char mnemonic, const std::string& tab)
    {
        constexpr auto kGlance = std::chrono::seconds(3);
        const auto isShown = [&tab] { return FindControl(tab).IsShownOnScreen(); };
        user_->Key(mnemonic, wxMOD_ALT);
        // On a busy machine a key may get lost in a window that has just opened.
        if (!HappensWithin(kGlance, isShown))
            user_->Key(mnemonic, wxMOD_ALT);
        WaitFor("the tab " + tab, isShown);
    }
};

} // namespace orrery::ui::wx
