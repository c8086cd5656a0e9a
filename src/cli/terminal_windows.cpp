#include "cli/terminal.h"

#include "util/wide.h"

#include <atomic>
#include <memory>
#include <windows.h>

#include <shellapi.h>

namespace orrery::cli {
namespace {

/// What Ctrl+C ends; the system tells about it on a thread of its own.
std::atomic<book::Patience*> interrupted = nullptr;

BOOL WINAPI HandleInterrupt(DWORD event)
{
    book::Patience* const patience = interrupted;
    const bool isUsers = event <= CTRL_CLOSE_EVENT; // Ctrl+C, Ctrl+Break, the console is closed
    return isUsers && patience != nullptr && patience->GiveUp() ? TRUE : FALSE;
}

} // namespace

std::vector<std::string> ProgramArguments(int argc, const char* const* argv)
{
    // The arguments of `main` have lost the characters that the code page lacks.
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&LocalFree)> wide(
        CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree);
    if (!wide)
        return {argv, argv + argc};
    std::vector<std::string> arguments;
    for (int i = 0; i < count; ++i)
        arguments.push_back(util::FromWide(wide.get()[i]));
    return arguments;
}

std::shared_ptr<void> UseUtf8Terminal()
{
    const unsigned before = GetConsoleOutputCP();
    if (before == 0) // no console
        return {};
    SetConsoleOutputCP(CP_UTF8);
    return std::shared_ptr<void>(nullptr, [before](void*) { SetConsoleOutputCP(before); });
}

std::shared_ptr<void> WatchInterrupts(book::Patience& patience)
{
    interrupted = &patience;
    SetConsoleCtrlHandler(HandleInterrupt, TRUE);
    return std::shared_ptr<void>(nullptr, [](void*) {
        SetConsoleCtrlHandler(HandleInterrupt, FALSE);
        interrupted = nullptr;
    });
}

bool ErrorOutputIsTerminal()
{
    DWORD mode = 0; // only a console has a mode
    return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != FALSE;
}

} // namespace orrery::cli
