#pragma once

#include "util/descriptor.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <sys/types.h>
#include <vector>

namespace orrery::libreoffice {

/// A program with all that it starts, in a session of its own. A guard, which is another process,
/// kills them all when this program lets go of it or ends in whatever way, and when the program
/// itself has ended. Its standard streams are /dev/null, and no file of this program is open in it.
class GuardedProcess {
public:
    /// The first word of the command is the program's path. `inherited` is a descriptor that the
    /// program gets, or -1. Throws Error(ApplicationFailure) if no process can be created; a
    /// program that cannot be run ends at once.
    GuardedProcess(const std::vector<std::string>& command, int inherited);
    ~GuardedProcess();
    GuardedProcess(const GuardedProcess&) = delete;
    GuardedProcess& operator=(const GuardedProcess&) = delete;

    bool IsRunning() const { return !WaitForEnd(std::chrono::milliseconds(0)); }
    /// Whether it ends within that time.
    bool WaitForEnd(std::chrono::milliseconds time) const;
    /// The computing time so far of the program and of the others in its session.
    std::chrono::milliseconds ComputedTime() const;
    /// Kills all of them and waits until they are gone.
    void End();
    /// Kills all of them without waiting; may be called on another thread.
    void Kill() const;
    /// Lets the program go on by itself.
    void Release();

private:
    void WaitForGuard();

    pid_t guard_ = 0;
    pid_t group_ = 0;          // the program, its session and its group
    util::Descriptor channel_; // to the guard, which closes it when the program has ended
};

} // namespace orrery::libreoffice
