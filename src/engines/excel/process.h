#pragma once

#include "engines/excel/com.h"

#include <chrono>
#include <optional>
#include <set>
#include <string>

namespace orrery::excel {

/// A process that may be waited for and ended; it does not end with its owner.
class Process {
public:
    /// Nothing where there is none of that id, it belongs to somebody else, or, as ids are used
    /// again, it is not of that image, a file name such as "EXCEL.EXE" in any case.
    static std::optional<Process> Open(DWORD id, const std::wstring& image);
    ~Process();
    Process(Process&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    Process& operator=(Process&&) = delete;
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    /// Whether it ends within that time; windows are painted meanwhile.
    bool WaitForEnd(std::chrono::milliseconds time) const;
    /// Ends it without asking, and waits until it is gone.
    void End() const;

private:
    explicit Process(HANDLE handle) : handle_(handle) {}

    HANDLE handle_;
};

/// Tells which process the system started for this program since the watch began.
class ProcessWatch {
public:
    /// `image` is a file name such as "EXCEL.EXE", in any case.
    explicit ProcessWatch(std::wstring image);

    /// Nothing where there is none, or more than one. Programs that the user started are left out.
    std::optional<Process> Started() const;

private:
    std::wstring image_;
    std::set<DWORD> before_;
};

} // namespace orrery::excel
