#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// A compound file while it is written: chains of sectors one behind the other, so that each of
/// them lies in one piece, then the table that chains them. All failures throw Error
/// (FileNotWritable, DiskFull) with the path of the file that the user knows.
class SectorFile {
public:
    /// Empties the file at `path`; errors name `target`.
    SectorFile(const std::filesystem::path& path, std::filesystem::path target,
               std::size_t sectorSize);

    std::size_t SectorSize() const { return sectorSize_; }
    /// Bytes so far, those of the header's sector included.
    std::uint64_t Size() const { return size_; }
    /// The number that the next sector will have. Between chains.
    std::uint32_t NextSector() const;

    void Append(std::string_view bytes);
    /// Writes over bytes that are there. Throws Error(DamagedWorkbook) where they are not.
    void Patch(std::uint64_t offset, std::string_view bytes);
    /// Fills the last sector and chains what was written since the chain before.
    void EndChain();
    /// A whole chain. The number of its first sector; the end mark where there are no bytes.
    std::uint32_t WriteChain(std::string_view bytes);

    /// Where the sector table lies.
    struct Tables {
        std::uint32_t firstFat = 0;
        std::uint32_t fatCount = 0; ///< sectors
        std::uint32_t firstDifat = 0;
        std::uint32_t difatCount = 0; ///< sectors, after those of the FAT
    };
    /// Writes the sector table behind the last chain. `inHeader` FAT sectors are listed by the
    /// header, the others by DIFAT sectors.
    Tables WriteTables(std::uint32_t inHeader);
    void Close();

private:
    void Check(bool isDone) const;

    std::filesystem::path target_;
    std::size_t sectorSize_;
    std::filebuf file_;
    std::uint64_t size_ = 0;
    std::vector<std::uint32_t> fat_;
};

} // namespace orrery::xls
