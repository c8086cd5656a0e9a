#include "ui/country_form.h"
#include "ui/wx/dialogs.h"
#include "ui/wx/native/column_list.h"
#include "ui/wx/widgets.h"

#include <memory>

namespace orrery::ui::wx {
namespace {

// Dialog units, which grow with the font.
constexpr int kPlaceNameWidth = 130;
constexpr int kOwnNameWidth = 110;
constexpr int kPlacesWidth = 260;
constexpr int kPlacesHeight = 160;
constexpr int kLinesOfPage = 10;

/// The dialog with its controls. Up and down in the text box move through the list.
class CountryWindow {
public:
    CountryWindow(const DialogContext& context, CountryForm& form)
        : form_(form),
          dialog_(MakeDialog(context.parent, form, wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER)),
          binder_(*dialog_, form, context.desktop)
    {
        auto* const column = new wxBoxSizer(wxVERTICAL);
        column->Add(BuildFind(), wxSizerFlags().Expand().DoubleBorder());
        column->Add(AddLabel(*dialog_, binder_, form.lblPlaces), Line());
        column->Add(BuildList(), Line().Proportion(1).Expand());
        column->Add(AddNote(*dialog_, binder_, form.lblNone), Line().Expand());
        column->Add(BuildButtons(), wxSizerFlags().Expand().DoubleBorder());
        binder_.BindDialogKeys();
        binder_.Show();
        dialog_->SetSizerAndFit(column);
    }

    void Show()
    {
        dialog_->CentreOnParent();
        find_->SetFocus();
        dialog_->ShowModal();
    }

private:
    static wxSizerFlags Line() { return wxSizerFlags().DoubleBorder(wxLEFT | wxRIGHT); }

    wxSizer* BuildFind()
    {
        auto* const row = new wxBoxSizer(wxHORIZONTAL);
        row->Add(AddLabel(*dialog_, binder_, form_.lblFind), wxSizerFlags().CentreVertical());
        find_ = AddTextBox(*dialog_, binder_, form_.txtFind, [this] { form_.Find(); });
        find_->Bind(wxEVT_KEY_DOWN, &CountryWindow::OnKey, this);
        row->Add(find_, wxSizerFlags(1).Border(wxLEFT));
        binder_.Relate(form_.lblFind, form_.txtFind);
        return row;
    }

    void OnKey(wxKeyEvent& event)
    {
        const auto move = [this](int lines) { binder_.Run([this, lines] { form_.Move(lines); }); };
        switch (event.GetKeyCode()) {
        case WXK_DOWN:
            return move(1);
        case WXK_UP:
            return move(-1);
        case WXK_PAGEDOWN:
            return move(kLinesOfPage);
        case WXK_PAGEUP:
            return move(-kLinesOfPage);
        default:
            event.Skip();
        }
    }

    wxWindow* BuildList()
    {
        const auto pixels = [this](int width) {
            return dialog_->ConvertDialogToPixels(wxSize(width, kPlacesHeight));
        };
        list_ = std::make_unique<ColumnList>(
            *dialog_,
            std::vector<ColumnTitle>{{"Holidays of", pixels(kPlaceNameWidth).x},
                                     {"Own Name", pixels(kOwnNameWidth).x}},
            [this](int line) { binder_.Run([this, line] { form_.lstPlaces.Select(line); }); });
        list_->Window().SetMinSize(pixels(kPlacesWidth));
        binder_.BindControl(form_.lstPlaces, list_->Window(), [this] {
            list_->Show(form_.lstPlaces.lines, form_.lstPlaces.selected);
        });
        binder_.Relate(form_.lblPlaces, form_.lstPlaces);
        return &list_->Window();
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

    CountryForm& form_;
    std::unique_ptr<wxDialog> dialog_;
    Binder binder_;
    wxTextCtrl* find_ = nullptr;
    std::unique_ptr<ColumnList> list_;
};

} // namespace

void ShowCountryDialog(const DialogContext& context, CountryForm& form)
{
    CountryWindow(context, form).Show();
}

} // namespace orrery::ui::wx
