#include "ui/wx/widgets.h"

#include "ui/wx/native/icons.h"
#include "ui/wx/native/native.h"
#include "ui/wx/native/text.h"

#include <utility>

namespace orrery::ui::wx {
namespace {

/// Shows a text wrapped to a width.
class WrappedTextUpdater {
public:
    WrappedTextUpdater(const Label& state, wxStaticText& control, int width)
        : state_(state), control_(control), width_(width)
    {
    }

    void operator()()
    {
        if (shown_ == state_.caption)
            return;
        shown_ = state_.caption;
        control_.SetLabelText(LinesToWx(shown_));
        control_.Wrap(width_);
    }

private:
    const Label& state_;
    wxStaticText& control_;
    const int width_;
    std::string shown_;
};

/// The label's text without mnemonic and colon.
std::string AccessibleText(const Label& label)
{
    wxString text = wxControl::RemoveMnemonics(ToWx(label.caption));
    if (text.EndsWith(":"))
        text.RemoveLast();
    return FromWx(text);
}

} // namespace

std::unique_ptr<wxDialog> MakeDialog(wxWindow* parent, const Form& form, long style)
{
    auto dialog = std::make_unique<wxDialog>(parent, wxID_ANY, ToWx(form.caption),
                                             wxDefaultPosition, wxDefaultSize, style);
    dialog->SetIcons(ApplicationIcons());
    SetDialogRole(*dialog);
    return dialog;
}

wxStaticText* AddLabel(wxWindow& parent, Binder& binder, Label& state, long style)
{
    auto* const label =
        new wxStaticText(&parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, style);
    binder.Bind(state, *label);
    return label;
}

wxStaticText* AddWrappedLabel(wxWindow& parent, Binder& binder, Label& state, int width)
{
    auto* const label = new wxStaticText(&parent, wxID_ANY, "");
    binder.BindControl(state, *label, WrappedTextUpdater(state, *label, width));
    return label;
}

wxStaticText* AddNote(wxWindow& parent, Binder& binder, Label& state, long style)
{
    auto* const note = new wxStaticText(&parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                                        style | wxST_NO_AUTORESIZE);
    note->SetMinSize(wxSize(1, note->GetCharHeight())); // a long text widens no window
    binder.BindControl(state, *note, [&state, note] {
        const wxString text = LinesToWx(state.caption);
        if (note->GetLabelText() == text)
            return;
        note->SetLabelText(text);
        note->SetToolTip(text);
    });
    return note;
}

wxTextCtrl* AddTextBox(wxWindow& parent, Binder& binder, TextBox& state, Handler onType)
{
    auto* const box = new wxTextCtrl(&parent, wxID_ANY, ToWx(state.text));
    FitHeight(*box);
    binder.Bind(state, *box, std::move(onType));
    return box;
}

wxCheckBox* AddCheckBox(wxWindow& parent, Binder& binder, CheckBox& state, Handler onClick)
{
    auto* const box = new wxCheckBox(&parent, wxID_ANY, ToWx(state.caption));
    binder.Bind(state, *box, std::move(onClick));
    return box;
}

wxChoice* AddChoice(wxWindow& parent, Binder& binder, ComboBox& state, int width, Handler onClick)
{
    wxChoice* const choice = NewDropDownList(parent);
    // Measured with one entry: an empty list is lower, and with all entries the toolkit would
    // measure each.
    choice->Append("Ag");
    choice->SetSelection(0);
    const int height = choice->GetBestSize().y;
    choice->Clear();
    choice->SetMinSize(wxSize(parent.ConvertDialogToPixels(wxSize(width, -1)).x, height));
    binder.Bind(state, *choice, std::move(onClick));
    return choice;
}

wxButton* AddButton(wxWindow& parent, Binder& binder, Button& state, Handler onClick, wxWindowID id)
{
    auto* const button = new wxButton(&parent, id, ToWx(state.caption));
    binder.Bind(state, *button, std::move(onClick));
    return button;
}

wxSizer* AddSpinField(wxWindow& parent, Binder& binder, const Label& label, TextBox& text,
                      UpDown& upDown)
{
    auto* const field = new wxBoxSizer(wxHORIZONTAL);
    auto* const box = AddTextBox(parent, binder, text);
    field->Add(box, wxSizerFlags(1).Expand());
    auto* const arrows = new wxSpinButton(&parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                          wxSP_VERTICAL | wxSP_ARROW_KEYS);
    binder.Bind(upDown, *arrows);
    binder.Describe(upDown, AccessibleText(label) + ", step");
    FitArrows(*arrows, *box);
    field->Add(arrows, wxSizerFlags().Expand());
    return field;
}

wxSizer* ButtonRow(wxButton& ok, wxButton& cancel)
{
    auto* const row = new wxStdDialogButtonSizer();
    row->AddButton(&ok);
    row->AddButton(&cancel);
    row->Realize();
    ok.SetDefault();
    return row;
}

} // namespace orrery::ui::wx
