#include "engines/builtin/xls/sheet/sheet_places.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/records.h"
#include "engines/builtin/xls/records/unicode_string.h"
#include "engines/common/sheet_names.h"
#include "util/error.h"
#include "util/unicode.h"

#include <utility>

namespace orrery::xls {
namespace {

constexpr std::uint16_t kSelected = 0x0200 | 0x0400; // in WINDOW2: selected, and on top
constexpr std::uint16_t kDialog = 0x0010;            // in WSBOOL
constexpr std::size_t kViewTabId = 16;               // after the view's GUID

/// The sheet's name in a place such as "Plan!B2" or "'Our plan'!B2", and where the name ends;
/// nothing for other texts.
std::optional<std::pair<std::string, std::size_t>> SheetOfPlace(std::string_view place)
{
    if (!place.starts_with('\'')) {
        const auto end = place.rfind('!');
        if (end == place.npos)
            return std::nullopt;
        return std::pair{std::string(place.substr(0, end)), end};
    }
    std::string name;
    for (std::size_t at = 1; at < place.size(); ++at) {
        if (place[at] == '\'' && (at + 1 == place.size() || place[++at] != '\''))
            return std::pair{std::move(name), at};
        name += place[at];
    }
    return std::nullopt;
}

/// The name as a place writes it: in apostrophes, which are always allowed.
std::string Quoted(std::string_view name)
{
    std::string quoted = "'";
    for (const char c : name)
        quoted.append(c == '\'' ? 2 : 1, c);
    return quoted + '\'';
}

std::optional<std::string> RenamedPlace(std::string_view place, const SheetNameLookup& nameOf)
{
    const auto sheet = SheetOfPlace(place);
    const auto name = sheet ? nameOf(sheet->first) : std::nullopt;
    if (!name)
        return std::nullopt;
    return Quoted(*name) + std::string(place.substr(sheet->second));
}

// A hyperlink object. [MS-OSHARED] 2.3.7.1
constexpr std::size_t kLinkFlags = 28; // after the cells, the class id and the version
constexpr std::uint32_t kHasMoniker = 0x01;
constexpr std::uint32_t kHasLocation = 0x08;
constexpr std::uint32_t kHasDisplayName = 0x10;
constexpr std::uint32_t kHasFrameName = 0x80;

/// The range of a string of a hyperlink, its length of 4 bytes included.
Span LinkString(std::string_view data, std::size_t at)
{
    const std::size_t units = ReadU32(data, at);
    if (units > data.size())
        ThrowDamaged("a hyperlink is longer than its record");
    Slice(data, at + 4, 2 * units);
    return {at, at + 4 + 2 * units};
}

std::string LinkText(std::string_view data, const Span& place)
{
    std::u16string units;
    for (std::size_t at = place.begin + 4; at < place.end; at += 2)
        units += static_cast<char16_t>(ReadU16(data, at));
    while (units.ends_with(u'\0'))
        units.pop_back();
    return util::FromUtf16(units);
}

std::string LinkBytes(std::string_view text)
{
    const auto units = util::ToUtf16(text);
    std::string bytes;
    AppendU32(bytes, static_cast<std::uint32_t>(units.size() + 1));
    for (const char16_t unit : units)
        AppendU16(bytes, unit);
    AppendU16(bytes, 0);
    return bytes;
}

/// The record of a link with its sheet renamed; nothing for links out of the workbook.
std::optional<std::string> RenamedLink(std::string_view data, const SheetNameLookup& nameOf)
{
    const auto flags = ReadU32(data, kLinkFlags);
    if ((flags & kHasMoniker) != 0 || (flags & kHasLocation) == 0)
        return std::nullopt;
    std::size_t at = kLinkFlags + 4;
    for (const auto flag : {kHasDisplayName, kHasFrameName}) {
        if ((flags & flag) != 0)
            at = LinkString(data, at).end;
    }
    const auto place = LinkString(data, at);
    const auto renamed = RenamedPlace(LinkText(data, place), nameOf);
    if (!renamed)
        return std::nullopt;
    return std::string(data.substr(0, place.begin)) + LinkBytes(*renamed) +
           std::string(data.substr(place.end));
}

/// The record of a source with its sheet renamed; nothing for other sources. The text for a sheet
/// of the workbook itself begins with the character 2. [MS-XLS] 2.4.86
std::optional<std::string> RenamedSource(std::string_view data, const SheetNameLookup& nameOf)
{
    constexpr std::size_t kLength = 6; // after the cells
    const auto length = ReadU16(data, kLength);
    if (length == 0)
        return std::nullopt;
    const auto source = ReadUnicodeStringNoCount(data, kLength + 2, length);
    const auto name =
        source.text.starts_with('\x02') ? nameOf(source.text.substr(1)) : std::nullopt;
    if (!name)
        return std::nullopt;
    const auto text = '\x02' + *name;
    std::string record(data.substr(0, kLength));
    AppendU16(record, static_cast<std::uint16_t>(util::ToUtf16(text).size()));
    AppendUnicodeStringNoCount(record, text);
    return record + std::string(data.substr(kLength + 2 + source.size));
}

/// A record that cannot be read stays as it is.
template <class Renamed>
std::optional<std::string> RenamedIfRead(std::string_view data, const Renamed& renamed)
{
    try {
        return renamed(data);
    }
    catch (const util::Error&) {
        return std::nullopt;
    }
}

template <class Renamed>
void RenameIn(TextPatch& patch, std::string_view bytes, const std::vector<Span>& places,
              RecordType type, Renamed renamed)
{
    for (const auto& place : places) {
        const auto data = RenamedIfRead(place.In(bytes).substr(kRecordHeader), renamed);
        if (!data)
            continue;
        std::string record;
        AppendRecord(record, type, *data);
        patch.Replace(place.begin, place.end, std::move(record));
    }
}

} // namespace

SheetPlaces::SheetPlaces(std::string_view bytes)
{
    RecordReader reader(bytes);
    while (const auto record = reader.Next()) {
        const Span place{record->begin, record->End()};
        switch (record->type) {
        case RecordType::Window2:
            if (record->data.size() >= 2)
                windows_.push_back(record->DataBegin());
            break;
        case RecordType::UserSheetViewBegin:
            if (record->data.size() >= kViewTabId + 2)
                views_.push_back(record->DataBegin());
            break;
        case RecordType::CodeName:
            codeNames_.push_back(place);
            break;
        case RecordType::Hyperlink:
            hyperlinks_.push_back(place);
            break;
        case RecordType::DConRef:
            sources_.push_back(place);
            break;
        case RecordType::SheetProperties:
            isDialog_ = isDialog_ ||
                        (record->data.size() >= 2 && (ReadU16(record->data, 0) & kDialog) != 0);
            break;
        default:
            break;
        }
    }
}

void SheetPlaces::Select(std::string& bytes, bool selected) const
{
    for (const auto window : windows_) {
        const auto flags = ReadU16(bytes, window);
        PutU16(bytes, window,
               static_cast<std::uint16_t>(selected ? flags | kSelected : flags & ~kSelected));
    }
}

void SheetPlaces::SetTabId(std::string& bytes, std::uint16_t id) const
{
    for (const auto view : views_)
        PutU16(bytes, view + kViewTabId, id);
}

std::optional<std::string> SheetPlaces::CodeName(std::string_view bytes) const
{
    if (codeNames_.empty())
        return std::nullopt;
    return RenamedIfRead(codeNames_.front().In(bytes).substr(kRecordHeader),
                         [](std::string_view data) -> std::optional<std::string> {
                             return ReadUnicodeString(data, 0).text;
                         });
}

void SheetPlaces::SetCodeName(TextPatch& patch, const std::optional<std::string>& name) const
{
    std::string record;
    if (name) {
        std::string data;
        AppendUnicodeString(data, *name);
        AppendRecord(record, RecordType::CodeName, data);
    }
    for (const auto& place : codeNames_)
        patch.Replace(place.begin, place.end, std::exchange(record, {}));
}

void SheetPlaces::Rename(TextPatch& patch, std::string_view bytes,
                         const SheetNameLookup& nameOf) const
{
    RenameIn(patch, bytes, hyperlinks_, RecordType::Hyperlink,
             [&](std::string_view data) { return RenamedLink(data, nameOf); });
    RenameIn(patch, bytes, sources_, RecordType::DConRef,
             [&](std::string_view data) { return RenamedSource(data, nameOf); });
}

} // namespace orrery::xls
