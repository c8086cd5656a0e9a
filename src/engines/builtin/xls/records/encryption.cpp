#include "engines/builtin/xls/records/encryption.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/record_ciphers.h"
#include "engines/builtin/xls/records/records.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace orrery::xls {
namespace {

// Records whose data is never encrypted. [MS-XLS] 2.2.10
constexpr std::array kPlainRecords = {
    RecordType::Bof,    RecordType::FilePass, RecordType{0x00E1}, // InterfaceHdr
    RecordType{0x0138},                                           // RRDHead
    RecordType{0x0194},                                           // UsrExcl
    RecordType{0x0195},                                           // FileLock
    RecordType{0x0196},                                           // RRDInfo
};

constexpr std::size_t kOffsetSize = 4;
constexpr std::size_t kFirstIndexOffset = 12; ///< in INDEX, that of DEFCOLWIDTH
constexpr std::size_t kFirstExtSstOffset = 2; ///< in EXTSST
constexpr std::size_t kExtSstEntry = 8;       ///< bytes, of which an offset is the first part

/// The next record, or nothing if no complete one follows: at the stream's end, or before its
/// padding. Whoever reads the stream finds the damage.
std::optional<Record> NextWhole(std::string_view stream, RecordReader& reader)
{
    const std::string_view rest = stream.substr(reader.Position());
    const bool isWhole =
        rest.size() >= kRecordHeader && rest.size() - kRecordHeader >= ReadU16(rest, 2);
    return isWhole ? reader.Next() : std::nullopt;
}

std::optional<Record> FindFilePass(std::string_view stream)
{
    RecordReader reader(stream);
    while (const auto record = NextWhole(stream, reader)) {
        if (record->type == RecordType::FilePass)
            return record;
        if (record->type == RecordType::Eof)
            break;
    }
    return std::nullopt;
}

/// The bytes at the beginning of a record's data that are not encrypted.
std::size_t PlainSize(const Record& record)
{
    if (std::find(kPlainRecords.begin(), kPlainRecords.end(), record.type) != kPlainRecords.end())
        return record.data.size();
    if (record.type == RecordType::BoundSheet) // of which the first bytes are the sheet's offset
        return std::min(kOffsetSize, record.data.size());
    return 0;
}

/// Corrects the offset at `at` for the removal of the bytes [begin:end) of a stream.
void MoveOffset(std::string& stream, std::size_t at, std::size_t begin, std::size_t end)
{
    const std::size_t offset = ReadU32(stream, at);
    if (offset >= end)
        PutU32(stream, at, static_cast<std::uint32_t>(offset - (end - begin)));
}

/// The offsets in a record that count from the stream's beginning: [first, first + step, ...).
struct Offsets {
    std::size_t first;
    std::size_t step;
};
std::optional<Offsets> OffsetsIn(RecordType type, std::size_t dataSize)
{
    switch (type) {
    case RecordType::BoundSheet:
        return Offsets{0, dataSize};
    case RecordType::Index:
        return Offsets{kFirstIndexOffset, kOffsetSize};
    case RecordType::ExtSst:
        return Offsets{kFirstExtSstOffset, kExtSstEntry};
    default:
        return std::nullopt;
    }
}

void RemoveRecord(std::string& stream, std::size_t begin, std::size_t end)
{
    RecordReader reader(stream);
    while (const auto record = NextWhole(stream, reader)) {
        const std::size_t dataEnd = record->End();
        const auto offsets = OffsetsIn(record->type, record->data.size());
        if (!offsets)
            continue;
        for (std::size_t at = record->DataBegin() + offsets->first; at + kOffsetSize <= dataEnd;
             at += offsets->step)
            MoveOffset(stream, at, begin, end);
    }
    stream.erase(begin, end - begin);
}

} // namespace

std::optional<std::string> Decrypt(std::string stream, std::string_view password)
{
    const auto filePass = FindFilePass(stream);
    if (!filePass)
        return stream;
    const RecordCipher decrypt = MakeRecordCipher(filePass->data, password);
    if (!decrypt)
        return std::nullopt;
    RecordReader reader(stream, filePass->End());
    while (const auto record = NextWhole(stream, reader)) {
        decrypt(stream, record->DataBegin() + PlainSize(*record), record->End(),
                record->data.size());
    }
    RemoveRecord(stream, filePass->begin, filePass->End());
    return stream;
}

bool NeedsPassword(std::string_view stream)
{
    const auto filePass = FindFilePass(stream);
    if (!filePass)
        return false;
    constexpr std::size_t kEarlierSize = 4; // before BIFF8: key and verifier, without the method
    std::string data(filePass->data);
    if (data.size() == kEarlierSize)
        data.insert(0, 2, '\0');
    return !MakeRecordCipher(data, kDefaultPassword);
}

} // namespace orrery::xls
