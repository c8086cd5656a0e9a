#include "ui/wx/dialogs.h"
#include "ui/wx/native/native.h"
#include "ui/wx/widgets.h"

#include <wx/textctrl.h>

#include <memory>
#include <utility>

namespace orrery::ui::wx {
namespace {

// Dialog units, which grow with the font.
constexpr int kImportWidth = 260;
constexpr int kOrderWidth = 80;
constexpr int kEventsHeight = 78; // ten lines
constexpr int kPassedOverHeight = 34;

/// The dialog with its controls, from what was found down to the name that it gets.
class ImportWindow {
public:
    ImportWindow(const DialogContext& context, ImportForm& form)
        : form_(form),
          dialog_(MakeDialog(context.parent, form, wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER)),
          binder_(*dialog_, form, context.desktop)
    {
        auto* const column = new wxBoxSizer(wxVERTICAL);
        column->Add(AddNote(*dialog_, binder_, form.lblKind), Line());
        column->Add(BuildChoices(), Line());
        column->Add(AddNote(*dialog_, binder_, form.lblCounts), Line());
        AddShown(*column, form.lblEvents, form.txtEvents, kEventsHeight, 2);
        AddShown(*column, form.lblPassedOver, form.txtPassedOver, kPassedOverHeight, 1);
        column->Add(BuildTarget(), Line());
        column->Add(AddNote(*dialog_, binder_, form.lblProblem), Line());
        column->Add(BuildButtons(), wxSizerFlags().Expand().DoubleBorder());
        binder_.BindDialogKeys();
        binder_.Show();
        dialog_->SetSizerAndFit(column);
    }

    void Show()
    {
        dialog_->CentreOnParent();
        dialog_->ShowModal();
    }

private:
    static wxSizerFlags Line() { return wxSizerFlags().Expand().DoubleBorder(wxALL & ~wxBOTTOM); }

    wxSizer* BuildChoices()
    {
        auto* const row = new wxBoxSizer(wxHORIZONTAL);
        row->Add(AddLabel(*dialog_, binder_, form_.lblDateOrder), wxSizerFlags().CentreVertical());
        row->Add(
            AddChoice(*dialog_, binder_, form_.cboDateOrder, kOrderWidth,
                      [this] { binder_.RunWhenClosed([this] { form_.cboDateOrder_Click(); }); }),
            wxSizerFlags().CentreVertical().Border(wxLEFT).DoubleBorder(wxRIGHT));
        binder_.Relate(form_.lblDateOrder, form_.cboDateOrder);
        row->Add(AddLabel(*dialog_, binder_, form_.lblYears), wxSizerFlags().CentreVertical());
        wxTextCtrl* const years =
            AddTextBox(*dialog_, binder_, form_.txtYears, [this] { form_.ShowYears(); });
        years->SetHint("All");
        row->Add(years, wxSizerFlags(1).CentreVertical().Border(wxLEFT));
        binder_.Relate(form_.lblYears, form_.txtYears);
        return row;
    }

    /// A text of several lines that can be read and copied.
    void AddShown(wxSizer& column, Label& label, TextBox& text, int height, int share)
    {
        column.Add(AddLabel(*dialog_, binder_, label), Line());
        auto* const box = new wxTextCtrl(dialog_.get(), wxID_ANY, "", wxDefaultPosition,
                                         wxDefaultSize, wxTE_MULTILINE | wxTE_READONLY);
        PadText(*box);
        box->SetMinSize(dialog_->ConvertDialogToPixels(wxSize(kImportWidth, height)));
        binder_.Bind(text, *box);
        binder_.Relate(label, text);
        column.Add(box, wxSizerFlags(share).Expand().DoubleBorder(wxLEFT | wxRIGHT));
    }

    wxSizer* BuildTarget()
    {
        auto* const rows = new wxBoxSizer(wxVERTICAL);
        auto* const row = new wxBoxSizer(wxHORIZONTAL);
        row->Add(AddLabel(*dialog_, binder_, form_.lblTarget), wxSizerFlags().CentreVertical());
        row->Add(AddTextBox(*dialog_, binder_, form_.txtTarget, [this] { form_.ShowTarget(); }),
                 wxSizerFlags(1).CentreVertical().Border(wxLEFT));
        binder_.Relate(form_.lblTarget, form_.txtTarget);
        rows->Add(row, wxSizerFlags().Expand());
        rows->Add(AddCheckBox(*dialog_, binder_, form_.chkReplace, [this] { form_.ShowTarget(); }),
                  wxSizerFlags().Border(wxTOP));
        return rows;
    }

    wxSizer* BuildButtons()
    {
        auto* const ok = AddButton(
            *dialog_, binder_, form_.cmdOK, [this] { form_.cmdOK_Click(); }, wxID_OK);
        auto* const cancel = AddButton(
            *dialog_, binder_, form_.cmdCancel, [this] { form_.cmdCancel_Click(); }, wxID_CANCEL);
        ok->SetDefault();
        return ButtonRow(*ok, *cancel);
    }

    ImportForm& form_;
    std::unique_ptr<wxDialog> dialog_;
    Binder binder_;
};

} // namespace

void ShowImportDialog(const DialogContext& context, ImportForm& form)
{
    ImportWindow(context, form).Show();
}

} // namespace orrery::ui::wx
