#include "ui/wx/main/proposal_bar.h"

#include "ui/wx/native/text.h"
#include "ui/wx/widgets.h"

#include <wx/stattext.h>

namespace orrery::ui::wx {
namespace {

/// A text that is wrapped to the width of its parent, whatever that is.
class WrappedText : public wxStaticText {
public:
    explicit WrappedText(wxWindow& parent)
        : wxStaticText(&parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxST_NO_AUTORESIZE)
    {
        SetMinSize(wxSize(1, GetCharHeight()));
        parent.Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
            FitText(whole_);
            event.Skip();
        });
    }

    /// Shows the text, with the height of its lines.
    void FitText(const wxString& whole)
    {
        const int width = GetParent()->GetClientSize().x - 2 * wxSizerFlags::GetDefaultBorder();
        if (width <= 0 || (whole == whole_ && width == width_))
            return;
        whole_ = whole;
        width_ = width;
        SetLabelText(whole);
        Wrap(width);
        const int lines = static_cast<int>(GetLabel().Freq('\n')) + 1;
        SetMinSize(wxSize(1, lines * GetCharHeight())); // the best size would not get smaller again
    }

private:
    wxString whole_;
    int width_ = 0;
};

} // namespace

wxSizer* MakeProposalBar(wxWindow& parent, MainForm& form, Binder& binder)
{
    auto* const text = new WrappedText(parent);
    binder.BindControl(form.lblProposal, *text,
                       [text, &form] { text->FitText(LinesToWx(form.lblProposal.caption)); });
    auto* const buttons = new wxBoxSizer(wxHORIZONTAL);
    buttons->Add(
        AddButton(parent, binder, form.cmdUseProposal, [&form] { form.cmdUseProposal_Click(); }));
    buttons->Add(
        AddButton(parent, binder, form.cmdLookFirst, [&form] { form.cmdLookFirst_Click(); }),
        wxSizerFlags().Border(wxLEFT));
    auto* const bar = new wxBoxSizer(wxVERTICAL);
    bar->Add(text, wxSizerFlags().Expand().Border());
    bar->Add(buttons, wxSizerFlags().Border(wxLEFT | wxRIGHT | wxBOTTOM));
    return bar;
}

} // namespace orrery::ui::wx
