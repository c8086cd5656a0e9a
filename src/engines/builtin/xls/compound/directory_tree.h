#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The directory of a compound file: storages and streams; the members of each storage form a
/// red-black tree. [MS-CFB] 2.6
namespace orrery::xls {

/// An index into the directory.
using EntryId = std::uint32_t;
inline constexpr EntryId kRootEntry = 0;
inline constexpr EntryId kNoEntry = 0xFFFFFFFF;

enum class EntryType : std::uint8_t { Unallocated = 0, Storage = 1, Stream = 2, Root = 5 };
enum class EntryColour : std::uint8_t { Red = 0, Black = 1 };

/// A directory entry. [MS-CFB] 2.6.1
struct DirectoryEntry {
    std::u16string name; ///< at most 31 units
    EntryType type = EntryType::Unallocated;
    EntryColour colour = EntryColour::Black;
    EntryId left = kNoEntry;
    EntryId right = kNoEntry;
    EntryId child = kNoEntry; ///< the root of the tree of a storage's members
    std::array<char, 16> classId{};
    std::uint32_t stateBits = 0;
    std::uint64_t created = 0;
    std::uint64_t modified = 0;
    std::uint32_t start = 0; ///< the first sector; of the root, that of the mini stream
    std::uint64_t size = 0;  ///< bytes
    /// The storage that contains it, which is not in the file. `kNoEntry` for the root and for
    /// entries that no storage leads to.
    EntryId parent = kNoEntry;

    bool IsStorage() const { return type == EntryType::Storage || type == EntryType::Root; }
    bool IsStream() const { return type == EntryType::Stream; }
};

using Directory = std::vector<DirectoryEntry>;

inline constexpr std::size_t kEntrySize = 128; ///< bytes of an entry in the file

/// Reads an entry from its `kEntrySize` bytes. If the name's length is impossible, its zero ends
/// it.
DirectoryEntry ParseEntry(std::string_view bytes);
void AppendEntry(std::string& bytes, const DirectoryEntry& entry);

/// The order of names in a storage: shorter names first, then by upper-case UTF-16 units. Names
/// that differ only in case are equal. [MS-CFB] 2.6.4
std::weak_ordering CompareNames(std::u16string_view left, std::u16string_view right);

/// Checks the tree of every storage, sets the parents of the entries, and makes entries that no
/// storage leads to unallocated. Throws Error(DamagedWorkbook) if a link leads to no entry or to
/// one already visited, and if two members of a storage have one name.
void LinkParents(Directory& directory);
/// The members of a storage in the order of its tree, which need not be sorted. The tree must have
/// been checked.
std::vector<EntryId> MembersOf(const Directory& directory, EntryId storage);

/// Makes the tree of a storage's members a valid red-black tree; a valid one stays as it is.
void RepairTree(Directory& directory, EntryId storage);
/// Links those members to a balanced tree, whatever their links were before.
void BuildTree(Directory& directory, EntryId storage, std::vector<EntryId> members);

} // namespace orrery::xls
