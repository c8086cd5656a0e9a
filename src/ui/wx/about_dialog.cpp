#include "ui/wx/dialogs.h"
#include "ui/wx/native/icons.h"
#include "ui/wx/native/text.h"
#include "ui/wx/widgets.h"

#include <wx/hyperlink.h>

#include <utility>

namespace orrery::ui::wx {
namespace {

constexpr int kLargeLogo = 128;   // device-independent pixels
constexpr int kNoticeWidth = 180; // dialog units, which grow with the font
constexpr float kNameScale = 2.0F;

/// A link whose clicks go to the form.
wxHyperlinkCtrl* AddLink(wxDialog& dialog, Binder& binder, const Label& state, Handler onClick)
{
    const wxString text = ToWx(state.caption);
    auto* const link = new wxHyperlinkCtrl(&dialog, wxID_ANY, text, text, wxDefaultPosition,
                                           wxDefaultSize, wxHL_ALIGN_LEFT | wxNO_BORDER);
    binder.BindControl(state, *link, {});
    link->Bind(wxEVT_HYPERLINK,
               [&binder, onClick = std::move(onClick)](wxHyperlinkEvent&) { binder.Run(onClick); });
    return link;
}

wxSizer* BuildLinks(wxDialog& dialog, AboutForm& form, Binder& binder)
{
    auto* const grid = new wxFlexGridSizer(2, dialog.FromDIP(wxSize(8, 2)));
    const auto centre = wxSizerFlags().CentreVertical();
    grid->Add(AddLabel(dialog, binder, form.lblEmailTo), centre);
    grid->Add(AddLink(dialog, binder, form.lblEmail, [&form] { form.lblEmail_Click(); }), centre);
    grid->Add(AddLabel(dialog, binder, form.lblWeb), centre);
    grid->Add(AddLink(dialog, binder, form.lblHomePage, [&form] { form.lblHomePage_Click(); }),
              centre);
    return grid;
}

wxSizer* BuildTexts(wxDialog& dialog, AboutForm& form, Binder& binder)
{
    auto* const texts = new wxBoxSizer(wxVERTICAL);
    auto* const name = AddLabel(dialog, binder, form.lblSysName);
    name->SetFont(name->GetFont().Bold().Scaled(kNameScale));
    texts->Add(name);
    texts->Add(AddLabel(dialog, binder, form.lblSysVer), wxSizerFlags().Border(wxBOTTOM));
    texts->Add(AddWrappedLabel(dialog, binder, form.lblCopyright,
                               dialog.ConvertDialogToPixels(wxSize(kNoticeWidth, -1)).x),
               wxSizerFlags(1).Expand().Border(wxTOP | wxBOTTOM));
    texts->Add(BuildLinks(dialog, form, binder), wxSizerFlags().Border(wxTOP));
    return texts;
}

} // namespace

void ShowAboutDialog(const DialogContext& context, AboutForm& form)
{
    const auto dialog = MakeDialog(context.parent, form);
    Binder binder(*dialog, form, context.desktop);
    auto* const row = new wxBoxSizer(wxHORIZONTAL);
    auto* const logo = new wxStaticBitmap(dialog.get(), wxID_ANY, Logo(kLargeLogo));
    binder.BindControl(form.imgLogo, *logo, {});
    binder.Describe(form.imgLogo, "Logo");
    row->Add(logo, wxSizerFlags().DoubleBorder(wxRIGHT));
    row->Add(BuildTexts(*dialog, form, binder), wxSizerFlags(1).Expand());

    auto* const close = AddButton(
        *dialog, binder, form.cmdOK, [&form] { form.cmdOK_Click(); }, wxID_OK);
    close->SetDefault();
    close->SetFocus();
    auto* const column = new wxBoxSizer(wxVERTICAL);
    column->Add(row, wxSizerFlags(1).Expand().DoubleBorder());
    column->Add(close, wxSizerFlags().Right().DoubleBorder(wxALL & ~wxTOP));
    binder.BindDialogKeys();
    binder.Show();
    dialog->SetSizerAndFit(column);
    dialog->CentreOnParent();
    dialog->ShowModal();
}

} // namespace orrery::ui::wx
