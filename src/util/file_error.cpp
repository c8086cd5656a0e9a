#include "util/file_error.h"

#include "util/paths.h"
#include "util/system_message.h"

namespace orrery::util {

namespace fs = std::filesystem;

namespace {

const char* Describe(fs::file_type type)
{
    switch (type) {
    case fs::file_type::directory:
        return "it is a folder";
    case fs::file_type::fifo:
        return "it is a named pipe";
    case fs::file_type::socket:
        return "it is a socket";
    case fs::file_type::block:
    case fs::file_type::character:
        return "it is a device";
    default:
        return "";
    }
}

} // namespace

Error MakeReadError(const fs::path& file, const std::error_code& code)
{
    // To the user, "a part of the path is not a folder" means the same.
    if (code == std::errc::no_such_file_or_directory || code == std::errc::not_a_directory)
        return Error(ErrorKind::FileNotFound, FromPath(file));
    return Error(ErrorKind::FileNotReadable, FromPath(file), SystemMessage(code));
}

Error MakeWriteError(const fs::path& target, const std::error_code& code)
{
    if (MeansDiskFull(code))
        return Error(ErrorKind::DiskFull, FromPath(target));
    if (code == std::errc::file_too_large)
        return Error(ErrorKind::FileSizeLimit, FromPath(target));
    return Error(ErrorKind::FileNotWritable, FromPath(target),
                 code ? SystemMessage(code) : std::string());
}

Error MakeNotRegularError(const fs::path& file, fs::file_type type)
{
    return Error(ErrorKind::NotARegularFile, FromPath(file), Describe(type));
}

} // namespace orrery::util
