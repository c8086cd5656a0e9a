#include "ui/wx/dialogs.h"
#include "ui/wx/native/icons.h"
#include "ui/wx/native/native.h"
#include "ui/wx/widgets.h"

#include <algorithm>

namespace orrery::ui::wx {
namespace {

constexpr int kSmallLogo = 64; // device-independent pixels
// Dialog units, which grow with the font.
constexpr int kTipWidth = 200;
constexpr int kTipHeight = 52;
constexpr float kHeadingScale = 1.25F;

/// Enlarges the dialog for a longer tip; it never shrinks.
void GrowForTip(wxDialog& dialog)
{
    if (dialog.GetSizer() == nullptr)
        return;
    const wxSize now = dialog.GetClientSize();
    const int needed = dialog.GetSizer()->ComputeFittingClientSize(&dialog).y;
    dialog.SetClientSize(now.x, std::max(now.y, needed));
}

wxSizer* BuildTip(wxDialog& dialog, TipForm& form, Binder& binder)
{
    auto* const heading = AddLabel(dialog, binder, form.lblDidYouKnow);
    heading->SetFont(heading->GetFont().Bold().Scaled(kHeadingScale));
    const wxSize room = dialog.ConvertDialogToPixels(wxSize(kTipWidth, kTipHeight));
    auto* const tip = AddWrappedLabel(dialog, binder, form.lblTipText, room.x);
    tip->Bind(wxEVT_SIZE, [&dialog](wxSizeEvent& event) {
        GrowForTip(dialog);
        event.Skip();
    });

    auto* const texts = new wxBoxSizer(wxVERTICAL);
    texts->Add(heading, wxSizerFlags().Border(wxBOTTOM));
    texts->Add(tip);
    texts->SetMinSize(room); // the dialog keeps its size for most tips
    auto* const logo = new wxStaticBitmap(&dialog, wxID_ANY, Logo(kSmallLogo));
    SetAccessibleName(*logo, "Logo");
    auto* const row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(logo, wxSizerFlags().DoubleBorder(wxRIGHT));
    row->Add(texts, wxSizerFlags(1).Expand());
    return row;
}

wxSizer* BuildButtons(wxDialog& dialog, TipForm& form, Binder& binder)
{
    auto* const row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(AddCheckBox(dialog, binder, form.chkLoadTipsAtStartup,
                         [&form] { form.chkLoadTipsAtStartup_Click(); }),
             wxSizerFlags().CentreVertical().DoubleBorder(wxRIGHT));
    row->AddStretchSpacer();
    row->Add(AddButton(dialog, binder, form.cmdNextTip, [&form] { form.cmdNextTip_Click(); }));
    auto* const close = AddButton(
        dialog, binder, form.cmdOK, [&form] { form.cmdOK_Click(); }, wxID_OK);
    row->Add(close, wxSizerFlags().Border(wxLEFT));
    close->SetDefault();
    close->SetFocus();
    return row;
}

} // namespace

void ShowTipDialog(const DialogContext& context, TipForm& form)
{
    const auto dialog = MakeDialog(context.parent, form);
    Binder binder(*dialog, form, context.desktop);
    // The buttons first: screen readers would take a label created before a control as its name.
    auto* const buttons = BuildButtons(*dialog, form, binder);
    auto* const column = new wxBoxSizer(wxVERTICAL);
    column->Add(BuildTip(*dialog, form, binder), wxSizerFlags(1).Expand().DoubleBorder());
    column->Add(buttons, wxSizerFlags().Expand().DoubleBorder(wxALL & ~wxTOP));
    binder.BindDialogKeys();
    binder.Show();
    dialog->SetSizerAndFit(column);
    dialog->CentreOnParent();
    dialog->ShowModal();
}

} // namespace orrery::ui::wx
