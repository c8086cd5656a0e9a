#include "engines/excel/process.h"

#include "engines/excel/waiting.h"

#include <tlhelp32.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <vector>

namespace orrery::excel {
namespace {

constexpr std::chrono::milliseconds kExitTimeout(5000);
constexpr std::wstring_view kMainWindowClass = L"XLMAIN"; // in every version

bool IsSameFileName(const std::wstring& left, const std::wstring& right)
{
    return CompareStringOrdinal(left.c_str(), -1, right.c_str(), -1, TRUE) == CSTR_EQUAL;
}

struct Entry {
    DWORD id = 0;
    DWORD parent = 0;
    std::wstring image;
};

/// All running processes.
std::vector<Entry> ListProcesses()
{
    std::vector<Entry> entries;
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot, &entry); more != FALSE;
         more = Process32NextW(snapshot, &entry))
        entries.push_back({entry.th32ProcessID, entry.th32ParentProcessID, entry.szExeFile});
    CloseHandle(snapshot);
    return entries;
}

/// Whether a process was started for this program: by the system's service for that, or by this
/// process itself.
bool IsStartedForUs(const Entry& process, const std::vector<Entry>& all)
{
    if (process.parent == GetCurrentProcessId())
        return true;
    return std::any_of(all.begin(), all.end(), [&](const Entry& other) {
        return other.id == process.parent && IsSameFileName(other.image, L"svchost.exe");
    });
}

/// Whether an open process, whose id cannot be reused any more, runs the image.
bool IsOfImage(HANDLE process, const std::wstring& image)
{
    std::array<wchar_t, 32768> path = {};
    auto length = static_cast<DWORD>(path.size());
    if (QueryFullProcessImageNameW(process, 0, path.data(), &length) == FALSE)
        return false;
    return IsSameFileName(std::filesystem::path(path.data()).filename().wstring(), image);
}

/// What `EnumWindows` looks for, and whether it found it.
struct WindowSearch {
    DWORD process;
    bool isFound;
};

BOOL CALLBACK LookAtWindow(HWND window, LPARAM parameter)
{
    auto& search = *reinterpret_cast<WindowSearch*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    std::array<wchar_t, 64> name = {};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    search.isFound = process == search.process && IsWindowVisible(window) != FALSE &&
                     std::wstring_view(name.data()) == kMainWindowClass;
    return search.isFound ? FALSE : TRUE; // FALSE ends the search
}

} // namespace

std::optional<Process> Process::Open(DWORD id, const std::wstring& image)
{
    constexpr DWORD kAccess = SYNCHRONIZE | PROCESS_TERMINATE | PROCESS_QUERY_LIMITED_INFORMATION;
    const HANDLE handle = OpenProcess(kAccess, FALSE, id);
    if (handle == nullptr)
        return std::nullopt;
    Process process(handle);
    if (!IsOfImage(handle, image))
        return std::nullopt;
    return process;
}

Process::~Process()
{
    if (handle_ != nullptr)
        CloseHandle(handle_);
}

bool Process::WaitForEnd(std::chrono::milliseconds time) const
{
    return WaitAndPaint(handle_, time);
}

void Process::End() const
{
    TerminateProcess(handle_, 1);
    WaitForEnd(kExitTimeout);
}

bool Process::EndUnlessShown() const
{
    if (IsShown())
        return false;
    End();
    return true;
}

bool Process::IsShown() const
{
    WindowSearch search{Id(), false};
    EnumWindows(LookAtWindow, reinterpret_cast<LPARAM>(&search));
    return search.isFound;
}

ProcessWatch::ProcessWatch(std::wstring image) : image_(std::move(image))
{
    for (const Entry& process : ListProcesses())
        before_.insert(process.id);
}

std::optional<Process> ProcessWatch::Started() const
{
    const std::vector<Entry> all = ListProcesses();
    std::vector<DWORD> found;
    for (const Entry& process : all) {
        if (IsSameFileName(process.image, image_) && !before_.contains(process.id) &&
            IsStartedForUs(process, all))
            found.push_back(process.id);
    }
    return found.size() == 1 ? Process::Open(found.front(), image_) : std::nullopt;
}

} // namespace orrery::excel
