#include "engines/builtin/xls/look/drawing/pictures.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/drawing/group_records.h"
#include "engines/builtin/xls/look/drawing/sheet_art.h"

#include <utility>

namespace orrery::xls {
namespace {

constexpr std::uint16_t kEntry = 0xF007; // [MS-ODRAW] 2.2.32
constexpr std::uint16_t kFirstPicture = 0xF018;
constexpr std::uint16_t kLastPicture = 0xF117;
constexpr std::uint16_t kDefaults = 0xF00B;
constexpr std::size_t kEntryHead = 36;
constexpr std::size_t kNameSize = 33; // offset of the size of a name behind the head
constexpr std::size_t kRecordHead = 8;
constexpr std::size_t kMostProperties = 65536; // bytes

} // namespace

Pictures::Pictures(DrawingKind kind, std::string_view records) : art_(GroupArt(kind, records))
{
    ArtReader reader(art_);
    ArtRecord record;
    while (reader.Next(record)) {
        const bool isPicture =
            record.type == kEntry || (record.type >= kFirstPicture && record.type <= kLastPicture);
        if (record.depth == 2 && isPicture)
            entries_.push_back(record);
        else if (record.depth == 1 && record.type == kDefaults && defaultBytes_.empty() &&
                 record.size <= kMostProperties) {
            defaultBytes_ = ArtBytes(art_, record.Data(), record.size);
            defaults_.Add(defaultBytes_, record.instance);
        }
    }
}

const Pictures::Picture& Pictures::Find(std::uint32_t number)
{
    static const Picture kNone;
    if (number == 0 || number > entries_.size())
        return kNone;
    const auto found = read_.find(number);
    return found != read_.end() ? found->second : (read_[number] = Read(entries_[number - 1]));
}

Pictures::Picture Pictures::Read(const ArtRecord& entry)
{
    ArtRecord blip = entry;
    if (entry.type == kEntry) { // the picture is behind the entry's head and name
        if (entry.size < kEntryHead)
            return {};
        const std::size_t name = art_.U16(entry.Data() + kNameSize) & 0xFFU;
        blip.begin = entry.Data() + kEntryHead + name;
        if (blip.begin + kRecordHead > entry.End())
            return {};
        blip.instance = static_cast<std::uint16_t>(art_.U16(blip.begin) >> 4U);
        blip.type = art_.U16(blip.begin + 2);
        blip.size = art_.U32(blip.begin + 4);
        if (blip.size > entry.End() - blip.Data())
            return {};
    }
    if (blip.size > left_)
        return {nullptr, {}, true};
    auto file =
        ReadPictureFile(blip.type, blip.instance, ArtBytes(art_, blip.Data(), blip.size), left_);
    if (!file)
        return {};
    left_ -= std::min(left_, file->bytes.size());
    return {std::make_shared<const std::string>(std::move(file->bytes)), std::move(file->type),
            false};
}

} // namespace orrery::xls
