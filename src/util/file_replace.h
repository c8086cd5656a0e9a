#pragma once

#include "util/file_read.h" // for those who read what they replace
#include "util/temporary_file.h"

#include <filesystem>
#include <string_view>

namespace orrery::util {

/// Throws Error for what is at the path where it cannot be replaced: NotARegularFile for a folder,
/// a device, a pipe; FileNotWritable for a file that is marked read-only or kept by another
/// program. A symbolic link stands for the file that it leads to. Nothing may be there.
void CheckReplaceable(const std::filesystem::path& path);

/// Makes an empty file where nothing is, not even a link. Throws Error (FileNotWritable, DiskFull).
void MakeEmptyFile(const std::filesystem::path& path);

/// A new file beside its target: written, flushed, and renamed over the target by `Commit`.
/// Without a commit the destructor removes it and the target stays as it was. Where the target is a
/// symbolic link, the file that it points to is replaced. The new file has the permissions of the
/// one that it replaces.
class FileReplacement {
public:
    /// Makes the empty temporary file, and removes those that killed processes left beside it.
    /// Throws Error (FileNotWritable, DiskFull, FileSizeLimit), and as `CheckReplaceable`.
    explicit FileReplacement(const std::filesystem::path& target);

    /// Where to write: an empty file in the target's folder, of a name that no file had.
    const std::filesystem::path& TemporaryPath() const { return temporary_.Path(); }
    /// Flushes the temporary file to the disk and renames it over the target.
    /// Throws Error (FileNotWritable, DiskFull).
    void Commit();

private:
    std::filesystem::path target_;
    TemporaryFile temporary_;
};

/// Whether files can be made in the folder.
bool CanWriteIn(std::string_view folder);

/// Replaces the whole file by the bytes. Throws Error as `FileReplacement`; the old file then
/// stays.
void ReplaceFile(const std::filesystem::path& target, std::string_view bytes);

} // namespace orrery::util
