#include "engines/builtin/xls/compound/compound_writer.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/compound/sector_file.h"
#include "util/file_replace.h"
#include "util/unicode.h"

#include <algorithm>
#include <cassert>
#include <numeric>
#include <utility>

namespace orrery::xls {
namespace {

constexpr std::size_t kMaxNameUnits = 31;
constexpr std::uint32_t kMiniCutoff = 4096; ///< [MS-CFB] allows no other

/// A stream that is written to the file while it is made. One that stays shorter than the cutoff
/// belongs to the mini stream, which is written later, and so is kept in memory.
class ProducedStream : public StreamSink {
public:
    explicit ProducedStream(SectorFile& file) : file_(file) {}

    void Append(std::string_view bytes) override
    {
        size_ += bytes.size();
        if (!IsInFile() && size_ >= kMiniCutoff)
            MoveToFile();
        if (IsInFile())
            file_.Append(bytes);
        else
            beginning_ += bytes;
    }

    std::uint64_t Size() const override { return size_; }

    void Patch(std::uint64_t offset, std::string_view bytes) override
    {
        if (offset > size_ || bytes.size() > size_ - offset)
            ThrowTooShort();
        if (IsInFile())
            file_.Patch(begin_ + offset, bytes);
        else
            beginning_.replace(offset, bytes.size(), bytes);
    }

    bool IsInFile() const { return begin_ != 0; }
    /// The whole stream if it is short.
    const std::string& Bytes() const { return beginning_; }

private:
    void MoveToFile()
    {
        begin_ = file_.Size();
        file_.Append(beginning_);
        std::string().swap(beginning_);
    }

    SectorFile& file_;
    std::string beginning_;
    std::uint64_t begin_ = 0; ///< in the file, after its header
    std::uint64_t size_ = 0;
};

} // namespace

/// Writes one file: long streams, the mini stream, the directory, the sector table, and finally the
/// header, which says where they are.
class CompoundWriter::Saver {
public:
    Saver(CompoundWriter& writer, const std::filesystem::path& path,
          const std::filesystem::path& target)
        : writer_(writer), directory_(writer.directory_),
          file_(path, target, writer.source_.SectorSize())
    {
    }

    explicit Saver(CompoundWriter& writer)
        : writer_(writer), directory_(writer.directory_), file_(writer.source_.SectorSize())
    {
    }

    void Save()
    {
        Write();
        file_.Close();
    }

    std::string Bytes()
    {
        Write();
        return file_.Bytes();
    }

private:
    void Write()
    {
        LinkTrees();
        Produce();
        for (EntryId id = 0; id < directory_.size(); ++id) {
            if (directory_[id].IsStream() && id != writer_.produced_)
                WriteStream(id);
        }
        DirectoryEntry& root = directory_[kRootEntry];
        root.start = file_.WriteChain(miniStream_);
        root.size = miniStream_.size();
        WriteHeader();
    }

    void LinkTrees()
    {
        for (const EntryId storage : writer_.changed_)
            BuildTree(directory_, storage, writer_.MembersOf(storage));
    }

    void Produce()
    {
        if (writer_.produced_ == kNoEntry)
            return;
        DirectoryEntry& entry = directory_[writer_.produced_];
        const std::uint32_t first = file_.NextSector();
        ProducedStream stream(file_);
        writer_.producer_(stream);
        entry.size = stream.Size();
        if (stream.IsInFile()) {
            file_.EndChain();
            entry.start = first;
        }
        else {
            entry.start = AppendMini(stream.Bytes());
        }
    }

    void WriteStream(EntryId id)
    {
        DirectoryEntry& entry = directory_[id];
        if (const auto bytes = writer_.replaced_.find(id); bytes != writer_.replaced_.end()) {
            entry.size = bytes->second.size();
            entry.start = entry.size < kMiniCutoff ? AppendMini(bytes->second)
                                                   : file_.WriteChain(bytes->second);
            return;
        }
        const EntryId original = writer_.originals_[id];
        if (entry.size < kMiniCutoff) {
            entry.start = AppendMini(writer_.source_.ReadStream(original));
            return;
        }
        entry.start = file_.NextSector();
        writer_.source_.VisitStream(original,
                                    [this](std::string_view piece) { file_.Append(piece); });
        file_.EndChain();
    }

    std::uint32_t AppendMini(std::string_view bytes)
    {
        if (bytes.empty())
            return kEndOfChain;
        const auto first = static_cast<std::uint32_t>(miniFat_.size());
        miniStream_ += bytes;
        miniStream_.resize((miniStream_.size() + kMiniSector - 1) / kMiniSector * kMiniSector);
        while (miniFat_.size() < miniStream_.size() / kMiniSector)
            miniFat_.push_back(static_cast<std::uint32_t>(miniFat_.size() + 1));
        miniFat_.back() = kEndOfChain;
        return first;
    }

    std::string MiniFatBytes() const
    {
        std::string bytes;
        for (const std::uint32_t next : miniFat_)
            AppendU32(bytes, next);
        while (bytes.size() % file_.SectorSize() != 0)
            AppendU32(bytes, kFreeSector);
        return bytes;
    }

    std::string DirectoryBytes() const
    {
        std::string bytes;
        bytes.reserve(directory_.size() * kEntrySize + file_.SectorSize());
        for (const DirectoryEntry& entry : directory_)
            AppendEntry(bytes, entry);
        while (bytes.size() % file_.SectorSize() != 0)
            AppendEntry(bytes, DirectoryEntry());
        return bytes;
    }

    std::uint32_t SectorsOf(std::string_view bytes) const
    {
        return static_cast<std::uint32_t>(bytes.size() / file_.SectorSize());
    }

    void WriteHeader()
    {
        const bool isVersion3 = file_.SectorSize() == 512;
        const std::string miniFat = MiniFatBytes();
        const std::uint32_t firstMiniFat = file_.WriteChain(miniFat);
        const std::string directory = DirectoryBytes();
        const std::uint32_t firstDirectory = file_.WriteChain(directory);
        const SectorFile::Tables tables = file_.WriteTables(kHeaderFatSectors);

        std::string header(writer_.source_.Header());
        PutU16(header, 26, isVersion3 ? 3 : 4);
        PutU16(header, 28, 0xFFFE); // the byte order
        PutU32(header, 40, isVersion3 ? 0 : SectorsOf(directory));
        PutU32(header, 44, tables.fatCount);
        PutU32(header, 48, firstDirectory);
        PutU32(header, 56, kMiniCutoff);
        PutU32(header, 60, firstMiniFat);
        PutU32(header, 64, SectorsOf(miniFat));
        PutU32(header, 68, tables.firstDifat);
        PutU32(header, 72, tables.difatCount);
        for (std::uint32_t i = 0; i < kHeaderFatSectors; ++i)
            PutU32(header, 76 + 4 * i, i < tables.fatCount ? tables.firstFat + i : kFreeSector);
        file_.Patch(0, header);
    }

    const CompoundWriter& writer_;
    Directory& directory_; // the writer's, in which the places of the streams are entered
    SectorFile file_;
    std::string miniStream_;
    std::vector<std::uint32_t> miniFat_;
};

CompoundWriter::CompoundWriter(const CompoundFile& source)
    : source_(source), directory_(source.Entries()), originals_(directory_.size())
{
    std::iota(originals_.begin(), originals_.end(), EntryId{0});
    for (EntryId id = 0; id < directory_.size(); ++id) {
        DirectoryEntry& entry = directory_[id];
        if (!entry.IsStorage())
            continue;
        RepairTree(directory_, id);
        if (id != kRootEntry) { // a storage has no bytes
            entry.start = 0;
            entry.size = 0;
        }
    }
    for (const EntryId member : source.MembersOf(kRootEntry))
        rootMembers_.emplace(directory_[member].name, member);
}

void CompoundWriter::ProduceStream(EntryId stream, Producer producer)
{
    assert(directory_.at(stream).IsStream());
    assert(produced_ == kNoEntry || produced_ == stream);
    produced_ = stream;
    producer_ = std::move(producer);
}

void CompoundWriter::ReplaceStream(EntryId stream, std::string bytes)
{
    assert(directory_.at(stream).IsStream());
    replaced_.insert_or_assign(stream, std::move(bytes));
}

std::optional<EntryId> CompoundWriter::CopyStorage(EntryId storage, std::string_view name)
{
    if (source_.Entry(storage).type != EntryType::Storage)
        return std::nullopt;
    std::u16string newName = util::ToUtf16(name);
    if (newName.empty() || newName.size() > kMaxNameUnits || rootMembers_.contains(newName))
        return std::nullopt;
    const auto copies = NumberCopies(storage);
    const auto copyOf = [&copies](EntryId id) { return id == kNoEntry ? id : copies.at(id); };
    directory_.resize(directory_.size() + copies.size());
    originals_.resize(directory_.size());
    for (const auto& [original, copy] : copies) {
        DirectoryEntry& entry = directory_[copy];
        entry = directory_[original];
        const bool isTop = original == storage;
        entry.left = isTop ? kNoEntry : copyOf(entry.left);
        entry.right = isTop ? kNoEntry : copyOf(entry.right);
        entry.child = copyOf(entry.child);
        entry.parent = isTop ? kRootEntry : copyOf(entry.parent);
        originals_[copy] = original;
    }
    const EntryId top = copies.at(storage);
    directory_[top].name = newName;
    rootMembers_.emplace(std::move(newName), top);
    changed_.insert(kRootEntry);
    return top;
}

std::optional<EntryId> CompoundWriter::AddStream(EntryId storage, std::string_view name,
                                                 std::string bytes)
{
    std::u16string newName = util::ToUtf16(name);
    const auto members = MembersOf(storage);
    const bool isTaken = std::any_of(members.begin(), members.end(), [&](EntryId member) {
        return CompareNames(directory_[member].name, newName) == 0;
    });
    if (isTaken || newName.empty() || newName.size() > kMaxNameUnits)
        return std::nullopt;
    const auto stream = static_cast<EntryId>(directory_.size());
    DirectoryEntry entry;
    entry.name = newName;
    entry.type = EntryType::Stream;
    entry.parent = storage;
    directory_.push_back(std::move(entry));
    originals_.push_back(kNoEntry);
    replaced_.emplace(stream, std::move(bytes));
    if (storage == kRootEntry)
        rootMembers_.emplace(std::move(newName), stream);
    changed_.insert(storage);
    return stream;
}

void CompoundWriter::RemoveStream(EntryId stream)
{
    assert(directory_.at(stream).IsStream());
    const EntryId storage = directory_[stream].parent;
    if (storage == kRootEntry)
        rootMembers_.erase(directory_[stream].name);
    replaced_.erase(stream);
    directory_[stream] = DirectoryEntry();
    changed_.insert(storage);
}

std::vector<EntryId> CompoundWriter::MembersOf(EntryId storage) const
{
    std::vector<EntryId> members;
    for (EntryId id = 0; id < directory_.size(); ++id) {
        if (directory_[id].parent == storage)
            members.push_back(id);
    }
    return members;
}

std::map<EntryId, EntryId> CompoundWriter::NumberCopies(EntryId storage) const
{
    std::map<EntryId, EntryId> copies;
    std::vector<EntryId> waiting = {storage};
    while (!waiting.empty()) {
        const EntryId original = waiting.back();
        waiting.pop_back();
        copies.emplace(original, static_cast<EntryId>(directory_.size() + copies.size()));
        if (!directory_[original].IsStorage())
            continue;
        for (const EntryId member : xls::MembersOf(directory_, original))
            waiting.push_back(member);
    }
    return copies;
}

void CompoundWriter::SaveTo(const std::filesystem::path& target)
{
    util::FileReplacement replacement(target);
    Saver(*this, replacement.TemporaryPath(), target).Save();
    replacement.Commit();
}

std::string CompoundWriter::ToBytes()
{
    return Saver(*this).Bytes();
}

} // namespace orrery::xls
