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

/// What a user's action does to a form.
using Handler = std::function<void()>;

/// Joins a form's state with the controls of its window. Every control gets the name of its state.
/// An action of the user goes into the state, then the form's handler is called, then the whole
/// state is shown: captions, texts, enabled and visible controls, the focus that the form asked
/// for. A handler that throws ends in the error report box. When the form has closed, the window is
/// closed. Form, desktop and window outlive the binder.
class Binder {
public:
    Binder(wxTopLevelWindow& window, Form& form, Desktop& desktop);

    void Bind(Label& state, wxStaticText& control);
    void Bind(Button& state, wxControl& control, Handler onClick);
    void Bind(CheckBox& state, wxCheckBox& control, Handler onClick = {});
    void Bind(TextBox& state, wxTextCtrl& control);
    void Bind(ComboBox& state, wxChoice& control, Handler onClick = {});
    void Bind(ListBox& state, TabbedList& control);
    void Bind(UpDown& state, wxSpinButton& control);
    void Bind(ProgressBar& state, wxGauge& control);
    /// Something else that follows the state, called after every action.
    void BindShown(const Control& state, wxWindow& control, Handler show);
    /// Makes the label the name of the field: its mnemonic goes there, and screen readers say it.
    void Relate(const Label& label, const Control& field);
    /// A name for screen readers where no label stands beside the control.
    void Describe(const Control& control, const std::string& spoken);
    /// Escape closes the form, as the window's close box does; F1 opens the form's page of help.
    void BindDialogKeys();
    /// F1 alone.
    void BindHelpKey();

    /// Does an action of the user.
    void Run(const Handler& action);
    /// Shows the form's state.
    void Show();

private:
    struct Binding {
        const Control* state;
        wxWindow* control;
        Handler show;
    };

    void Add(const Control& state, wxWindow& control, Handler show);
    /// Makes the window large enough for the controls on show, and no higher if it was no higher.
    void MakeRoom();
    void GiveFocus();
    wxWindow& WindowOf(const Control& state) const;

    wxTopLevelWindow& window_;
    Form& form_;
    Desktop& desktop_;
    std::vector<Binding> bindings_;
    wxSize needed_;               ///< by the controls on show, when the window was last fitted
    bool controlsChanged_ = true; ///< one appeared or disappeared
    bool textChanged_ = false;    ///< a label says something else
};

} // namespace orrery::ui::wx
