// Runs a command and prints its wall time in microseconds and its peak memory in KiB. A process
// started from a large one inherits that one's peak, so commands are started from this small one.
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <chrono>
#include <cstdio>

extern char** environ;

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fputs("usage: measure COMMAND [ARGUMENT...]\n", stderr);
        return 2;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", 1 /* O_WRONLY */, 0);
    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    if (posix_spawnp(&child, argv[1], &actions, nullptr, argv + 1, environ) != 0) {
        std::perror(argv[1]);
        return 1;
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    const auto time = std::chrono::steady_clock::now() - start;
    std::printf(
        "%lld %ld\n",
        static_cast<long long>(std::chrono::duration_cast<std::chrono::microseconds>(time).count()),
        usage.ru_maxrss);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
