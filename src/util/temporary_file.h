#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

namespace orrery::util {

/// An empty file beside a target, with an unused name: ".orrery-SYSTEM-PROCESS-NUMBER.tmp". The
/// destructor removes it unless it was renamed. Until then other processes can tell that it is in
/// use.
class TemporaryFile {
public:
    /// Throws Error (FileNotWritable, DiskFull) with the target as its subject.
    explicit TemporaryFile(const std::filesystem::path& target);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    /// Keeps the file, which has been renamed.
    void Keep() { path_.clear(); }

private:
    std::filesystem::path path_;
    std::shared_ptr<void> use_; ///< a lock that other processes see; null if the system needs none
};

/// Removes temporary files that killed processes left in the folder. Files in use, here or on
/// another computer, stay. If that is unknown, a file is removed once it has not been written for a
/// day. Ignores failures.
void RemoveAbandonedFiles(const std::filesystem::path& folder);

// What differs between systems.

/// Identifies the running system, whose processes can be checked: eight hexadecimal digits that
/// differ on another computer. Empty if unknown.
std::string SystemId();
std::uint64_t ProcessNumber();
/// The number of this process's first temporary file. If the system reuses process numbers, a later
/// process with the same number starts with a greater one.
std::uint64_t FirstFileNumber();
/// Creates an empty file and marks it as in use until the result is destroyed. Sets or clears the
/// failure: `file_exists` if there is a file, or another process just removed ours as abandoned.
std::shared_ptr<void> CreateInUse(const std::filesystem::path& path, std::error_code& failure);

/// A parsed name of a temporary file.
struct TemporaryName {
    bool isFromThisSystem = false; ///< the process runs, or ran, on this system
    std::uint64_t process = 0;
    std::uint64_t number = 0;
};

/// Removes the file unless it may be in use.
void RemoveIfAbandoned(const std::filesystem::path& path, const TemporaryName& name);

} // namespace orrery::util
