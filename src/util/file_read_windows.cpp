#include "util/file_windows.h"

#include "util/file_error.h"
#include "util/file_read.h"

#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <io.h>
#include <system_error>

#undef ReadFile // a macro of <windows.h>; here it is our own function

namespace orrery::util {

namespace fs = std::filesystem;

InputFile::InputFile(const fs::path& path) : path_(path)
{
    // The flag also opens folders, so that the error can say what they are.
    File file(path, GENERIC_READ, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
    if (!file.IsOpen())
        throw MakeReadError(path, {static_cast<int>(GetLastError()), std::system_category()});
    if (const fs::file_type type = file.Type(); type != fs::file_type::regular)
        throw MakeNotRegularError(path, type);
    const int number =
        _open_osfhandle(reinterpret_cast<std::intptr_t>(file.Handle()), _O_RDONLY | _O_BINARY);
    if (number == -1)
        throw MakeReadError(path, {errno, std::generic_category()});
    file.Release(); // the number owns it now, and the stream will own the number
    file_.reset(_fdopen(number, "rb"));
    if (!file_) {
        _close(number);
        throw MakeReadError(path, {errno, std::generic_category()});
    }
    stamp_ = StampOf(file_.get()).value_or(Stamp());
}

void InputFile::Seek(std::uint64_t offset)
{
    if (_fseeki64(file_.get(), static_cast<std::int64_t>(offset), SEEK_SET) != 0)
        throw MakeReadError(path_, {errno, std::generic_category()});
}

std::optional<InputFile::Stamp> InputFile::StampOf(std::FILE* file)
{
    const auto join = [](DWORD high, DWORD low) {
        return static_cast<std::uint64_t>(high) << 32U | low;
    };
    BY_HANDLE_FILE_INFORMATION status = {};
    if (GetFileInformationByHandle(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file))),
                                   &status) == FALSE)
        return std::nullopt;
    return Stamp{join(status.nFileSizeHigh, status.nFileSizeLow),
                 static_cast<std::int64_t>(join(status.ftLastWriteTime.dwHighDateTime,
                                                status.ftLastWriteTime.dwLowDateTime))};
}

} // namespace orrery::util
