#pragma once

#include "engines/excel/com.h"

#include <chrono>
#include <optional>
#include <set>
#include <string>

namespace orrery::excel {

/// A process that can be waited for and ended; it does not end with this object.
class Process {
public:
    /// Nothing if there is no process with that id, if it belongs to somebody else or, as ids are
    /// reused, if it does not run that image, a file name such as "EXCEL.EXE" in any case.
    static std::optional<Process> Open(DWORD id, const std::wstring& image);
    ~Process();
    Process(Process&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Process& operator=(Process&&) = delete;
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    DWORD Id() const { return GetProcessId(handle_); }
    /// Whether it ends within that time; windows are painted meanwhile.
    bool WaitForEnd(std::chrono::milliseconds time) const;
    /// Kills it and waits until it is gone.
    void End() const;
    /// The same, unless it shows a main window of the application: what its user opened there must
    /// not be lost. False then.
    bool EndUnlessShown() const;
    /// Whether it shows a main window of the application.
    bool IsShown() const;

private:
    explicit Process(HANDLE handle) : handle_(handle) {}

    HANDLE handle_;
};

/// Finds the process that the system started for this program since the watch began.
class ProcessWatch {
public:
    /// `image` is a file name such as "EXCEL.EXE", in any case.
    explicit ProcessWatch(std::wstring image);

    /// Nothing if there is none, or more than one. Programs that the user started are ignored.
    std::optional<Process> Started() const;

private:
    std::wstring image_;
    std::set<DWORD> before_;
};

} // namespace orrery::excel
