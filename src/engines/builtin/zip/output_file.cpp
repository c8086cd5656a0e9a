#include "engines/builtin/zip/output_file.h"

#include "util/file_error.h"

#include <cerrno>
#include <ios>
#include <system_error>
#include <utility>

namespace orrery::zip {

OutputFile::OutputFile(std::filesystem::path path) : path_(std::move(path))
{
    errno = 0;
    file_.pubsetbuf(nullptr, 0); // what is gathered here is not copied once more
    if (file_.open(path_, std::ios::out | std::ios::binary | std::ios::trunc) == nullptr)
        Fail();
}

void OutputFile::Fail() const
{
    throw util::MakeWriteError(path_, {errno != 0 ? errno : EIO, std::generic_category()});
}

void OutputFile::Write(std::string_view bytes)
{
    constexpr std::size_t kMost = std::size_t{1} << 20U;
    buffer_ += bytes;
    if (buffer_.size() >= kMost)
        Flush();
}

void OutputFile::Flush()
{
    errno = 0;
    const auto size = static_cast<std::streamsize>(buffer_.size());
    if (file_.sputn(buffer_.data(), size) != size)
        Fail();
    written_ += buffer_.size();
    buffer_.clear();
}

void OutputFile::Close()
{
    Flush();
    errno = 0;
    if (file_.close() == nullptr)
        Fail();
}

void OutputFile::Discard()
{
    file_.close();
    std::error_code ignored; // a file that cannot be removed cannot be reported here either
    std::filesystem::remove(path_, ignored);
}

} // namespace orrery::zip
