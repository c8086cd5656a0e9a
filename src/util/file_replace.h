#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::util {

/// The bytes of a file, or nothing when it cannot be opened or read.
std::optional<std::string> ReadFile(const std::filesystem::path& path);

/// A new file beside its target: written, flushed, and renamed over the target by `Commit`.
/// Without a commit the destructor removes it and the target stays as it was. Where the target is a
/// symbolic link, the file that it points to is replaced. The new file has the permissions of the
/// one that it replaces.
class FileReplacement {
public:
    /// Makes the empty temporary file. Throws Error (FileNotWritable, DiskFull), also for a target
    /// that is a folder or marked read-only.
    explicit FileReplacement(std::filesystem::path target);
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    /// Where to write: an empty file in the target's folder, of a name that no file had.
    const std::filesystem::path& TemporaryPath() const { return temporary_; }
    /// Flushes the temporary file to the disk and renames it over the target.
    /// Throws Error (FileNotWritable, DiskFull).
    void Commit();

private:
    std::filesystem::path target_;
    std::filesystem::path temporary_;
    bool committed_ = false;
};

/// Whether files can be made in the folder.
bool CanWriteIn(std::string_view folder);

/// Replaces the whole file by the bytes. Throws Error (FileNotWritable, DiskFull); the old file
/// then stays.
void ReplaceFile(const std::filesystem::path& target, std::string_view bytes);

} // namespace orrery::util
