#pragma once

#include "app/folders.h"
#include "book/engines.h"
#include "ui/main/main_form.h"
#include "ui/wx/wx_desktop.h"

#include <wx/app.h>
#include <wx/cmdline.h>

#include <memory>
#include <string>
#include <vector>

namespace orrery::ui::wx {

/// The window program. `main` creates it with the engines and passes it to the toolkit.
class Application : public wxApp {
public:
    explicit Application(std::unique_ptr<book::Engines> engines);

    bool OnInit() override;
    void OnInitCmdLine(wxCmdLineParser& parser) override;
    bool OnCmdLineParsed(wxCmdLineParser& parser) override;
    /// Shows an exception that no handler caught in the error report box; the program continues.
    bool OnExceptionInMainLoop() override;

    MainForm& Main() { return *mainForm_; }

private:
    std::unique_ptr<book::Engines> engines_;
    std::vector<std::string> files_;
    app::SystemFolders system_;
    std::unique_ptr<WxDesktop> desktop_;
    std::unique_ptr<MainForm> mainForm_;
};

} // namespace orrery::ui::wx
