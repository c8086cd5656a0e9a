#pragma once

#include "ui/wx/binding.h"

#include <wx/bmpbndl.h>
#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>

#include <memory>
#include <string>

/// Controls made ready: each shows its state from the start and is bound to it. The parent owns
/// them.
namespace orrery::ui::wx {

/// The dialog of a form, without its controls, over the middle of the parent's window.
std::unique_ptr<wxDialog> MakeDialog(wxWindow* parent, const Form& form,
                                     long style = wxDEFAULT_DIALOG_STYLE);

wxStaticText* AddLabel(wxWindow& parent, Binder& binder, Label& state, long style = 0);
/// A label for a user's or maker's text, broken into lines of `width` pixels at most.
wxStaticText* AddWrappedLabel(wxWindow& parent, Binder& binder, Label& state, int width);
wxTextCtrl* AddTextBox(wxWindow& parent, Binder& binder, TextBox& state);
wxCheckBox* AddCheckBox(wxWindow& parent, Binder& binder, CheckBox& state, Handler onClick = {});
/// A drop-down list at least `width` dialog units wide, whatever it holds.
wxChoice* AddChoice(wxWindow& parent, Binder& binder, ComboBox& state, int width,
                    Handler onClick = {});
wxButton* AddButton(wxWindow& parent, Binder& binder, Button& state, Handler onClick,
                    wxWindowID id = wxID_ANY);
/// A text box with the arrows that step its number, as one field.
wxSizer* AddStepped(wxWindow& parent, Binder& binder, const Label& label, TextBox& text,
                    UpDown& upDown);

/// OK and Cancel in the order and place of the platform.
wxSizer* ButtonRow(wxButton& ok, wxButton& cancel);

} // namespace orrery::ui::wx
