#include "engines/builtin/zip/target.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <ios>
#include <memory>
#include <system_error>
#include <utility>
#include <zip.h>

namespace orrery::zip {
namespace {

/// Carries out libzip's write commands; a command that fails sets the error and returns -1.
class ZipTarget {
public:
    explicit ZipTarget(std::filesystem::path path) : path_(std::move(path))
    {
        zip_error_init(&error_);
    }
    ~ZipTarget() { zip_error_fini(&error_); }
    ZipTarget(const ZipTarget&) = delete;
    ZipTarget& operator=(const ZipTarget&) = delete;

    static zip_int64_t Serve(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command)
    {
        auto* target = static_cast<ZipTarget*>(state);
        if (command == ZIP_SOURCE_FREE) {
            const std::unique_ptr<ZipTarget> last(target);
            return 0;
        }
        errno = 0;
        return target->Do(data, length, command);
    }

private:
    zip_int64_t Do(void* data, zip_uint64_t length, zip_source_cmd_t command)
    {
        switch (command) {
        case ZIP_SOURCE_SUPPORTS:
            // libzip demands a source that can be read but never reads it: the container is new.
            return zip_source_make_command_bitmap(
                ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_SEEK,
                ZIP_SOURCE_TELL, ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE,
                ZIP_SOURCE_BEGIN_WRITE, ZIP_SOURCE_WRITE, ZIP_SOURCE_SEEK_WRITE,
                ZIP_SOURCE_TELL_WRITE, ZIP_SOURCE_COMMIT_WRITE, ZIP_SOURCE_ROLLBACK_WRITE,
                ZIP_SOURCE_REMOVE, ZIP_SOURCE_SUPPORTS, -1);
        case ZIP_SOURCE_STAT:
            errno = ENOENT; // a file that is already there is ignored
            return Fail(ZIP_ER_READ);
        case ZIP_SOURCE_ERROR:
            return zip_error_to_data(&error_, data, length);
        case ZIP_SOURCE_BEGIN_WRITE:
            return Begin();
        case ZIP_SOURCE_WRITE:
            return Write(static_cast<const char*>(data), length);
        case ZIP_SOURCE_SEEK_WRITE:
            return Seek(data, length);
        case ZIP_SOURCE_TELL_WRITE:
            return static_cast<zip_int64_t>(position_);
        case ZIP_SOURCE_COMMIT_WRITE:
            return file_.close() != nullptr ? 0 : Fail(ZIP_ER_CLOSE);
        case ZIP_SOURCE_ROLLBACK_WRITE:
        case ZIP_SOURCE_REMOVE:
            return Remove();
        default:
            zip_error_set(&error_, ZIP_ER_OPNOTSUPP, 0);
            return -1;
        }
    }

    zip_int64_t Fail(int code)
    {
        zip_error_set(&error_, code, errno);
        return -1;
    }

    zip_int64_t Begin()
    {
        position_ = size_ = 0;
        const auto mode = std::ios::out | std::ios::binary | std::ios::trunc;
        return file_.open(path_, mode) != nullptr ? 0 : Fail(ZIP_ER_OPEN);
    }

    zip_int64_t Write(const char* bytes, zip_uint64_t length)
    {
        const auto count = static_cast<std::streamsize>(length);
        if (file_.sputn(bytes, count) != count)
            return Fail(ZIP_ER_WRITE);
        position_ += length;
        size_ = std::max(size_, position_);
        return static_cast<zip_int64_t>(length);
    }

    zip_int64_t Seek(void* data, zip_uint64_t length)
    {
        const zip_int64_t offset =
            zip_source_seek_compute_offset(position_, size_, data, length, &error_);
        if (offset < 0)
            return -1;
        if (file_.pubseekpos(offset) == std::filebuf::pos_type(-1))
            return Fail(ZIP_ER_SEEK);
        position_ = static_cast<zip_uint64_t>(offset);
        return 0;
    }

    zip_int64_t Remove()
    {
        file_.close();
        std::error_code ignored; // a file that cannot be removed cannot be reported here either
        std::filesystem::remove(path_, ignored);
        return 0;
    }

    std::filesystem::path path_;
    std::filebuf file_;
    zip_uint64_t position_ = 0;
    zip_uint64_t size_ = 0;
    zip_error_t error_;
};

} // namespace

zip_source* CreateTarget(const std::filesystem::path& path, zip_error& error)
{
    auto target = std::make_unique<ZipTarget>(path);
    zip_source* const source = zip_source_function_create(&ZipTarget::Serve, target.get(), &error);
    if (source != nullptr)
        static_cast<void>(target.release()); // freed by ZIP_SOURCE_FREE
    return source;
}

} // namespace orrery::zip
