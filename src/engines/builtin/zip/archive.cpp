#include "engines/builtin/zip/archive.h"

#include "book/error.h"
#include "engines/builtin/zip/checks.h"
#include "engines/builtin/zip/target.h"
#include "util/error.h"
#include "util/file_error.h"
#include "util/paths.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <exception>
#include <fstream>
#include <system_error>
#include <utility>
#include <zip.h>

namespace orrery::zip {
namespace {

using book::ErrorKind;
using util::Error;

constexpr std::uint64_t kMiB = std::uint64_t{1} << 20U;

/// libzip's error record.
class ZipError {
public:
    ZipError() { zip_error_init(&error_); }
    explicit ZipError(zip_error_t* error) : ZipError()
    {
        zip_error_set(&error_, error->zip_err, error->sys_err);
    }
    ~ZipError() { zip_error_fini(&error_); }
    ZipError(const ZipError&) = delete;
    ZipError& operator=(const ZipError&) = delete;

    zip_error_t* Get() { return &error_; }
    int Code() const { return zip_error_code_zip(&error_); }
    bool IsSystem() const { return zip_error_system_type(&error_) == ZIP_ET_SYS; }
    int SystemCode() const { return IsSystem() ? zip_error_code_system(&error_) : 0; }
    std::string Text()
    {
        return IsSystem() ? std::generic_category().message(SystemCode())
                          : std::string(zip_error_strerror(&error_));
    }

private:
    zip_error_t error_;
};

/// Closes an entry that is being read.
struct FileCloser {
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};
using OpenEntry = std::unique_ptr<zip_file_t, FileCloser>;

/// Opens from a source, because only that reports the system's error code. Takes ownership of it.
zip_t* Open(zip_source_t* source, int flags, ZipError& error)
{
    if (source == nullptr)
        return nullptr;
    zip_t* const handle = zip_open_from_source(source, flags, error.Get());
    if (handle == nullptr)
        zip_source_free(source);
    return handle;
}

bool HasZipSignature(const std::filesystem::path& path)
{
    std::array<char, 4> bytes{};
    std::ifstream(path, std::ios::binary).read(bytes.data(), bytes.size());
    return std::string_view(bytes.data(), bytes.size()) == "PK\x03\x04";
}

[[noreturn]] void ThrowNotOpened(const std::filesystem::path& path, ZipError& error)
{
    const std::string subject = util::FromPath(path);
    switch (error.Code()) {
    case ZIP_ER_NOENT:
        throw Error(util::ErrorKind::FileNotFound, subject);
    case ZIP_ER_OPEN:
    case ZIP_ER_READ:
    case ZIP_ER_SEEK:
    case ZIP_ER_OPNOTSUPP: // a folder
        throw Error(util::ErrorKind::FileNotReadable, subject, error.Text());
    case ZIP_ER_NOZIP:
        if (!HasZipSignature(path))
            throw Error(ErrorKind::NotAWorkbook, subject);
        throw Error(ErrorKind::DamagedWorkbook, subject, "the zip container has no directory");
    default:
        throw Error(ErrorKind::DamagedWorkbook, subject, error.Text());
    }
}

} // namespace

Reader::Reader(const std::filesystem::path& path) : path_(path), file_(path)
{
    ZipError error;
    const auto utf8 = path.u8string(); // libzip takes UTF-8 on every system
    const std::string name(utf8.begin(), utf8.end());
    Handle handle(
        Open(zip_source_file_create(name.c_str(), 0, -1, error.Get()), ZIP_RDONLY, error));
    if (!handle)
        ThrowNotOpened(path, error);
    const zip_int64_t count = zip_get_num_entries(handle.get(), 0);
    for (zip_uint64_t index = 0; std::cmp_less(index, count); ++index) {
        zip_stat_t stat;
        if (zip_stat_index(handle.get(), index, 0, &stat) != 0) {
            throw Error(ErrorKind::DamagedWorkbook, util::FromPath(path),
                        zip_strerror(handle.get()));
        }
        if (stat.encryption_method != ZIP_EM_NONE)
            throw Error(ErrorKind::PasswordProtected, util::FromPath(path));
        entries_.push_back({stat.name, stat.size, stat.comp_size});
    }
    unpackedSize_ = CheckSizes(path, entries_);
    CheckIsUnambiguous(path, entries_);
    verified_.resize(entries_.size());
    handle_ = std::move(handle);
}

Reader::~Reader() = default;

void Reader::HandleCloser::operator()(zip_t* handle) const
{
    zip_discard(handle);
}

/// Reads an entry piece by piece: `room(offset, size)` gives the buffer for the bytes from that
/// offset on of the entry's `size`.
template <typename Room> void Reader::Unpack(std::size_t index, Room room) const
{
    const Entry& entry = entries_.at(index);
    const auto fail = [&](const std::string& what) {
        throw Error(ErrorKind::DamagedWorkbook, util::FromPath(path_), entry.name + ": " + what);
    };
    const OpenEntry file(zip_fopen_index(handle_.get(), index, 0));
    if (!file)
        fail(ZipError(zip_get_error(handle_.get())).Text());
    std::uint64_t size = 0;
    while (size < entry.size) {
        const auto [place, length] = room(size, entry.size);
        const zip_int64_t read = zip_fread(file.get(), place, length);
        if (read < 0)
            fail(ZipError(zip_file_get_error(file.get())).Text());
        if (read == 0)
            fail("it is shorter than declared");
        size += static_cast<std::uint64_t>(read);
    }
    char beyond = 0;
    const zip_int64_t more = zip_fread(file.get(), &beyond, 1); // also compares the checksum
    if (more < 0)
        fail(ZipError(zip_file_get_error(file.get())).Text());
    if (more > 0)
        fail("it is longer than declared");
    verified_[index] = true;
}

std::string Reader::Read(std::size_t index) const
{
    std::string bytes;
    Unpack(index, [&](std::uint64_t size, std::uint64_t declared) {
        // Memory grows with what is read, not with what is declared.
        if (size == bytes.size())
            bytes.resize(static_cast<std::size_t>(std::min(declared, std::max(kMiB, size * 2))));
        return std::pair(bytes.data() + size, bytes.size() - size);
    });
    return bytes;
}

void Reader::Verify(std::size_t index) const
{
    if (verified_[index])
        return;
    std::array<char, 1U << 16U> piece; // NOLINT(cppcoreguidelines-pro-type-member-init)
    Unpack(index, [&](std::uint64_t size, std::uint64_t declared) {
        return std::pair(piece.data(), std::min<std::uint64_t>(piece.size(), declared - size));
    });
}

Writer::Writer(const std::filesystem::path& path) : path_(path)
{
    ZipError error;
    handle_.reset(Open(CreateTarget(path, *error.Get()), ZIP_CREATE | ZIP_TRUNCATE, error));
    if (!handle_)
        throw Error(util::ErrorKind::FileNotWritable, util::FromPath(path), error.Text());
}

Writer::~Writer() = default;

void Writer::CopyEntry(const Reader& source, std::size_t index, const std::string& name)
{
    copiedFrom_ = source.path_;
    zip_stat_t stat;
    if (zip_stat_index(source.handle_.get(), index, 0, &stat) != 0) {
        throw Error(ErrorKind::DamagedWorkbook, util::FromPath(source.path_),
                    zip_strerror(source.handle_.get()));
    }
    const std::uint64_t added =
        Add(name, zip_source_zip(handle_.get(), source.handle_.get(), index, 0, 0, -1));
    // Otherwise libzip would compress stored entries, and recompress those of unknown methods.
    zip_set_file_compression(handle_.get(), added, stat.comp_method, 0);
}

void Writer::AddEntry(const std::string& name, EntrySource::Producer content)
{
    constexpr zip_uint16_t kNewYear1980 = 1 << 5 | 1; // the first date that a zip entry can have
    auto source = std::make_unique<EntrySource>(std::move(content));
    const std::uint64_t added = Add(name, source->Create(handle_.get()));
    sources_.push_back(std::move(source));
    // The method that the content already has: libzip would undo another.
    zip_set_file_compression(handle_.get(), added, ZIP_CM_DEFLATE, 0);
    zip_file_set_dostime(handle_.get(), added, 0, kNewYear1980, 0);
}

std::uint64_t Writer::Add(const std::string& name, zip_source_t* source)
{
    const zip_int64_t added =
        source == nullptr ? -1
                          : zip_file_add(handle_.get(), name.c_str(), source, ZIP_FL_ENC_UTF_8);
    if (added < 0) {
        zip_source_free(source);
        throw Error(util::ErrorKind::FileNotWritable, util::FromPath(path_),
                    zip_strerror(handle_.get()));
    }
    return static_cast<std::uint64_t>(added);
}

void Writer::Close()
{
    if (zip_close(handle_.get()) == 0) {
        static_cast<void>(handle_.release()); // zip_close freed it
        sources_.clear();
        return;
    }
    for (const auto& source : sources_) {
        if (const auto failure = source->Failure())
            std::rethrow_exception(failure);
    }
    ZipError error(zip_get_error(handle_.get()));
    const std::string target = util::FromPath(path_);
    const Error limit = util::MakeWriteError(path_, {error.SystemCode(), std::generic_category()});
    if (limit.Kind() != util::ErrorKind::FileNotWritable)
        throw Error(limit);
    switch (error.Code()) {
    case ZIP_ER_READ:
    case ZIP_ER_SEEK:
        if (!copiedFrom_.empty())
            throw Error(util::ErrorKind::FileNotReadable, util::FromPath(copiedFrom_),
                        error.Text());
        break;
    case ZIP_ER_EOF:
    case ZIP_ER_NOZIP:
    case ZIP_ER_INCONS:
        throw Error(ErrorKind::DamagedWorkbook, util::FromPath(copiedFrom_), error.Text());
    default:
        break;
    }
    throw Error(util::ErrorKind::FileNotWritable, target, error.Text());
}

} // namespace orrery::zip
