#include "excel_test/test_server.h"

#include "automation/registry.h"
#include "automation/wide_text.h"
#include "excel_server/lifetime.h"
#include "places/places.h"
#include "util/paths.h"

#include <tlhelp32.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <thread>

namespace orrery::excel_test {
namespace {

const std::filesystem::path kProgram = places::ExcelServer();

std::wstring Image()
{
    return kProgram.filename().wstring();
}

using Clock = std::chrono::steady_clock;
constexpr auto kPoll = std::chrono::milliseconds(20);

void RunServer(const std::wstring& option)
{
    std::wstring command = L'"' + std::filesystem::absolute(kProgram).wstring() + L"\" " + option;
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process))
        throw std::runtime_error("the server does not start");
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 1;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
    if (code != 0)
        throw std::runtime_error("the server cannot be registered");
}

bool isRegistered = false; // by this program, once: it takes time

/// Unregisters the server after the tests.
class UnregisterAtEnd : public testing::Environment {
public:
    void TearDown() override
    {
        if (isRegistered)
            TestServer::Unregister();
    }
};

const testing::Environment* const kNobodyRegistered =
    testing::AddGlobalTestEnvironment(new UnregisterAtEnd); // the framework deletes it

} // namespace

TestServer::TestServer()
    : log_(std::filesystem::temp_directory_path() /
           ("orrery-excel-" + std::to_string(GetCurrentProcessId()) + ".log"))
{
    KillAll();
    std::filesystem::remove(log_);
    automation::WriteText(HKEY_CURRENT_USER, automation::kServerKey, automation::kLogValue,
                          util::FromPath(log_));
    SetFaults({});
    SetLanguage("en");
    if (!isRegistered)
        Register();
}

TestServer::~TestServer()
{
    KillAll();
    try {
        automation::DeleteKey(HKEY_CURRENT_USER, automation::kServerKey);
        std::filesystem::remove(log_);
    }
    catch (const std::exception& error) {
        ADD_FAILURE() << error.what();
    }
}

void TestServer::Register()
{
    RunServer(L"/regserver");
    isRegistered = true;
}

void TestServer::Unregister()
{
    RunServer(L"/unregserver");
    isRegistered = false;
}

void TestServer::SetFaults(const std::vector<std::string>& faults)
{
    automation::WriteLines(HKEY_CURRENT_USER, automation::kServerKey, automation::kFaultsValue,
                           faults);
}

void TestServer::SetLanguage(const std::string& language)
{
    automation::WriteText(HKEY_CURRENT_USER, automation::kServerKey, automation::kLanguageValue,
                          language);
}

std::vector<std::string> TestServer::Lines() const
{
    std::ifstream file(log_, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

std::vector<std::string> TestServer::Calls() const
{
    std::vector<std::string> calls = Lines();
    // "Worksheet#1.Name get ()"; other events have no member
    std::erase_if(calls, [](const std::string& line) {
        const auto number = line.find('#');
        const auto member = line.find('.');
        return number == std::string::npos || member == std::string::npos || member < number ||
               line.find(' ') < member;
    });
    return calls;
}

int TestServer::Count(const std::string& text) const
{
    const auto lines = Lines();
    return static_cast<int>(std::count_if(lines.begin(), lines.end(), [&](const auto& line) {
        return line.find(text) != std::string::npos;
    }));
}

bool TestServer::Has(const std::string& line) const
{
    const auto lines = Lines();
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

std::optional<excel::Process> TestServer::Process()
{
    return excel::Process::Open(Processes().at(0), Image());
}

std::vector<unsigned long> TestServer::Processes()
{
    std::vector<unsigned long> found;
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    const std::wstring image = Image();
    for (BOOL more = Process32FirstW(snapshot, &entry); more != FALSE;
         more = Process32NextW(snapshot, &entry)) {
        if (CompareStringOrdinal(entry.szExeFile, -1, image.c_str(), -1, TRUE) == CSTR_EQUAL)
            found.push_back(entry.th32ProcessID);
    }
    CloseHandle(snapshot);
    return found;
}

bool TestServer::WaitForProcesses(std::size_t count, std::chrono::milliseconds time)
{
    const auto end = Clock::now() + time;
    while (Processes().size() != count) {
        if (Clock::now() > end)
            return false;
        std::this_thread::sleep_for(kPoll);
    }
    return true;
}

void TestServer::CloseAll()
{
    const HANDLE end = CreateEventW(nullptr, TRUE, FALSE, excel_server::kEndEvent);
    SetEvent(end);
    EXPECT_TRUE(WaitForProcesses(0)) << "a server does not close";
    ResetEvent(end);
    CloseHandle(end);
}

void TestServer::KillAll()
{
    for (const unsigned long id : Processes()) {
        if (const auto process = excel::Process::Open(id, Image()))
            process->End(); // otherwise it is already gone
    }
}

} // namespace orrery::excel_test
