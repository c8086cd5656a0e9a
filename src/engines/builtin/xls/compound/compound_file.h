#pragma once

#include "engines/builtin/xls/compound/directory_tree.h"
#include "engines/builtin/xls/compound/sector_chains.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

inline constexpr std::size_t kCompoundHeader = 512;   ///< bytes
inline constexpr std::size_t kMiniSector = 64;        ///< bytes
inline constexpr std::size_t kHeaderFatSectors = 109; ///< FAT sectors that the header itself lists

/// What becomes of a compound file that holds an encrypted package. [MS-OFFCRYPTO] 2.3.4
enum class EncryptedPackage { Refuse, Accept };

/// A compound file that was read whole: a file system of storages and streams in one file.
/// [MS-CFB]
class CompoundFile {
public:
    /// Checks that every stream can be read and that no two share a sector. The bytes are kept.
    /// Throws Error, without a subject: NotAWorkbook if they are not a compound file,
    /// PasswordProtected for an encrypted package that is not accepted, DamagedWorkbook.
    explicit CompoundFile(std::string bytes, EncryptedPackage package = EncryptedPackage::Refuse);
    CompoundFile(const CompoundFile&) = delete;
    CompoundFile& operator=(const CompoundFile&) = delete;

    /// All entries by id, the root first, unallocated ones included.
    const Directory& Entries() const { return directory_; }
    const DirectoryEntry& Entry(EntryId id) const { return directory_.at(id); }
    /// The member of a storage with that name (UTF-8), without regard to case.
    std::optional<EntryId> Find(std::string_view name, EntryId storage = kRootEntry) const;
    /// The ids of a storage's members, in the order of its tree.
    std::vector<EntryId> MembersOf(EntryId storage) const;
    /// The bytes of all streams in a storage, nested storages included, and of the directory
    /// entries of all of these.
    std::uint64_t SizeOf(EntryId storage) const;
    /// Throws Error(DamagedWorkbook) for an entry that is not a stream.
    std::string ReadStream(EntryId stream) const;
    /// Visits a stream's bytes piece by piece, as stored in the file.
    void VisitStream(EntryId stream, const std::function<void(std::string_view)>& visit) const;

    std::size_t Size() const { return bytes_.size(); }     ///< bytes of the whole file
    std::size_t SectorSize() const { return sectorSize_; } ///< 512 or 4096
    /// The file's first `kCompoundHeader` bytes.
    std::string_view Header() const;

private:
    void ReadFat();
    std::vector<std::uint32_t> FatSectors();
    void ReadDirectory();
    void ReadMiniStream();
    void ClaimStreams();
    bool IsMini(const DirectoryEntry& entry) const { return entry.size < miniCutoff_; }

    std::string bytes_;
    std::size_t sectorSize_;
    std::uint32_t miniCutoff_; ///< shorter streams are in the mini stream
    SectorChains sectors_;
    Directory directory_;
    std::string miniStream_;
    SectorChains miniSectors_;
};

} // namespace orrery::xls
