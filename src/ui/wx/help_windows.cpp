#include <windows.h>

#include "ui/wx/help.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/file_read.h"
#include "util/paths.h"
#include "util/wide.h"

#include <array>

namespace orrery::ui::wx {
namespace {

constexpr const char* kHelpFile = "Orrery.chm";

/// The library of the system's help viewer, as registered.
std::wstring ViewerLibrary()
{
    std::array<wchar_t, MAX_PATH> path{};
    DWORD bytes = sizeof path;
    const LSTATUS found = ::RegGetValueW(
        HKEY_CLASSES_ROOT, L"CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32",
        nullptr, RRF_RT_REG_SZ, nullptr, path.data(), &bytes);
    return found == ERROR_SUCCESS ? path.data() : L"hhctrl.ocx";
}

/// The library's function and the one command used here.
using HtmlHelp = HWND(WINAPI*)(HWND caller, LPCWSTR file, UINT command, DWORD_PTR data);
constexpr UINT kDisplayTopic = 0;

/// The viewer's function, or nullptr. The library stays loaded because it owns the viewer's window.
HtmlHelp LoadViewer()
{
    HMODULE const library = ::LoadLibraryW(ViewerLibrary().c_str());
    if (library == nullptr)
        return nullptr;
    // Cast through void*, which no compiler warns about.
    return reinterpret_cast<HtmlHelp>(
        reinterpret_cast<void*>(::GetProcAddress(library, "HtmlHelpW")));
}

bool ShowInViewer(const std::string& file, const std::string& page)
{
    const HtmlHelp show = LoadViewer();
    const std::wstring topic = util::ToWide(file + "::/" + page + ".html");
    // Not owned by a window of the program, so that the viewer can be behind them.
    return show != nullptr &&
           show(::GetDesktopWindow(), topic.c_str(), kDisplayTopic, 0) != nullptr;
}

} // namespace

void OpenHelp(const std::string& folder, const std::string& page, Desktop& desktop)
{
    const std::string file = folder + kHelpFile;
    if (!util::FileExists(file))
        desktop.Report(util::ErrorText(util::Error(util::ErrorKind::FileNotFound, file)));
    else if (!ShowInViewer(file, page))
        desktop.Open(file);
}

} // namespace orrery::ui::wx
