#include "ui/wx/main_window.h"

#include "ui/wx/icons.h"
#include "ui/wx/native.h"
#include "ui/wx/text.h"
#include "ui/wx/window_place.h"

#include <wx/button.h>
#include <wx/dnd.h>
#include <wx/statline.h>

namespace orrery::ui::wx {
namespace {

constexpr int kYearWidth = 8;        // characters, with room to spare
constexpr int kWindowWidth = 520;    // device-independent pixels
constexpr int kProgressWidth = 140;  // the same
constexpr int kEmptyFolderLines = 4; // what the text of an empty folder needs

/// Takes files that are dropped on the window.
class TemplateDrop : public wxFileDropTarget {
public:
    explicit TemplateDrop(MainWindow& window) : window_(window) {}

    bool OnDropFiles(wxCoord /*x*/, wxCoord /*y*/, const wxArrayString& names) override
    {
        std::vector<std::string> files;
        for (const wxString& name : names)
            files.push_back(FromWx(name));
        // Not from inside the drop: a question would keep the other program waiting.
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
    auto* const panel = new wxPanel(this);
    Build(*panel);
    binder_.BindHelpKey();
    binder_.Show();
    RestorePlace(*this, form.CurrentLocations().settingsFile);
    SetDropTarget(new TemplateDrop(*this));
    desktop.OnRepaint([this] { binder_.Show(); });
    Bind(wxEVT_CLOSE_WINDOW, &MainWindow::OnClose, this);
    Bind(wxEVT_ACTIVATE, [this](wxActivateEvent& event) {
        if (event.GetActive())
            binder_.Run([this] { form_.Form_Activate(); });
        event.Skip();
    });
}

void MainWindow::FinishStartup(const std::vector<std::string>& files)
{
    binder_.Run([this] { form_.ShowTipAtStartup(); });
    if (!files.empty())
        DropFiles(files);
}

void MainWindow::DropFiles(const std::vector<std::string>& files)
{
    binder_.Run([&] { form_.DropFiles(files); });
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

    auto* const frame = new wxBoxSizer(wxVERTICAL);
    frame->Add(&panel, wxSizerFlags(1).Expand());
    SetSizer(frame);
    panel.SetMinSize(FromDIP(wxSize(kWindowWidth, -1)));
}

wxSizer* MainWindow::BuildTemplateRows(wxPanel& panel)
{
    const wxSize gap = wxSize(wxSizerFlags::GetDefaultBorder(), wxSizerFlags::GetDefaultBorder());
    auto* const grid = new wxFlexGridSizer(3, gap);
    grid->AddGrowableCol(1);
    const auto centre = wxSizerFlags().CentreVertical();

    grid->Add(AddLabel(panel, form_.lblTemplateFile), centre);
    auto* const choice = new wxChoice(&panel, wxID_ANY);
    ShortenEntries(*choice);
    binder_.Bind(form_.cboTemplateFile, *choice, [this] { form_.cboTemplateFile_Click(); });
    grid->Add(choice, wxSizerFlags(1).Expand());
    grid->Add(AddButton(panel, form_.cmdOpenTemplate, &MainForm::cmdOpenTemplate_Click),
              wxSizerFlags().Expand());

    grid->Add(AddLabel(panel, form_.lblYear), centre);
    auto* const year = new wxBoxSizer(wxHORIZONTAL);
    auto* const text = new wxTextCtrl(&panel, wxID_ANY);
    text->SetMinSize(wxSize(text->GetSizeFromTextSize(kYearWidth * text->GetCharWidth()).x, -1));
    binder_.Bind(form_.txtYear, *text);
    auto* const arrows = new wxSpinButton(&panel, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                          wxSP_VERTICAL | wxSP_ARROW_KEYS);
    binder_.Bind(form_.updYear, *arrows);
    year->Add(text, wxSizerFlags().Expand());
    year->Add(arrows, wxSizerFlags().Expand().Border(wxLEFT, FromDIP(2)));
    grid->Add(year, centre);
    grid->AddStretchSpacer(0);

    grid->Add(AddLabel(panel, form_.lblParameter), centre);
    auto* const parameters = new wxBoxSizer(wxHORIZONTAL);
    parameters->Add(AddButton(panel, form_.cmdModify, &MainForm::cmdModify_Click));
    parameters->Add(AddButton(panel, form_.cmdSave, &MainForm::cmdSave_Click),
                    wxSizerFlags().Border(wxLEFT));
    grid->Add(parameters, centre);

    binder_.Relate(form_.lblTemplateFile, form_.cboTemplateFile);
    binder_.Relate(form_.lblYear, form_.txtYear);
    binder_.Describe(form_.updYear, "Year, step");
    return grid;
}

wxSizer* MainWindow::BuildEmptyFolder(wxPanel& panel)
{
    auto* const column = new wxBoxSizer(wxVERTICAL);
    auto* const text =
        AddLabel(panel, form_.lblEmptyFolder, wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_MIDDLE);
    text->SetMinSize(wxSize(1, kEmptyFolderLines * text->GetCharHeight()));
    column->Add(text, wxSizerFlags().Expand().DoubleBorder(wxTOP));
    column->Add(AddButton(panel, form_.cmdCopyTemplates, &MainForm::cmdCopyTemplates_Click),
                wxSizerFlags().Border(wxTOP));
    return column;
}

wxSizer* MainWindow::BuildCommandRow(wxPanel& panel)
{
    auto* const row = new wxBoxSizer(wxHORIZONTAL);
    auto* const generate = AddButton(panel, form_.cmdGenerate, &MainForm::cmdGenerate_Click);
    generate->SetDefault();
    Emphasize(*generate);
    row->Add(generate);
    row->AddStretchSpacer();
    row->Add(AddButton(panel, form_.cmdHelp, &MainForm::cmdHelp_Click));
    row->Add(AddButton(panel, form_.cmdAbout, &MainForm::cmdAbout_Click),
             wxSizerFlags().Border(wxLEFT));
    row->Add(AddButton(panel, form_.cmdExit, &MainForm::cmdExit_Click),
             wxSizerFlags().Border(wxLEFT));
    return row;
}

wxSizer* MainWindow::BuildStatusRow(wxPanel& panel)
{
    auto* const row = new wxBoxSizer(wxHORIZONTAL);
    const auto centre = wxSizerFlags().CentreVertical();
    auto* const status =
        AddLabel(panel, form_.lblStatus, wxST_ELLIPSIZE_MIDDLE | wxST_NO_AUTORESIZE);
    status->SetMinSize(wxSize(1, status->GetCharHeight()));
    row->Add(status, wxSizerFlags(1).CentreVertical().Border(wxRIGHT));
    auto* const progress =
        new wxGauge(&panel, wxID_ANY, 1, wxDefaultPosition, FromDIP(wxSize(kProgressWidth, -1)));
    binder_.Bind(form_.prgRun, *progress);
    binder_.Describe(form_.prgRun, "Progress");
    row->Add(progress, centre);
    row->Add(AddButton(panel, form_.cmdOpenFolder, &MainForm::cmdOpenFolder_Click),
             wxSizerFlags(centre).ReserveSpaceEvenIfHidden());
    return row;
}

wxButton* MainWindow::AddButton(wxPanel& panel, Button& state, void (MainForm::*onClick)())
{
    auto* const button = new wxButton(&panel, wxID_ANY, ToWx(state.caption));
    binder_.Bind(state, *button, [this, onClick] { (form_.*onClick)(); });
    return button;
}

wxStaticText* MainWindow::AddLabel(wxPanel& panel, Label& state, long style)
{
    auto* const label = new wxStaticText(&panel, wxID_ANY, ToWx(state.caption), wxDefaultPosition,
                                         wxDefaultSize, style);
    binder_.Bind(state, *label);
    return label;
}

void MainWindow::OnClose(wxCloseEvent& event)
{
    KeepPlace(*this, form_.CurrentLocations().settingsFile);
    event.Skip();
}

} // namespace orrery::ui::wx
