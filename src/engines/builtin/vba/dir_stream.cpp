#include "engines/builtin/vba/dir_stream.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "util/unicode.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>
#include <utility>

namespace orrery::vba {

/// The records of the stream. [MS-OVBA] 2.3.4.2
enum class RecordId : std::uint16_t {
    System = 0x0001,
    Locale = 0x0002,
    CodePage = 0x0003,
    ProjectName = 0x0004,
    Description = 0x0005,
    HelpFile = 0x0006,
    ProjectHelp = 0x0007,
    LibraryFlags = 0x0008,
    Version = 0x0009,
    Constants = 0x000C,
    ReferenceRegistered = 0x000D,
    ReferenceProject = 0x000E,
    Modules = 0x000F,
    End = 0x0010,
    Cookie = 0x0013,
    InvokeLocale = 0x0014,
    ReferenceName = 0x0016,
    ModuleName = 0x0019,
    StreamName = 0x001A,
    ModuleDescription = 0x001C,
    ModuleHelp = 0x001E,
    Procedural = 0x0021,
    Document = 0x0022,
    ReadOnly = 0x0025,
    Private = 0x0028,
    ModuleEnd = 0x002B,
    ModuleCookie = 0x002C,
    ReferenceControl = 0x002F,
    ReferenceExtended = 0x0030,
    Offset = 0x0031,
    StreamNameInUnicode = 0x0032,
    ReferenceOriginal = 0x0033,
    ConstantsInUnicode = 0x003C,
    HelpFileAgain = 0x003D,
    ReferenceNameInUnicode = 0x003E,
    DescriptionInUnicode = 0x0040,
    ModuleNameInUnicode = 0x0047,
    ModuleDescriptionInUnicode = 0x0048,
    CompatibleVersion = 0x004A,
};

namespace {

using xls::ThrowDamaged;

// Those that stay as they are.
constexpr auto kOfProject = std::to_array<RecordId>({RecordId::System,
                                                     RecordId::Locale,
                                                     RecordId::CodePage,
                                                     RecordId::Description,
                                                     RecordId::HelpFile,
                                                     RecordId::ProjectHelp,
                                                     RecordId::LibraryFlags,
                                                     RecordId::Version,
                                                     RecordId::Constants,
                                                     RecordId::ReferenceRegistered,
                                                     RecordId::ReferenceProject,
                                                     RecordId::InvokeLocale,
                                                     RecordId::ReferenceControl,
                                                     RecordId::ReferenceExtended,
                                                     RecordId::ReferenceOriginal,
                                                     RecordId::ConstantsInUnicode,
                                                     RecordId::HelpFileAgain,
                                                     RecordId::ReferenceNameInUnicode,
                                                     RecordId::DescriptionInUnicode,
                                                     RecordId::CompatibleVersion});
constexpr auto kOfModule = std::to_array<RecordId>(
    {RecordId::Procedural, RecordId::ModuleDescription, RecordId::ModuleDescriptionInUnicode,
     RecordId::ModuleHelp, RecordId::ModuleCookie, RecordId::ReadOnly, RecordId::Private});

template <class Ids> bool Has(const Ids& ids, RecordId id)
{
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

constexpr std::size_t kHead = 6;        ///< the bytes of a record's id and size
constexpr std::size_t kVersionSize = 6; ///< of that record, whatever its size says
/// Bytes, in either encoding: more than any name has, and short enough to be shown.
constexpr std::size_t kLongestName = 512;

[[noreturn]] void ThrowUnknownRecord()
{
    ThrowDamaged("the list of modules has an unknown or misplaced entry");
}

std::string LittleEndian32(std::size_t value)
{
    std::string bytes;
    xls::AppendU32(bytes, static_cast<std::uint32_t>(value));
    return bytes;
}

std::string LittleEndian16(std::size_t value)
{
    std::string bytes;
    xls::AppendU16(bytes, static_cast<std::uint16_t>(value));
    return bytes;
}

std::string InUnicode(const std::string& text)
{
    std::string bytes;
    for (const char16_t unit : util::ToUtf16(text))
        xls::AppendU16(bytes, unit);
    return bytes;
}

std::string FromUnicode(std::string_view bytes)
{
    if (bytes.size() % 2 != 0)
        ThrowUnknownRecord();
    std::u16string units;
    for (std::size_t at = 0; at < bytes.size(); at += 2)
        units += static_cast<char16_t>(xls::ReadU16(bytes, at));
    return util::FromUtf16(units);
}

bool IsAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

} // namespace

class DirStream::Reader {
public:
    explicit Reader(DirStream& dir) : dir_(dir), bytes_(dir.bytes_) {}

    void Read()
    {
        const std::size_t count = ReadProject();
        Record record = Next();
        if (record.id == RecordId::Cookie)
            record = Next();
        for (std::size_t i = 0; i < count; ++i) {
            ReadModule(record);
            record = Next();
        }
        if (record.id != RecordId::End || at_ != bytes_.size())
            ThrowUnknownRecord();
    }

private:
    struct Record {
        RecordId id{};
        std::size_t begin = 0;
        Range data;
    };

    Record Next()
    {
        Record record;
        record.begin = at_;
        record.id = static_cast<RecordId>(xls::ReadU16(bytes_, at_));
        const std::size_t size =
            record.id == RecordId::Version ? kVersionSize : xls::ReadU32(bytes_, at_ + 2);
        xls::Slice(bytes_, at_ + kHead, size);
        record.data = {at_ + kHead, at_ + kHead + size};
        at_ = record.data.end;
        return record;
    }

    std::string_view In(const Range& range) const
    {
        return bytes_.substr(range.begin, range.end - range.begin);
    }

    /// Reads what comes before the modules and returns their number.
    std::size_t ReadProject()
    {
        for (Record record = Next();; record = Next()) {
            if (record.id == RecordId::Modules) {
                dir_.count_ = record.data;
                return xls::ReadU16(In(record.data), 0);
            }
            if (record.id == RecordId::ProjectName || record.id == RecordId::ReferenceName)
                dir_.otherNames_.emplace_back(In(record.data));
            else if (!Has(kOfProject, record.id))
                ThrowUnknownRecord();
        }
    }

    void ReadModule(Record record)
    {
        if (record.id != RecordId::ModuleName)
            ThrowUnknownRecord();
        Module found;
        Places places;
        places.record.begin = record.begin;
        while (record.id != RecordId::ModuleEnd) {
            ReadField(record, found, places);
            record = Next();
        }
        places.record.end = at_;
        if (places.stream.begin == 0 || places.offset.begin == 0)
            ThrowUnknownRecord();
        if (In(places.name).size() > kLongestName || In(places.nameInUnicode).size() > kLongestName)
            ThrowDamaged("the name of a module is too long");
        found.name = {TextOf(places.name, places.nameInUnicode), std::string(In(places.name))};
        found.stream = TextOf(places.stream, places.streamInUnicode);
        dir_.modules_.push_back(std::move(found));
        dir_.places_.push_back(places);
    }

    static void Set(Range& place, const Range& data)
    {
        if (place.begin != 0) // it is there twice
            ThrowUnknownRecord();
        place = data;
    }

    void ReadField(const Record& record, Module& found, Places& places) const
    {
        switch (record.id) {
        case RecordId::ModuleName:
            Set(places.name, record.data);
            break;
        case RecordId::ModuleNameInUnicode:
            Set(places.nameInUnicode, record.data);
            break;
        case RecordId::StreamName:
            Set(places.stream, record.data);
            break;
        case RecordId::StreamNameInUnicode:
            Set(places.streamInUnicode, record.data);
            break;
        case RecordId::Offset:
            Set(places.offset, record.data);
            found.offset = xls::ReadU32(In(record.data), 0);
            break;
        case RecordId::Document:
            found.isDocument = true;
            break;
        default:
            if (!Has(kOfModule, record.id))
                ThrowUnknownRecord();
        }
    }

    std::string TextOf(const Range& name, const Range& inUnicode) const
    {
        if (inUnicode.begin != 0)
            return FromUnicode(In(inUnicode));
        if (!IsAscii(In(name)))
            ThrowDamaged("the name of a module is in an unknown code page");
        return std::string(In(name));
    }

    DirStream& dir_;
    std::string_view bytes_;
    std::size_t at_ = 0;
};

DirStream::DirStream(std::string bytes) : bytes_(std::move(bytes))
{
    Reader(*this).Read();
    for (const Places& places : places_)
        patch_.Replace(places.offset.begin, places.offset.begin + 4, LittleEndian32(0));
}

void DirStream::AddCopy(std::size_t model, const ModuleName& name)
{
    if (modules_.size() + copies_ >= std::numeric_limits<std::uint16_t>::max())
        ThrowDamaged("there would be too many modules");
    const Places& places = places_[model];
    const std::size_t begin = places.record.begin;
    builtin::TextPatch patch;
    const auto replace = [&](const Range& range, const std::string& value) {
        if (range.begin != 0)
            patch.Replace(range.begin - 4 - begin, range.end - begin,
                          LittleEndian32(value.size()) + value);
    };
    replace(places.name, name.bytes);
    replace(places.nameInUnicode, InUnicode(name.text));
    replace(places.stream, name.bytes);
    replace(places.streamInUnicode, InUnicode(name.text));
    replace(places.offset, LittleEndian32(0));
    const std::string_view record =
        std::string_view(bytes_).substr(begin, places.record.end - begin);
    patch_.Insert(places.record.end, patch.Apply(record));
    ++copies_;
}

std::string DirStream::Bytes() const
{
    builtin::TextPatch patch = patch_;
    patch.Replace(count_.begin, count_.begin + 2, LittleEndian16(modules_.size() + copies_));
    return patch.Apply(bytes_);
}

} // namespace orrery::vba
