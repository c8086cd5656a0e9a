#pragma once

#include "app/folders.h"
#include "app/settings.h"
#include "app/today.h"
#include "app/working_sets.h"
#include "book/engines.h"
#include "generate/run.h"
#include "look/advisor/propose.h"
#include "ui/desktop.h"
#include "ui/form.h"
#include "ui/preview.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace orrery::ui {

/// The program's main window (frmMain). Owns the working sets of the chosen template.
class MainForm : public Form {
public:
    /// The references must outlive the form.
    MainForm(const app::SystemFolders& system, book::Engines& engines, Desktop& desktop);

    /// The start-up: settings, folders, year, templates, buttons.
    void Form_Load(app::YearAndMonth today);
    // The last steps of the start-up, when the window is visible.
    void ReportUnreadableSettings(); ///< if defaults are used although there is a file
    void ShowTipAtStartup();
    /// The window became active, or the user asked for it: lists the template folder again.
    void RefreshTemplates();

    void cboTemplateFile_Click();
    void cmdOpenTemplate_Click();
    void cmdModify_Click();
    void cmdSave_Click();
    void cmdGenerate_Click();
    /// Saves the choice in the settings. Throws Error(FileNotWritable) if they cannot be written.
    void chkPdf_Click();
    /// Ends the application that a run waits for.
    void cmdCancel_Click();
    void cmdHelp_Click();
    void cmdAbout_Click();
    void cmdExit_Click() { Close(); }
    /// Opens the folder of the workbook that was saved last.
    void cmdOpenFolder_Click();
    /// Whether a workbook was saved, so that its path can be copied.
    bool HasSavedPath() const { return savedPath_.has_value(); }
    /// Puts the path of the workbook that was saved last on the clipboard.
    void CopySavedPath();
    /// Copies the shipped templates into the empty template folder.
    void cmdCopyTemplates_Click();
    /// Takes the proposed parameters as the working sets, as OK of the parameter dialog does.
    void cmdUseProposal_Click();
    /// Shows the proposed parameters in the parameter dialog.
    void cmdLookFirst_Click();

    /// Shows in the preview what Generate would make now, or as an example what the proposed
    /// parameters would make, or with nothing chosen the first template.
    void RefreshPreview();
    /// Looks which parameters the sheets of the chosen template tell, if it has none, and shows
    /// what was found.
    void RefreshProposal();
    /// Shows below the preview what will go wrong, as far as its pages were made.
    void ShowNotes();

    /// Files are dropped on the window or named at start: copies the templates among them into the
    /// template folder, each with the parameter file beside it, and selects the last one. Asks
    /// before replacing a file. Reports files that are not templates.
    void DropFiles(const std::vector<std::string>& files);

    Label lblTemplateFile{"lblTemplateFile", "Template &File:"};
    ComboBox cboTemplateFile{"cboTemplateFile"};
    Button cmdOpenTemplate{"cmdOpenTemplate", "O&pen"};
    Label lblYear{"lblYear", "&Year:"};
    TextBox txtYear{"txtYear"};
    UpDown updYear{"updYear", txtYear, 1, holidays::kLastYear};
    Label lblParameter{"lblParameter", "Parameters:"};
    Button cmdModify{"cmdModify", "&Modify"};
    Button cmdSave{"cmdSave", "&Save"};
    Button cmdGenerate{"cmdGenerate", "&Generate"};
    CheckBox chkPdf{"chkPdf", "Also as P&DF"}; ///< visible if PDF files can be made
    Button cmdHelp{"cmdHelp", "&Help"};
    Button cmdAbout{"cmdAbout", "&About"};
    Button cmdExit{"cmdExit", "E&xit"};
    Label lblEmptyFolder{"lblEmptyFolder"}; ///< visible while there is no template
    Button cmdCopyTemplates{"cmdCopyTemplates", "&Copy the Shipped Templates"};
    Label lblStatus{"lblStatus"};
    ProgressBar prgRun{"prgRun"};            ///< visible during a run
    Button cmdCancel{"cmdCancel", "Cancel"}; ///< visible when a run waits for an application
    Button cmdOpenFolder{"cmdOpenFolder", "Open Fo&lder"}; ///< visible after a run
    CheckBox chkPreview{"chkPreview", "Pre&view"};
    // Visible while the chosen template has no parameters and some are proposed.
    Label lblProposal{"lblProposal"};
    Button cmdUseProposal{"cmdUseProposal", "&Use this"};
    Button cmdLookFirst{"cmdLookFirst", "Loo&k first"};
    Preview pvwPages;
    Label lblNotes{"lblNotes"}; ///< what will go wrong, below the preview

    app::WorkingSets working;
    /// The chosen template's file name as listed; empty at start-up.
    const std::string& CurrentTemplate() const { return currentTemplate_; }
    const app::Settings& CurrentSettings() const { return settings_; }
    const app::Locations& CurrentLocations() const { return locations_; }

private:
    /// What was found in a template as it was then.
    struct FoundProposal {
        std::filesystem::path path;
        std::filesystem::file_time_type changed;
        std::optional<look::Proposal> proposal; ///< nothing: no calendar
    };

    void UpdateButtons();
    void FillTemplateList();
    void ShowExample();
    bool CanTakeProposal() const;
    std::optional<look::Proposal> FindProposal(const std::filesystem::path& path);
    void ShowProposal();
    std::optional<std::int16_t> ValidYear() const;
    void Modify(const model::ParameterSets* proposed);
    void ShowEmptyFolder();
    void SelectEntry(const std::string& templateFile);
    std::string SelectedTemplate() const; ///< empty if none is selected
    bool SaveParameters(const std::string& templateFile);
    bool AddTemplateFile(const std::string& file);
    void AddParameterFile(const std::string& file);
    bool CopyIfConfirmed(const std::string& file);

    const app::SystemFolders& system_;
    book::Engines& engines_;
    Desktop& desktop_;
    app::Locations locations_;
    app::Settings settings_;
    std::string currentTemplate_;
    std::optional<FoundProposal> found_; ///< what was looked for last
    std::optional<std::string> savedPath_;
    std::function<void()> cancelRun_; ///< empty between runs
};

} // namespace orrery::ui
