#include "ui/wx/dialogs.h"
#include "ui/wx/native/native.h"
#include "ui/wx/native/text.h"
#include "ui/wx/parameter_page.h"
#include "ui/wx/widgets.h"
#include "ui/wx/window_place.h"

#include <wx/display.h>
#include <wx/notebook.h>

#include <cctype>

namespace orrery::ui::wx {
namespace {

// Device-independent pixels.
constexpr int kMinWidth = 480; // a smaller dialog would be useless
constexpr int kMinHeight = 320;
constexpr int kSpareWidth = 150; // shows more of the name lists if the screen is wide enough

/// Binds the tabs to their state. Toolkits differ in how they handle a tab's mnemonic, so the
/// dialog handles it.
class TabStripBinding {
public:
    TabStripBinding(wxDialog& dialog, wxNotebook& tabs, ParameterForm& form, Binder& binder)
        : tabs_(tabs), form_(form), binder_(binder)
    {
        binder.BindControl(form.tabOrrery, tabs, [this] { Show(); });
        binder.Describe(form.tabOrrery, "Calendars");
        tabs.Bind(wxEVT_NOTEBOOK_PAGE_CHANGED, [this, &form](wxBookCtrlEvent& event) {
            if (form.isOpen && event.GetSelection() + 1 != form.tabOrrery.selected)
                Select(event.GetSelection() + 1);
        });
        dialog.Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
            if (event.GetModifiers() != wxMOD_ALT || !SelectByMnemonic(event.GetKeyCode()))
                event.Skip();
        });
    }

private:
    void Show()
    {
        ShowTabCaption(tabs_, 0, ToWx(form_.tabOrrery.monthlyCaption));
        ShowTabCaption(tabs_, 1, ToWx(form_.tabOrrery.yearlyCaption));
        const int page = form_.tabOrrery.selected - 1;
        if (tabs_.GetSelection() != page)
            tabs_.ChangeSelection(static_cast<size_t>(page));
    }

    void Select(int index)
    {
        binder_.Run([this, index] { form_.tabOrrery_Click(index); });
    }

    bool SelectByMnemonic(int letter)
    {
        if (HasMnemonic(form_.tabOrrery.monthlyCaption, letter))
            Select(1);
        else if (HasMnemonic(form_.tabOrrery.yearlyCaption, letter))
            Select(2);
        else
            return false;
        return true;
    }

    static bool HasMnemonic(const std::string& caption, int letter)
    {
        const auto mark = caption.find('&');
        return mark != std::string::npos && mark + 1 < caption.size() &&
               std::toupper(static_cast<unsigned char>(caption[mark + 1])) == letter;
    }

    wxNotebook& tabs_;
    ParameterForm& form_;
    Binder& binder_;
};

void FitWithSpareWidth(wxDialog& dialog, wxSizer* content)
{
    dialog.SetSizerAndFit(content);
    dialog.SetMinClientSize(dialog.FromDIP(wxSize(kMinWidth, kMinHeight)));
    wxSize size = dialog.GetSize() + dialog.FromDIP(wxSize(kSpareWidth, 0));
    size.DecTo(wxDisplay(&dialog).GetClientArea().GetSize());
    dialog.SetSize(size);
}

} // namespace

void ShowParameterDialog(const DialogContext& context, ParameterForm& form)
{
    const auto dialog =
        MakeDialog(context.parent, form, wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMAXIMIZE_BOX);
    Binder binder(*dialog, form, context.desktop);
    auto* const tabs = new wxNotebook(dialog.get(), wxID_ANY);
    auto* const monthly = new ParameterPage(*tabs, "fraOrrery1", binder, form.monthly, nullptr,
                                            [&form] { form.cmdMChangeHoliday_Click(); });
    auto* const yearly = new ParameterPage(*tabs, "fraOrrery2", binder, form.yearly, &form.yearly,
                                           [&form] { form.cmdYChangeHoliday_Click(); });
    tabs->AddPage(monthly, "");
    tabs->AddPage(yearly, "");
    TabStripBinding strip(*dialog, *tabs, form, binder);
    auto* const ok = AddButton(
        *dialog, binder, form.cmdOK, [&form] { form.cmdOK_Click(); }, wxID_OK);
    auto* const cancel = AddButton(
        *dialog, binder, form.cmdCancel, [&form] { form.cmdCancel_Click(); }, wxID_CANCEL);

    auto* const column = new wxBoxSizer(wxVERTICAL);
    column->Add(tabs, wxSizerFlags(1).Expand().Border());
    column->Add(ButtonRow(*ok, *cancel), wxSizerFlags().Expand().Border(wxALL & ~wxTOP));
    binder.BindDialogKeys();
    binder.Show();
    yearly->AlignWith(*monthly);
    FitWithSpareWidth(*dialog, column);
    monthly->AllowScrolling();
    yearly->AllowScrolling();
    dialog->CentreOnParent();
    RestorePlacement(*dialog, context.settingsFile);
    dialog->ShowModal();
    if (form.isAccepted)
        SavePlacement(*dialog, context.settingsFile);
}

} // namespace orrery::ui::wx
