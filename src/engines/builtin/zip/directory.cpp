#include "engines/builtin/zip/directory.h"

#include "book/error.h"
#include "engines/builtin/zip/entry_name.h"
#include "engines/builtin/zip/records.h"
#include "util/error.h"
#include "util/paths.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::zip {
namespace {

using book::ErrorKind;
using util::Error;

constexpr std::uint16_t kEncrypted = 1;  // a flag, [APPNOTE] 4.4.4
constexpr std::uint16_t kSizesField = 1; // the extra field with numbers of 64 bits

[[noreturn]] void ThrowDamaged(const FileWindow& file, const std::string& what)
{
    throw Error(ErrorKind::DamagedWorkbook, util::FromPath(file.Path()), what);
}

/// Where the entries' headers are, and how many they are.
struct Directory {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
    std::uint64_t entries = 0;
    friend bool operator==(const Directory&, const Directory&) = default;
};

bool BeginsWith(FileWindow& file, std::uint64_t at, std::string_view signature)
{
    return file.Read(at, signature.size()) == signature;
}

/// What the end record of 64-bit numbers says, which ends where its locator begins; nothing if
/// there is none.
std::optional<Directory> ReadEndRecord64(FileWindow& file, std::uint64_t locator)
{
    const std::string_view found = file.Read(locator, kLocator64Size);
    if (!found.starts_with(kLocator64))
        return std::nullopt;
    const auto at = Number<8>(found, 8);
    if (at > locator || locator - at < kEndRecord64Size || !BeginsWith(file, at, kEndRecord64))
        return std::nullopt;
    const std::string_view record = file.Read(at, kEndRecord64Size);
    const auto begin = Number<8>(record, 48);
    const auto size = Number<8>(record, 40);
    if (begin > at || size > at - begin)
        return std::nullopt;
    return Directory{begin, begin + size, Number<8>(record, 32)};
}

/// The directory that an end record leads to; nothing if there is none at that place.
std::optional<Directory> FindDirectory(FileWindow& file, std::uint64_t endRecord)
{
    const std::string_view record = file.Read(endRecord, kEndRecordSize);
    if (record.size() < kEndRecordSize)
        return std::nullopt;
    const auto begin = Number<4>(record, 16);
    const auto size = Number<4>(record, 12);
    Directory directory{begin, begin + size, Number<2>(record, 10)};
    if (endRecord >= kLocator64Size) {
        if (const auto larger = ReadEndRecord64(file, endRecord - kLocator64Size))
            directory = *larger;
    }
    if (directory.end > endRecord)
        return std::nullopt;
    if (directory.entries > 0 && !BeginsWith(file, directory.begin, kHeader))
        return std::nullopt;
    return directory;
}

/// Every directory that an end record at the end of the file leads to. A container that is stored
/// inside another one has an end record, too, but that leads nowhere in the outer one.
std::vector<Directory> FindDirectories(FileWindow& file)
{
    constexpr std::size_t kMaxComment = 0xFFFF;
    const auto size = static_cast<std::size_t>(
        std::min<std::uint64_t>(file.Size(), kEndRecordSize + kMaxComment));
    const std::uint64_t begin = file.Size() - size;
    const std::string tail(file.Read(begin, size));
    std::vector<Directory> found;
    for (std::size_t at = tail.find(kEndRecord); at != tail.npos;
         at = tail.find(kEndRecord, at + 1)) {
        const auto directory = FindDirectory(file, begin + at);
        if (directory && std::ranges::find(found, *directory) == found.end())
            found.push_back(*directory);
    }
    return found;
}

/// Replaces the numbers that are too large for a header by those of the extra field, which has just
/// these, in this order. [APPNOTE] 4.5.3
void ReadSizesField(std::string_view extra, Entry& entry)
{
    std::string_view field = FindExtraField(extra, kSizesField).value_or(std::string_view());
    for (std::uint64_t* const number : {&entry.size, &entry.packed, &entry.header}) {
        if (*number != kIn64Bits || field.size() < 8)
            continue;
        *number = Number<8>(field, 0);
        field.remove_prefix(8);
    }
}

/// Reads the header of an entry and moves `at` behind it.
Entry ReadHeader(FileWindow& file, std::uint64_t& at, std::uint64_t end)
{
    const auto cutOff = [&] {
        ThrowDamaged(file, "the directory of the zip container is cut off");
    };
    if (end - at < kHeaderSize || !BeginsWith(file, at, kHeader))
        cutOff();
    const std::string_view fixed = file.Read(at, kHeaderSize);
    if (fixed.size() < kHeaderSize)
        cutOff();
    const auto name = Number<2>(fixed, 28);
    const auto extra = Number<2>(fixed, 30);
    const std::size_t whole = kHeaderSize + name + extra + Number<2>(fixed, 32);
    const std::string_view bytes = file.Read(at, whole);
    if (end - at < whole || bytes.size() < whole)
        cutOff();
    at += whole;
    const auto flags = static_cast<std::uint16_t>(Number<2>(bytes, 8));
    if ((flags & kEncrypted) != 0)
        throw Error(ErrorKind::PasswordProtected, util::FromPath(file.Path()));
    Entry entry;
    entry.system = static_cast<std::uint16_t>(Number<2>(bytes, 4));
    entry.method = static_cast<std::uint16_t>(Number<2>(bytes, 10));
    entry.time = static_cast<std::uint16_t>(Number<2>(bytes, 12));
    entry.date = static_cast<std::uint16_t>(Number<2>(bytes, 14));
    entry.crc = static_cast<std::uint32_t>(Number<4>(bytes, 16));
    entry.packed = Number<4>(bytes, 20);
    entry.size = Number<4>(bytes, 24);
    entry.attributes = static_cast<std::uint32_t>(Number<4>(bytes, 38));
    entry.header = Number<4>(bytes, 42);
    const std::string_view fields = bytes.substr(kHeaderSize + name, extra);
    ReadSizesField(fields, entry);
    const auto decoded = DecodeName(bytes.substr(kHeaderSize, name), fields, flags);
    if (!decoded)
        ThrowDamaged(file, "the zip container has an entry with two names, \"" +
                               std::string(bytes.substr(kHeaderSize, name)) + "\"");
    entry.name = *decoded;
    return entry;
}

} // namespace

std::vector<Entry> ReadDirectory(FileWindow& file)
{
    const auto directories = FindDirectories(file);
    if (directories.empty()) {
        if (!BeginsWith(file, 0, kLocalHeader))
            throw Error(ErrorKind::NotAWorkbook, util::FromPath(file.Path()));
        ThrowDamaged(file, "the zip container has no directory");
    }
    if (directories.size() > 1)
        ThrowDamaged(file, "the zip container has two directories");
    const Directory& directory = directories.front();
    std::vector<Entry> entries;
    std::uint64_t at = directory.begin;
    while (entries.size() < directory.entries)
        entries.push_back(ReadHeader(file, at, directory.end));
    if (directory.end - at >= kHeader.size() && BeginsWith(file, at, kHeader))
        ThrowDamaged(file, "the directory of the zip container has more entries than it says");
    return entries;
}

} // namespace orrery::zip
