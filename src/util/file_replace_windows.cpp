#include "util/file_windows.h"
#undef ReplaceFile // a macro of <windows.h>; here it is our own function

#include "util/file_error.h"
#include "util/file_replace.h"

#include <algorithm>
#include <array>
#include <string>
#include <system_error>
#include <utility>

namespace orrery::util {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void ThrowWriteError(const fs::path& target, DWORD code)
{
    throw MakeWriteError(target, {static_cast<int>(code), std::system_category()});
}

bool HasAttribute(const fs::path& path, DWORD attribute)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & attribute) != 0;
}

/// The file that a chain of symbolic links leads to.
fs::path FollowLinks(fs::path path)
{
    if (!HasAttribute(path, FILE_ATTRIBUTE_REPARSE_POINT))
        return path;
    const File file(path, 0, OPEN_EXISTING);
    std::array<wchar_t, 32768> buffer = {};
    const DWORD length = file.IsOpen()
                             ? GetFinalPathNameByHandleW(file.Handle(), buffer.data(),
                                                         static_cast<DWORD>(buffer.size()), 0)
                             : 0;
    return length > 0 && length < buffer.size() ? fs::path(buffer.data()) : path;
}

/// A file that could not be written in place is not replaced either: a folder, a device, a file
/// that is marked read-only or that another program holds open.
void CheckTarget(const fs::path& target)
{
    if (HasAttribute(target, FILE_ATTRIBUTE_DIRECTORY))
        throw MakeNotRegularError(target, fs::file_type::directory);
    if (HasAttribute(target, FILE_ATTRIBUTE_READONLY)) // also for users who may write everything
        ThrowWriteError(target, ERROR_ACCESS_DENIED);
    const File file(target, GENERIC_WRITE, OPEN_EXISTING);
    const DWORD code = file.IsOpen() ? ERROR_SUCCESS : GetLastError();
    // For a new file, creating the temporary one shows whether the folder is writable.
    if (code != ERROR_SUCCESS && code != ERROR_FILE_NOT_FOUND && code != ERROR_PATH_NOT_FOUND)
        ThrowWriteError(target, code);
    if (file.IsOpen() && file.Type() != fs::file_type::regular)
        throw MakeNotRegularError(target, file.Type());
}

fs::path CheckedTarget(const fs::path& path)
{
    fs::path target = FollowLinks(path);
    CheckTarget(target);
    RemoveAbandonedFiles(target.parent_path());
    return target;
}

void WriteAll(const File& file, std::string_view bytes, const fs::path& target)
{
    constexpr std::size_t kMaxAtOnce = 1U << 30;
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto wanted = static_cast<DWORD>(std::min(bytes.size(), kMaxAtOnce));
        if (WriteFile(file.Handle(), bytes.data(), wanted, &written, nullptr) == FALSE)
            ThrowWriteError(target, GetLastError());
        if (written == 0)
            ThrowWriteError(target, ERROR_DISK_FULL);
        bytes.remove_prefix(written);
    }
}

void Flush(const fs::path& temporary, const fs::path& target)
{
    const File file(temporary, GENERIC_WRITE, OPEN_EXISTING);
    if (!file.IsOpen() || FlushFileBuffers(file.Handle()) == FALSE)
        ThrowWriteError(target, GetLastError());
}

/// Puts the new file in place of the old one and keeps the old permissions if the disk supports
/// that; some network disks do not.
void Exchange(const fs::path& temporary, const fs::path& target)
{
    constexpr DWORD kTolerant = REPLACEFILE_IGNORE_MERGE_ERRORS | REPLACEFILE_IGNORE_ACL_ERRORS;
    if (ReplaceFileW(target.c_str(), temporary.c_str(), nullptr, kTolerant, nullptr, nullptr) !=
        FALSE)
        return;
    if (MoveFileExW(temporary.c_str(), target.c_str(),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == FALSE)
        ThrowWriteError(target, GetLastError());
}

} // namespace

void CheckReplaceable(const fs::path& path)
{
    CheckTarget(FollowLinks(path));
}

void CreateEmptyFile(const fs::path& path)
{
    const File file(path, GENERIC_WRITE, CREATE_NEW);
    if (!file.IsOpen())
        ThrowWriteError(path, GetLastError());
}

FileReplacement::FileReplacement(const fs::path& target)
    : target_(CheckedTarget(target)), temporary_(target_)
{
}

void FileReplacement::Commit()
{
    Flush(temporary_.Path(), target_);
    Exchange(temporary_.Path(), target_);
    temporary_.Keep();
}

void ReplaceFile(const fs::path& target, std::string_view bytes)
{
    FileReplacement replacement(target);
    {
        const File file(replacement.TemporaryPath(), GENERIC_WRITE, OPEN_EXISTING);
        if (!file.IsOpen())
            ThrowWriteError(target, GetLastError());
        WriteAll(file, bytes, target);
    }
    replacement.Commit();
}

} // namespace orrery::util
