#include "util/error.h"
#include "util/paths.h"
#include "util/shell.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

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

/// The shell result of the opener's exit status.
int ResultOf(int status)
{
    switch (WIFEXITED(status) ? WEXITSTATUS(status) : -1) {
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

void ThrowUnlessSuccess(int result, const std::string& file)
{
    if (result != kSuccess)
        throw Error(ErrorKind::ShellFailure, file, ShellErrorMessage(result));
}

/// The desktop's opener. It ends when it has passed the document on, or shows it itself and runs
/// until the user closes it.
class Opener : public ShellOpening {
public:
    Opener(std::string file, pid_t process) : file_(std::move(file)), process_(process) {}

    bool HasEnded() override
    {
        int status = 0;
        const pid_t ended = hasEnded_ ? 0 : ::waitpid(process_, &status, WNOHANG);
        if (ended == 0)
            return hasEnded_;
        hasEnded_ = true;
        if (ended == process_) // else nobody keeps its status: whoever started us ignores SIGCHLD
            ThrowUnlessSuccess(ResultOf(status), file_);
        return true;
    }

private:
    const std::string file_;
    const pid_t process_;
    bool hasEnded_ = false;
};

/// Starts the desktop's opener for a document; returns a shell result.
int StartOpener(const std::string& argument, const std::string& directory, pid_t& process)
{
    SpawnPlan plan;
    if (!directory.empty())
        plan.StartIn(ToPath(directory));
    switch (plan.Start(kOpener, argument, process)) {
    case 0:
        return kSuccess;
    case ENOENT:
        return directory.empty() || fs::exists(ToPath(directory)) ? kNoApplication : kPathNotFound;
    case ENOMEM:
    case EAGAIN:
        return kOutOfMemory;
    default:
        return kOtherFailure;
    }
}

std::unique_ptr<ShellOpening> Start(const std::string& file, const std::string& directory)
{
    std::string argument = file;
    if (!IsAddress(file)) {
        // Absolute, so that the path is never taken for an option.
        std::error_code failed;
        const fs::path path =
            fs::absolute(ToPath(directory.empty() ? file : ResolvePath(directory, file)), failed);
        ThrowUnlessSuccess(CheckFile(path), file);
        argument = FromPath(path);
    }
    pid_t process = 0;
    ThrowUnlessSuccess(StartOpener(argument, directory, process), file);
    return std::make_unique<Opener>(file, process);
}

} // namespace

// The opener takes one argument and has one verb, so parameters and verb are unused here.
void ShellExecute(const std::string& file, const std::string& /*parameters*/,
                  const std::string& directory, const std::string& /*verb*/)
{
    // An opener that runs longer than it needs to fail shows the document itself.
    constexpr auto kStep = std::chrono::milliseconds(5);
    constexpr int kSteps = 300;
    const auto opening = Start(file, directory);
    for (int i = 0; i < kSteps && !opening->HasEnded(); ++i)
        std::this_thread::sleep_for(kStep);
}

std::unique_ptr<ShellOpening> StartShellOpen(const std::string& file)
{
    return Start(file, {});
}

} // namespace orrery::util
