#pragma once

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/notebook.h>
#include <wx/spinbutt.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/toplevel.h>
#include <wx/window.h>

/// What the portable toolkit does not do and each system does differently.
namespace orrery::ui::wx {

/// Makes the label the name of the field: its mnemonic moves the focus there, and screen readers
/// read it.
void AssociateLabel(wxStaticText& label, wxWindow& field);

/// Moves the window again when it becomes visible: some window managers ignore earlier moves.
void MoveWhenShown(wxTopLevelWindow& window, const wxPoint& position);

/// Sets the name that screen readers read.
void SetAccessibleName(wxWindow& control, const wxString& name);

/// Makes screen readers read the whole dialog when it opens.
void SetDialogRole(wxWindow& dialog);

/// A drop-down list that may be narrower than its longest entry, which is then cut off, and that
/// stays open when a layout leaves it in its place.
wxChoice* NewDropDownList(wxWindow& parent);

/// The window's font under the name of its own family: graphics contexts draw nothing in a font
/// whose name only stands for another.
wxFont GraphicsFontOf(const wxWindow& window);

/// Makes a text box of one line as high as its theme draws it: the toolkit may leave out the frame.
void FitHeight(wxTextCtrl& box);

/// Leaves room between the edge of a text box of several lines and its text.
void PadText(wxTextCtrl& box);

/// Makes the arrows beside a text box no higher than the box if possible.
void FitArrows(wxSpinButton& arrows, const wxWindow& box);

/// Sets a tab's caption with the mnemonic underlined. The dialog handles the key.
void ShowTabCaption(wxNotebook& tabs, size_t page, const wxString& caption);

/// Shows a message box with the style of a message dialog and returns the button's id, such as
/// wxID_YES. Shows the style's icon on every system.
int ShowMessageBox(wxWindow* parent, const wxString& text, const wxString& title, long style);

/// Makes sure that the window's new layout is shown: GTK forgets one that comes soon after a change
/// of size.
void ShowLayout(wxWindow& window);

/// Handles the user's input for one control, in the middle of something long. Other input is
/// dropped.
void HandleInputOf(wxWindow& control);

/// Highlights the button as the main action of its window.
void Emphasize(wxButton& button);

} // namespace orrery::ui::wx
