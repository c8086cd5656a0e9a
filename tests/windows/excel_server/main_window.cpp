#include "excel_server/main_window.h"

#include <windows.h>

namespace orrery::excel_server {

void ShowMainWindow()
{
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = DefWindowProcW;
    windowClass.lpszClassName = L"XLMAIN";
    windowClass.hInstance = GetModuleHandleW(nullptr);
    RegisterClassW(&windowClass);
    HWND const window =
        CreateWindowW(windowClass.lpszClassName, L"Workbook", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100,
                      nullptr, nullptr, windowClass.hInstance, nullptr);
    ShowWindow(window, SW_SHOWNA);
}

} // namespace orrery::excel_server
