#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

namespace orrery::util {

/// An empty file beside a target, of a name that no file had: ".orrery-MARK-PROCESS-NUMBER.tmp".
/// It is removed with the object unless it was renamed. As long as it lives, other processes can
/// tell that it is in use.
class TemporaryFile {
public:
    /// Throws Error (FileNotWritable, DiskFull) with the target as its subject.
    explicit TemporaryFile(const std::filesystem::path& target);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    /// It has another name now and stays.
    void Keep() { path_.clear(); }

private:
    std::filesystem::path path_;
    std::shared_ptr<void> use_; ///< what tells other processes; null where nothing has to be held
};

/// Removes temporary files that processes left in the folder when they were killed. One that may
/// be in use, by a process here or on another computer, stays: where that cannot be ruled out, it
/// goes when it was not written to for a day. Failures are absorbed.
void RemoveAbandonedFiles(const std::filesystem::path& folder);

// What each system does differently.

/// The name of the system whose processes can be told to be alive or gone: eight digits, which
/// another computer has not. Empty where that is unknown.
std::string SystemMark();
std::uint64_t ProcessNumber();
/// The number of this process's first temporary file. Where the system's numbers of processes come
/// again, a later process of the same number has a greater one.
std::uint64_t FirstFileNumber();
/// Makes an empty file where nothing is and marks it as in use until the result goes. Sets the
/// failure, or clears it; `file_exists` also where another process took the file for abandoned.
std::shared_ptr<void> MakeInUse(const std::filesystem::path& path, std::error_code& failure);

/// What the name of a temporary file tells.
struct TemporaryName {
    bool isOfThisSystem = false; ///< the process is one of the system with this mark
    std::uint64_t process = 0;
    std::uint64_t number = 0;
};

/// Removes the file of that name unless it may be in use.
void RemoveIfAbandoned(const std::filesystem::path& path, const TemporaryName& name);

} // namespace orrery::util
