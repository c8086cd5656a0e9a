#pragma once

#include "util/file_read.h" // for callers that read what they replace
#include "util/temporary_file.h"

#include <filesystem>
#include <string_view>

namespace orrery::util {

/// Throws Error if the file at the path cannot be replaced: NotARegularFile for a folder, a device
/// or a pipe; FileNotWritable if it is marked read-only or another program holds it open. Links are
/// followed. A missing file is fine.
void CheckReplaceable(const std::filesystem::path& path);

/// Creates an empty file; nothing of that name may exist, not even a link. Throws Error
/// (FileNotWritable, DiskFull).
void CreateEmptyFile(const std::filesystem::path& path);

/// A new file beside its target: written, flushed, and renamed over the target by `Commit`.
/// Without a commit the destructor removes it and the target stays unchanged. If the target is a
/// symbolic link, the file that it points to is replaced. The new file gets the permissions of the
/// old one.
class FileReplacement {
public:
    /// Creates the empty temporary file and removes those that killed processes left beside it.
    /// Throws Error (FileNotWritable, DiskFull, FileSizeLimit) and what `CheckReplaceable` throws.
    explicit FileReplacement(const std::filesystem::path& target);

    /// The file to write: empty, in the target's folder, with an unused name.
    const std::filesystem::path& TemporaryPath() const { return temporary_.Path(); }
    /// Writes the bytes of another file into the temporary one. Throws Error (FileNotWritable,
    /// DiskFull, FileSizeLimit).
    void CopyFrom(const std::filesystem::path& source);
    /// Flushes the temporary file to the disk and renames it over the target.
    /// Throws Error (FileNotWritable, DiskFull).
    void Commit();

private:
    std::filesystem::path target_;
    TemporaryFile temporary_;
};

/// Whether files can be created in the folder.
bool CanWriteIn(std::string_view folder);

/// Replaces the whole file with the bytes. Throws Error like `FileReplacement`; the old file then
/// stays.
void ReplaceFile(const std::filesystem::path& target, std::string_view bytes);

} // namespace orrery::util
