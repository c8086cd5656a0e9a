#pragma once

#include "engines/builtin/xls/compound/compound_file.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// Takes the bytes of a stream while it is made.
class StreamSink {
public:
    virtual ~StreamSink() = default;
    virtual void Append(std::string_view bytes) = 0;
    /// Bytes so far; where the next ones will lie.
    virtual std::uint64_t Size() const = 0;
    /// Writes over bytes that were appended. Throws Error(DamagedWorkbook) where they were not.
    virtual void Patch(std::uint64_t offset, std::string_view bytes) = 0;
};

/// One compound file to be written: the one that was read, with changes. What is not changed comes
/// out with the same bytes, name, class id, state bits, times and id, and in the same storage.
class CompoundWriter {
public:
    using Producer = std::function<void(StreamSink&)>;

    /// The file has to outlive the writer.
    explicit CompoundWriter(const CompoundFile& source);

    /// Makes the stream's bytes when the file is saved, straight into the file. One stream of a
    /// file can be made this way.
    void ProduceStream(EntryId stream, Producer producer);
    void ReplaceStream(EntryId stream, std::string bytes);
    /// Copies a storage of the source with all that it holds, as the source has it, under the root
    /// by a new name. Nothing, and no copy, where it is no storage, where the root has a member of
    /// that name, and where the name is empty or longer than 31 units.
    std::optional<EntryId> CopyStorage(EntryId storage, std::string_view name);

    /// Writes the whole file; the file at `target` is replaced at the end, or stays as it was.
    /// Throws Error (FileNotWritable, DiskFull) and whatever the producer throws.
    void SaveTo(const std::filesystem::path& target);

private:
    class Saver;
    struct NameOrder {
        bool operator()(const std::u16string& left, const std::u16string& right) const
        {
            return CompareNames(left, right) < 0;
        }
    };
    /// The entries of a storage that is copied, itself first, with the ids that they get.
    std::map<EntryId, EntryId> NumberCopies(EntryId storage) const;

    const CompoundFile& source_;
    Directory directory_;
    std::vector<EntryId> originals_; ///< for each entry the one of the source with its bytes
    std::map<std::u16string, EntryId, NameOrder> rootMembers_;
    std::map<EntryId, std::string> replaced_;
    EntryId produced_ = kNoEntry;
    Producer producer_;
};

} // namespace orrery::xls
