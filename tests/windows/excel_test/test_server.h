#pragma once

#include "engines/excel/process.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace orrery::excel_test {

/// The server for one test: registered, with an empty log and without processes of an earlier test
/// or an aborted run. The destructor ends its processes; it stays registered until the program
/// ends.
class TestServer {
public:
    TestServer();
    ~TestServer();
    TestServer(const TestServer&) = delete;
    TestServer& operator=(const TestServer&) = delete;

    static void Register();
    static void Unregister();
    /// Sets what goes wrong in the servers that start from now on; see excel_server/faults.h.
    static void SetFaults(const std::vector<std::string>& faults);
    /// Sets what the servers that start from now on understand: "de" is German, all else English.
    static void SetLanguage(const std::string& language);

    /// All lines of the log so far.
    std::vector<std::string> Lines() const;
    /// The lines of calls, in their order.
    std::vector<std::string> Calls() const;
    /// How many lines contain the text.
    int Count(const std::string& text) const;
    bool Has(const std::string& line) const;

    /// The running servers.
    static std::vector<unsigned long> Processes();
    /// The first of them.
    static std::optional<excel::Process> Process();
    /// Whether `count` servers run, now or within that time.
    static bool WaitForProcesses(std::size_t count,
                                 std::chrono::milliseconds time = std::chrono::seconds(20));
    /// Closes the servers that belong to their users, as the users would.
    static void CloseAll();
    /// Kills all servers.
    static void KillAll();

private:
    std::filesystem::path log_;
};

} // namespace orrery::excel_test
