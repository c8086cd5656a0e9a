#pragma once

#include "engines/builtin/zip/entry.h"
#include "util/file_read.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct zip;
struct zip_source;

namespace orrery::zip {

/// Reads a zip container. Owns the handle.
class Reader {
public:
    /// Opens a container. Throws Error: NotAWorkbook where the bytes are no zip container at all,
    /// FileNotFound, FileNotReadable, DamagedWorkbook (also where readers could see different
    /// entries), PasswordProtected, TooLargeUnpacked: over 1 GiB in all, or beyond 1:1000, of the
    /// container or an entry above 10 MiB.
    explicit Reader(const std::filesystem::path& path);
    ~Reader();
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    const std::vector<Entry>& Entries() const { return entries_; }
    /// Of all entries, in bytes; at most `kMostUnpacked`.
    std::uint64_t UnpackedSize() const { return unpackedSize_; }
    /// The unpacked bytes of an entry; checks length and checksum. Throws Error(DamagedWorkbook).
    std::string Read(std::size_t index) const;
    /// Checks length and checksum of an entry once. Throws Error(DamagedWorkbook).
    void Verify(std::size_t index) const;
    /// Throws Error(FileNotReadable) where another program changed the file since it was opened.
    void CheckUnchanged() const { file_.CheckUnchanged(); }

private:
    friend class Writer;
    template <typename Room> void Unpack(std::size_t index, Room room) const;
    /// Gives a container back unchanged.
    struct HandleCloser {
        void operator()(struct zip* handle) const;
    };
    using Handle = std::unique_ptr<struct zip, HandleCloser>;

    std::filesystem::path path_;
    util::InputFile file_;
    Handle handle_;
    std::vector<Entry> entries_;
    std::uint64_t unpackedSize_ = 0;
    mutable std::vector<bool> verified_; // by entry
};

/// Writes a new zip container. Content is asked for when the container is closed, one entry at a
/// time, so that only one unpacked entry is in memory at once.
class Writer {
public:
    using Producer = std::function<std::string()>;

    /// The file at `path` is created or emptied when the container is closed. Throws
    /// Error(FileNotWritable).
    explicit Writer(const std::filesystem::path& path);
    ~Writer(); ///< discards what was not closed
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    /// Takes over an entry as it is, packed bytes and time included. `source` must outlive Close.
    void CopyEntry(const Reader& source, std::size_t index, const std::string& name);
    /// An entry packed with deflate, of a fixed date, so that equal content gives equal bytes.
    void AddEntry(const std::string& name, Producer content);
    /// Writes everything. Throws Error (FileNotWritable, DiskFull, and about the container that
    /// entries are copied from: FileNotReadable, DamagedWorkbook) and what a producer throws; the
    /// file is then removed.
    void Close();

private:
    struct Pending;
    /// On sheets half the time of zlib's usual level for a tenth more bytes.
    static constexpr unsigned kDeflateLevel = 4;

    /// The new entry's index. Takes the source over.
    std::uint64_t Add(const std::string& name, struct zip_source* source);

    std::filesystem::path path_;
    std::filesystem::path copiedFrom_;
    std::vector<std::unique_ptr<Pending>> pending_;
    Reader::Handle handle_; // given back before what its entries need
};

} // namespace orrery::zip
