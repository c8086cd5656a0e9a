#pragma once

#include "ui/main/main_form.h"
#include "ui/wx/binding.h"
#include "ui/wx/preview/preview_splitter.h"
#include "ui/wx/wx_desktop.h"

#include <wx/button.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/sizer.h>

#include <string>
#include <vector>

namespace orrery::ui::wx {

/// The window of `MainForm`.
class MainWindow : public wxFrame {
public:
    /// Form and desktop must outlive the window.
    MainWindow(MainForm& form, WxDesktop& desktop);

    /// The last steps of the start-up, when the window is visible: unreadable settings, the tip,
    /// then files that the program was started with.
    void FinishStartup(const std::vector<std::string>& files);
    /// Handles files that were dropped on the window.
    void DropFiles(const std::vector<std::string>& files);
    /// Both sides of the divider, too, which keep their sizes.
    bool Layout() override;

private:
    void Build(wxPanel& panel);
    wxSizer* BuildTemplateRows(wxPanel& panel);
    wxSizer* BuildCommandRow(wxPanel& panel);
    wxSizer* BuildEmptyFolder(wxPanel& panel);
    wxSizer* BuildStatusRow(wxPanel& panel);
    void PlacePreview();
    void ShowPreview(bool isShown);
    void ShowStatusMenu();
    wxButton* AddCommand(wxPanel& panel, Button& state, void (MainForm::*onClick)());
    void OnClose(wxCloseEvent& event);

    MainForm& form_;
    Binder binder_;
    PreviewSplitter* preview_ = nullptr;
    wxCheckBox* showsPreview_ = nullptr;
};

} // namespace orrery::ui::wx
