#include <windows.h>

#include "surroundings.h"

#include "main_thread.h"
#include "places/places.h"
#include "util/wide.h"

#include <fstream>
#include <stdexcept>
#include <thread>

namespace orrery::ui::wx {

namespace fs = std::filesystem;

namespace {

/// The path on the host system below this Windows.
std::string HostPath(const fs::path& path)
{
    using Name = char*(CDECL*)(LPCWSTR);
    const auto name = reinterpret_cast<Name>(reinterpret_cast<void*>(
        ::GetProcAddress(::GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
    if (name == nullptr)
        throw std::logic_error("This Windows has no system below it.");
    char* const outside = name(path.c_str());
    const std::string text = outside;
    ::HeapFree(::GetProcessHeap(), 0, outside);
    return text;
}

/// Starts a shell script on the host system. There is no way to wait for it.
void StartOnHost(const fs::path& script)
{
    std::wstring line = L"sh " + util::ToWide(HostPath(script));
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!::CreateProcessW(L"Z:\\bin\\sh", line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                          &start, &process))
        throw std::runtime_error("No shell could be started.");
}

} // namespace

std::string HelpFile(const std::string& /*page*/)
{
    return "Orrery.chm";
}

std::string HelpTopic(const fs::path& folder, const std::string& page)
{
    return (folder / HelpFile(page)).string() + "::/" + page + ".html";
}

std::vector<std::string> ClosingButtons()
{
    return {"cmdOK", "cmdCancel"};
}

std::string TypicalUserFolder()
{
    return "C:\\Users\\Anna\\Calendars";
}

std::vector<std::string> ReadCells(const fs::path& workbook,
                                   const std::vector<std::string>& arguments,
                                   const fs::path& scratch)
{
    const fs::path script = scratch / "read_cells.sh";
    const fs::path answer = scratch / "cells.txt";
    fs::remove(answer);
    std::string command = ORRERY_PYTHON " " +
                          (places::SourceFolder() / "tests/ui/wx/read_cells.py").generic_string() +
                          " '" + HostPath(workbook) + "'";
    for (const std::string& argument : arguments)
        command += " '" + argument + "'";
    const std::string part = HostPath(scratch) + "/cells.part";
    std::ofstream(script, std::ios::binary) << command << " >'" << part << "' && mv '" << part
                                            << "' '" << HostPath(scratch) << "/cells.txt'\n";
    StartOnHost(script);
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (!fs::exists(answer)) {
        if (std::chrono::steady_clock::now() > end)
            throw TimedOut("No answer from " + command);
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return LinesOf(answer);
}

} // namespace orrery::ui::wx
