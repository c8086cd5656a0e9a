#pragma once

#include <filesystem>
#include <windows.h>

namespace orrery::util {

/// Owns an open Windows file. Other programs may read, write and delete it meanwhile.
class File {
public:
    File(const std::filesystem::path& path, DWORD access, DWORD creation,
         DWORD flags = FILE_ATTRIBUTE_NORMAL)
        : handle_(CreateFileW(path.c_str(), access,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                              creation, flags, nullptr))
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
    /// Gives up ownership without closing.
    void Release() { handle_ = INVALID_HANDLE_VALUE; }

    /// What was opened: devices and pipes have names too.
    std::filesystem::file_type Type() const
    {
        switch (GetFileType(handle_)) {
        case FILE_TYPE_CHAR:
            return std::filesystem::file_type::character;
        case FILE_TYPE_PIPE:
            return std::filesystem::file_type::fifo;
        default:
            break;
        }
        BY_HANDLE_FILE_INFORMATION information = {}; // fails for a whole disk
        if (GetFileInformationByHandle(handle_, &information) == FALSE)
            return std::filesystem::file_type::block;
        const bool isFolder = (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        return isFolder ? std::filesystem::file_type::directory
                        : std::filesystem::file_type::regular;
    }

private:
    HANDLE handle_;
};

} // namespace orrery::util
