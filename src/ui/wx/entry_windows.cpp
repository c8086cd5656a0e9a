#include <windows.h>

#include <shellapi.h>

#include "ui/desktop.h"
#include "ui/wx/program.h"
#include "util/wide.h"

#include <wx/init.h>

#include <memory>

namespace {

using namespace orrery;

/// The program's argument in UTF-8; empty if there is none or more than one.
std::string OnlyArgument()
{
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&::LocalFree)> words(
        ::CommandLineToArgvW(::GetCommandLineW(), &count), &::LocalFree);
    return count == 2 ? util::FromWide(words.get()[1]) : std::string();
}

/// Writes to standard output. False if there is none.
bool WriteToOutput(const std::string& text)
{
    HANDLE const output = ::GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD written = 0;
    return output != nullptr && output != INVALID_HANDLE_VALUE &&
           ::WriteFile(output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

/// Writes to the console that the program was started from; a window program has none of its own.
bool WriteToConsole(const std::string& text)
{
    if (!::AttachConsole(ATTACH_PARENT_PROCESS))
        return false;
    HANDLE const console = ::CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_WRITE,
                                         nullptr, OPEN_EXISTING, 0, nullptr);
    if (console == INVALID_HANDLE_VALUE)
        return false;
    const std::wstring wide = util::ToWide('\n' + text); // the prompt is already there
    DWORD written = 0;
    const BOOL done =
        ::WriteConsoleW(console, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
    ::CloseHandle(console);
    return done != FALSE;
}

void Show(const std::string& text)
{
    if (!WriteToOutput(text) && !WriteToConsole(text))
        ::MessageBoxW(nullptr, util::ToWide(text).c_str(), util::ToWide(ui::kProductName).c_str(),
                      MB_OK | MB_ICONINFORMATION);
}

} // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE /*previous*/, LPSTR /*ansiArguments*/, int show)
{
    if (const auto answer = ui::wx::OptionOutput(OnlyArgument())) {
        Show(*answer);
        return 0;
    }
    ui::wx::RegisterApplication();
    return wxEntry(instance, nullptr, nullptr, show); // reads the arguments itself
}
