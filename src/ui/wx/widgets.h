#pragma once

#include "ui/wx/binding.h"

#include <wx/bmpbndl.h>
#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>

#include <memory>
#include <string>

/// Each function creates a control that is bound to its state and shows it. The parent owns the
/// control.
namespace orrery::ui::wx {

/// Creates the dialog of a form, without its controls.
std::unique_ptr<wxDialog> MakeDialog(wxWindow* parent, const Form& form,
                                     long style = wxDEFAULT_DIALOG_STYLE);

wxStaticText* AddLabel(wxWindow& parent, Binder& binder, Label& state, long style = 0);
/// A label whose text is wrapped to at most `width` pixels.
wxStaticText* AddWrappedLabel(wxWindow& parent, Binder& binder, Label& state, int width);
/// A line of text that is cut where its window is too narrow, at the end or as `style` says; the
/// whole is its tooltip.
wxStaticText* AddNote(wxWindow& parent, Binder& binder, Label& state,
                      long style = wxST_ELLIPSIZE_END);
wxTextCtrl* AddTextBox(wxWindow& parent, Binder& binder, TextBox& state, Handler onType = {});
wxCheckBox* AddCheckBox(wxWindow& parent, Binder& binder, CheckBox& state, Handler onClick = {});
/// A drop-down list at least `width` dialog units wide, whatever its entries.
wxChoice* AddChoice(wxWindow& parent, Binder& binder, ComboBox& state, int width,
                    Handler onClick = {});
wxButton* AddButton(wxWindow& parent, Binder& binder, Button& state, Handler onClick,
                    wxWindowID id = wxID_ANY);
/// A text box and the arrows that step its number, as one field.
wxSizer* AddSpinField(wxWindow& parent, Binder& binder, const Label& label, TextBox& text,
                      UpDown& upDown);

/// OK and Cancel in the platform's order and place.
wxSizer* ButtonRow(wxButton& ok, wxButton& cancel);

} // namespace orrery::ui::wx
