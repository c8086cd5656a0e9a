#include "ui/wx/main/application.h"

#include "ui/wx/main/main_window.h"
#include "ui/wx/native/text.h"
#include "util/error_text.h"

#include <ctime>
#include <exception>

namespace orrery::ui::wx {

Application::Application(std::unique_ptr<book::Engines> engines) : engines_(std::move(engines))
{
    SetAppName("orrery"); // desktops also match it with the menu entry
    SetAppDisplayName(kProductName);
}

bool Application::OnInit()
{
    if (!wxApp::OnInit())
        return false;
    system_ = app::FindSystemFolders();
    desktop_ = std::make_unique<WxDesktop>(system_.help, app::LocationsFor(system_).settingsFile);
    mainForm_ = std::make_unique<MainForm>(system_, *engines_, *desktop_);
    mainForm_->Form_Load(app::LocalMonth(std::time(nullptr)));
    auto* const window = new MainWindow(*mainForm_, *desktop_);
    window->Show();
    window->CallAfter([window, files = files_] { window->FinishStartup(files); });
    return true;
}

void Application::OnInitCmdLine(wxCmdLineParser& parser)
{
    wxApp::OnInitCmdLine(parser);
    parser.AddParam("template", wxCMD_LINE_VAL_STRING,
                    wxCMD_LINE_PARAM_OPTIONAL | wxCMD_LINE_PARAM_MULTIPLE);
}

bool Application::OnCmdLineParsed(wxCmdLineParser& parser)
{
    for (std::size_t i = 0; i < parser.GetParamCount(); ++i)
        files_.push_back(FromWx(parser.GetParam(i)));
    return wxApp::OnCmdLineParsed(parser);
}

bool Application::OnExceptionInMainLoop()
{
    try {
        throw;
    }
    catch (const std::exception& error) {
        desktop_->Report(util::ErrorText(error));
    }
    return true;
}

} // namespace orrery::ui::wx
