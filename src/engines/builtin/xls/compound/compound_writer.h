#pragma once

#include "engines/builtin/xls/compound/compound_file.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// Receives the bytes of a stream while it is made.
class StreamSink {
public:
    virtual ~StreamSink() = default;
    virtual void Append(std::string_view bytes) = 0;
    /// Bytes so far; the offset of the next ones.
    virtual std::uint64_t Size() const = 0;
    /// Overwrites appended bytes. Throws Error(DamagedWorkbook) if they were not appended.
    virtual void Patch(std::uint64_t offset, std::string_view bytes) = 0;
};

/// Writes a compound file: the one that was read, with changes. Everything unchanged keeps its
/// bytes, name, class id, state bits, times, id and storage.
class CompoundWriter {
public:
    using Producer = std::function<void(StreamSink&)>;

    /// `source` must outlive the writer.
    explicit CompoundWriter(const CompoundFile& source);

    /// `producer` makes the stream's bytes when the file is saved, straight into the file. Only one
    /// stream of a file can be made this way.
    void ProduceStream(EntryId stream, Producer producer);
    void ReplaceStream(EntryId stream, std::string bytes);
    /// Copies a storage of the source with all its content to the root, under a new name. Nothing,
    /// and no copy, if `storage` is not a storage, if the root has a member of that name, and if
    /// the name is empty or longer than 31 units.
    std::optional<EntryId> CopyStorage(EntryId storage, std::string_view name);
    /// Adds a stream to a storage of the source. Nothing, and no stream, if it has a member of that
    /// name, and if the name is empty or longer than 31 units.
    std::optional<EntryId> AddStream(EntryId storage, std::string_view name, std::string bytes);
    /// Leaves a stream of the source out. Its storage must not be copied afterwards.
    void RemoveStream(EntryId stream);

    /// Writes the whole file. The file at `target` is replaced at the end, or stays as it was.
    /// Throws Error (FileNotWritable, DiskFull) and whatever the producer throws.
    void SaveTo(const std::filesystem::path& target);
    /// The same in memory.
    std::string ToBytes();

private:
    class Saver;
    struct NameOrder {
        bool operator()(const std::u16string& left, const std::u16string& right) const
        {
            return CompareNames(left, right) < 0;
        }
    };
    /// The entries of a storage to be copied, itself first, with their new ids.
    std::map<EntryId, EntryId> NumberCopies(EntryId storage) const;
    /// The members of a storage, whatever its tree is.
    std::vector<EntryId> MembersOf(EntryId storage) const;

    const CompoundFile& source_;
    Directory directory_;
    std::vector<EntryId> originals_; ///< for each entry, the one of the source that has its bytes
    std::map<std::u16string, EntryId, NameOrder> rootMembers_;
    std::set<EntryId> changed_; ///< storages that have other members than in the source
    std::map<EntryId, std::string> replaced_;
    EntryId produced_ = kNoEntry;
    Producer producer_;
};

} // namespace orrery::xls
