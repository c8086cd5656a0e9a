#pragma once

#include "long_captions.h"
#include "robot.h"
#include "test_engines.h"
#include "ui/main/main_form.h"
#include "ui/wx/main/main_window.h"
#include "util/scratch_folder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>
#include <wx/weakref.h>

namespace orrery::ui::wx {

/// Options of a test for the program it starts.
struct ProgramOptions {
    bool longCaptions = false;
    bool printsPdf = false; ///< a PDF printer is available
};

/// The program, with all its files in one folder beside its orrery.ini. Main thread only.
struct Program {
    /// Opens the main window as the program does; `files` are the program's arguments.
    Program(const std::filesystem::path& folder, const std::vector<std::string>& files,
            const ProgramOptions& options);

    const app::SystemFolders system;
    TestEngines engines;
    TestDesktop desktop;
    MainForm form;
    wxWeakRef<MainWindow> window; ///< null after it is closed
};

/// A test with a user and a program, whose folder contains the shipped holiday files, tips and the
/// templates Desk.xlsx and Wall.xls with their parameter files; tips at startup are off.
class WindowTest : public testing::Test {
protected:
    WindowTest();
    ~WindowTest() override;

    /// Starts the program and waits until its window has the keyboard.
    void Start(const std::vector<std::string>& files = {});
    /// Starts it without waiting: another window may come to the front.
    void StartWithoutWaiting(const std::vector<std::string>& files = {});
    /// Ends the program from outside, whatever is open.
    void End();
    /// Starts, chooses a template and opens the parameter dialog.
    void StartModifying(const std::string& templateFile = "Desk.xlsx");

    /// A path in the program's folder.
    std::filesystem::path At(const std::string& name) const
    {
        return (folder_ / name).make_preferred();
    }
    /// A value of orrery.ini; empty if the key is missing.
    std::string Setting(const std::string& section, const std::string& key) const;
    void WriteSetting(const std::string& section, const std::string& key,
                      const std::string& value) const;
    /// A value of a template's parameter file.
    std::string Parameter(const std::string& file, const std::string& section,
                          const std::string& key) const;
    void WriteParameter(const std::string& file, const std::string& section, const std::string& key,
                        const std::string& value) const;
    /// Values of cells of a workbook in the program's folder, read by independent libraries.
    std::vector<std::string> Cells(const std::string& file, const std::string& sheet,
                                   const std::vector<std::string>& cells) const;
    /// Writes the help file that contains this page.
    void WriteHelp(const std::string& page) const;
    /// What is opened to show the help page.
    std::string HelpPage(const std::string& page) const;
    /// What the desktop's opener has opened so far, one entry per call.
    std::vector<std::string> Opened() const;
    /// Waits for the opener's call with that number, counted from 1.
    std::string WaitForOpened(std::size_t number = 1) const;

    std::optional<Program> program_; ///< main thread only
    std::optional<Robot> user_;      ///< from `Start` on
    ProgramOptions options_;         ///< set before `Start`

private:
    void CloseOpenWindows();
    void SaveFailureScreenshot() const;

    const testing_support::ScratchFolder folder_;
    const std::size_t openedBefore_;
};

} // namespace orrery::ui::wx
