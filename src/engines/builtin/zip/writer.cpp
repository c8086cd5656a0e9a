#include "engines/builtin/zip/writer.h"

#include "engines/builtin/zip/compression_queue.h"
#include "engines/builtin/zip/output_file.h"
#include "engines/builtin/zip/records.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <string_view>
#include <utility>
#include <variant>

namespace orrery::zip {
namespace {

constexpr std::uint16_t kVersion = 20;         // needed for deflate and for folders
constexpr std::uint16_t kVersionOf64Bits = 45; // [APPNOTE] 4.4.3
constexpr std::uint16_t kMadeBy = 3 << 8 | 63; // like Unix, version 6.3; the same on every system
constexpr std::uint32_t kRegularFile = 0100666U << 16U;
constexpr std::uint16_t kNewYear1980 = 1 << 5 | 1;          // the first date that an entry can have
constexpr std::size_t kMostPending = std::size_t{1} << 20U; // bytes of contents not yet written

/// What the directory says of an entry whose content is this.
Entry Describe(const std::string& name, const Packed& packed)
{
    Entry entry;
    entry.name = name;
    entry.size = packed.size;
    entry.packed = packed.bytes.size();
    entry.crc = packed.crc;
    entry.attributes = kRegularFile;
    entry.system = kMadeBy;
    entry.method = kDeflated;
    entry.date = kNewYear1980;
    return entry;
}

std::uint16_t FlagsOf(const Entry& entry)
{
    const bool isAscii = std::ranges::all_of(
        entry.name, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    return isAscii ? 0 : kNameIsUtf8;
}

/// What both headers of an entry say, from the flags on. No entry has 4 GiB.
void PutDescription(std::string& bytes, const Entry& entry, std::size_t extra)
{
    Put<2>(bytes, FlagsOf(entry));
    Put<2>(bytes, entry.method);
    Put<2>(bytes, entry.time);
    Put<2>(bytes, entry.date);
    Put<4>(bytes, entry.crc);
    Put<4>(bytes, entry.packed);
    Put<4>(bytes, entry.size);
    Put<2>(bytes, entry.name.size());
    Put<2>(bytes, extra);
}

std::string LocalHeader(const Entry& entry)
{
    std::string bytes(kLocalHeader);
    Put<2>(bytes, kVersion);
    PutDescription(bytes, entry, 0);
    return bytes + entry.name;
}

void PutHeader(std::string& bytes, const Entry& entry)
{
    std::string extra;
    if (entry.header >= kIn64Bits) { // [APPNOTE] 4.5.3
        Put<2>(extra, 1);
        Put<2>(extra, sizeof entry.header);
        Put<8>(extra, entry.header);
    }
    bytes += kHeader;
    Put<2>(bytes, entry.system);
    Put<2>(bytes, extra.empty() ? kVersion : kVersionOf64Bits);
    PutDescription(bytes, entry, extra.size());
    Put<2>(bytes, 0); // comment
    Put<2>(bytes, 0); // disk
    Put<2>(bytes, 0); // internal attributes
    Put<4>(bytes, entry.attributes);
    Put<4>(bytes, std::min(entry.header, kIn64Bits));
    bytes += entry.name + extra;
}

/// The end record of a directory, after one with 64-bit numbers if it needs that.
std::string EndRecords(std::uint64_t begin, std::uint64_t size, std::uint64_t count)
{
    std::string bytes;
    if (begin >= kIn64Bits || size >= kIn64Bits || count >= kCountIn64Bits) {
        bytes += kEndRecord64;
        Put<8>(bytes, kEndRecord64Size - 12); // of what follows
        Put<2>(bytes, kMadeBy);
        Put<2>(bytes, kVersionOf64Bits);
        Put<4>(bytes, 0); // disk
        Put<4>(bytes, 0);
        Put<8>(bytes, count);
        Put<8>(bytes, count);
        Put<8>(bytes, size);
        Put<8>(bytes, begin);
        bytes += kLocator64;
        Put<4>(bytes, 0); // disk
        Put<8>(bytes, begin + size);
        Put<4>(bytes, 1); // disks
    }
    bytes += kEndRecord;
    Put<2>(bytes, 0); // disk
    Put<2>(bytes, 0);
    Put<2>(bytes, std::min(count, kCountIn64Bits));
    Put<2>(bytes, std::min(count, kCountIn64Bits));
    Put<4>(bytes, std::min(size, kIn64Bits));
    Put<4>(bytes, std::min(begin, kIn64Bits));
    Put<2>(bytes, 0); // comment
    return bytes;
}

/// A container that is being written. Small contents are compressed while others are made.
class Container {
public:
    explicit Container(OutputFile& file) : file_(file) {}

    void Add(const std::string& name, const Producer& content)
    {
        EntrySink sink;
        content(sink);
        auto made = sink.Finish();
        if (auto* const packed = std::get_if<Packed>(&made)) {
            WriteUntil(0);
            Write(name, *packed);
            return;
        }
        auto& small = std::get<std::string>(made);
        pending_.push_back({&name, small.size()});
        pendingBytes_ += small.size();
        queue_.Add(std::move(small));
        WriteUntil(kMostPending);
    }
    void Copy(const std::string& name, const Reader& source, std::size_t index)
    {
        pending_.push_back({&name, 0, &source, index});
    }
    void Finish()
    {
        WriteUntil(0);
        const std::uint64_t begin = file_.Position();
        file_.Write(directory_);
        file_.Write(EndRecords(begin, directory_.size(), count_));
    }

private:
    /// An entry whose turn has not come; one without a source is in the queue.
    struct Pending {
        const std::string* name = nullptr;
        std::size_t size = 0; // in the queue
        const Reader* source = nullptr;
        std::size_t index = 0;
    };

    /// Writes entries, the first first, until the contents of the others are that small.
    void WriteUntil(std::size_t bytes)
    {
        while (!pending_.empty() && (bytes == 0 || pendingBytes_ > bytes)) {
            const Pending entry = pending_.front();
            pending_.pop_front();
            pendingBytes_ -= entry.size;
            if (entry.source == nullptr)
                Write(*entry.name, queue_.Take());
            else
                WriteCopy(entry);
        }
    }
    void Write(const std::string& name, const Packed& packed)
    {
        Begin(Describe(name, packed));
        file_.Write(packed.bytes);
    }
    void WriteCopy(const Pending& pending)
    {
        Entry entry = pending.source->Entries()[pending.index];
        entry.name = *pending.name;
        Begin(std::move(entry));
        pending.source->ReadPacked(pending.index,
                                   [this](std::string_view piece) { file_.Write(piece); });
    }
    void Begin(Entry entry)
    {
        entry.header = file_.Position();
        file_.Write(LocalHeader(entry));
        PutHeader(directory_, entry);
        ++count_;
    }

    OutputFile& file_;
    CompressionQueue queue_;
    std::deque<Pending> pending_;
    std::size_t pendingBytes_ = 0;
    std::string directory_;
    std::uint64_t count_ = 0;
};

} // namespace

void Writer::CopyEntry(const Reader& source, std::size_t index, const std::string& name)
{
    entries_.push_back({name, {}, &source, index});
}

void Writer::AddEntry(const std::string& name, Producer content)
{
    entries_.push_back({name, std::move(content), nullptr, 0});
}

void Writer::Write(const std::filesystem::path& path) const
{
    OutputFile file(path);
    try {
        Container container(file);
        for (const Planned& entry : entries_) {
            if (entry.source != nullptr)
                container.Copy(entry.name, *entry.source, entry.index);
            else
                container.Add(entry.name, entry.content);
        }
        container.Finish();
        file.Close();
    }
    catch (...) {
        file.Discard();
        throw;
    }
}

} // namespace orrery::zip
