#include "processes.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>
#include <unistd.h>

namespace orrery::libreoffice::test {
namespace {

struct Process {
    pid_t id = 0;
    std::string name;
    char state = '?';
    pid_t parent = 0;
};

/// Process 0 if there is none (any more) with that number. proc(5)
Process Read(const std::string& number)
{
    std::ifstream file("/proc/" + number + "/stat");
    std::string text;
    std::getline(file, text, '\0'); // fails if the process ends meanwhile
    const auto begin = text.find('(');
    const auto end = text.rfind(')');
    if (begin == std::string::npos || end == std::string::npos)
        return {};
    Process process{std::stoi(number), text.substr(begin + 1, end - begin - 1)};
    std::istringstream(text.substr(end + 1)) >> process.state >> process.parent;
    return process;
}

std::vector<Process> Below(pid_t parent)
{
    std::vector<Process> all;
    std::error_code failure;
    for (std::filesystem::directory_iterator entry("/proc", failure), end; !failure && entry != end;
         entry.increment(failure)) {
        const std::string name = entry->path().filename().string();
        if (name.find_first_not_of("0123456789") == std::string::npos)
            all.push_back(Read(name));
    }
    std::vector<Process> found;
    std::vector<pid_t> parents = {parent};
    while (!parents.empty()) {
        const pid_t next = parents.back();
        parents.pop_back();
        for (const Process& process : all) {
            if (process.id == 0 || process.parent != next || process.state == 'Z')
                continue;
            found.push_back(process);
            parents.push_back(process.id);
        }
    }
    return found;
}

} // namespace

std::vector<pid_t> Descendants()
{
    std::vector<pid_t> ids;
    for (const Process& process : Below(::getpid()))
        ids.push_back(process.id);
    return ids;
}

int SignalOffice(int signal)
{
    int count = 0;
    for (const Process& process : Below(::getpid())) {
        if (process.name == "soffice.bin")
            count += ::kill(process.id, signal) == 0 ? 1 : 0;
    }
    return count;
}

bool IsAlive(pid_t process)
{
    const Process found = Read(std::to_string(process));
    return found.id != 0 && found.state != 'Z';
}

bool Eventually(const std::function<bool()>& condition)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

} // namespace orrery::libreoffice::test
