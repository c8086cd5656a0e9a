#pragma once

#include "engines/builtin/zip/entry.h"
#include "engines/builtin/zip/entry_source.h"
#include "util/file_read.h"

#include <cstdint>
#include <filesystem>
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
    /// Opens a container. Throws Error: NotAWorkbook if the bytes are not a zip container at all,
    /// FileNotFound, FileNotReadable, DamagedWorkbook (also if readers could see different
    /// entries), PasswordProtected, TooLargeUnpacked as `CheckSizes`.
    explicit Reader(const std::filesystem::path& path);
    ~Reader();
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    const std::vector<Entry>& Entries() const { return entries_; }
    /// The unpacked size of all entries in bytes; at most `kMaxUnpacked`.
    std::uint64_t UnpackedSize() const { return unpackedSize_; }
    /// The unpacked bytes of an entry; checks length and checksum. Throws Error(DamagedWorkbook).
    std::string Read(std::size_t index) const;
    /// Makes the same checks without keeping the bytes, once for each entry. Throws as `Read`.
    void Verify(std::size_t index) const;
    /// Throws Error(FileNotReadable) where another program changed the file since it was opened.
    void CheckUnchanged() const { file_.CheckUnchanged(); }

private:
    friend class Writer;
    template <typename Room> void Unpack(std::size_t index, Room room) const;
    /// Closes a container without changing it.
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

/// Writes a new zip container. Content is requested when the container is closed, one entry at a
/// time, so that only one packed entry is in memory.
class Writer {
public:
    /// The file at `path` is created or emptied when the container is closed. Throws
    /// Error(FileNotWritable).
    explicit Writer(const std::filesystem::path& path);
    ~Writer(); ///< discards what was not closed
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    /// Copies an entry unchanged, compressed bytes and time included. `source` must outlive Close.
    void CopyEntry(const Reader& source, std::size_t index, const std::string& name);
    /// Adds an entry compressed with deflate and dated 1980, so that equal content gives equal
    /// bytes.
    void AddEntry(const std::string& name, EntrySource::Producer content);
    /// Writes everything. Throws Error (FileNotWritable, DiskFull; for the container that entries
    /// are copied from FileNotReadable, DamagedWorkbook) and what a producer throws. The file is
    /// removed then.
    void Close();

private:
    /// Returns the new entry's index. Takes ownership of the source.
    std::uint64_t Add(const std::string& name, struct zip_source* source);

    std::filesystem::path path_;
    std::filesystem::path copiedFrom_;
    std::vector<std::unique_ptr<EntrySource>> sources_;
    Reader::Handle handle_; // last: it is closed before what its entries need
};

} // namespace orrery::zip
