#include "engines/builtin/xls/compound/compound_file.h"

#include "book/error.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "util/error.h"
#include "util/unicode.h"

#include <algorithm>
#include <utility>

namespace orrery::xls {
namespace {

using book::ErrorKind;
using util::Error;

constexpr std::string_view kSignature = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
constexpr unsigned kMiniSectorShift = 6;

/// Checks the fields that everything depends on. Counts are ignored: the chains themselves decide.
std::size_t ReadSectorSize(std::string_view bytes)
{
    if (!bytes.starts_with(kSignature))
        throw Error(ErrorKind::NotAWorkbook);
    if (bytes.size() < kCompoundHeader)
        ThrowDamaged("its header is cut off");
    const unsigned shift = ReadU16(bytes, 30);
    if ((shift != 9 && shift != 12) || ReadU16(bytes, 32) != kMiniSectorShift)
        ThrowDamaged("its header gives sectors an impossible size");
    return std::size_t{1} << shift;
}

std::string_view AfterHeader(std::string_view bytes, std::size_t sectorSize)
{
    return bytes.substr(std::min(sectorSize, bytes.size()));
}

std::vector<std::uint32_t> ReadTable(std::string_view bytes)
{
    std::vector<std::uint32_t> table(bytes.size() / 4);
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = ReadU32(bytes, 4 * i);
    return table;
}

} // namespace

CompoundFile::CompoundFile(std::string bytes, EncryptedPackage package)
    : bytes_(std::move(bytes)), sectorSize_(ReadSectorSize(bytes_)),
      miniCutoff_(ReadU32(bytes_, 56)), sectors_(AfterHeader(bytes_, sectorSize_), sectorSize_),
      miniSectors_({}, kMiniSector)
{
    ReadFat();
    ReadDirectory();
    // Reported even if the package itself is damaged.
    if (package == EncryptedPackage::Refuse && Find("EncryptedPackage"))
        throw Error(ErrorKind::PasswordProtected);
    ReadMiniStream();
    ClaimStreams();
    sectors_.EndClaims();
    miniSectors_.EndClaims();
}

void CompoundFile::ReadFat()
{
    std::vector<std::uint32_t> fat;
    fat.reserve(sectors_.Count());
    const auto fatSectors = FatSectors();
    sectors_.BeginClaim();
    for (const std::uint32_t sector : fatSectors) {
        sectors_.Claim(sector);
        const auto part = ReadTable(sectors_.Sector(sector));
        fat.insert(fat.end(), part.begin(), part.end());
    }
    sectors_.SetTable(std::move(fat));
}

/// The FAT sectors that the file's size requires; further ones in the header mean nothing.
std::vector<std::uint32_t> CompoundFile::FatSectors()
{
    const std::size_t perSector = sectorSize_ / 4;
    const std::size_t needed = (sectors_.Count() + perSector - 1) / perSector;
    std::vector<std::uint32_t> found;
    const auto take = [&](std::string_view list) {
        for (const std::uint32_t sector : ReadTable(list)) {
            if (sector > kLastSectorNumber || found.size() == needed)
                break;
            found.push_back(sector);
        }
    };
    take(Header().substr(76));
    const bool hasMore = ReadU32(bytes_, 72) > 0;
    std::uint32_t difat = hasMore ? ReadU32(bytes_, 68) : kEndOfChain;
    sectors_.BeginClaim();
    while (difat <= kLastSectorNumber && found.size() < needed) {
        sectors_.Claim(difat);
        const std::string_view list = sectors_.Sector(difat);
        if (list.size() < sectorSize_)
            ThrowDamaged("the list of its sectors is cut off");
        take(list.substr(0, sectorSize_ - 4));
        difat = ReadU32(list, sectorSize_ - 4);
    }
    return found;
}

void CompoundFile::ReadDirectory()
{
    const std::string entries = sectors_.ClaimAndRead(ReadU32(bytes_, 48));
    const bool isVersion3 = sectorSize_ == 512;
    for (std::size_t at = 0; entries.size() - at >= kEntrySize; at += kEntrySize) {
        directory_.push_back(ParseEntry(std::string_view(entries).substr(at, kEntrySize)));
        if (isVersion3)
            directory_.back().size &= 0xFFFFFFFF; // the upper half was not always set
    }
    if (directory_.empty() || directory_[kRootEntry].type != EntryType::Root)
        ThrowDamaged("its directory has no root");
    LinkParents(directory_);
}

void CompoundFile::ReadMiniStream()
{
    const DirectoryEntry& root = directory_[kRootEntry];
    miniStream_ = sectors_.ClaimAndRead(root.start, root.size);
    miniSectors_ = SectorChains(miniStream_, kMiniSector);
    if (ReadU32(bytes_, 64) > 0)
        miniSectors_.SetTable(ReadTable(sectors_.ClaimAndRead(ReadU32(bytes_, 60))));
}

void CompoundFile::ClaimStreams()
{
    for (const DirectoryEntry& entry : directory_) {
        if (entry.IsStream())
            (IsMini(entry) ? miniSectors_ : sectors_).ClaimStream(entry.start, entry.size);
    }
}

std::optional<EntryId> CompoundFile::Find(std::string_view name, EntryId storage) const
{
    const std::u16string wanted = util::ToUtf16(name);
    for (const EntryId member : MembersOf(storage)) {
        if (CompareNames(Entry(member).name, wanted) == 0)
            return member;
    }
    return std::nullopt;
}

std::vector<EntryId> CompoundFile::MembersOf(EntryId storage) const
{
    return xls::MembersOf(directory_, storage);
}

std::uint64_t CompoundFile::SizeOf(EntryId storage) const
{
    std::uint64_t size = 0;
    std::vector<EntryId> waiting = {storage};
    while (!waiting.empty()) {
        const EntryId id = waiting.back();
        waiting.pop_back();
        size += kEntrySize;
        if (Entry(id).IsStream())
            size += Entry(id).size;
        if (!Entry(id).IsStorage())
            continue;
        const auto members = MembersOf(id);
        waiting.insert(waiting.end(), members.begin(), members.end());
    }
    return size;
}

std::string CompoundFile::ReadStream(EntryId stream) const
{
    std::string bytes;
    bytes.reserve(Entry(stream).size);
    VisitStream(stream, [&bytes](std::string_view piece) { bytes += piece; });
    return bytes;
}

void CompoundFile::VisitStream(EntryId stream,
                               const std::function<void(std::string_view)>& visit) const
{
    const DirectoryEntry& entry = Entry(stream);
    if (!entry.IsStream()) // no chain was checked for it
        ThrowDamaged("its directory names a stream that is none");
    (IsMini(entry) ? miniSectors_ : sectors_).Visit(entry.start, entry.size, visit);
}

std::string_view CompoundFile::Header() const
{
    return std::string_view(bytes_).substr(0, kCompoundHeader);
}

} // namespace orrery::xls
