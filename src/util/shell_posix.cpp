#include "util/error.h"
#include "util/paths.h"
#include "util/shell.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace orrery::util {

namespace fs = std::filesystem;

namespace {

// Shell results, see `ShellErrorMessage`.
constexpr int kSuccess = 33;
constexpr int kOutOfMemory = 0;
constexpr int kOtherFailure = 1;
constexpr int kFileNotFound = 2;
constexpr int kPathNotFound = 3;
constexpr int kAccessDenied = 5;
constexpr int kNoApplication = 31;

constexpr const char* kOpener = "xdg-open";

/// "https://..." or "mailto:...": a scheme of two letters or more, so that a drive does not count.
bool IsAddress(const std::string& file)
{
    const std::size_t colon = file.find(':');
    return colon != std::string::npos && colon >= 2 &&
           file.find_first_not_of(
               "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789+-.") == colon;
}

/// A shell result: why the file cannot be opened, as far as can be known before starting the
/// opener.
int CheckFile(const fs::path& file)
{
    std::error_code failed;
    if (!fs::exists(file, failed))
        return fs::exists(file.parent_path(), failed) ? kFileNotFound : kPathNotFound;
    return ::faccessat(AT_FDCWD, file.c_str(), R_OK, AT_EACCESS) == 0 ? kSuccess : kAccessDenied;
}

/// Options for starting a program: silent, in its own session, so that Ctrl-C here does not reach
/// it.
class SpawnPlan {
public:
    SpawnPlan()
    {
        ::posix_spawn_file_actions_init(&actions_);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::posix_spawn_file_actions_addopen(&actions_, stream, "/dev/null", O_RDWR, 0);
        ::posix_spawnattr_init(&attributes_);
        // The child would inherit what `PrepareProcess` set.
        sigset_t ignored;
        ::sigemptyset(&ignored);
        ::sigaddset(&ignored, SIGXFSZ);
        ::posix_spawnattr_setsigdefault(&attributes_, &ignored);
        ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGDEF);
    }
    ~SpawnPlan()
    {
        ::posix_spawn_file_actions_destroy(&actions_);
        ::posix_spawnattr_destroy(&attributes_);
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;

    void StartIn(const fs::path& folder)
    {
        ::posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str());
    }

    /// Starts a program from the search path with one argument; returns 0 or the error number.
    int Start(std::string program, std::string argument, pid_t& process) const
    {
        std::array<char*, 3> arguments = {program.data(), argument.data(), nullptr};
        return ::posix_spawnp(&process, program.c_str(), &actions_, &attributes_, arguments.data(),
                              environ);
    }

private:
    posix_spawn_file_actions_t actions_ = {};
    posix_spawnattr_t attributes_ = {};
};

/// The exit code, or nothing if the process runs longer than an opener needs to fail: it then shows
/// the document itself and is left alone.
std::optional<int> WaitBriefly(pid_t process)
{
    constexpr auto kStep = std::chrono::milliseconds(5);
    constexpr int kSteps = 300;
    for (int i = 0; i < kSteps; ++i) {
        int status = 0;
        if (::waitpid(process, &status, WNOHANG) == process)
            return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        std::this_thread::sleep_for(kStep);
    }
    return std::nullopt;
}

/// Runs the desktop's opener; returns a shell result.
int OpenWithDesktop(const std::string& argument, const std::string& directory)
{
    SpawnPlan plan;
    if (!directory.empty())
        plan.StartIn(ToPath(directory));
    pid_t process = 0;
    switch (plan.Start(kOpener, argument, process)) {
    case 0:
        break;
    case ENOENT:
        return directory.empty() || fs::exists(ToPath(directory)) ? kNoApplication : kPathNotFound;
    case ENOMEM:
    case EAGAIN:
        return kOutOfMemory;
    default:
        return kOtherFailure;
    }
    switch (WaitBriefly(process).value_or(0)) {
    case 0:
        return kSuccess;
    case 2:
        return kFileNotFound;
    case 3: // "a required tool could not be found"
        return kNoApplication;
    default:
        return kOtherFailure;
    }
}

} // namespace

// The opener takes one argument and has one verb, so parameters and verb are unused here.
void ShellExecute(const std::string& file, const std::string& /*parameters*/,
                  const std::string& directory, const std::string& /*verb*/)
{
    std::string argument = file;
    int result = kSuccess;
    if (!IsAddress(file)) {
        // Absolute, so that the path is never taken for an option.
        std::error_code failed;
        const fs::path path =
            fs::absolute(ToPath(directory.empty() ? file : ResolvePath(directory, file)), failed);
        result = CheckFile(path);
        argument = FromPath(path);
    }
    if (result == kSuccess)
        result = OpenWithDesktop(argument, directory);
    if (result != kSuccess)
        throw Error(ErrorKind::ShellFailure, file, ShellErrorMessage(result));
}

} // namespace orrery::util
