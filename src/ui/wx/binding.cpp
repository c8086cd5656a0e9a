#include "ui/wx/binding.h"

#include "ui/wx/native/native.h"
#include "ui/wx/native/tabbed_list.h"
#include "ui/wx/native/text.h"
#include "util/error_text.h"

#include <wx/dialog.h>
#include <wx/sizer.h>

#include <algorithm>
#include <cassert>
#include <exception>
#include <utility>

namespace orrery::ui::wx {
namespace {

wxArrayString ArrayToWx(const std::vector<std::string>& texts)
{
    wxArrayString array;
    array.reserve(texts.size());
    for (const std::string& text : texts)
        array.push_back(ToWx(text));
    return array;
}

/// Updates the entries of a drop-down list if they have changed.
class EntriesUpdater {
public:
    void operator()(const ComboBox& state, wxChoice& control)
    {
        if (entries_ != state.entries) {
            control.Set(ArrayToWx(state.entries));
            entries_ = state.entries;
        }
        if (control.GetSelection() != state.selected)
            control.SetSelection(state.selected);
    }

private:
    std::vector<std::string> entries_;
};

void ShowStepper(const UpDown& state, wxSpinButton& control)
{
    long number = 0;
    if (!ToWx(state.buddy.text).ToLong(&number))
        number = state.minimum;
    const int value = static_cast<int>(std::clamp<long>(number, state.minimum, state.maximum));
    if (control.GetValue() != value)
        control.SetValue(value);
}

} // namespace

Binder::Binder(wxTopLevelWindow& window, Form& form, Desktop& desktop)
    : window_(window), form_(form), desktop_(desktop)
{
    window.SetName(ToWx(form.name));
    window.SetTitle(ToWx(form.caption));
}

void Binder::Bind(Label& state, wxStaticText& control)
{
    Add(state, control, {});
    bindings_.back().show = [this, &state, &control] {
        const wxString caption = LinesToWx(state.caption);
        const wxString text = state.isLiteral ? wxControl::EscapeMnemonics(caption) : caption;
        if (control.GetLabel() == text)
            return;
        control.SetLabel(text);
        textChanged_ = true;
    };
}

void Binder::Bind(Button& state, wxControl& control, Handler onClick)
{
    Add(state, control, [&state, &control] {
        const wxString caption = ToWx(state.caption);
        if (control.GetLabel() != caption)
            control.SetLabel(caption);
    });
    control.Bind(wxEVT_BUTTON,
                 [this, onClick = std::move(onClick)](wxCommandEvent&) { Run(onClick); });
}

void Binder::Bind(CheckBox& state, wxCheckBox& control, Handler onClick)
{
    Add(state, control, [&state, &control] {
        if (control.GetValue() != state.checked)
            control.SetValue(state.checked);
    });
    control.Bind(wxEVT_CHECKBOX, [this, &state, onClick = std::move(onClick)](wxCommandEvent&) {
        Run([&] {
            state.Toggle();
            if (onClick)
                onClick();
        });
    });
}

void Binder::Bind(TextBox& state, wxTextCtrl& control, Handler onType)
{
    Add(state, control, [&state, &control] {
        const wxString text = ToWx(state.text);
        if (control.GetValue() != text)
            control.ChangeValue(text); // causes no event, unlike SetValue
    });
    control.Bind(wxEVT_TEXT, [this, &state, &control, onType = std::move(onType)](wxCommandEvent&) {
        Run([&] {
            state.Type(FromWx(control.GetValue()));
            if (onType)
                onType();
        });
    });
}

void Binder::Bind(ComboBox& state, wxChoice& control, Handler onClick)
{
    Add(state, control,
        [&state, &control, shown = EntriesUpdater()]() mutable { shown(state, control); });
    control.Bind(wxEVT_CHOICE, [this, &state, onClick = std::move(onClick)](wxCommandEvent& event) {
        const int chosen = event.GetSelection();
        Run([&] {
            state.Select(chosen);
            if (onClick)
                onClick();
        });
    });
}

void Binder::Bind(ListBox& state, TabbedList& control)
{
    Add(state, control.Window(), [&state, &control] { control.SetLines(state.lines); });
}

void Binder::Bind(UpDown& state, wxSpinButton& control)
{
    control.SetRange(state.minimum, state.maximum);
    Add(state, control, [&state, &control] { ShowStepper(state, control); });
    const auto step = [this, &state](int by) { Run([&] { state.Step(by); }); };
    control.Bind(wxEVT_SPIN_UP, [step](wxSpinEvent&) { step(+1); });
    control.Bind(wxEVT_SPIN_DOWN, [step](wxSpinEvent&) { step(-1); });
    // Some spin buttons also step their own number afterwards.
    control.Bind(wxEVT_SPIN, [this](wxSpinEvent&) { Show(); });
    WindowOf(state.buddy).Bind(wxEVT_KEY_DOWN, [step](wxKeyEvent& event) {
        if (event.GetKeyCode() == WXK_UP)
            step(+1);
        else if (event.GetKeyCode() == WXK_DOWN)
            step(-1);
        else
            event.Skip();
    });
}

void Binder::Bind(ProgressBar& state, wxGauge& control)
{
    Add(state, control, [&state, &control] {
        if (control.GetRange() != state.total)
            control.SetRange(state.total);
        if (control.GetValue() != state.done)
            control.SetValue(state.done);
    });
}

void Binder::BindControl(const Control& state, wxWindow& control, Handler show)
{
    Add(state, control, std::move(show));
}

void Binder::Relate(const Label& label, const Control& field)
{
    auto* const text = dynamic_cast<wxStaticText*>(&WindowOf(label));
    assert(text != nullptr);
    AssociateLabel(*text, WindowOf(field));
}

void Binder::Describe(const Control& control, const std::string& spoken)
{
    SetAccessibleName(WindowOf(control), ToWx(spoken));
}

void Binder::BindDialogKeys()
{
    BindHelpKey();
    window_.Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        if (event.GetKeyCode() == WXK_ESCAPE)
            Run([this] { form_.Form_KeyPress(WXK_ESCAPE); });
        else
            event.Skip();
    });
    window_.Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { Run([this] { form_.Close(); }); });
}

void Binder::BindHelpKey()
{
    window_.Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        if (event.GetKeyCode() == WXK_F1)
            Run([this] { desktop_.ShowHelp(form_.helpPage); });
        else
            event.Skip();
    });
}

void Binder::Run(const Handler& action)
{
    try {
        action();
    }
    catch (const std::exception& error) {
        desktop_.Report(util::ErrorText(error));
    }
    Show();
    if (form_.isOpen)
        return;
    auto* const dialog = dynamic_cast<wxDialog*>(&window_);
    if (dialog != nullptr && dialog->IsModal())
        dialog->EndModal(wxID_OK);
    else if (dialog == nullptr)
        window_.Close();
}

void Binder::RunWhenClosed(const Handler& action)
{
    window_.CallAfter([this, action] {
        Run(action);
        window_.Refresh(); // Windows copies parts of controls that move
    });
}

void Binder::Show()
{
    for (const Binding& binding : bindings_) {
        if (binding.show)
            binding.show();
        binding.control->Enable(binding.state->enabled);
        if (binding.control->IsShown() != binding.state->visible) {
            binding.control->Show(binding.state->visible);
            controlsChanged_ = true;
        }
    }
    if (std::exchange(controlsChanged_, false))
        FitWindow();
    else if (textChanged_)
        window_.Layout();
    textChanged_ = false;
    ApplyFocus();
}

void Binder::FitWindow()
{
    if (wxSizer* const sizer = window_.GetSizer()) {
        const wxSize needed = sizer->CalcMin();
        wxSize size = window_.GetClientSize();
        if (size.y == needed_.y) // it was only as high as needed, so it may shrink again
            size.y = needed.y;
        size.IncTo(needed);
        needed_ = needed;
        window_.SetMinClientSize(needed);
        if (size != window_.GetClientSize())
            window_.SetClientSize(size);
    }
    window_.Layout();
}

void Binder::ApplyFocus()
{
    const Control* const control = std::exchange(form_.focus, nullptr);
    if (control != nullptr)
        WindowOf(*control).SetFocus();
}

void Binder::Add(const Control& state, wxWindow& control, Handler show)
{
    control.SetName(ToWx(state.name));
    bindings_.push_back({&state, &control, std::move(show)});
}

wxWindow& Binder::WindowOf(const Control& state) const
{
    const auto found = std::find_if(bindings_.begin(), bindings_.end(),
                                    [&](const Binding& one) { return one.state == &state; });
    assert(found != bindings_.end());
    return *found->control;
}

} // namespace orrery::ui::wx
