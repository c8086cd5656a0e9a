#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// A compound file being written: chains of contiguous sectors one after another, then the sector
/// table. All failures throw Error (FileNotWritable, DiskFull) with the path that the user knows.
class SectorFile {
public:
    /// Empties the file at `path`; errors name `target`.
    SectorFile(const std::filesystem::path& path, std::filesystem::path target,
               std::size_t sectorSize);
    /// Is kept in memory.
    explicit SectorFile(std::size_t sectorSize);
    SectorFile(const SectorFile&) = delete;
    SectorFile& operator=(const SectorFile&) = delete;

    std::size_t SectorSize() const { return sectorSize_; }
    /// Bytes so far, the header's sector included.
    std::uint64_t Size() const { return size_; }
    /// The number of the next sector. Valid only between chains.
    std::uint32_t NextSector() const;

    void Append(std::string_view bytes);
    /// Overwrites existing bytes. Throws Error(DamagedWorkbook) if they do not exist.
    void Patch(std::uint64_t offset, std::string_view bytes);
    /// Fills the last sector and chains what was written since the last chain.
    void EndChain();
    /// Writes a whole chain. Returns the number of its first sector; the end mark if there are no
    /// bytes.
    std::uint32_t WriteChain(std::string_view bytes);

    struct Tables {
        std::uint32_t firstFat = 0;
        std::uint32_t fatCount = 0; ///< sectors
        std::uint32_t firstDifat = 0;
        std::uint32_t difatCount = 0; ///< sectors, after those of the FAT
    };
    /// Writes the sector table after the last chain. The header lists `inHeader` FAT sectors, DIFAT
    /// sectors list the rest.
    Tables WriteTables(std::uint32_t inHeader);
    /// For a file; nothing can be written any more.
    void Close();
    /// What was written in memory.
    std::string Bytes() const { return memory_.str(); }

private:
    void Check(bool isDone) const;

    std::filesystem::path target_;
    std::size_t sectorSize_;
    std::filebuf file_;
    std::stringbuf memory_;
    std::streambuf& out_; // one of these
    std::uint64_t size_ = 0;
    std::vector<std::uint32_t> fat_;
};

} // namespace orrery::xls
