#pragma once

#include "util/descriptor.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <sys/types.h>
#include <vector>

namespace orrery::libreoffice {

/// A program with all that it starts, in a session of its own. A guard, a process beside it, ends
/// them all when this program lets go of it or ends itself, however it ends, and when the program
/// itself has ended. Its input and output lead nowhere, and no file of this program is open in it.
class GuardedProcess {
public:
    /// The first word of the command is the program's path. `inherited` is a descriptor that the
    /// program gets, too, or -1. Throws Error(ApplicationFailure) where no process can be made; a
    /// program that cannot be run ends at once.
    GuardedProcess(const std::vector<std::string>& command, int inherited);
    ~GuardedProcess();
    GuardedProcess(const GuardedProcess&) = delete;
    GuardedProcess& operator=(const GuardedProcess&) = delete;

    /// Whether the program has not ended.
    bool IsRunning() const { return !WaitForEnd(std::chrono::milliseconds(0)); }
    /// Whether it ends within that time.
    bool WaitForEnd(std::chrono::milliseconds time) const;
    /// The time that the program and those in its session have computed so far.
    std::chrono::milliseconds ComputedTime() const;
    /// Ends all of them at once, and waits until they are gone.
    void End();
    /// Ends all of them at once without waiting; may be called by another thread.
    void Kill() const;
    /// Leaves the program to itself.
    void Release();

private:
    void WaitForGuard();

    pid_t guard_ = 0;
    pid_t group_ = 0;          // the program, its session and its group
    util::Descriptor channel_; // to the guard, which closes it when the program has ended
};

} // namespace orrery::libreoffice
