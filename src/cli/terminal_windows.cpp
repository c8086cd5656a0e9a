#include "cli/terminal.h"

#include "util/wide.h"

#include <memory>
#include <windows.h>

#include <shellapi.h>

namespace orrery::cli {

std::vector<std::string> ProgramArguments(int argc, const char* const* argv)
{
    // Those of `main` have lost every character that the code page has not.
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

Terminal::Terminal() : codePage_(GetConsoleOutputCP())
{
    if (codePage_ != 0)
        SetConsoleOutputCP(CP_UTF8);
}

Terminal::~Terminal()
{
    if (codePage_ != 0)
        SetConsoleOutputCP(codePage_);
}

bool Terminal::ShowsErrors() const
{
    DWORD mode = 0; // only a console has one
    return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != FALSE;
}

} // namespace orrery::cli
