#include "engines/excel/process.h"

#include <gtest/gtest.h>

#include <vector>

namespace orrery::excel {
namespace {

using namespace std::chrono_literals;

/// A program that waits for its input until the test ends.
class WaitingProgram {
public:
    WaitingProgram()
    {
        SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
        CreatePipe(&input_, &end_, &inherited, 0);
        SetHandleInformation(end_, HANDLE_FLAG_INHERIT, 0);
        STARTUPINFOW start = {};
        start.cb = sizeof start;
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdInput = input_;
        std::wstring command = L"cmd.exe /q /k";
        started_ = CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                                  nullptr, nullptr, &start, &process_) != FALSE;
    }
    ~WaitingProgram()
    {
        CloseHandle(input_);
        CloseHandle(end_);
        if (!started_)
            return;
        TerminateProcess(process_.hProcess, 0);
        CloseHandle(process_.hThread);
        CloseHandle(process_.hProcess);
    }
    WaitingProgram(const WaitingProgram&) = delete;
    WaitingProgram& operator=(const WaitingProgram&) = delete;

    bool Runs() const
    {
        return started_ && WaitForSingleObject(process_.hProcess, 0) == WAIT_TIMEOUT;
    }

private:
    HANDLE input_ = nullptr;
    HANDLE end_ = nullptr;
    PROCESS_INFORMATION process_ = {};
    bool started_ = false;
};

TEST(ProcessWatchTest, FindsTheProcessStartedSince)
{
    const WaitingProgram before;
    const ProcessWatch watch(L"CMD.EXE");
    EXPECT_FALSE(watch.Started().has_value());
    const WaitingProgram program;
    ASSERT_TRUE(program.Runs());
    for (int i = 0; i < 100 && !watch.Started(); ++i)
        Sleep(20); // a process that has just begun may not have an image yet
    const auto found = watch.Started();
    ASSERT_TRUE(found.has_value());
    EXPECT_FALSE(found->WaitForEnd(50ms));
    EXPECT_FALSE(found->IsShown());
    EXPECT_TRUE(found->EndUnlessShown());
    EXPECT_TRUE(found->WaitForEnd(0ms));
    EXPECT_FALSE(program.Runs());
    EXPECT_TRUE(before.Runs());
    EXPECT_FALSE(watch.Started().has_value());
}

TEST(ProcessWatchTest, FindsNothingIfThereAreSeveral)
{
    const ProcessWatch watch(L"cmd.exe");
    const WaitingProgram first;
    const WaitingProgram second;
    EXPECT_FALSE(watch.Started().has_value());
}

TEST(ProcessWatchTest, ChecksTheImage)
{
    const ProcessWatch watch(L"EXCEL.EXE");
    const WaitingProgram program;
    EXPECT_FALSE(watch.Started().has_value());
}

TEST(ProcessTest, OpensOnlyRunningProcesses)
{
    EXPECT_FALSE(Process::Open(0, L"excel_tests.exe").has_value());
    EXPECT_TRUE(Process::Open(GetCurrentProcessId(), L"EXCEL_tests.exe").has_value());
}

/// A window of this process.
class OwnWindow {
public:
    explicit OwnWindow(const wchar_t* className)
    {
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = DefWindowProcW;
        windowClass.lpszClassName = className;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        RegisterClassW(&windowClass);
        handle = CreateWindowW(className, L"", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr,
                               windowClass.hInstance, nullptr);
    }
    ~OwnWindow() { DestroyWindow(handle); }
    OwnWindow(const OwnWindow&) = delete;
    OwnWindow& operator=(const OwnWindow&) = delete;

    HWND handle = nullptr;
};

TEST(ProcessTest, IsShownByAVisibleMainWindowOnly)
{
    const auto self = Process::Open(GetCurrentProcessId(), L"excel_tests.exe");
    ASSERT_TRUE(self.has_value());
    const OwnWindow other(L"OrreryOther");
    ASSERT_NE(other.handle, nullptr);
    ShowWindow(other.handle, SW_SHOWNA);
    EXPECT_FALSE(self->IsShown());
    const OwnWindow main(L"XLMAIN");
    ASSERT_NE(main.handle, nullptr);
    EXPECT_FALSE(self->IsShown());
    ShowWindow(main.handle, SW_SHOWNA);
    EXPECT_TRUE(self->IsShown());
    EXPECT_FALSE(self->EndUnlessShown());
}

TEST(ProcessTest, OpensNoProcessOfAnotherImage)
{
    EXPECT_FALSE(Process::Open(GetCurrentProcessId(), L"EXCEL.EXE").has_value());
}

} // namespace
} // namespace orrery::excel
