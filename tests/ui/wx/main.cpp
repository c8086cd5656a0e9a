#include "main_thread.h"
#include "ui/desktop.h"

#include <gtest/gtest.h>
#include <thread>
#include <wx/app.h>
#include <wx/log.h>

namespace orrery::ui::wx {
namespace {

int failed = 1;

/// A program without its own windows: the tests, on their own thread, open Orrery's.
class TestApplication : public wxApp {
public:
    bool OnInit() override
    {
        SetAppName("orrery");
        SetAppDisplayName(kProductName);
        SetExitOnFrameDelete(false);
        wxLog::SetActiveTarget(new wxLogStderr);
        CallAfter([this] { tests_ = std::thread([] { RunTests(); }); });
        return true;
    }
    int OnExit() override
    {
        tests_.join();
        return wxApp::OnExit();
    }
    /// Reports a failed assertion instead of showing a box that nobody would answer.
    void OnAssertFailure(const wxChar* file, int line, const wxChar* function,
                         const wxChar* condition, const wxChar* message) override
    {
        ADD_FAILURE() << wxString(file) << ":" << line << ": " << wxString(function)
                      << ": the toolkit wants " << wxString(condition) << ", " << wxString(message);
    }

private:
    static void RunTests()
    {
        failed = RUN_ALL_TESTS();
        PostToMain([] { wxTheApp->ExitMainLoop(); });
    }

    std::thread tests_;
};

} // namespace
} // namespace orrery::ui::wx

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    wxApp::SetInstance(new orrery::ui::wx::TestApplication);
    int ownArguments = 1;
    wxEntry(ownArguments, argv);
    return orrery::ui::wx::failed;
}
