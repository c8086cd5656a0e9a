// Opens nothing: appends its argument, one line per call, to the file $ORRERY_OPENED.
#include <windows.h>

#include <shellapi.h>

#include "util/wide.h"

#include <cstdlib>
#include <fstream>

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*line*/, int /*show*/)
{
    int count = 0;
    wchar_t** const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    std::ofstream log(std::getenv("ORRERY_OPENED"), std::ios::app | std::ios::binary);
    for (int i = 1; i < count; ++i)
        log << (i == 1 ? "" : " ") << orrery::util::FromWide(words[i]);
    log << '\n';
    return 0;
}
