#include "ui/wx/dialogs.h"
#include "ui/wx/native/tabbed_list.h"
#include "ui/wx/widgets.h"
#include "ui/wx/window_place.h"

namespace orrery::ui::wx {
namespace {

// Dialog units, which grow with the font.
constexpr int kFileWidth = 105;
constexpr int kListWidth = 220;
constexpr int kListHeight = 118;

wxSizer* BuildFileRow(wxDialog& dialog, HolidayForm& form, Binder& binder)
{
    auto* const row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(AddLabel(dialog, binder, form.lblHolidayFile), wxSizerFlags().CentreVertical());
    row->Add(AddChoice(dialog, binder, form.cboHolidayFile, kFileWidth,
                       [&form] { form.cboHolidayFile_Click(); }),
             wxSizerFlags(1).Border(wxLEFT));
    binder.Relate(form.lblHolidayFile, form.cboHolidayFile);
    return row;
}

} // namespace

void ShowHolidayDialog(const DialogContext& context, HolidayForm& form)
{
    const auto dialog =
        MakeDialog(context.parent, form, wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMAXIMIZE_BOX);
    Binder binder(*dialog, form, context.desktop);
    auto* const column = new wxBoxSizer(wxVERTICAL);
    column->Add(BuildFileRow(*dialog, form, binder),
                wxSizerFlags().Expand().DoubleBorder(wxALL & ~wxBOTTOM));
    const auto line = wxSizerFlags().DoubleBorder(wxLEFT | wxRIGHT);
    column->Add(AddLabel(*dialog, binder, form.lblHolidays),
                wxSizerFlags(line).DoubleBorder(wxALL & ~wxBOTTOM));
    column->Add(AddLabel(*dialog, binder, form.lblHolidayList), line);
    TabbedList list(*dialog, form.tabStops, form.lblHolidayList.caption);
    binder.Bind(form.lstHoliday, list);
    binder.Relate(form.lblHolidays, form.lstHoliday);
    list.Window().SetMinSize(dialog->ConvertDialogToPixels(wxSize(kListWidth, kListHeight)));
    column->Add(&list.Window(), wxSizerFlags(line).Proportion(1).Expand());
    column->Add(AddNote(*dialog, binder, form.lblProblems), wxSizerFlags(line).Expand());
    auto* const ok = AddButton(
        *dialog, binder, form.cmdOK, [&form] { form.cmdOK_Click(); }, wxID_OK);
    auto* const cancel = AddButton(
        *dialog, binder, form.cmdCancel, [&form] { form.cmdCancel_Click(); }, wxID_CANCEL);
    column->Add(ButtonRow(*ok, *cancel), wxSizerFlags().Expand().DoubleBorder(wxTOP | wxBOTTOM));

    binder.BindDialogKeys();
    binder.Show();
    dialog->SetSizerAndFit(column);
    dialog->CentreOnParent();
    RestorePlacement(*dialog, context.settingsFile);
    dialog->ShowModal();
    if (form.isAccepted)
        SavePlacement(*dialog, context.settingsFile);
}

} // namespace orrery::ui::wx
