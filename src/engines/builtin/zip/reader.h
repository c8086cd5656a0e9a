#pragma once

#include "engines/builtin/zip/entry.h"
#include "engines/builtin/zip/file_window.h"
#include "engines/builtin/zip/inflate.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::zip {

/// Reads a zip container.
class Reader {
public:
    using Take = InflateStream::Take;

    /// Opens a container. Throws Error: FileNotFound, FileNotReadable, NotARegularFile, and as
    /// `ReadDirectory` and `CheckSizes` do.
    explicit Reader(const std::filesystem::path& path);
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    const std::vector<Entry>& Entries() const { return entries_; }
    /// The unpacked size of all entries in bytes; at most `kMaxUnpacked`.
    std::uint64_t UnpackedSize() const { return unpackedSize_; }
    /// The unpacked bytes of an entry; checks length and checksum. Throws Error(DamagedWorkbook,
    /// FileNotReadable).
    std::string Read(std::size_t index) const;
    /// Makes the same checks without keeping the bytes, once for each entry. Throws as `Read`.
    void Verify(std::size_t index) const;
    /// Gives the packed bytes of an entry piece by piece. Throws as `Read` and what `take` throws.
    void ReadPacked(std::size_t index, const Take& take) const;
    /// Throws Error(FileNotReadable) where another program changed the file since it was opened.
    void CheckUnchanged() const { file_.CheckUnchanged(); }
    /// Closes the file until something of it is asked for that is not in memory.
    void CloseFile() { file_.Close(); }

private:
    std::uint64_t FindContent(const Entry& entry) const;
    void ReadPacked(const Entry& entry, const Take& take) const;
    void UnpackPieces(const Entry& entry, const Take& take) const;
    std::string UnpackWhole(const Entry& entry) const;
    /// Turns an UnpackError into an Error that names file and entry.
    template <typename Action> void WithNameOf(const Entry& entry, Action action) const;
    template <typename Unpacking> void Check(std::size_t index, Unpacking unpack) const;

    mutable FileWindow file_;
    Inflater inflater_;
    std::vector<Entry> entries_;
    std::uint64_t unpackedSize_ = 0;
    mutable std::vector<bool> verified_; // by entry
};

} // namespace orrery::zip
