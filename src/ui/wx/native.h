#pragma once

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/notebook.h>
#include <wx/spinbutt.h>
#include <wx/stattext.h>
#include <wx/toplevel.h>
#include <wx/window.h>

/// What the portable toolkit leaves to the system's own.
namespace orrery::ui::wx {

/// Makes the label the field's: its mnemonic moves the focus there, screen readers say its text.
void RelateLabel(wxStaticText& label, wxWindow& field);

/// Asks the window manager for the place once more when the window has come to the screen: some do
/// not take a place before.
void InsistOnPlace(wxTopLevelWindow& window, const wxPoint& place);

/// The name that screen readers say.
void SetSpokenName(wxWindow& control, const wxString& name);

/// Screen readers then read the whole dialog when it opens.
void SpeakAsDialog(wxWindow& dialog);

/// Lets a drop-down list be narrower than its longest entry, whose end is then left out.
void ShortenEntries(wxChoice& choice);

/// Lets the arrows beside a text box be no higher than the box, where they can be.
void FitArrows(wxSpinButton& arrows, const wxWindow& box);

/// Gives a tab its caption with the mnemonic underlined. The key itself is the dialog's business.
void ShowTabCaption(wxNotebook& tabs, size_t page, const wxString& caption);

/// Shows a message box whose style is that of a message dialog; gives the button's id, such as
/// wxID_YES. The style's icon is shown on every system.
int ShowMessageBox(wxWindow* parent, const wxString& text, const wxString& title, long style);

/// Marks the button as the one that the user came for.
void Emphasize(wxButton& button);

} // namespace orrery::ui::wx
