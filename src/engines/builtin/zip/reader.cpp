#include "engines/builtin/zip/reader.h"

#include "book/error.h"
#include "engines/builtin/zip/directory.h"
#include "engines/builtin/zip/records.h"
#include "engines/builtin/zip/size_limits.h"
#include "util/error.h"
#include "util/paths.h"

#include <algorithm>
#include <libdeflate.h>

namespace orrery::zip {
namespace {

/// Counts unpacked bytes and compares them with what the directory says.
class ContentCheck {
public:
    explicit ContentCheck(const Entry& entry) : entry_(entry) {}

    /// Throws UnpackError.
    void Add(std::string_view bytes)
    {
        if (bytes.size() > entry_.size - size_)
            throw UnpackError("it is longer than declared");
        size_ += bytes.size();
        crc_ = libdeflate_crc32(crc_, bytes.data(), bytes.size());
    }
    /// Throws UnpackError.
    void Finish() const
    {
        if (size_ < entry_.size)
            throw UnpackError("it is shorter than declared");
        if (crc_ != entry_.crc)
            throw UnpackError("its checksum is wrong");
    }

private:
    const Entry& entry_;
    std::uint64_t size_ = 0;
    std::uint32_t crc_ = 0;
};

/// Whether an entry is so small that it is unpacked at once, whatever size it declares.
bool IsSmall(const Entry& entry)
{
    constexpr std::uint64_t kMost = std::uint64_t{1} << 20U;
    return entry.method == kDeflated && entry.packed <= FileWindow::kMost && entry.size <= kMost;
}

/// Appends a piece of what will have `declared` bytes: memory grows with what is read, not with
/// what is declared, and is not larger than needed in the end.
void AppendTo(std::string& bytes, std::string_view piece, std::uint64_t declared)
{
    constexpr std::uint64_t kFirst = std::uint64_t{1} << 20U;
    const std::uint64_t needed = bytes.size() + piece.size();
    if (needed > bytes.capacity()) {
        const auto more = std::max<std::uint64_t>(kFirst, 2 * needed);
        bytes.reserve(static_cast<std::size_t>(std::min(declared, more)));
    }
    bytes += piece;
}

} // namespace

Reader::Reader(const std::filesystem::path& path)
    : file_(path), entries_(ReadDirectory(file_)),
      unpackedSize_(CheckSizes(path, file_.Size(), entries_)), verified_(entries_.size())
{
}

/// Where the packed bytes begin: behind the local header, which has lengths of its own.
std::uint64_t Reader::FindContent(const Entry& entry) const
{
    const std::string_view header = file_.Read(entry.header, kLocalHeaderSize);
    if (header.size() < kLocalHeaderSize || !header.starts_with(kLocalHeader))
        throw UnpackError("it is not where the directory says");
    const std::uint64_t content =
        entry.header + kLocalHeaderSize + Number<2>(header, 26) + Number<2>(header, 28);
    if (content > file_.Size() || entry.packed > file_.Size() - content)
        throw UnpackError("the file ends before it");
    return content;
}

void Reader::ReadPacked(const Entry& entry, const Take& take) const
{
    std::uint64_t at = FindContent(entry);
    std::uint64_t left = entry.packed;
    while (left > 0) {
        const auto count =
            static_cast<std::size_t>(std::min<std::uint64_t>(left, FileWindow::kMost));
        const std::string_view piece = file_.Read(at, count);
        if (piece.size() < count)
            throw UnpackError("the file ends before it");
        take(piece);
        at += count;
        left -= count;
    }
}

void Reader::UnpackPieces(const Entry& entry, const Take& take) const
{
    if (entry.method == kStored)
        return ReadPacked(entry, take);
    if (entry.method != kDeflated) {
        throw UnpackError("it is compressed with method " + std::to_string(entry.method) +
                          ", which workbooks do not have");
    }
    if (entry.packed == 0 && entry.size == 0)
        return;
    InflateStream stream;
    ReadPacked(entry, [&](std::string_view piece) { stream.Add(piece, take); });
    stream.Finish();
}

std::string Reader::UnpackWhole(const Entry& entry) const
{
    if (entry.packed == 0 && entry.size == 0)
        return {};
    std::string bytes;
    ReadPacked(entry, [&](std::string_view packed) {
        bytes = inflater_.Unpack(packed, static_cast<std::size_t>(entry.size));
    });
    return bytes;
}

template <typename Action> void Reader::WithNameOf(const Entry& entry, Action action) const
{
    try {
        action();
    }
    catch (const UnpackError& error) {
        throw util::Error(book::ErrorKind::DamagedWorkbook, util::FromPath(file_.Path()),
                          entry.name + ": " + error.what());
    }
}

/// Lets `unpack` give the content of an entry to a check.
template <typename Unpacking> void Reader::Check(std::size_t index, Unpacking unpack) const
{
    const Entry& entry = entries_.at(index);
    WithNameOf(entry, [&] {
        ContentCheck check(entry);
        unpack(entry, check);
        check.Finish();
    });
    verified_[index] = true;
}

std::string Reader::Read(std::size_t index) const
{
    std::string bytes;
    Check(index, [&](const Entry& entry, ContentCheck& check) {
        if (IsSmall(entry)) {
            bytes = UnpackWhole(entry);
            check.Add(bytes);
            return;
        }
        UnpackPieces(entry, [&](std::string_view piece) {
            check.Add(piece);
            AppendTo(bytes, piece, entry.size);
        });
    });
    return bytes;
}

void Reader::Verify(std::size_t index) const
{
    if (verified_[index])
        return;
    Check(index, [&](const Entry& entry, ContentCheck& check) {
        if (IsSmall(entry))
            check.Add(UnpackWhole(entry));
        else
            UnpackPieces(entry, [&](std::string_view piece) { check.Add(piece); });
    });
}

void Reader::ReadPacked(std::size_t index, const Take& take) const
{
    const Entry& entry = entries_.at(index);
    WithNameOf(entry, [&] { ReadPacked(entry, take); });
}

} // namespace orrery::zip
