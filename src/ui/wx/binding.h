#pragma once

#include "ui/desktop.h"
#include "ui/form.h"

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/control.h>
#include <wx/gauge.h>
#include <wx/spinbutt.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/toplevel.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace orrery::ui::wx {

class TabbedList;

/// A form's response to a user's action.
using Handler = std::function<void()>;

/// Binds a form's state to the controls of its window. Every control gets the name of its state. A
/// user's action changes the state, then the form's handler runs, then the whole state is shown:
/// captions, texts, enabled and visible controls, the requested focus. An exception from a handler
/// is shown in the error report box. The window closes when the form has closed. Form, desktop and
/// window must outlive the binder.
class Binder {
public:
    Binder(wxTopLevelWindow& window, Form& form, Desktop& desktop);

    void Bind(Label& state, wxStaticText& control);
    void Bind(Button& state, wxControl& control, Handler onClick);
    void Bind(CheckBox& state, wxCheckBox& control, Handler onClick = {});
    void Bind(TextBox& state, wxTextCtrl& control, Handler onType = {});
    void Bind(ComboBox& state, wxChoice& control, Handler onClick = {});
    void Bind(ListBox& state, TabbedList& control);
    void Bind(UpDown& state, wxSpinButton& control);
    void Bind(ProgressBar& state, wxGauge& control);
    /// Binds any other control; `show` is called after every action.
    void BindControl(const Control& state, wxWindow& control, Handler show);
    /// Makes the label the name of the field: its mnemonic moves the focus there, and screen
    /// readers read it.
    void Relate(const Label& label, const Control& field);
    /// Sets the name that screen readers read for a control without a label.
    void Describe(const Control& control, const std::string& spoken);
    /// Escape and the window's close box close the form; F1 opens the form's help page.
    void BindDialogKeys();
    /// F1 only.
    void BindHelpKey();

    /// Runs a user's action.
    void Run(const Handler& action);
    /// Runs what a choice causes when its drop-down list is closed: an open list must not be moved
    /// by controls that appear.
    void RunWhenClosed(const Handler& action);
    /// Shows the form's state.
    void Show();

private:
    struct Binding {
        const Control* state;
        wxWindow* control;
        Handler show;
    };

    void Add(const Control& state, wxWindow& control, Handler show);
    /// Makes the window large enough for the visible controls. If it was just high enough before,
    /// it is just high enough afterwards.
    void FitWindow();
    void ApplyFocus();
    wxWindow& WindowOf(const Control& state) const;

    wxTopLevelWindow& window_;
    Form& form_;
    Desktop& desktop_;
    std::vector<Binding> bindings_;
    wxSize needed_;               ///< size that the visible controls needed at the last fit
    bool controlsChanged_ = true; ///< a control appeared or disappeared
    bool textChanged_ = false;    ///< the text of a label changed
};

} // namespace orrery::ui::wx
