#include "look/display/now.h"
#include "ui/pointing/sheet_guide.h"
#include "ui/wx/dialogs.h"
#include "ui/wx/native/native.h"
#include "ui/wx/native/text.h"
#include "ui/wx/parameter_page.h"
#include "ui/wx/preview/preview_splitter.h"
#include "ui/wx/sheet_pane.h"
#include "ui/wx/widgets.h"
#include "ui/wx/window_place.h"

#include <wx/display.h>
#include <wx/notebook.h>
#include <wx/panel.h>

#include <cctype>
#include <ctime>
#include <memory>
#include <optional>
#include <utility>

namespace orrery::ui::wx {
namespace {

// Device-independent pixels.
constexpr int kMinWidth = 480; // a smaller dialog would be useless
constexpr int kMinHeight = 320;
constexpr int kSpareWidth = 150; // shows more of the name lists if the screen is wide enough
constexpr int kSheetWidth = 480; // beside the controls
constexpr int kLeastSheet = 260;
constexpr int kSheetHeight = 300; // below the controls
constexpr int kHeightWithSheet = 520;

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

/// As the main window's picture in the same section of the settings.
constexpr const char* kSheetPlace = "frmParameter.Preview";

/// The tabs and the buttons, with the model sheet at their right or below them.
class ParameterWindow {
public:
    ParameterWindow(const DialogContext& context, ParameterForm& form)
        : context_(context), form_(form), guide_(form, look::LocalSerial(std::time(nullptr))),
          dialog_(MakeDialog(context.parent, form,
                             wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMAXIMIZE_BOX)),
          binder_(*dialog_, form, context.desktop), splitter_(new PreviewSplitter(*dialog_)),
          controls_(new wxPanel(splitter_))
    {
        BuildControls();
        auto* const pane = new SheetPane(*splitter_, *dialog_, guide_, binder_);
        binder_.BindDialogKeys();
        dialog_->Bind(wxEVT_CHAR_HOOK, [pane](wxKeyEvent& event) { pane->OnKey(event); });
        pane->OnReady([this] { Complete(); });
        binder_.Show();
        yearly_->AlignWith(*monthly_);
        Place(*pane);
    }

    void Show()
    {
        dialog_->ShowModal();
        if (!form_.isAccepted)
            return;
        SavePlacement(*dialog_, context_.settingsFile);
        WritePlacement(kSheetPlace, splitter_->Placement(), context_.settingsFile);
    }

private:
    void BuildControls()
    {
        auto* const tabs = new wxNotebook(controls_, wxID_ANY);
        monthly_ = new ParameterPage(*tabs, "fraOrrery1", binder_, form_.monthly, nullptr,
                                     Actions([this] { form_.cmdMChangeHoliday_Click(); }));
        yearly_ = new ParameterPage(*tabs, "fraOrrery2", binder_, form_.yearly, &form_.yearly,
                                    Actions([this] { form_.cmdYChangeHoliday_Click(); }));
        tabs->AddPage(monthly_, "");
        tabs->AddPage(yearly_, "");
        strip_.emplace(*dialog_, *tabs, form_, binder_);
        auto* const ok = AddButton(
            *controls_, binder_, form_.cmdOK, [this] { form_.cmdOK_Click(); }, wxID_OK);
        auto* const cancel = AddButton(
            *controls_, binder_, form_.cmdCancel, [this] { form_.cmdCancel_Click(); }, wxID_CANCEL);
        auto* const row = new wxBoxSizer(wxHORIZONTAL);
        row->Add(AddCheckBox(*controls_, binder_, guide_.chkSheet,
                             [this] { ShowSheet(guide_.chkSheet.checked); }),
                 wxSizerFlags().CentreVertical());
        row->Add(ButtonRow(*ok, *cancel), wxSizerFlags(1));
        auto* const column = new wxBoxSizer(wxVERTICAL);
        column->Add(tabs, wxSizerFlags(1).Expand().Border());
        column->Add(row, wxSizerFlags().Expand().Border(wxALL & ~wxTOP));
        controls_->SetSizer(column);
    }

    PageActions Actions(Handler changeHoliday)
    {
        return {std::move(changeHoliday), [this] { return guide_.Sheets().Names(); },
                [this](const std::string& name) { guide_.ChooseSheet(name); }};
    }

    /// What needs the template, which is read when the dialog is seen.
    void Complete()
    {
        if (form_.OpensWithProposal())
            binder_.Run([this] { guide_.ProposeAll(); });
        const auto names = guide_.Sheets().Names();
        monthly_->CompleteSheetNames(names);
        yearly_->CompleteSheetNames(names);
    }

    /// As it was when the dialog was last closed by OK, or at first as large as is comfortable.
    void Place(SheetPane& pane)
    {
        good_ = controls_->GetSizer()->CalcMin();
        auto* const column = new wxBoxSizer(wxVERTICAL);
        column->Add(splitter_, wxSizerFlags(1).Expand());
        dialog_->SetSizer(column);
        splitter_->Initialize(*controls_, pane);
        splitter_->RestorePlacement(ReadPlacement(kSheetPlace, context_.settingsFile));
        if (form_.OpensWithProposal())
            splitter_->ShowPicture(true);
        guide_.chkSheet.checked = splitter_->IsPictureShown();
        splitter_->SetControlsSize(good_);
        monthly_->AllowScrolling();
        yearly_->AllowScrolling();
        dialog_->SetMinClientSize(dialog_->FromDIP(wxSize(kMinWidth, kMinHeight)));
        dialog_->SetClientSize(ClientSize(guide_.chkSheet.checked));
        ShowSwatches(guide_.chkSheet.checked);
        binder_.Show();
        dialog_->CentreOnParent();
        RestorePlacement(*dialog_, context_.settingsFile);
    }

    /// What is comfortable and fits the screen.
    wxSize ClientSize(bool hasSheet) const
    {
        const wxSize frame = dialog_->GetSize() - dialog_->GetClientSize();
        const wxSize screen = wxDisplay(dialog_.get()).GetClientArea().GetSize() - frame;
        wxSize size = good_ + dialog_->FromDIP(wxSize(hasSheet ? kSheetWidth : kSpareWidth, 0));
        const int narrow = good_.x + dialog_->FromDIP(kLeastSheet);
        if (hasSheet && screen.x < narrow)
            size = {good_.x + dialog_->FromDIP(kSpareWidth),
                    good_.y + dialog_->FromDIP(kSheetHeight)};
        else if (hasSheet)
            size.IncTo(wxSize(0, dialog_->FromDIP(kHeightWithSheet)));
        size.DecTo(screen);
        return size;
    }

    /// The dialog becomes wider by the sheet, or narrower.
    void ShowSheet(bool isShown)
    {
        splitter_->ShowPicture(isShown);
        ShowSwatches(isShown);
        if (!dialog_->IsMaximized())
            dialog_->SetClientSize(ClientSize(isShown));
    }

    void ShowSwatches(bool isShown)
    {
        monthly_->ShowSwatches(isShown);
        yearly_->ShowSwatches(isShown);
    }

    const DialogContext& context_;
    ParameterForm& form_;
    SheetGuide guide_;
    std::unique_ptr<wxDialog> dialog_;
    Binder binder_;
    PreviewSplitter* splitter_;
    wxPanel* controls_;
    ParameterPage* monthly_ = nullptr;
    ParameterPage* yearly_ = nullptr;
    std::optional<TabStripBinding> strip_;
    wxSize good_; ///< of the controls
};

} // namespace

void ShowParameterDialog(const DialogContext& context, ParameterForm& form)
{
    ParameterWindow(context, form).Show();
}

} // namespace orrery::ui::wx
