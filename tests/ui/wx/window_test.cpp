#include "window_test.h"

#include "main_thread.h"
#include "native_eyes.h"
#include "places/places.h"
#include "screenshot.h"
#include "surroundings.h"
#include "util/paths.h"
#include "util/profile.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <wx/app.h>

namespace orrery::ui::wx {
namespace {

namespace fs = std::filesystem;

app::SystemFolders SystemOf(const fs::path& folder)
{
    const fs::path shipped = places::SourceFolder() / "data";
    app::SystemFolders system;
    system.executable = util::WithTrailingSeparator(util::FromPath(folder));
    system.installed = util::WithTrailingSeparator(util::FromPath(shipped));
    system.help = util::WithTrailingSeparator(util::FromPath(folder / "help"));
    return system;
}

std::vector<std::string> AllOpened()
{
    const char* const log = std::getenv("ORRERY_OPENED");
    if (log == nullptr)
        throw std::logic_error("These tests run inside with_display.sh.");
    return LinesOf(log);
}

} // namespace

Program::Program(const fs::path& folder, const std::vector<std::string>& files,
                 const ProgramOptions& options)
    : system(SystemOf(folder)), engines(options.printsPdf),
      desktop(system.help, app::LocationsFor(system).settingsFile), form(system, engines, desktop)
{
    form.Form_Load({2026, 11});
    desktop.longCaptions = options.longCaptions;
    if (options.longCaptions)
        Lengthen(form);
    window = new MainWindow(form, desktop);
    wxTheApp->SetTopWindow(window);
    window->Show();
    window->CallAfter([this, files] { window->FinishStartup(files); });
}

WindowTest::WindowTest() : openedBefore_(AllOpened().size())
{
    const fs::path shipped = places::SourceFolder() / "data";
    fs::copy(shipped / "holiday", At("holiday"));
    fs::copy(shipped / "tips.txt", At("tips.txt"));
    fs::create_directory(At("template"));
    for (const char* name : {"Desk.xlsx", "Desk.ini", "Wall.xls", "Wall.ini"})
        fs::copy(shipped / "template" / name, At("template") / name);
    fs::copy(shipped / "orrery.ini", At("orrery.ini"));
    WriteSetting("Environment", "Engine", "builtin");
    WriteSetting("Environment", "ShowTips", "N");
}

WindowTest::~WindowTest()
{
    if (HasFailure())
        SaveFailureScreenshot();
    End();
}

void WindowTest::StartWithoutWaiting(const std::vector<std::string>& files)
{
    OnMain([this, files] { program_.emplace(folder_.Path(), files, options_); });
    WaitFor("the main window", [this] { return program_->window->IsShownOnScreen(); });
    user_.emplace();
}

void WindowTest::Start(const std::vector<std::string>& files)
{
    StartWithoutWaiting(files);
    user_->WaitForWindow("frmMain");
}

void WindowTest::StartModifying(const std::string& templateFile)
{
    Start();
    user_->Choose("cboTemplateFile", templateFile);
    user_->Click("cmdModify");
    user_->WaitForWindow("frmParameter");
}

void WindowTest::End()
{
    if (!program_)
        return;
    try {
        CloseOpenWindows();
        OnMain([this] {
            if (program_->window)
                program_->window->Close(true);
        });
        WaitFor("the end of the program", [this] { return !program_->window; });
        OnMain([this] { program_.reset(); });
    }
    catch (const std::exception& error) {
        // The next tests would find the open windows of this one.
        ADD_FAILURE() << error.what();
        SaveFailureScreenshot();
        std::_Exit(EXIT_FAILURE);
    }
}

void WindowTest::CloseOpenWindows()
{
    const auto somethingIsOpen = [this] {
        return program_->window && (FrontWindow() != program_->window || FindMessageBox());
    };
    const auto isQuestion = [] {
        const auto box = FindMessageBox();
        return box && box->buttons.size() > 1;
    };
    constexpr int most = 20;
    for (int i = 0; i < most && OnMain(somethingIsOpen); ++i) {
        if (OnMain(isQuestion))
            user_->Answer('N', wxMOD_ALT); // a question ignores Escape
        else
            user_->Key(WXK_ESCAPE);
    }
    WaitFor("the dialogs to close", [&] { return !somethingIsOpen(); });
}

void WindowTest::SaveFailureScreenshot() const
{
    const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string(test->test_suite_name()) + "." + test->name() + ".png";
    for (char& character : name)
        character = character == '/' ? '-' : character;
    const fs::path file = places::PicturesFolder() / "failures" / name;
    CaptureScreen(file);
    std::cerr << "The screen at the failure: " << file << '\n';
}

std::string WindowTest::Setting(const std::string& section, const std::string& key) const
{
    return util::Profile(At("orrery.ini")).Read(section, key, "");
}

void WindowTest::WriteSetting(const std::string& section, const std::string& key,
                              const std::string& value) const
{
    util::Profile(At("orrery.ini")).Write(section, key, value);
}

std::string WindowTest::Parameter(const std::string& file, const std::string& section,
                                  const std::string& key) const
{
    return util::Profile(At("template") / file).Read(section, key, "");
}

void WindowTest::WriteParameter(const std::string& file, const std::string& section,
                                const std::string& key, const std::string& value) const
{
    util::Profile(At("template") / file).Write(section, key, value);
}

std::vector<std::string> WindowTest::Cells(const std::string& file, const std::string& sheet,
                                           const std::vector<std::string>& cells) const
{
    std::vector<std::string> arguments = {sheet};
    arguments.insert(arguments.end(), cells.begin(), cells.end());
    return ReadCells(At(file), arguments, At(""));
}

void WindowTest::WriteHelp(const std::string& page) const
{
    fs::create_directory(At("help"));
    std::ofstream(At("help") / HelpFile(page)) << "help";
}

std::string WindowTest::HelpPage(const std::string& page) const
{
    return HelpTopic(At("help"), page);
}

std::string WindowTest::WaitForOpened(std::size_t number) const
{
    WaitFor("the opener", [&] { return Opened().size() >= number; });
    return Opened()[number - 1];
}

std::vector<std::string> WindowTest::Opened() const
{
    std::vector<std::string> opened = AllOpened();
    opened.erase(opened.begin(), opened.begin() + static_cast<std::ptrdiff_t>(openedBefore_));
    return opened;
}

} // namespace orrery::ui::wx
