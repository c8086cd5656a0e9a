#include "ui/wx/main/main_window.h"

#include "ui/wx/main/preview_pane.h"
#include "ui/wx/native/icons.h"
#include "ui/wx/native/native.h"
#include "ui/wx/native/text.h"
#include "ui/wx/widgets.h"
#include "ui/wx/window_place.h"

#include <wx/display.h>
#include <wx/dnd.h>
#include <wx/menu.h>
#include <wx/statline.h>

#include <functional>

namespace orrery::ui::wx {
namespace {

// Dialog units, which grow with the font.
constexpr int kWindowWidth = 272;
constexpr int kTemplateWidth = 105;
constexpr int kYearWidth = 80;
constexpr int kProgressWidth = 74;

constexpr const char* kPreviewPlace = "frmMain.Preview"; // in the settings

constexpr int kEmptyFolderLines = 4; // lines of the text about an empty folder

/// Accepts files that are dropped on the window.
class TemplateDrop : public wxFileDropTarget {
public:
    explicit TemplateDrop(MainWindow& window) : window_(window) {}

    bool OnDropFiles(wxCoord /*x*/, wxCoord /*y*/, const wxArrayString& names) override
    {
        std::vector<std::string> files;
        for (const wxString& name : names)
            files.push_back(FromWx(name));
        // Later, because a question during the drop would block the other program.
        window_.CallAfter([this, files] { window_.DropFiles(files); });
        return true;
    }

private:
    MainWindow& window_;
};

} // namespace

MainWindow::MainWindow(MainForm& form, WxDesktop& desktop)
    : wxFrame(nullptr, wxID_ANY, ""), form_(form), binder_(*this, form, desktop)
{
    SetIcons(ApplicationIcons());
    preview_ = new PreviewSplitter(*this);
    auto* const panel = new wxPanel(preview_);
    Build(*panel);
    auto* const pane = new PreviewPane(*preview_, form, binder_);
    Bind(wxEVT_CHAR_HOOK, [pane](wxKeyEvent& event) {
        if (event.GetKeyCode() == 'P' && event.GetModifiers() == wxMOD_CONTROL)
            pane->Print();
        else
            event.Skip();
    });
    binder_.BindHelpKey();
    binder_.Show();
    preview_->Initialize(*panel, *pane);
    PlacePreview();
    Centre(); // not left to the window manager, so that the tip can be centred over it
    RestorePlacement(*this, form.CurrentLocations().settingsFile);
    SetDropTarget(new TemplateDrop(*this));
    desktop.OnRepaint([this] { binder_.Show(); });
    Bind(wxEVT_CLOSE_WINDOW, &MainWindow::OnClose, this);
    Bind(wxEVT_ACTIVATE, [this](wxActivateEvent& event) {
        if (event.GetActive())
            binder_.Run([this] { form_.RefreshTemplates(); });
        event.Skip();
    });
    Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
        if (event.GetKeyCode() == WXK_F5)
            binder_.Run([this] { form_.RefreshTemplates(); });
        else
            event.Skip();
    });
}

void MainWindow::FinishStartup(const std::vector<std::string>& files)
{
    binder_.Run([this] { form_.ReportUnreadableSettings(); });
    binder_.Run([this] { form_.ShowTipAtStartup(); });
    if (!files.empty())
        DropFiles(files);
}

void MainWindow::DropFiles(const std::vector<std::string>& files)
{
    binder_.Run([&] { form_.DropFiles(files); });
}

bool MainWindow::Layout()
{
    const bool isDone = wxFrame::Layout();
    if (preview_ != nullptr) {
        for (wxWindow* const side : preview_->GetChildren()) {
            side->Layout();
            ShowLayout(*side);
        }
    }
    return isDone;
}

void MainWindow::Build(wxPanel& panel)
{
    auto* const column = new wxBoxSizer(wxVERTICAL);
    const auto row = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP);
    column->Add(BuildTemplateRows(panel), wxSizerFlags(row).DoubleBorder(wxLEFT | wxRIGHT | wxTOP));
    column->Add(BuildEmptyFolder(panel), wxSizerFlags(row).DoubleBorder(wxLEFT | wxRIGHT));
    column->AddStretchSpacer();
    column->Add(BuildCommandRow(panel), wxSizerFlags(row).DoubleBorder(wxLEFT | wxRIGHT | wxTOP));
    column->Add(new wxStaticLine(&panel), wxSizerFlags(row).DoubleBorder(wxTOP));
    column->Add(BuildStatusRow(panel), wxSizerFlags().Expand().Border());
    panel.SetSizer(column);
    showsPreview_->MoveAfterInTabOrder(panel.GetChildren().GetLast()->GetData());

    auto* const frame = new wxBoxSizer(wxVERTICAL);
    frame->Add(preview_, wxSizerFlags(1).Expand());
    SetSizer(frame);
    // Set on the sizer because a minimum of the panel would override what its controls need.
    column->SetMinSize(ConvertDialogToPixels(wxSize(kWindowWidth, -1)));
}

wxSizer* MainWindow::BuildTemplateRows(wxPanel& panel)
{
    const wxSize gap = wxSize(wxSizerFlags::GetDefaultBorder(), wxSizerFlags::GetDefaultBorder());
    auto* const grid = new wxFlexGridSizer(3, gap);
    grid->AddGrowableCol(1);
    const auto centre = wxSizerFlags().CentreVertical();

    grid->Add(AddLabel(panel, binder_, form_.lblTemplateFile), centre);
    grid->Add(AddChoice(panel, binder_, form_.cboTemplateFile, kTemplateWidth,
                        [this] { form_.cboTemplateFile_Click(); }),
              wxSizerFlags(1).Expand());
    grid->Add(AddCommand(panel, form_.cmdOpenTemplate, &MainForm::cmdOpenTemplate_Click),
              wxSizerFlags().Expand());

    grid->Add(AddLabel(panel, binder_, form_.lblYear), centre);
    wxSizer* const year = AddSpinField(panel, binder_, form_.lblYear, form_.txtYear, form_.updYear);
    year->SetMinSize(ConvertDialogToPixels(wxSize(kYearWidth, -1)));
    grid->Add(year, centre);
    grid->AddStretchSpacer(0);

    grid->Add(AddLabel(panel, binder_, form_.lblParameter), centre);
    auto* const parameters = new wxBoxSizer(wxHORIZONTAL);
    parameters->Add(AddCommand(panel, form_.cmdModify, &MainForm::cmdModify_Click));
    parameters->Add(AddCommand(panel, form_.cmdSave, &MainForm::cmdSave_Click),
                    wxSizerFlags().Border(wxLEFT));
    grid->Add(parameters, centre);
    showsPreview_ = AddCheckBox(panel, binder_, form_.chkPreview,
                                [this] { ShowPreview(form_.chkPreview.checked); });
    grid->Add(showsPreview_, centre);

    binder_.Relate(form_.lblTemplateFile, form_.cboTemplateFile);
    binder_.Relate(form_.lblYear, form_.txtYear);
    return grid;
}

wxSizer* MainWindow::BuildEmptyFolder(wxPanel& panel)
{
    auto* const column = new wxBoxSizer(wxVERTICAL);
    auto* const text =
        AddLabel(panel, binder_, form_.lblEmptyFolder, wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_MIDDLE);
    text->SetMinSize(wxSize(1, kEmptyFolderLines * text->GetCharHeight()));
    column->Add(text, wxSizerFlags().Expand().DoubleBorder(wxTOP));
    column->Add(AddCommand(panel, form_.cmdCopyTemplates, &MainForm::cmdCopyTemplates_Click),
                wxSizerFlags().Border(wxTOP));
    return column;
}

wxSizer* MainWindow::BuildCommandRow(wxPanel& panel)
{
    auto* const row = new wxBoxSizer(wxHORIZONTAL);
    auto* const generate = AddCommand(panel, form_.cmdGenerate, &MainForm::cmdGenerate_Click);
    generate->SetDefault();
    Emphasize(*generate);
    row->Add(generate);
    row->Add(AddCheckBox(panel, binder_, form_.chkPdf, [&form = form_] { form.chkPdf_Click(); }),
             wxSizerFlags().CentreVertical().Border(wxLEFT | wxRIGHT));
    row->AddStretchSpacer();
    row->Add(AddCommand(panel, form_.cmdHelp, &MainForm::cmdHelp_Click));
    row->Add(AddCommand(panel, form_.cmdAbout, &MainForm::cmdAbout_Click),
             wxSizerFlags().Border(wxLEFT));
    row->Add(AddCommand(panel, form_.cmdExit, &MainForm::cmdExit_Click),
             wxSizerFlags().Border(wxLEFT));
    return row;
}

wxSizer* MainWindow::BuildStatusRow(wxPanel& panel)
{
    auto* const row = new wxBoxSizer(wxHORIZONTAL);
    const auto centre = wxSizerFlags().CentreVertical();
    auto* const status = AddNote(panel, binder_, form_.lblStatus, wxST_ELLIPSIZE_MIDDLE);
    status->Bind(wxEVT_CONTEXT_MENU, [this](wxContextMenuEvent&) { ShowStatusMenu(); });
    row->Add(status, wxSizerFlags(1).CentreVertical().Border(wxRIGHT));
    auto* const progress = new wxGauge(&panel, wxID_ANY, 1, wxDefaultPosition,
                                       ConvertDialogToPixels(wxSize(kProgressWidth, -1)));
    binder_.Bind(form_.prgRun, *progress);
    binder_.Describe(form_.prgRun, "Progress");
    row->Add(progress, centre);
    // One of the two is shown at a time, or none; the place stays.
    auto* const cancel = AddCommand(panel, form_.cmdCancel, &MainForm::cmdCancel_Click);
    auto* const openFolder = AddCommand(panel, form_.cmdOpenFolder, &MainForm::cmdOpenFolder_Click);
    wxSize size = openFolder->GetBestSize();
    size.IncTo(cancel->GetBestSize());
    auto* const place = new wxBoxSizer(wxHORIZONTAL);
    place->SetMinSize(size);
    place->Add(cancel, wxSizerFlags(1));
    place->Add(openFolder, wxSizerFlags(1));
    row->Add(place, wxSizerFlags(centre).Border(wxLEFT));
    return row;
}

/// As it was when the program ended, or at first as large as is comfortable.
void MainWindow::PlacePreview()
{
    preview_->RestorePlacement(ReadPlacement(kPreviewPlace, form_.CurrentLocations().settingsFile));
    form_.chkPreview.checked = preview_->IsPictureShown();
    wxSize size = preview_->ComfortableSize();
    size.DecTo(wxDisplay(this).GetClientArea().GetSize());
    size.IncTo(GetClientSize());
    SetClientSize(size);
    binder_.Show();
}

/// The window becomes wider by the picture, or narrower.
void MainWindow::ShowPreview(bool isShown)
{
    const wxSize before = preview_->ComfortableSize();
    preview_->ShowPicture(isShown);
    if (IsMaximized())
        return;
    wxSize size = GetClientSize() + wxSize(preview_->ComfortableSize().x - before.x, 0);
    size.IncTo(GetSizer()->CalcMin());
    SetClientSize(size);
}

void MainWindow::ShowStatusMenu()
{
    if (!form_.HasSavedPath())
        return;
    wxMenu menu;
    menu.Append(wxID_COPY, "&Copy Path");
    menu.Bind(wxEVT_MENU,
              [this](wxCommandEvent&) { binder_.Run([this] { form_.CopySavedPath(); }); });
    PopupMenu(&menu);
}

wxButton* MainWindow::AddCommand(wxPanel& panel, Button& state, void (MainForm::*onClick)())
{
    return AddButton(panel, binder_, state,
                     [&form = form_, onClick] { std::invoke(onClick, form); });
}

void MainWindow::OnClose(wxCloseEvent& event)
{
    SavePlacement(*this, form_.CurrentLocations().settingsFile);
    WritePlacement(kPreviewPlace, preview_->Placement(), form_.CurrentLocations().settingsFile);
    event.Skip();
}

} // namespace orrery::ui::wx
