#include "ui/main/main_form.h"

#include "app/offered_names.h"
#include "app/template_folder.h"
#include "model/parameter_file.h"
#include "ui/about_form.h"
#include "ui/parameter_form.h"
#include "ui/tip_form.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/file_read.h"
#include "util/paths.h"

namespace orrery::ui {
namespace {

/// Shows the hourglass until the scope ends.
class Hourglass {
public:
    explicit Hourglass(Desktop& desktop) : desktop_(desktop) { desktop_.SetHourglass(true); }
    ~Hourglass() { desktop_.SetHourglass(false); }
    Hourglass(const Hourglass&) = delete;
    Hourglass& operator=(const Hourglass&) = delete;

private:
    Desktop& desktop_;
};

} // namespace

MainForm::MainForm(const app::SystemFolders& system, book::Engines& engines, Desktop& desktop)
    : Form("frmMain", kProductName, "main"), pvwPages("pvwPages", engines), system_(system),
      engines_(engines), desktop_(desktop), locations_(app::LocationsFor(system))
{
    lblEmptyFolder.visible = cmdCopyTemplates.visible = false;
    prgRun.visible = cmdCancel.visible = cmdOpenFolder.visible = false;
    chkPdf.visible = engines_.CanPrintPdf(book::PdfBy::Any);
    UpdateButtons();
}

void MainForm::Form_Load(app::YearAndMonth today)
{
    app::CopyInstalledFiles(locations_, system_.installed);
    settings_ = app::LoadSettings(locations_);
    chkPdf.checked = settings_.Pdf;
    currentTemplate_.clear();
    txtYear.text = std::to_string(app::InitialYear(today.year, today.month));
    FillTemplateList();
}

void MainForm::ReportUnreadableSettings()
{
    const auto file = util::ToPath(locations_.settingsFile);
    if (const auto error = util::FindExistingTextReadError(file))
        desktop_.Report(util::ErrorText(*error));
}

void MainForm::ShowTipAtStartup()
{
    if (!settings_.ShowTips)
        return;
    TipForm form(locations_.settingsFile, locations_.tipsFile);
    desktop_.ShowModal(form);
}

void MainForm::RefreshTemplates()
{
    FillTemplateList();
}

void MainForm::UpdateButtons()
{
    const bool selected = cboTemplateFile.HasSelection();
    cmdGenerate.enabled = cmdOpenTemplate.enabled = cmdModify.enabled = selected;
    cmdSave.enabled = working.Changed();
    ShowProposal();
}

void MainForm::FillTemplateList()
{
    cboTemplateFile.entries = app::ListTemplates(settings_.TemplatePath);
    SelectEntry(currentTemplate_);
    ShowEmptyFolder();
    UpdateButtons();
}

void MainForm::ShowEmptyFolder()
{
    const bool isEmpty = cboTemplateFile.entries.empty();
    const bool canCopy = isEmpty && !app::ShippedTemplateFolder(system_.installed).empty();
    lblEmptyFolder.visible = isEmpty;
    cmdCopyTemplates.visible = canCopy;
    if (const auto error = util::FindListError(util::ToPath(settings_.TemplatePath))) {
        lblEmptyFolder.ShowText(util::ErrorText(*error));
        return;
    }
    lblEmptyFolder.ShowText("There is no template in the folder\r\n" + settings_.TemplatePath +
                            "\r\nPut Excel workbooks (.xls or .xlsx) into it or drop them here" +
                            (canCopy ? ",\r\nor copy the shipped templates." : "."));
}

void MainForm::SelectEntry(const std::string& templateFile)
{
    cboTemplateFile.selected =
        util::FindListEntry(cboTemplateFile.entries, templateFile, util::CompareMode::Exact);
}

std::string MainForm::SelectedTemplate() const
{
    if (!cboTemplateFile.HasSelection())
        return {};
    return cboTemplateFile.entries[static_cast<std::size_t>(cboTemplateFile.selected)];
}

void MainForm::cboTemplateFile_Click()
{
    const std::string chosen = SelectedTemplate();
    if (chosen.empty() || chosen == currentTemplate_)
        return;
    const bool save =
        working.Changed() && desktop_.Ask("The parameters for " + currentTemplate_ +
                                          " has been changed.\r\nDo you want to save the changes?");
    if (!save || SaveParameters(currentTemplate_)) { // else keep what could not be saved
        working = app::LoadWorkingSets(settings_, chosen);
        currentTemplate_ = chosen;
        if (working.readError)
            desktop_.Report(util::ErrorText(*working.readError));
    }
    // After a message box the window is active again, and has listed the old choice.
    SelectEntry(currentTemplate_);
    UpdateButtons();
}

bool MainForm::SaveParameters(const std::string& templateFile)
{
    const auto file = model::ParameterFilePath(settings_.TemplatePath, templateFile);
    try {
        const Hourglass hourglass(desktop_);
        model::WriteParameterFile(util::ToPath(file), settings_.names, working.sets);
    }
    catch (const Error& error) {
        desktop_.Report(util::ErrorText(error));
        return false;
    }
    working.parameterFileExists = true;
    working.ClearChanged();
    app::FindLineProblems(settings_, templateFile, working); // their numbers have changed
    UpdateButtons();
    return true;
}

void MainForm::cmdOpenTemplate_Click()
{
    if (cboTemplateFile.HasSelection())
        desktop_.Open(settings_.TemplatePath + SelectedTemplate());
}

void MainForm::cmdModify_Click()
{
    Modify(nullptr);
}

/// The year in its field; nothing if it is none.
std::optional<std::int16_t> MainForm::ValidYear() const
{
    try {
        return generate::ReadYear(txtYear.text);
    }
    catch (const util::OverflowError&) {
        return std::nullopt;
    }
}

/// Shows the parameter dialog, with proposed sets in its fields if there are some.
void MainForm::Modify(const model::ParameterSets* proposed)
{
    const app::TemplateLocation location{settings_.TemplatePath, settings_.HolidayFilePath,
                                         currentTemplate_, system_.installed,
                                         locations_.settingsFile};
    const auto offered = app::OfferedNames(settings_.names, system_.installed);
    ParameterForm form(working, offered, location, engines_, desktop_);
    form.SetYear(ValidYear());
    if (proposed != nullptr) {
        form.FillWith(*proposed);
        form.ShowProposal(); // with its reasons
    }
    desktop_.ShowModal(form);
    app::AdoptNames(offered, settings_.names, working.sets);
    UpdateButtons();
}

void MainForm::cmdSave_Click()
{
    if (cboTemplateFile.HasSelection())
        SaveParameters(SelectedTemplate());
}

void MainForm::chkPdf_Click()
{
    if (app::SavePdfSetting(locations_, chkPdf.checked))
        return;
    chkPdf.checked = !chkPdf.checked;
    throw Error(util::ErrorKind::FileNotWritable, locations_.settingsFile);
}

void MainForm::cmdHelp_Click()
{
    desktop_.ShowHelp(helpPage);
}

void MainForm::cmdAbout_Click()
{
    AboutForm form(BuildVersion(), desktop_);
    desktop_.ShowModal(form);
}

void MainForm::CopySavedPath()
{
    if (savedPath_)
        desktop_.Copy(*savedPath_);
}

void MainForm::cmdOpenFolder_Click()
{
    if (savedPath_)
        desktop_.Open(util::ParentFolder(*savedPath_));
}

} // namespace orrery::ui
