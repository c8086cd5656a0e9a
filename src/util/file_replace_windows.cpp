#include <windows.h>
#undef ReplaceFile // a macro of the system's for two calls; here it is one of ours

#include "util/error.h"
#include "util/file_replace.h"
#include "util/paths.h"
#include "util/system_message.h"

#include <algorithm>
#include <array>
#include <string>
#include <system_error>
#include <utility>

namespace orrery::util {

namespace fs = std::filesystem;

namespace {

/// An open file.
class File {
public:
    File(const fs::path& path, DWORD access, DWORD creation)
        : handle_(CreateFileW(path.c_str(), access,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                              creation, FILE_ATTRIBUTE_NORMAL, nullptr))
    {
    }
    ~File()
    {
        if (IsOpen())
            CloseHandle(handle_);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE Handle() const { return handle_; }

private:
    HANDLE handle_;
};

[[noreturn]] void ThrowNotWritten(const fs::path& target, const std::error_code& failure)
{
    throw Error(ErrorKind::FileNotWritable, FromPath(target), SystemMessage(failure));
}

[[noreturn]] void ThrowNotWritten(const fs::path& target, DWORD code)
{
    if (code == ERROR_DISK_FULL || code == ERROR_HANDLE_DISK_FULL)
        throw Error(ErrorKind::DiskFull, FromPath(target));
    ThrowNotWritten(target, {static_cast<int>(code), std::system_category()});
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

/// A file that could not be written in place is not replaced either: a folder, a file that is
/// marked read-only, one that another program keeps to itself.
void CheckTarget(const fs::path& target)
{
    if (HasAttribute(target, FILE_ATTRIBUTE_DIRECTORY))
        ThrowNotWritten(target, std::make_error_code(std::errc::is_a_directory));
    if (HasAttribute(target, FILE_ATTRIBUTE_READONLY)) // for those who may write everything, too
        ThrowNotWritten(target, ERROR_ACCESS_DENIED);
    const File file(target, GENERIC_WRITE, OPEN_EXISTING);
    const DWORD code = file.IsOpen() ? ERROR_SUCCESS : GetLastError();
    // For a new file, making the temporary one tells whether the folder takes it.
    if (code != ERROR_SUCCESS && code != ERROR_FILE_NOT_FOUND)
        ThrowNotWritten(target, code);
}

/// Makes an empty file of a new name beside the target.
fs::path MakeTemporary(const fs::path& target)
{
    static unsigned counter = 0;
    for (;;) {
        const std::wstring name = L".orrery-" + std::to_wstring(GetCurrentProcessId()) + L'-' +
                                  std::to_wstring(counter++) + L".tmp";
        fs::path path = target.parent_path() / name;
        const File file(path, GENERIC_WRITE, CREATE_NEW);
        if (file.IsOpen())
            return path;
        if (const DWORD code = GetLastError(); code != ERROR_FILE_EXISTS)
            ThrowNotWritten(target, code);
    }
}

void WriteAll(const File& file, std::string_view bytes, const fs::path& target)
{
    constexpr std::size_t kMostAtOnce = 1U << 30;
    while (!bytes.empty()) {
        DWORD written = 0;
        const auto wanted = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
        if (WriteFile(file.Handle(), bytes.data(), wanted, &written, nullptr) == FALSE)
            ThrowNotWritten(target, GetLastError());
        if (written == 0)
            ThrowNotWritten(target, ERROR_DISK_FULL);
        bytes.remove_prefix(written);
    }
}

void Flush(const fs::path& temporary, const fs::path& target)
{
    const File file(temporary, GENERIC_WRITE, OPEN_EXISTING);
    if (!file.IsOpen() || FlushFileBuffers(file.Handle()) == FALSE)
        ThrowNotWritten(target, GetLastError());
}

/// Puts the new file in the old one's place, with the old one's permissions where the disk can do
/// that; some network disks cannot.
void Exchange(const fs::path& temporary, const fs::path& target)
{
    constexpr DWORD kTolerant = REPLACEFILE_IGNORE_MERGE_ERRORS | REPLACEFILE_IGNORE_ACL_ERRORS;
    if (ReplaceFileW(target.c_str(), temporary.c_str(), nullptr, kTolerant, nullptr, nullptr) !=
        FALSE)
        return;
    if (MoveFileExW(temporary.c_str(), target.c_str(),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == FALSE)
        ThrowNotWritten(target, GetLastError());
}

} // namespace

FileReplacement::FileReplacement(fs::path target) : target_(FollowLinks(std::move(target)))
{
    CheckTarget(target_);
    temporary_ = MakeTemporary(target_);
}

void FileReplacement::Commit()
{
    Flush(temporary_, target_);
    Exchange(temporary_, target_);
    committed_ = true;
}

void ReplaceFile(const fs::path& target, std::string_view bytes)
{
    FileReplacement replacement(target);
    {
        const File file(replacement.TemporaryPath(), GENERIC_WRITE, OPEN_EXISTING);
        if (!file.IsOpen())
            ThrowNotWritten(target, GetLastError());
        WriteAll(file, bytes, target);
    }
    replacement.Commit();
}

} // namespace orrery::util
