#include "util/process.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <initializer_list>
#include <malloc.h>
#include <unistd.h>

namespace orrery::util {
namespace {

/// Each part of a workbook needs memory for a short time. The system clears every page that it
/// hands out again, so memory that goes back and forth costs processor time.
void KeepFreedMemory()
{
#ifdef __GLIBC__
    constexpr int kKept = 16 << 20; // bytes
    ::mallopt(M_TRIM_THRESHOLD, kKept);
    ::mallopt(M_MMAP_THRESHOLD, kKept);
#endif
}

} // namespace

void PrepareProcess()
{
    KeepFreedMemory();
    std::signal(SIGXFSZ, SIG_IGN);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        // open() returns the lowest free number, which is the stream's; read-only, so that output
        // fails.
        if (::fcntl(stream, F_GETFD) < 0 && errno == EBADF)
            static_cast<void>(::open("/dev/null", O_RDONLY));
    }
}

} // namespace orrery::util
