#include "ui/wx/sheet_pane.h"

#include "ui/wx/native/native.h"
#include "ui/wx/native/text.h"
#include "ui/wx/pointing/mark_styles.h"
#include "ui/wx/widgets.h"

#include <wx/app.h>
#include <wx/sizer.h>

namespace orrery::ui::wx {
namespace {

// Dialog units.
constexpr int kLeastSheetWidth = 120;
constexpr int kLeastSheetHeight = 80;

constexpr int kReasonLines = 6;

} // namespace

SheetPane::SheetPane(wxWindow& parent, wxTopLevelWindow& dialog, SheetGuide& guide, Binder& binder)
    : wxPanel(&parent), guide_(guide), binder_(binder)
{
    view_ = new SheetView(*this, guide, pictures_,
                          [this](const Handler& action) { binder_.Run(action); });
    view_->SetMinSize(ConvertDialogToPixels(wxSize(kLeastSheetWidth, kLeastSheetHeight)));
    binder.BindControl(guide.pvwSheet, *view_, [this] { ShowGuide(); });
    auto* const column = new wxBoxSizer(wxVERTICAL);
    column->Add(view_, wxSizerFlags(1).Expand().Border(wxTOP | wxRIGHT));
    column->Add(AddReasons(), wxSizerFlags().Expand().Border(wxTOP | wxRIGHT));
    auto* const row = new wxBoxSizer(wxHORIZONTAL);
    note_ = AddNote(*this, binder, guide.lblSheet);
    row->Add(note_, wxSizerFlags(1).CentreVertical().Border(wxLEFT | wxRIGHT));
    row->Add(AddButton(*this, binder, guide.cmdPropose, [&guide] { guide.cmdPropose_Click(); }));
    column->Add(row, wxSizerFlags().Expand().Border(wxTOP | wxRIGHT | wxBOTTOM));
    SetSizer(column);

    dialog.Bind(wxEVT_CHILD_FOCUS, [this](wxChildFocusEvent& event) {
        OnFocus(event.GetWindow());
        event.Skip();
    });
    // The dialog is shown before a large template is read.
    Bind(wxEVT_IDLE, [this](wxIdleEvent& event) {
        event.Skip();
        if (!isReady_ && guide_.chkSheet.checked) {
            isReady_ = true;
            binder_.Show();
            if (onReady_)
                onReady_();
        }
    });
}

wxWindow* SheetPane::AddReasons()
{
    auto* const reasons = new wxTextCtrl(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                                         wxTE_MULTILINE | wxTE_READONLY);
    reasons->SetMinSize(wxSize(1, kReasonLines * reasons->GetCharHeight()));
    const TextBox& state = guide_.txtReasons;
    binder_.BindControl(state, *reasons, [this, &state, reasons] {
        const wxString text = ToWx(state.text);
        if (reasons->GetValue() != text)
            reasons->ChangeValue(text);
        if (reasons->IsShown() != state.visible) {
            reasons->Show(state.visible);
            Layout();
        }
    });
    binder_.Describe(state, "Why this is proposed");
    return reasons;
}

void SheetPane::ShowGuide()
{
    if (!isReady_ || !guide_.chkSheet.checked)
        return;
    guide_.Refresh();
    view_->ShowState();
    const bool isWrong = !guide_.Problem().empty();
    if (std::exchange(isWrong_, isWrong) != isWrong) {
        note_->SetForegroundColour(isWrong ? WrongTextColor() : wxNullColour);
        note_->Refresh();
    }
    const std::string description = guide_.Description();
    if (description != description_)
        SetAccessibleName(*view_, ToWx(description));
    description_ = description;
}

void SheetPane::OnFocus(wxWindow* control)
{
    if (control == nullptr || control == view_)
        return;
    field_ = control;
    guide_.FocusMoved(FromWx(control->GetName()));
    if (!isReady_ || !guide_.chkSheet.checked)
        return;
    binder_.Show();
    const auto field = guide_.Pointer().Active();
    if (!field || !IsCellField(*field))
        return;
    for (const MarkedCell& mark : guide_.Pointer().Marks()) {
        if (mark.mark == *field && mark.IsFirst())
            view_->ShowCell(mark.cell);
    }
}

void SheetPane::OnKey(wxKeyEvent& event)
{
    if (event.GetKeyCode() == WXK_ESCAPE && guide_.IsDragging())
        binder_.Run([this] { guide_.CancelDrag(); });
    else if (event.GetKeyCode() == WXK_F6 && view_->IsShownOnScreen())
        SwitchFocus();
    else if (!MoveField(event))
        event.Skip();
}

bool SheetPane::MoveField(const wxKeyEvent& event)
{
    if (event.GetModifiers() != wxMOD_CONTROL || !view_->IsShownOnScreen())
        return false;
    int rows = 0;
    int columns = 0;
    switch (event.GetKeyCode()) {
    case WXK_LEFT:
        columns = -1;
        break;
    case WXK_RIGHT:
        columns = 1;
        break;
    case WXK_UP:
        rows = -1;
        break;
    case WXK_DOWN:
        rows = 1;
        break;
    default:
        return false;
    }
    bool isMoved = false;
    binder_.Run([&] { isMoved = guide_.MoveField(rows, columns); });
    return isMoved;
}

/// Between the field and the sheet.
void SheetPane::SwitchFocus()
{
    if (!view_->HasFocus())
        view_->SetFocus();
    else if (field_ != nullptr)
        field_->SetFocus();
}

} // namespace orrery::ui::wx
