#pragma once

#include "long_captions.h"
#include "robot.h"
#include "test_engines.h"
#include "ui/main_form.h"
#include "ui/wx/main_window.h"
#include "util/scratch_folder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>
#include <wx/weakref.h>

namespace orrery::ui::wx {

/// What a test says about a program before it starts.
struct ProgramOptions {
    bool longCaptions = false;
    bool printsPdf = false; ///< something makes PDF files
};

/// The program, with all its files in one folder, beside its orrery.ini. Main thread only.
struct Program {
    /// Opens the main window as the program's start does; `files` are the program's arguments.
    Program(const std::filesystem::path& folder, const std::vector<std::string>& files,
            const ProgramOptions& options);

    const app::SystemFolders system;
    TestEngines engines;
    TestDesktop desktop;
    MainForm form;
    wxWeakRef<MainWindow> window; ///< null once it is closed
};

/// A test with a user and a program, whose folder has the shipped holiday files, tips and the
/// templates Desk.xlsx and Wall.xls with their parameter files; the tip is off.
class WindowTest : public testing::Test {
protected:
    WindowTest();
    ~WindowTest() override;

    /// Starts the program and waits until its window takes keys.
    void Start(const std::vector<std::string>& files = {});
    /// Starts it without waiting: something else may come to the front.
    void StartWithoutWaiting(const std::vector<std::string>& files = {});
    /// Ends the program from outside, whatever is open.
    void End();
    /// Starts, chooses a template and opens the parameter dialog.
    void StartModifying(const std::string& templateFile = "Desk.xlsx");

    /// A path below the program's folder.
    std::filesystem::path At(const std::string& name) const
    {
        return (folder_ / name).make_preferred();
    }
    /// A value of orrery.ini, empty when it is not there.
    std::string Setting(const std::string& section, const std::string& key) const;
    void WriteSetting(const std::string& section, const std::string& key,
                      const std::string& value) const;
    /// A value of a template's parameter file.
    std::string Parameter(const std::string& file, const std::string& section,
                          const std::string& key) const;
    void WriteParameter(const std::string& file, const std::string& section, const std::string& key,
                        const std::string& value) const;
    /// Values of cells of a workbook below the program's folder, as programs of others read them.
    std::vector<std::string> Cells(const std::string& file, const std::string& sheet,
                                   const std::vector<std::string>& cells) const;
    /// Writes the file of the help that has this page.
    void WriteHelp(const std::string& page) const;
    /// What is opened to show the page.
    std::string HelpPage(const std::string& page) const;
    /// What the desktop's opener was asked to open so far, one entry a call.
    std::vector<std::string> Opened() const;
    /// Waits for its call of that number, counted from 1.
    std::string WaitForOpened(std::size_t number = 1) const;

    std::optional<Program> program_; ///< main thread only
    std::optional<Robot> user_;      ///< from `Start` on
    ProgramOptions options_;         ///< set before `Start`

private:
    void CloseWhatIsOpen();
    void KeepPictureOfFailure() const;

    const testing_support::ScratchFolder folder_;
    const std::size_t openedBefore_;
};

} // namespace orrery::ui::wx
