#pragma once

#include "app/folders.h"
#include "app/settings.h"
#include "app/working_sets.h"
#include "book/engines.h"
#include "generate/run.h"
#include "ui/desktop.h"
#include "ui/form.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrery::ui {

/// The year and month [1:12] of today.
struct YearAndMonth {
    std::int16_t year;
    std::int16_t month;
};
YearAndMonth Today();

/// The program's main window (frmMain). It owns the working sets of the chosen template.
class MainForm : public Form {
public:
    /// Everything referred to outlives the form.
    MainForm(const app::SystemFolders& system, book::Engines& engines, Desktop& desktop);

    /// The start-up, without the tip: settings, folders, year, templates, buttons.
    void Form_Load(YearAndMonth today);
    // The last steps of the start-up, once the window is on the screen.
    void ReportUnreadableSettings(); ///< where a file is there and the defaults count
    void ShowTipAtStartup();
    void Form_Activate();

    void cboTemplateFile_Click();
    void cmdOpenTemplate_Click();
    void cmdModify_Click();
    void cmdSave_Click();
    void cmdGenerate_Click();
    /// Keeps the choice in the settings. Throws Error(FileNotWritable) when they cannot be written.
    void chkPdf_Click();
    void cmdHelp_Click();
    void cmdAbout_Click();
    void cmdExit_Click() { Close(); }
    /// Opens the folder of the workbook that was saved last.
    void cmdOpenFolder_Click();
    /// Copies the shipped templates into the empty template folder.
    void cmdCopyTemplates_Click();

    /// Files came from outside: those that are templates are copied into the template folder, each
    /// with the parameter file that lies beside it, and the last one is chosen. A file of the same
    /// name is replaced after a question. Files that are no templates are reported.
    void DropFiles(const std::vector<std::string>& files);

    Label lblTemplateFile{"lblTemplateFile", "Template &File:"};
    ComboBox cboTemplateFile{"cboTemplateFile"};
    Button cmdOpenTemplate{"cmdOpenTemplate", "O&pen"};
    Label lblYear{"lblYear", "&Year:"};
    TextBox txtYear{"txtYear"};
    UpDown updYear{"updYear", txtYear, 1, 9999};
    Label lblParameter{"lblParameter", "Parameters:"};
    Button cmdModify{"cmdModify", "&Modify"};
    Button cmdSave{"cmdSave", "&Save"};
    Button cmdGenerate{"cmdGenerate", "&Generate"};
    CheckBox chkPdf{"chkPdf", "Also as P&DF"}; ///< on show where something makes PDF files
    Button cmdHelp{"cmdHelp", "&Help"};
    Button cmdAbout{"cmdAbout", "&About"};
    Button cmdExit{"cmdExit", "E&xit"};
    Label lblEmptyFolder{"lblEmptyFolder"}; ///< on show while there is no template
    Button cmdCopyTemplates{"cmdCopyTemplates", "&Copy the Shipped Templates"};
    Label lblStatus{"lblStatus"};
    ProgressBar prgRun{"prgRun"};                          ///< on show during a run
    Button cmdOpenFolder{"cmdOpenFolder", "Open Fo&lder"}; ///< on show after one

    app::WorkingSets working;
    /// The chosen template's file name as listed; empty at start-up.
    const std::string& CurrentTemplate() const { return currentTemplate_; }
    const app::Settings& CurrentSettings() const { return settings_; }
    const app::Locations& CurrentLocations() const { return locations_; }

private:
    void UpdateButtons();
    void FillTemplateList();
    void ShowEmptyFolder();
    void SelectEntry(const std::string& templateFile);
    std::string SelectedTemplate() const; ///< empty where none is selected
    bool SaveParameters(const std::string& templateFile);
    bool TakeTemplate(const std::string& file);
    void TakeParameterFile(const std::string& file);
    bool CopyAfterQuestion(const std::string& file);

    const app::SystemFolders& system_;
    book::Engines& engines_;
    Desktop& desktop_;
    app::Locations locations_;
    app::Settings settings_;
    std::string currentTemplate_;
    std::optional<std::string> savedPath_;
};

} // namespace orrery::ui
