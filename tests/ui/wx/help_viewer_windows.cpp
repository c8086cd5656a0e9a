// Replaces the system's help viewer: appends each topic, one per line, to the file $ORRERY_OPENED.
#include <windows.h>

#include "util/wide.h"

#include <cstdlib>
#include <fstream>

extern "C" __declspec(dllexport) HWND WINAPI
    HtmlHelpW(HWND caller, LPCWSTR file, UINT command, DWORD_PTR /*data*/)
{
    constexpr UINT displayTopic = 0;
    std::ofstream log(std::getenv("ORRERY_OPENED"), std::ios::app | std::ios::binary);
    log << (command == displayTopic ? "" : "another command: ") << orrery::util::FromWide(file)
        << '\n';
    return caller;
}
