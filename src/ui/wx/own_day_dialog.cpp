#include "ui/wx/dialogs.h"
#include "ui/wx/widgets.h"

#include <memory>
#include <utility>

namespace orrery::ui::wx {
namespace {

// Dialog units, which grow with the font.
constexpr int kNameWidth = 150;
constexpr int kAnswerWidth = 50;
constexpr int kNumberWidth = 30;

/// The dialog with its controls: a row for each question, whose first label stands in a column of
/// its own.
class OwnDayWindow {
public:
    OwnDayWindow(const DialogContext& context, OwnDayForm& form)
        : form_(form), dialog_(MakeDialog(context.parent, form)),
          binder_(*dialog_, form, context.desktop)
    {
        auto* const column = new wxBoxSizer(wxVERTICAL);
        column->Add(BuildQuestions(), wxSizerFlags().Expand().DoubleBorder());
        column->Add(AddNote(*dialog_, binder_, form.lblDate),
                    wxSizerFlags().Expand().DoubleBorder(wxLEFT | wxRIGHT));
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
    wxSizer* BuildQuestions()
    {
        auto* const rows = new wxFlexGridSizer(
            2, wxSize(wxSizerFlags::GetDefaultBorder(), wxSizerFlags::GetDefaultBorder()));
        rows->AddGrowableCol(1);
        AddQuestion(*rows, form_.lblName, form_.txtName, kNameWidth);
        AddQuestion(*rows, form_.lblKind, form_.cboKind,
                    [this] { binder_.RunWhenClosed([this] { form_.cboKind_Click(); }); });
        wxSizer& weekday = AddQuestion(*rows, form_.lblOrdinal, form_.cboOrdinal, AnyChange());
        AddField(weekday, form_.lblWeekday, form_.cboWeekday, AnyChange());
        wxSizer& first = AddQuestion(*rows, form_.lblDay, form_.txtDay, kNumberWidth);
        AddField(first, form_.lblMonth, form_.cboMonth, AnyChange());
        AddField(first, form_.lblYear, form_.txtYear, kNumberWidth);
        wxSizer& last = AddQuestion(*rows, form_.lblLastDay, form_.txtLastDay, kNumberWidth);
        AddField(last, form_.lblLastMonth, form_.cboLastMonth, AnyChange());
        AddField(last, form_.lblLastYear, form_.txtLastYear, kNumberWidth);
        return rows;
    }

    Handler AnyChange()
    {
        return [this] { form_.ShowDate(); };
    }

    /// A row whose other fields can be added to what it returns.
    template <typename Field, typename Detail>
    wxSizer& AddQuestion(wxSizer& rows, Label& label, Field& field, Detail detail)
    {
        rows.Add(AddLabel(*dialog_, binder_, label), wxSizerFlags().CentreVertical());
        auto* const fields = new wxBoxSizer(wxHORIZONTAL);
        fields->Add(Make(field, detail), wxSizerFlags().CentreVertical());
        binder_.Relate(label, field);
        rows.Add(fields);
        return *fields;
    }

    template <typename Field, typename Detail>
    void AddField(wxSizer& row, Label& label, Field& field, Detail detail)
    {
        row.Add(AddLabel(*dialog_, binder_, label),
                wxSizerFlags().CentreVertical().DoubleBorder(wxLEFT));
        row.Add(Make(field, detail), wxSizerFlags().CentreVertical().Border(wxLEFT));
        binder_.Relate(label, field);
    }

    wxWindow* Make(TextBox& field, int width)
    {
        wxTextCtrl* const box = AddTextBox(*dialog_, binder_, field, AnyChange());
        box->SetMinSize(
            wxSize(dialog_->ConvertDialogToPixels(wxSize(width, 0)).x, box->GetMinHeight()));
        return box;
    }

    wxWindow* Make(ComboBox& field, Handler onClick)
    {
        const int width = &field == &form_.cboKind ? kNameWidth : kAnswerWidth;
        return AddChoice(*dialog_, binder_, field, width, std::move(onClick));
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

    OwnDayForm& form_;
    std::unique_ptr<wxDialog> dialog_;
    Binder binder_;
};

} // namespace

void ShowOwnDayDialog(const DialogContext& context, OwnDayForm& form)
{
    OwnDayWindow(context, form).Show();
}

} // namespace orrery::ui::wx
