#include "engines/libreoffice/plugin/guarded_process.h"

#include "book/error.h"
#include "util/error.h"
#include "util/system_message.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <poll.h>
#include <sstream>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace orrery::libreoffice {
namespace {

constexpr char kRelease = 'r';
constexpr int kChannel = 3;   // in the guard
constexpr int kInherited = 4; // in the guard and the program

// Between fork and exec only calls that are safe there: no memory is allocated.

void RedirectStreamsToNull()
{
    const int nowhere = ::open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::dup2(nowhere, stream);
}

/// Leaves the guard only its channel and the inherited descriptor, which may be -1.
void CloseOtherDescriptors(int channel, int inherited)
{
    // Move both out of the way of the numbers that they and the standard streams will get.
    channel = ::fcntl(channel, F_DUPFD, kInherited + 1);
    if (inherited >= 0)
        inherited = ::fcntl(inherited, F_DUPFD, kInherited + 1);
    RedirectStreamsToNull();
    ::dup2(channel, kChannel);
    if (inherited >= 0)
        ::dup2(inherited, kInherited);
    else
        ::close(kInherited);
    ::close_range(kInherited + 1, ~0U, 0);
}

[[noreturn]] void RunProgram(char* const* command)
{
    ::setsid();
    ::signal(SIGPIPE, SIG_DFL); // it would inherit that this program ignores it
    ::close(kChannel);
    ::execv(command[0], command);
    ::_exit(127);
}

/// Whether the owner released the program; otherwise the owner is gone.
bool IsReleased()
{
    char message = 0;
    return ::read(kChannel, &message, 1) == 1 && message == kRelease;
}

/// A descriptor that becomes readable when the process ends. pidfd_open(2)
int OpenPidfd(pid_t process)
{
    return static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
}

/// Kills the guard's own children; false if the system does not list them.
bool KillChildren()
{
    std::array<char, 4096> list = {};
    const int file = ::open("/proc/thread-self/children", O_RDONLY);
    const auto size = file < 0 ? -1 : ::read(file, list.data(), list.size() - 1);
    ::close(file);
    const char* at = list.data();
    for (char* next = nullptr; size > 0; at = next) {
        const auto child = std::strtol(at, &next, 10);
        if (next == at)
            break;
        ::kill(static_cast<pid_t>(child), SIGKILL);
    }
    return size >= 0;
}

/// Kills the program and all that it started. Orphans become the guard's children.
void EndAll(pid_t program)
{
    ::kill(-program, SIGKILL);
    pid_t ended = 0;
    do {
        const pid_t whose = KillChildren() ? -1 : -program;
        ended = ::waitpid(whose, nullptr, 0);
    } while (ended > 0 || errno == EINTR);
}

/// Waits for whichever comes first: the end of the program, a message of its owner, or the owner's
/// end.
[[noreturn]] void Guard(char* const* command)
{
    ::setsid();                           // out of reach of the terminal's keys
    ::prctl(PR_SET_CHILD_SUBREAPER, 1UL); // orphaned descendants become its children
    const pid_t program = ::fork();
    if (program == 0)
        RunProgram(command);
    if (program < 0 || ::write(kChannel, &program, sizeof(program)) != sizeof(program)) {
        KillChildren();
        ::_exit(1);
    }
    ::close(kInherited);
    std::array<pollfd, 2> events = {{{kChannel, POLLIN, 0}, {OpenPidfd(program), POLLIN, 0}}};
    while (::poll(events.data(), events.size(), -1) < 0 && errno == EINTR) {
    }
    if (events[1].revents == 0 && IsReleased())
        ::_exit(0);
    EndAll(program); // its descendants may have outlived it
    ::_exit(0);
}

/// Opens the channel between this program and the guard.
std::pair<util::Descriptor, util::Descriptor> MakeChannel()
{
    std::array<int, 2> ends = {-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        throw Error(book::ErrorKind::ApplicationFailure, "LibreOffice",
                    "LibreOffice could not be started: " +
                        util::SystemMessage({errno, std::generic_category()}) + '.');
    return {util::Descriptor(ends[0]), util::Descriptor(ends[1])};
}

bool ReadWhole(const util::Descriptor& from, void* target, std::size_t size)
{
    ssize_t count = 0;
    do
        count = ::read(from.Number(), target, size);
    while (count < 0 && errno == EINTR);
    return count == static_cast<ssize_t>(size);
}

/// The fields of a process that follow its name, from its state on. proc(5)
std::vector<std::string> StatusFields(pid_t process)
{
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string text;
    std::getline(file, text);
    const auto nameEnd = text.rfind(')');
    if (nameEnd == std::string::npos)
        return {};
    std::istringstream rest(text.substr(nameEnd + 1));
    return {std::istream_iterator<std::string>(rest), {}};
}

std::vector<pid_t> Processes()
{
    namespace fs = std::filesystem;
    std::vector<pid_t> processes;
    std::error_code failure;
    for (fs::directory_iterator entry("/proc", failure), end; !failure && entry != end;
         entry.increment(failure)) {
        const std::string name = entry->path().filename().string();
        if (name.find_first_not_of("0123456789") == std::string::npos)
            processes.push_back(static_cast<pid_t>(std::strtol(name.c_str(), nullptr, 10)));
    }
    return processes;
}

} // namespace

GuardedProcess::GuardedProcess(const std::vector<std::string>& command, int inherited)
{
    std::vector<char*> words;
    words.reserve(command.size() + 1);
    for (const std::string& word : command)
        words.push_back(const_cast<char*>(word.c_str())); // the type that exec wants
    words.push_back(nullptr);
    auto [own, guards] = MakeChannel();
    guard_ = ::fork();
    if (guard_ == 0) {
        CloseOtherDescriptors(guards.Number(), inherited);
        Guard(words.data());
    }
    guards.Close();
    if (guard_ > 0 && ReadWhole(own, &group_, sizeof(group_))) {
        channel_ = std::move(own);
        return;
    }
    WaitForGuard();
    throw Error(book::ErrorKind::ApplicationFailure, "LibreOffice",
                "LibreOffice could not be started: the system has no process for it.");
}

GuardedProcess::~GuardedProcess()
{
    End();
}

bool GuardedProcess::WaitForEnd(std::chrono::milliseconds time) const
{
    if (!channel_.IsOpen())
        return true;
    pollfd end = {channel_.Number(), POLLIN, 0};
    return ::poll(&end, 1, static_cast<int>(time.count())) > 0;
}

std::chrono::milliseconds GuardedProcess::ComputedTime() const
{
    constexpr std::size_t kGroup = 2; // indexes of the fields
    constexpr std::size_t kUser = 11;
    constexpr std::size_t kSystem = 12;
    long long ticks = 0;
    for (const pid_t process : Processes()) {
        const auto fields = StatusFields(process);
        if (fields.size() > kSystem && fields[kGroup] == std::to_string(group_))
            ticks += std::atoll(fields[kUser].c_str()) + std::atoll(fields[kSystem].c_str());
    }
    return std::chrono::milliseconds(ticks * 1000 / ::sysconf(_SC_CLK_TCK));
}

void GuardedProcess::End()
{
    channel_.Close();
    WaitForGuard();
}

void GuardedProcess::Kill() const
{
    ::shutdown(channel_.Number(), SHUT_WR); // the guard takes it for the owner's end
}

void GuardedProcess::Release()
{
    if (!channel_.IsOpen())
        return;
    // If the program has just ended, the guard is gone, too.
    static_cast<void>(::send(channel_.Number(), &kRelease, 1, MSG_NOSIGNAL));
    WaitForGuard();
    channel_.Close();
}

void GuardedProcess::WaitForGuard()
{
    const pid_t guard = std::exchange(guard_, 0);
    while (guard > 0 && ::waitpid(guard, nullptr, 0) < 0 && errno == EINTR) {
    }
}

} // namespace orrery::libreoffice
